#include "app/clsRegEdit.h"

#include "platform/base/Codepage.h"

#include <QtEndian>

namespace {
constexpr int closeError = 600001;
constexpr qsizetype enumerationBytes = 2000, subKeyNameCharacters = 200;

QVariant numberFrom(const Registry::Value& stored) {
    if (stored.Data.size() != 4)
        return {};
    const auto number = qFromLittleEndian<quint32>(stored.Data.constData());
    const bool exchange = stored.Type == Registry::REG_DWORD_BIG_ENDIAN;
    return int(exchange ? number << 16 | number >> 16 : number);
}

QStringList listFrom(const QByteArray& data) {
    QStringList list = Registry::BytesText(data).split(QChar(0));
    // The NUL of the last text and that of the list as a whole end no text of their own.
    for (int i = 0; i < 2 && !list.isEmpty() && list.constLast().isEmpty(); ++i)
        list.removeLast();
    return list;
}

QVariant converted(const Registry::Value& stored) {
    switch (stored.Type) {
    case Registry::REG_SZ:
    case Registry::REG_EXPAND_SZ:
        return Registry::BytesText(stored.Data).remove(QChar(0));
    case Registry::REG_BINARY:
        return stored.Data.isEmpty() ? QVariant() : stored.Data;
    case Registry::REG_DWORD:
    case Registry::REG_DWORD_BIG_ENDIAN:
        return numberFrom(stored);
    case Registry::REG_MULTI_SZ:
        return listFrom(stored.Data);
    default:
        return {};
    }
}

int reportedType(std::uint32_t type) {
    return int(type == Registry::REG_EXPAND_SZ ? Registry::REG_SZ : type);
}

qsizetype sizeOf(const Registry::Value& stored) {
    return Registry::IsText(stored.Type) ? Codepage::ByteLength(Registry::BytesText(stored.Data)) : stored.Data.size();
}

/// The bytes to store; nothing when `value` isn't of the type's form.
std::optional<QByteArray> bytesFor(int type, const QVariant& value) {
    switch (std::uint32_t(type)) {
    case Registry::REG_NONE:
        return QByteArray();
    case Registry::REG_SZ:
    case Registry::REG_EXPAND_SZ:
        if (value.typeId() == QMetaType::QString)
            return Registry::TextBytes(value.toString());
        return {};
    case Registry::REG_BINARY:
        if (value.typeId() == QMetaType::QByteArray)
            return value.toByteArray();
        return {};
    case Registry::REG_DWORD: {
        bool isNumber = false;
        const qlonglong number = value.toLongLong(&isNumber);
        if (!isNumber || number < INT32_MIN || number > UINT32_MAX)
            return {};
        QByteArray bytes(4, Qt::Uninitialized);
        qToLittleEndian(quint32(number), bytes.data());
        return bytes;
    }
    default:
        return {};
    }
}
} // namespace

bool clsRegEdit::GetRegValue(const QString& name, int& type, QVariant& value) const {
    const auto stored = Registry::GetValue(currentKey, name);
    value = stored ? converted(*stored) : QVariant();
    type = stored ? reportedType(stored->Type) : 0;
    return stored.has_value();
}

bool clsRegEdit::CheckRegKey(std::uint32_t root, const QString& path) {
    CloseRegKey();
    return Registry::CloseKey(Registry::OpenKey(root, path));
}

RegEditError clsRegEdit::CloseRegKey() {
    const Registry::Key key = std::exchange(currentKey, 0);
    counts = {};
    className.clear();
    if (key == 0 || Registry::CloseKey(key))
        return {};
    return {closeError, u"ﾚｼﾞｽﾄﾘｷｰを閉じられません。"_s};
}

bool clsRegEdit::DeleteRegKey(std::uint32_t root, const QString& path) {
    return currentKey == 0 && !path.isEmpty() && Registry::DeleteKey(root, path);
}

bool clsRegEdit::DeleteRegValue(std::uint32_t root, const QString& path, const QString& name) {
    const Registry::Key key = Registry::OpenKey(root, path);
    const bool deleted = Registry::DeleteValue(key, name);
    Registry::CloseKey(key);
    return deleted;
}

bool clsRegEdit::EnumRegSubKey(int index, QString& name) const {
    const auto found = Registry::SubKeyAt(currentKey, index);
    const bool fits = found && found->size() <= subKeyNameCharacters;
    name = fits ? *found : QString();
    return fits;
}

bool clsRegEdit::EnumRegValue(int index, QString& name, int& type, QVariant& value, int& size) const {
    name.clear();
    type = size = 0;
    value.clear();
    const auto stored = Registry::ValueAt(currentKey, index);
    // A name has its NUL in the buffer as well.
    if (!stored || Codepage::ByteLength(stored->Name) + 1 > enumerationBytes || sizeOf(*stored) > enumerationBytes)
        return false;
    name = stored->Name;
    type = reportedType(stored->Type);
    value = converted(*stored);
    size = int(sizeOf(*stored));
    return true;
}

bool clsRegEdit::OpenRegKey(std::uint32_t root, const QString& path) {
    CloseRegKey();
    currentKey = Registry::CreateKey(root, path);
    if (currentKey == 0)
        return false;
    counts = Registry::CountsOf(currentKey).value_or(Registry::Counts());
    className = u"<Unknown>"_s;
    return true;
}

bool clsRegEdit::SetRegValue(const QString& name, int type, const QVariant& value) {
    const auto bytes = bytesFor(type, value);
    return bytes && Registry::SetValue(currentKey, {name, std::uint32_t(type), *bytes});
}
