#include "platform/registry/Registry.h"

#include "platform/registry/RegistryStore.h"

#include <QtEndian>

namespace Registry {
namespace {
constexpr std::int64_t rootRow = 1;

/// What a handle stands for. Row numbers hold for one connection only, hence the path to find the key anew.
struct OpenedKey {
    QStringList names;
    std::int64_t row = 0;
    int serial = 0;
};
QHash<Key, OpenedKey> openedKeys;
Key lastKey = 0;

QString folded(const QString& name) {
    return name.toCaseFolded();
}

bool isName(const QString& name, qsizetype longest) {
    return name.size() <= longest && name.isValidUtf16() &&
           std::none_of(name.begin(), name.end(), [](QChar c) { return c < u' '; });
}

/// The names in a path; nothing when it can't be one.
std::optional<QStringList> namesOf(std::uint32_t root, const QString& path) {
    if (root != HKEY_CURRENT_USER || path.size() > MaxDepth * (MaxKeyName + 1))
        return {};
    const QStringList names = path.split(u'\\', Qt::SkipEmptyParts);
    if (names.size() > MaxDepth || !std::all_of(names.begin(), names.end(), IsKeyName))
        return {};
    return names;
}

/// Row of a subkey; 0 when there is none.
std::int64_t childOf(std::int64_t row, const QString& name) {
    Statement find("SELECT id FROM keys WHERE parent = ? AND folded = ?");
    find << row << folded(name);
    return find.Next() ? find.Integer(0) : 0;
}

std::int64_t find(const QStringList& names) {
    std::int64_t row = rootRow;
    for (const QString& name : names)
        if (row = childOf(row, name); row == 0)
            break;
    return row;
}

std::int64_t findOrMake(const QStringList& names) {
    std::int64_t row = rootRow;
    for (const QString& name : names) {
        std::int64_t child = childOf(row, name);
        if (child == 0) {
            Statement make("INSERT INTO keys(parent, name, folded) VALUES(?, ?, ?)");
            make << row << name << folded(name);
            if (!make.Run() || (child = childOf(row, name)) == 0)
                return 0;
        }
        row = child;
    }
    return row;
}

Key openedKey(const QStringList& names, std::int64_t row) {
    if (row == 0)
        return 0;
    openedKeys.insert(++lastKey, {names, row, Store::Instance().Serial()});
    return lastKey;
}

/// Row of an open key in the store as it is now; 0 when there is none.
std::int64_t rowOf(Key key, Access access) {
    const auto opened = openedKeys.find(key);
    if (opened == openedKeys.end() || !Store::Instance().Open(access))
        return 0;
    if (const int serial = Store::Instance().Serial(); opened->serial != serial) {
        opened->row = find(opened->names);
        opened->serial = serial;
    }
    return opened->row;
}

QStringList texts(Statement& statement) {
    QStringList list;
    while (statement.Next())
        list.append(statement.Text(0));
    return list;
}

std::optional<Value> valueFrom(Statement& statement) {
    if (!statement.Next())
        return {};
    return Value{statement.Text(0), std::uint32_t(statement.Integer(1)), statement.Bytes(2)};
}

bool remove(std::uint32_t root, const QString& path, bool withSubKeys) {
    const auto names = namesOf(root, path);
    if (!names || names->isEmpty() || !Store::Instance().Open(Access::Write))
        return false;
    const std::int64_t row = find(*names);
    Statement remove("DELETE FROM keys WHERE id = ?1 AND (?2 OR NOT EXISTS(SELECT 1 FROM keys WHERE parent = ?1))");
    remove << row << std::int64_t(withSubKeys);
    return row != 0 && remove.Run() && remove.Changes() == 1;
}
} // namespace

bool IsKeyName(const QString& name) {
    return !name.isEmpty() && !name.contains(u'\\') && isName(name, MaxKeyName);
}

bool IsValueName(const QString& name) {
    return isName(name, MaxValueName);
}

QString StoreProblem() {
    return Store::Instance().Problem();
}

bool IsStoreHeld() {
    return Store::Instance().IsHeld();
}

Transaction::Transaction(Access wanted) : access(wanted), open(Store::Instance().Begin(wanted)) {}

Transaction::~Transaction() {
    if (open)
        Store::Instance().End(access == Access::Read);
}

bool Transaction::IsSound() const {
    return open && Store::Instance().IsSound();
}

bool Transaction::Commit() {
    return std::exchange(open, false) && Store::Instance().End(true);
}

Key OpenKey(std::uint32_t root, const QString& path) {
    const auto names = namesOf(root, path);
    if (!names || !Store::Instance().Open(Access::Read))
        return 0;
    return openedKey(*names, find(*names));
}

Key CreateKey(std::uint32_t root, const QString& path) {
    if (const Key key = OpenKey(root, path))
        return key;
    const auto names = namesOf(root, path);
    if (!names)
        return 0;
    Transaction transaction;
    if (!transaction.IsOpen())
        return 0;
    const std::int64_t row = findOrMake(*names);
    return transaction.Commit() ? openedKey(*names, row) : 0;
}

bool CloseKey(Key key) {
    return openedKeys.remove(key);
}

bool DeleteKey(std::uint32_t root, const QString& path) {
    return remove(root, path, false);
}

bool DeleteTree(std::uint32_t root, const QString& path) {
    return remove(root, path, true);
}

std::optional<Counts> CountsOf(Key key) {
    const std::int64_t row = rowOf(key, Access::Read);
    Statement count("SELECT (SELECT count(*) FROM keys WHERE parent = ?1), (SELECT count(*) FROM vals WHERE key = ?1)");
    count << row;
    if (row == 0 || !count.Next())
        return {};
    return Counts{int(count.Integer(0)), int(count.Integer(1))};
}

QStringList SubKeyNames(Key key) {
    const std::int64_t row = rowOf(key, Access::Read);
    Statement names("SELECT name FROM keys WHERE parent = ? ORDER BY id");
    names << row;
    return texts(names);
}

QStringList ValueNames(Key key) {
    const std::int64_t row = rowOf(key, Access::Read);
    Statement names("SELECT name FROM vals WHERE key = ? ORDER BY id");
    names << row;
    return texts(names);
}

std::optional<QString> SubKeyAt(Key key, int index) {
    const std::int64_t row = rowOf(key, Access::Read);
    Statement name("SELECT name FROM keys WHERE parent = ? ORDER BY id LIMIT 1 OFFSET ?");
    name << row << index;
    if (index < 0 || !name.Next())
        return {};
    return name.Text(0);
}

std::optional<Value> ValueAt(Key key, int index) {
    const std::int64_t row = rowOf(key, Access::Read);
    Statement value("SELECT name, type, data FROM vals WHERE id ="
                    " (SELECT id FROM vals WHERE key = ? ORDER BY id LIMIT 1 OFFSET ?)");
    value << row << index;
    return index < 0 ? std::nullopt : valueFrom(value);
}

std::optional<Value> GetValue(Key key, const QString& name) {
    const std::int64_t row = rowOf(key, Access::Read);
    Statement value("SELECT name, type, data FROM vals WHERE key = ? AND folded = ?");
    value << row << folded(name);
    return valueFrom(value);
}

bool SetValue(Key key, const Value& value) {
    if (value.Data.size() > MaxDataBytes || !IsValueName(value.Name))
        return false;
    const std::int64_t row = rowOf(key, Access::Write);
    Statement set("INSERT INTO vals(key, name, folded, type, data) VALUES(?, ?, ?, ?, ?)"
                  " ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, data = excluded.data");
    set << row << value.Name << folded(value.Name) << value.Type << value.Data;
    return row != 0 && set.Run();
}

bool DeleteValue(Key key, const QString& name) {
    const std::int64_t row = rowOf(key, Access::Write);
    Statement remove("DELETE FROM vals WHERE key = ? AND folded = ?");
    remove << row << folded(name);
    return row != 0 && remove.Run() && remove.Changes() == 1;
}

QByteArray TextBytes(QStringView text) {
    QByteArray bytes((text.size() + 1) * 2, '\0');
    if (!text.isEmpty()) // which may have no address
        qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    return bytes;
}

QString BytesText(QByteArrayView bytes) {
    QString text(bytes.size() / 2, Qt::Uninitialized);
    if (!text.isEmpty())
        qFromLittleEndian<char16_t>(bytes.data(), text.size(), text.data());
    return text;
}
} // namespace Registry
