// Access to the registry tree as readers of settings want it: one open key at a time, values converted by their type,
// and every failure a false result. Which keys there are is `settingsStore`'s business.
#pragma once

#include "platform/registry/Registry.h"

#include <QVariant>

/// Why closing failed; `Number` 0 means that it did not.
struct RegEditError {
    int Number = 0;
    QString Description;
};

/// Values have these forms, by type: text for `REG_SZ` and `REG_EXPAND_SZ`, without its NUL characters; QByteArray for
/// `REG_BINARY`; int for `REG_DWORD`, and for `REG_DWORD_BIG_ENDIAN` with its two halves exchanged; QStringList for
/// `REG_MULTI_SZ`. Empty bytes, a number of another length than four bytes and any other type have no value: an
/// invalid QVariant. Sizes of text count bytes in code page 932, NUL included; characters that the code page lacks are
/// kept all the same.
class clsRegEdit {
public:
    /// True when the open key has the value, even if it has no value of a form above. `REG_EXPAND_SZ` comes as
    /// `REG_SZ`.
    bool GetRegValue(const QString& name, int& type, QVariant& value) const;
    /// Whether the key exists. No key is open afterwards.
    bool CheckRegKey(std::uint32_t root, const QString& path);
    /// Class text of the open key: "<Unknown>", as the tree keeps none. Empty when no key is open.
    QString ClassName() const { return className; }
    /// Without an open key nothing happens. A failure to close is number 600001 and leaves no key open either.
    RegEditError CloseRegKey();
    /// False without a path, while this object has a key open, and for a key with subkeys.
    bool DeleteRegKey(std::uint32_t root, const QString& path);
    bool DeleteRegValue(std::uint32_t root, const QString& path, const QString& name);
    /// Name of a subkey of the open key, if that has at most 200 characters.
    bool EnumRegSubKey(int index, QString& name) const;
    /// False at the end, and for a value whose name or data is longer than 2000 bytes. `size` is that of the data.
    bool EnumRegValue(int index, QString& name, int& type, QVariant& value, int& size) const;
    Registry::Key hCurrentKey() const { return currentKey; } ///< 0 when no key is open
    /// What the key had when it was opened.
    int NumberOfSubKeys() const { return counts.SubKeys; }
    int NumberOfValues() const { return counts.Values; }
    /// Closes the key that is open, then opens this one, made if it is missing.
    bool OpenRegKey(std::uint32_t root, const QString& path);
    /// Takes text for `REG_SZ` and `REG_EXPAND_SZ`, QByteArray for `REG_BINARY`, a number for `REG_DWORD` and anything
    /// for `REG_NONE`, which gets no data. Other types are refused.
    bool SetRegValue(const QString& name, int type, const QVariant& value);

    clsRegEdit() = default;
    ~clsRegEdit() { CloseRegKey(); }
    clsRegEdit(const clsRegEdit&) = delete;
    clsRegEdit& operator=(const clsRegEdit&) = delete;

private:
    Registry::Key currentKey = 0;
    Registry::Counts counts;
    QString className;
};
