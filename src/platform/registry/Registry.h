// The typed key tree in which the program keeps its settings: keys hold values, and both are found without regard to
// case, keep the case they were made with and are listed in the order in which they were made. Holds bytes, not
// meaning: conversions stand with the readers. For one thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>

namespace Registry {
/// Numeric root handles; any other one fails everywhere.
inline constexpr std::uint32_t HKEY_CURRENT_USER = 0x80000001;

/// Types of values. Text is kept as UTF-16, little-endian, with its NUL; any other number is kept as raw bytes.
enum : std::uint32_t {
    REG_NONE = 0,
    REG_SZ = 1,
    REG_EXPAND_SZ = 2,
    REG_BINARY = 3,
    REG_DWORD = 4,
    REG_DWORD_BIG_ENDIAN = 5,
    REG_MULTI_SZ = 7,
};

constexpr bool IsText(std::uint32_t type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

/// Limits; what lies beyond is refused. A name has no control characters and is sound UTF-16, a key's also no "\".
inline constexpr qsizetype MaxKeyName = 255, MaxValueName = 16383, MaxDepth = 512, MaxDataBytes = 16 << 20;

struct Value {
    QString Name; ///< empty for the key's default value
    std::uint32_t Type = REG_NONE;
    QByteArray Data;
    bool operator==(const Value&) const = default;
};

/// An open key; 0 is none. Stays good, and then finds nothing, when somebody deletes the key.
using Key = std::int64_t;

struct Counts {
    int SubKeys = 0;
    int Values = 0;
};

/// Whether the paths and values of the tree can have such a name.
bool IsKeyName(const QString& name);
bool IsValueName(const QString& name);

/// The file of the tree, beneath the user's configuration folder as it is at the time of the call.
///
/// A file that can't be written is read all the same, and every write fails. A damaged one gives nothing to a reader;
/// the next write moves it (with its journal) to "registry.db.damaged", or to that name with a number when there is one
/// already, and starts anew.
QString StorePath();

/// What stood in the way when the store was last wanted; empty when nothing did. A file that another program holds is
/// waited for until a second has passed in vain; from then on nobody waits until it is free again.
QString StoreProblem();
bool IsStoreHeld(); ///< by another program, so that settings may be there which can't be read now

enum class Access { Read, Write };

/// All that is done while it lives happens in one step at `Commit`, or not at all. One inside another joins it; if the
/// inner one ends without `Commit`, neither does the outer one commit. A reading one sees one state of the tree, needs
/// no `Commit`, and lets nothing within it write.
class Transaction {
public:
    explicit Transaction(Access access = Access::Write);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// False when the store isn't to be had; then nothing that follows will work either.
    bool IsOpen() const { return open; }
    /// False when the store has failed since, so that `Commit` will fail; what it only refused is no failure.
    bool IsSound() const;
    /// False when not everything could be kept; then nothing of it is.
    bool Commit();

private:
    Access access;
    bool open;
};

/// Paths are key names separated by "\"; empty names are passed over, so that the empty path is the root itself.
Key OpenKey(std::uint32_t root, const QString& path);   ///< 0 when there is none
Key CreateKey(std::uint32_t root, const QString& path); ///< opens it, made with its parents if it is missing
bool CloseKey(Key key);                                 ///< false when it isn't open
/// Only a key without subkeys goes, with its values; `DeleteTree` takes the subkeys along. Never the root.
bool DeleteKey(std::uint32_t root, const QString& path);
bool DeleteTree(std::uint32_t root, const QString& path);

std::optional<Counts> CountsOf(Key key);
QStringList SubKeyNames(Key key);
QStringList ValueNames(Key key);
std::optional<QString> SubKeyAt(Key key, int index);
std::optional<Value> ValueAt(Key key, int index);
std::optional<Value> GetValue(Key key, const QString& name);
/// Overwriting keeps the place in the order and the name's case.
bool SetValue(Key key, const Value& value);
bool DeleteValue(Key key, const QString& name); ///< false when there is none

/// Text as a text value's bytes, with its NUL; and back with every NUL that is among them, an odd last byte left out.
QByteArray TextBytes(QStringView text);
QString BytesText(QByteArrayView bytes);
} // namespace Registry
