#include "extensions/helpText.h"

#include "platform/base/Codepage.h"
#include "platform/base/Literals.h"

#include <QStringDecoder>
#include <optional>

namespace helpText {
namespace {

/// The word behind "charset=" or "encoding=", whatever quotation marks it has.
QByteArray valueAfter(QByteArrayView text, QByteArrayView key) {
    qsizetype at = text.indexOf(key);
    if (at < 0)
        return {};
    text = text.sliced(at + key.size()).trimmed();
    if (!text.startsWith('='))
        return {};
    text = text.sliced(1).trimmed();
    if (text.startsWith('"') || text.startsWith('\''))
        text = text.sliced(1).trimmed();
    qsizetype length = 0;
    while (length < text.size() && !QByteArrayView(" \t\r\n\"';/?>").contains(text[length]))
        ++length;
    return text.first(length).toByteArray();
}

/// What the page says of itself, in small letters.
QByteArray declaredEncoding(QByteArrayView bytes) {
    constexpr qsizetype searched = 4096;
    const QByteArray head = bytes.first(std::min(bytes.size(), searched)).toByteArray().toLower();
    for (const auto& [tag, key] : {std::pair("<?xml", "encoding"), std::pair("<meta", "charset")})
        for (qsizetype at = head.indexOf(tag); at >= 0; at = head.indexOf(tag, at + 1)) {
            const qsizetype end = head.indexOf('>', at);
            const QByteArray found =
                valueAfter(QByteArrayView(head).sliced(at, (end < 0 ? head.size() : end) - at), key);
            if (!found.isEmpty())
                return found;
        }
    return {};
}

bool isCodepage932(const QByteArray& name) {
    static constexpr const char* names[] = {"shift_jis", "shift-jis", "x-sjis",   "sjis",      "windows-31j",
                                            "cp932",     "ms932",     "ms_kanji", "csshiftjis"};
    return std::any_of(std::begin(names), std::end(names), [&](const char* known) { return name == known; });
}

QString decodeBy(QStringDecoder decoder, QByteArrayView bytes) {
    return decoder(bytes);
}

std::optional<QString> decodeAsDeclared(QByteArrayView bytes) {
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return decodeBy(QStringDecoder(*marked), bytes);
    const QByteArray name = declaredEncoding(bytes);
    if (isCodepage932(name))
        return Codepage::Decode(bytes);
    // A page whose declaration could be read has no wider units than bytes, whatever it says.
    if (name.startsWith("utf"))
        return decodeBy(QStringDecoder(QStringDecoder::Utf8), bytes);
    QStringDecoder decoder(name.constData());
    return decoder.isValid() ? std::optional(decodeBy(std::move(decoder), bytes)) : std::nullopt;
}

/// Takes what stands before the first "<", and the tag itself, off `rest`; a tag without an end takes all. False when
/// there is no tag, and `before` is all that was left.
bool takePiece(QStringView& rest, QStringView& before) {
    const qsizetype start = rest.indexOf(u'<');
    const qsizetype end = start < 0 ? -1 : rest.indexOf(u'>', start);
    before = start < 0 ? rest : rest.first(start);
    rest = end < 0 ? QStringView() : rest.sliced(end + 1);
    return start >= 0;
}

/// Of a page that is one endless piece no list shows more.
QStringView beginning(QStringView text) {
    constexpr qsizetype longest = 16384;
    return text.first(std::min(text.size(), longest));
}

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == QChar(0x3000);
}

} // namespace

QString Decode(QByteArrayView bytes) {
    if (const auto text = decodeAsDeclared(bytes))
        return *text;
    const QString text = Codepage::Decode(bytes);
    return text.contains(QChar::ReplacementCharacter) ? QString::fromUtf8(bytes) : text;
}

void MakeUpper(QString& text) {
    for (QChar& c : text) {
        const char16_t unit = c.unicode();
        if (unit >= 0x80)
            c = c.toUpper();
        else if (unit >= u'a' && unit <= u'z')
            c = QChar(char16_t(unit - u'a' + u'A'));
    }
}

QString ReadHelpTitle(QStringView page) {
    constexpr QStringView open = u"<TITLE>", close = u"</TITLE>";
    if (const qsizetype start = page.indexOf(open, 0, Qt::CaseInsensitive); start >= 0) {
        const QStringView rest = page.sliced(start + open.size());
        const qsizetype end = rest.indexOf(close, 0, Qt::CaseInsensitive);
        return end < 0 ? QString() : beginning(rest.first(end).trimmed()).toString();
    }
    QStringView before;
    while (takePiece(page, before))
        if (!before.trimmed().isEmpty())
            return beginning(before.trimmed()).toString();
    return {};
}

QString MakeExcerpt(QStringView page, int limit) {
    QString gathered;
    for (bool more = true; more && gathered.size() <= limit;) {
        QStringView piece;
        more = takePiece(page, piece);
        if (!more || !piece.startsWith(u"\r\n"))
            gathered += beginning(piece);
    }
    QString text;
    for (const QChar c : gathered)
        if (!isBlank(c))
            text += c;
        else if (!text.isEmpty() && text.back() != u' ')
            text += u' ';
    return u"<抜粋>\r\n"_s + StripEntities(QStringView(text).trimmed());
}

QString StripEntities(QStringView text) {
    QString stripped;
    // A ";" ahead of the "&" ends nothing.
    for (qsizetype start = text.indexOf(u'&'); start >= 0; start = text.indexOf(u'&')) {
        const qsizetype end = text.indexOf(u';', start);
        if (end < 0)
            break;
        stripped += text.first(start) + u' ';
        text = text.sliced(end + 1);
    }
    return stripped + text;
}

bool FileHasWord(QStringView word, QStringView page) {
    for (qsizetype from = 0, hit = page.indexOf(word); hit >= 0; hit = page.indexOf(word, from)) {
        const QStringView before = page.sliced(from, hit + word.size() - from);
        if (before.lastIndexOf(u'>') > before.lastIndexOf(u'<'))
            return true;
        from = hit + 1;
    }
    return false;
}

} // namespace helpText
