// The text of one help page: its encoding, title, excerpt, and whether it has a word outside its tags. Reads no file
// and knows only so much of HTML as it takes.
#pragma once

#include <QByteArray>
#include <QString>

namespace helpText {
/// Bytes to text, in the encoding that a byte order mark or the page itself declares near its start; without one that
/// is known, in code page 932 if all of the bytes are valid there, else in UTF-8.
QString Decode(QByteArrayView bytes);

/// Capital letters for small ones, each at its place: no text becomes longer or shorter.
void MakeUpper(QString& text);

/// What stands between the tags of the title; it is empty where that tag is never closed. Without such a tag the first
/// text before a tag that is not blank.
QString ReadHelpTitle(QStringView page);

/// "<抜粋>", CR LF, and the page's text outside of tags, collected until it is longer than `limit`; what has been
/// collected by then is not cut back, but for very long texts. A piece of text that starts with CR LF is left out.
/// Blanks, tabs and line ends in a row become one blank, and entities one each.
QString MakeExcerpt(QStringView page, int limit);

/// Each "&" with all that follows up to the next ";" becomes one blank, whatever stands between them.
QString StripEntities(QStringView text);

/// Whether `word` stands outside tags, where a tag ends before it and none begins after that one. Both have to be in
/// capital letters.
bool FileHasWord(QStringView word, QStringView page);
} // namespace helpText
