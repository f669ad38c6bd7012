#include "platform/base/ShellWords.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"
#include "platform/base/OneLine.h"

#include <algorithm>

namespace {

bool isPlain(QChar c) {
    return (c.unicode() < 0x80 && c.isLetterOrNumber()) || QStringView(u"_-./,:+@%=").contains(c);
}

QString quoted(const QString& word) {
    if (!word.isEmpty() && std::ranges::all_of(word, isPlain))
        return word;
    // What one line can't show as it is would be lost on the way through a clipboard.
    if (OneLine(word) == word)
        return u'\'' + QString(word).replace(u"'"_s, u"'\\''"_s) + u'\'';
    QString line = u"$'"_s;
    constexpr int octal = 8, digits = 3;
    const std::string bytes = NativePath::Of(word).native();
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < ' ' || byte > '~' || byte == '\'' || byte == '\\')
            line += u'\\' + QString::number(byte, octal).rightJustified(digits, u'0');
        else
            line += QLatin1Char(c);
    }
    return line + u'\'';
}

/// Reads the bytes of a line.
class Splitter {
public:
    explicit Splitter(QByteArray bytes) : line(std::move(bytes)) {}

    std::optional<QStringList> Words() {
        while (at < line.size()) {
            const char c = line[at++];
            if (c == ' ' || c == '\t' || c == '\n')
                endWord();
            else if (!takePart(c))
                return {};
        }
        endWord();
        return words;
    }

private:
    void endWord() {
        if (inWord)
            words += NativePath::Text(word);
        word.clear();
        inWord = false;
    }
    bool takePart(char c) {
        inWord = true;
        if (c == '\'' || c == '"')
            return takeQuoted(c, c == '"');
        if (c == '$' && at < line.size() && line[at] == '\'') {
            ++at;
            return takeQuoted('\'', true);
        }
        if (c == '\\' && at == line.size())
            return false;
        word += c == '\\' ? line[at++] : c;
        return true;
    }
    bool takeQuoted(char end, bool escapes) {
        while (at < line.size() && line[at] != end) {
            if (escapes && line[at] == '\\' && at + 1 < line.size())
                takeEscape();
            else
                word += line[at++];
        }
        return ++at <= line.size();
    }
    /// An octal number or a character that stands for itself.
    void takeEscape() {
        constexpr int octal = 8, most = 3;
        int digits = 0, number = 0;
        for (++at; digits < most && at < line.size() && line[at] >= '0' && line[at] < '0' + octal; ++digits)
            number = number * octal + (line[at++] - '0');
        word += digits > 0 ? char(number) : line[at++];
    }

    QByteArray line;
    qsizetype at = 0;
    QByteArray word;
    bool inWord = false;
    QStringList words;
};

} // namespace

QString ShellWords::Line(const QStringList& words) {
    QStringList parts;
    for (const QString& word : words)
        parts += quoted(word);
    return parts.join(u' ');
}

std::optional<QStringList> ShellWords::Split(const QString& line) {
    return Splitter(QByteArray::fromStdString(NativePath::Of(line).native())).Words();
}
