#include "platform/registry/Registry.h"
#include "platform/registry/RegistryText.h"

#include <QIODevice>
#include <QtEndian>

namespace RegistryText {
namespace {
constexpr qsizetype lineLength = 77;

QString quoted(const QString& text) {
    QString inside = text;
    inside.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u'"' + inside + u'"';
}

/// Whether `data` is the bytes of `text`, and that can stand between quotation marks.
bool canQuote(const QString& text, const QByteArray& data) {
    return Registry::TextBytes(text) == data && text.isValidUtf16() &&
           std::none_of(text.begin(), text.end(), [](QChar c) { return c == u'\r' || c == u'\n' || c.isNull(); });
}

/// "hex:" or "hex(type):" and the bytes, in lines that start at `column` and end in "\" until the last one.
QString hexadecimal(const Registry::Value& value, qsizetype column) {
    QString text = value.Type == Registry::REG_BINARY ? u"hex:"_s : u"hex("_s + QString::number(value.Type, 16) + u"):";
    column += text.size();
    text.reserve(text.size() + value.Data.size() * 3 + value.Data.size() / 5);
    for (qsizetype i = 0; i < value.Data.size(); ++i) {
        if (column + 3 > lineLength) {
            text += u"\\\r\n  ";
            column = 2;
        }
        const auto byte = static_cast<unsigned char>(value.Data[i]);
        text += QChar(u"0123456789abcdef"[byte >> 4]);
        text += QChar(u"0123456789abcdef"[byte & 15]);
        if (i + 1 < value.Data.size())
            text += u',';
        column += 3;
    }
    return text;
}

QString lineOf(const Registry::Value& value) {
    const QString start = (value.Name.isEmpty() ? u"@"_s : quoted(value.Name)) + u'=';
    if (value.Type == Registry::REG_SZ) {
        QString text = Registry::BytesText(value.Data);
        text.chop(1);
        if (canQuote(text, value.Data))
            return start + quoted(text);
    }
    if (value.Type == Registry::REG_DWORD && value.Data.size() == 4) {
        const auto number = qFromLittleEndian<quint32>(value.Data.constData());
        return start + u"dword:"_s + QString::number(number, 16).rightJustified(8, u'0');
    }
    return start + hexadecimal(value, start.size());
}

class Exporter {
public:
    explicit Exporter(QIODevice& target) : device(target) {}

    bool Write(const QString& line) {
        // Without the NUL that ends a text value.
        const QByteArray bytes = Registry::TextBytes(QString(line + u"\r\n"_s)).chopped(2);
        return device.write(bytes) == bytes.size();
    }

    /// All that can be written out; `path` is that of a key.
    bool WriteKey(const QString& path) {
        const Registry::Key key = Registry::OpenKey(Registry::HKEY_CURRENT_USER, path);
        const QStringList subKeys = Registry::SubKeyNames(key);
        bool written = Write({}) && Write(u"[HKEY_CURRENT_USER"_s + path + u']') && writeValues(key);
        Registry::CloseKey(key);
        for (qsizetype i = 0; written && i < subKeys.size(); ++i) {
            if (isKey(path, subKeys.at(i)))
                written = WriteKey(path + u'\\' + subKeys.at(i));
            else
                ++LeftOut;
        }
        return written;
    }

    int LeftOut = 0;

private:
    /// Whether the name of a subkey leads to it.
    static bool isKey(const QString& parent, const QString& name) {
        return Registry::IsKeyName(name) &&
               Registry::CloseKey(Registry::OpenKey(Registry::HKEY_CURRENT_USER, parent + u'\\' + name));
    }

    bool writeValues(Registry::Key key) {
        const QStringList names = Registry::ValueNames(key);
        return std::all_of(names.begin(), names.end(), [&](const QString& name) {
            const auto value = Registry::IsValueName(name) ? Registry::GetValue(key, name) : std::nullopt;
            if (!value)
                ++LeftOut;
            return !value || Write(lineOf(*value));
        });
    }

    QIODevice& device;
};
} // namespace

ExportResult Export(QIODevice& device) {
    const Registry::Transaction oneState(Registry::Access::Read);
    Exporter exporter(device);
    const bool done = oneState.IsOpen() && exporter.Write(u"\ufeffWindows Registry Editor Version 5.00"_s) &&
                      exporter.WriteKey({}) && oneState.IsSound();
    return {done, exporter.LeftOut};
}
} // namespace RegistryText
