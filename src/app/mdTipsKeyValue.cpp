#include "app/mdTips.h"

namespace {
/// Only U+0020 counts here; other white space may be part of a name.
QStringView withoutBlanks(QStringView text) {
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}
} // namespace

bool mdTips::TakeLine(QStringView& text, QStringView& line) {
    line = {};
    if (text.isEmpty())
        return false;
    const qsizetype end = text.indexOf(u'\n');
    line = end < 0 ? text : text.first(end);
    text = end < 0 ? QStringView() : text.sliced(end + 1);
    if (end >= 0 && line.endsWith(u'\r'))
        line.chop(1);
    return true;
}

QString mdTips::StripComment(const QString& line, QChar commentChar) {
    qsizetype start = 0;
    while (start < line.size() && line[start] == u'\t')
        ++start;
    bool quoted = false;
    for (qsizetype i = start; i < line.size(); ++i) {
        if (line[i] == commentChar && !quoted)
            return line.sliced(start, i - start);
        if (line[i] == u'"')
            quoted = !quoted;
    }
    return line.sliced(start);
}

bool mdTips::ReadKeyValueLine(QStringView& text, KeyValue& record, const QString& comment) {
    const QChar commentChar = comment.isEmpty() ? u'#' : comment.front();
    QString entry;
    QStringView line;
    while (TakeLine(text, line)) {
        const QString stripped = StripComment(line.toString(), commentChar);
        const QStringView content = withoutBlanks(stripped);
        if (content.endsWith(u'\\')) {
            entry += content.chopped(1);
        } else if (!content.isEmpty()) {
            entry += content;
            break;
        }
    }
    // A file that ends within an entry still gives what there is of it.
    if (entry.isEmpty())
        return false;

    const qsizetype equals = entry.indexOf(u'=');
    record.Key = withoutBlanks(QStringView(entry).left(equals)).toString();
    QStringView value = equals < 0 ? QStringView() : withoutBlanks(QStringView(entry).sliced(equals + 1));
    if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
        value = value.sliced(1, value.size() - 2);
    record.Value = value.toString();
    record.IsBlock = value.startsWith(u'{') && value.endsWith(u'}');
    return true;
}
