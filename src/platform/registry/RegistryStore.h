// The registry's database file: finding, checking, creating and replacing it, its transactions and its statements.
// Knows nothing of what keys and values mean. For `Registry` alone.
#pragma once

#include "platform/registry/Registry.h"
#include "platform/registry/StoreWait.h"

#include <QHash>
#include <filesystem>

struct sqlite3;
struct sqlite3_stmt;

namespace Registry {
class Store {
public:
    static Store& Instance();
    ~Store() { close(); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /// Connects if need be; for writing the file is made, and a damaged one moved aside. False when it can't be used.
    bool Open(Access access);
    bool Begin(Access access);
    /// Ends the innermost transaction; true when it (or its part of the outer one) is kept.
    bool End(bool keep);
    /// False when the transaction that is open can no longer be kept.
    bool IsSound() const { return turn != Turn::Spoilt; }
    bool IsHeld() const { return wait.IsHeld(); }
    const QString& Problem() const { return problem; }
    /// Changes whenever row numbers may no longer be those of before.
    int Serial() const { return serial; }

private:
    friend class Statement;
    enum class Health { Good, Empty, Damaged, Unusable };
    /// What the transaction that is open may still do.
    enum class Turn { None, Reading, Writing, Spoilt };

    Store() = default;
    Health connect(Access access);
    Health check();
    bool createTables();
    bool replaceDamaged();
    bool hasMoved();
    void close();
    bool execute(const char* sql);
    sqlite3_stmt* prepare(const char* sql);
    /// Takes note of a statement's result: one that leaves a save incomplete spoils the whole transaction.
    int note(int result);
    bool isReadOnly() const;
    /// Whether what a turn is open for lets this be done.
    bool allows(Access access) const {
        return turn == Turn::Writing || (turn == Turn::Reading && access == Access::Read);
    }

    sqlite3* database = nullptr;
    std::filesystem::path path;
    QHash<const char*, sqlite3_stmt*> statements; ///< by the address of their text
    int serial = 0;
    int depth = 0; ///< of the transactions inside each other
    Turn turn = Turn::None;
    StoreWait wait;
    bool doubtful = false; ///< the file has shown damage since it was checked
    QString problem;
};

/// One run of a statement, prepared once for each literal `sql`. Parameters are bound in their order.
class Statement {
public:
    explicit Statement(const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& operator<<(std::int64_t number);
    Statement& operator<<(const QString& text);
    Statement& operator<<(const QByteArray& bytes);

    bool Next(); ///< true while there is a row
    bool Run();  ///< for a change; false when it failed
    int Changes() const;
    std::int64_t Integer(int column) const;
    QString Text(int column) const;
    QByteArray Bytes(int column) const;

private:
    sqlite3_stmt* statement;
    int bound = 0;
};
} // namespace Registry
