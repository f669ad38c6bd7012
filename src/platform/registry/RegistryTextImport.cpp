#include "platform/base/Codepage.h"
#include "platform/registry/Registry.h"
#include "platform/registry/RegistryText.h"

#include <QStringDecoder>
#include <QtEndian>

namespace RegistryText {
namespace {
/// Thrown from the reader to `Import` alone.
struct Problem {
    QString text;
};

QString decoded(const QByteArray& file) {
    if (const auto marked = QStringConverter::encodingForData(file)) {
        QStringDecoder decoder(*marked);
        return decoder.decode(file);
    }
    QStringDecoder utf8(QStringConverter::Utf8);
    const QString text = utf8.decode(file);
    return utf8.hasError() ? Codepage::Decode(file) : text;
}

bool isHexDigit(QChar c) {
    return (c >= u'0' && c <= u'9') || (c.toLower() >= u'a' && c.toLower() <= u'f');
}

/// Reads the text from front to back and does what it says at once; the transaction around it takes care of problems.
class Reader {
public:
    explicit Reader(QStringView source) : text(source) {}

    int Line() const { return line; }

    void Run() {
        readVersion();
        for (; !atEnd(); endLine()) {
            skipBlanks();
            if (peek() == u'[')
                readKey();
            else if (peek() == u'"' || peek() == u'@')
                readValue();
        }
        closeKey();
    }

    ~Reader() { closeKey(); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

private:
    bool atEnd() const { return at >= text.size(); }
    QChar peek() const { return atEnd() ? QChar() : text[at]; }
    bool take(QStringView word) {
        if (!text.mid(at).startsWith(word, Qt::CaseInsensitive))
            return false;
        at += word.size();
        return true;
    }
    void need(QStringView word) {
        if (!take(word))
            throw Problem{u"\""_s + word + u"\" is missing"_s};
    }
    void skipBlanks() {
        while (!atEnd() && (peek() == u' ' || peek() == u'\t'))
            ++at;
    }
    /// Nothing but a comment may stand in the rest of the line.
    void endLine() {
        skipBlanks();
        if (peek() == u';')
            takeLine();
        if (!atEnd() && !takeLineEnd())
            throw Problem{u"not understood"_s};
    }
    bool takeLineEnd() {
        if (!take(u"\r\n") && !take(u"\n") && !take(u"\r"))
            return false;
        ++line;
        return true;
    }
    QStringView takeLine() {
        const qsizetype from = at;
        while (!atEnd() && peek() != u'\r' && peek() != u'\n')
            ++at;
        return text.mid(from, at - from);
    }

    void readVersion() {
        const QStringView version = takeLine().trimmed();
        ansi = version == u"REGEDIT4";
        if (!ansi && version != u"Windows Registry Editor Version 5.00")
            throw Problem{u"not a registry file"_s};
        endLine();
    }

    /// The name of a key may have a "]" in it, so its end is the last one of the line.
    void readKey() {
        ++at;
        const bool remove = take(u"-");
        QStringView rest = takeLine();
        const qsizetype end = rest.lastIndexOf(u']');
        const QStringView after = rest.mid(end + 1).trimmed();
        if (end < 0 || !(after.isEmpty() || after.startsWith(u';')))
            throw Problem{u"\"]\" is missing"_s};
        rest = rest.left(end);
        const qsizetype rootEnd = rest.indexOf(u'\\') < 0 ? rest.size() : rest.indexOf(u'\\');
        if (rest.left(rootEnd).compare(u"HKEY_CURRENT_USER", Qt::CaseInsensitive) != 0)
            throw Problem{u"only HKEY_CURRENT_USER is known"_s};
        openKey(rest.mid(rootEnd + 1).toString(), remove);
    }

    void openKey(const QString& path, bool remove) {
        using namespace Registry;
        closeKey();
        if (!remove && (key = CreateKey(HKEY_CURRENT_USER, path)) == 0)
            throw Problem{u"the key can't be made"_s};
        const Key present = remove ? OpenKey(HKEY_CURRENT_USER, path) : 0;
        if (CloseKey(present) && !DeleteTree(HKEY_CURRENT_USER, path))
            throw Problem{u"the key can't be deleted"_s};
    }

    void closeKey() { Registry::CloseKey(std::exchange(key, 0)); }

    void readValue() {
        if (key == 0)
            throw Problem{u"a value without a key"_s};
        Registry::Value value;
        if (!take(u"@"))
            value.Name = readQuoted();
        skipBlanks();
        need(u"=");
        skipBlanks();
        if (take(u"-")) {
            Registry::DeleteValue(key, value.Name);
            return;
        }
        readData(value);
        if (!Registry::SetValue(key, value))
            throw Problem{u"the value can't be kept"_s};
    }

    void readData(Registry::Value& value) {
        if (peek() == u'"') {
            value.Type = Registry::REG_SZ;
            value.Data = Registry::TextBytes(readQuoted());
        } else if (take(u"dword:")) {
            value.Type = Registry::REG_DWORD;
            value.Data.resize(4);
            skipBlanks();
            qToLittleEndian(readNumber(8), value.Data.data());
        } else if (take(u"hex:")) {
            value.Type = Registry::REG_BINARY;
            value.Data = readBytes();
        } else {
            need(u"hex(");
            value.Type = readNumber(8);
            need(u"):");
            value.Data = readBytes();
            if (ansi && Registry::IsText(value.Type))
                value.Data = Registry::TextBytes(Codepage::Decode(value.Data)).chopped(2);
        }
    }

    /// May go over lines.
    QString readQuoted() {
        need(u"\"");
        QString inside;
        const int start = line;
        while (!atEnd() && peek() != u'"') {
            const qsizetype from = at;
            if (takeLineEnd()) {
                inside += text.mid(from, at - from);
                continue;
            }
            if (peek() == u'\\' && ++at < text.size() && peek() != u'\\' && peek() != u'"')
                throw Problem{u"only \\\\ and \\\" can follow a \\"_s};
            inside += peek();
            ++at;
        }
        if (atEnd())
            line = start;
        need(u"\"");
        return inside;
    }

    quint32 readNumber(int mostDigits) {
        const qsizetype from = at;
        while (!atEnd() && isHexDigit(peek()))
            ++at;
        if (at == from || at - from > mostDigits)
            throw Problem{u"not a hexadecimal number"_s};
        return text.mid(from, at - from).toUInt(nullptr, 16);
    }

    /// Bytes of up to two digits between commas; "\" leads over to the next line.
    QByteArray readBytes() {
        QByteArray bytes;
        for (skipToByte(); !atEnd() && isHexDigit(peek()); skipToByte()) {
            bytes.append(char(readNumber(2)));
            if (bytes.size() > Registry::MaxDataBytes)
                throw Problem{u"the value is too large"_s};
            skipToByte();
            if (!take(u","))
                break;
        }
        return bytes;
    }
    void skipToByte() {
        skipBlanks();
        while (take(u"\\")) {
            skipBlanks();
            if (!takeLineEnd())
                throw Problem{u"\\ is not at the end of the line"_s};
            skipBlanks();
        }
    }

    QStringView text;
    qsizetype at = 0;
    int line = 1;
    bool ansi = false;
    Registry::Key key = 0;
};
} // namespace

ImportResult Import(const QByteArray& file) {
    const auto notWritten = [] { return ImportResult{false, 0, Registry::StoreProblem()}; };
    const QString text = decoded(file);
    Registry::Transaction transaction;
    if (!transaction.IsOpen())
        return notWritten();
    Reader reader(text);
    try {
        reader.Run();
    } catch (const Problem& problem) {
        // On a full disk keys can't be made either, and the text isn't to blame.
        return transaction.IsSound() ? ImportResult{false, reader.Line(), problem.text} : notWritten();
    }
    return transaction.Commit() ? ImportResult{true, 0, {}} : notWritten();
}
} // namespace RegistryText
