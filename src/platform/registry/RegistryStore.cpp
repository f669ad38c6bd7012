#include "platform/registry/RegistryStore.h"

#include "platform/base/NativePath.h"

#include <QThread>
#include <fcntl.h>
#include <sqlite3.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace Registry {
namespace {
namespace fs = std::filesystem;

constexpr std::uintmax_t headerBytes = 512;

constexpr const char* tables =
    "PRAGMA application_id = 0x56524547; PRAGMA user_version = 1;"
    "CREATE TABLE IF NOT EXISTS keys(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " parent INTEGER REFERENCES keys(id) ON DELETE CASCADE, name TEXT NOT NULL, folded TEXT NOT NULL,"
    " UNIQUE(parent, folded));"
    "CREATE TABLE IF NOT EXISTS vals(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " key INTEGER NOT NULL REFERENCES keys(id) ON DELETE CASCADE, name TEXT NOT NULL, folded TEXT NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE(key, folded));"
    // With the row number behind it, such an index has the order in which they were made.
    "CREATE INDEX IF NOT EXISTS keys_in_order ON keys(parent);"
    "CREATE INDEX IF NOT EXISTS vals_in_order ON vals(key);"
    "INSERT OR IGNORE INTO keys(id, parent, name, folded) VALUES(1, NULL, '', '')";
constexpr std::int64_t applicationId = 0x56524547;

fs::path withEnding(const fs::path& path, const char* ending) {
    return fs::path(path.native() + ending);
}

bool isThere(const fs::path& path) {
    std::error_code none;
    return fs::exists(path, none);
}

bool moveTo(const fs::path& from, const fs::path& to) {
    std::error_code problem;
    fs::rename(from, to, problem);
    return !problem;
}

/// A name for the damaged file that nothing has yet; empty when there is no end of them.
fs::path freeName(const fs::path& path) {
    const fs::path plain = withEnding(path, ".damaged");
    fs::path name = plain;
    for (int n = 2; isThere(name) || isThere(withEnding(name, "-journal")); ++n) {
        if (n > 99)
            return {};
        name = withEnding(plain, ('.' + std::to_string(n)).c_str());
    }
    return name;
}

/// The damaged file, as long as no other program moves it aside.
class MoverLock {
public:
    explicit MoverLock(const fs::path& path) : handle(::open(path.c_str(), O_RDWR | O_CLOEXEC)) {
        constexpr int longestWaitMs = 1000, stepMs = 10;
        for (int waited = 0; handle >= 0 && !held && waited <= longestWaitMs; waited += stepMs) {
            held = ::flock(handle, LOCK_EX | LOCK_NB) == 0;
            if (!held)
                QThread::msleep(stepMs);
        }
    }
    ~MoverLock() {
        if (handle >= 0)
            ::close(handle);
    }
    MoverLock(const MoverLock&) = delete;
    MoverLock& operator=(const MoverLock&) = delete;
    bool IsHeld() const { return held; }

private:
    int handle;
    bool held = false;
};
} // namespace

QString StorePath() {
    return NativePath::ConfigurationFolder() + u"/Ordvane/registry.db"_s;
}

Store& Store::Instance() {
    static Store store;
    return store;
}

bool Store::isReadOnly() const {
    return database && sqlite3_db_readonly(database, "main") != 0;
}

bool Store::Open(Access access) {
    if (depth > 0)
        return allows(access);
    const fs::path place = NativePath::Of(StorePath());
    wait.Begin(place, access);
    // What couldn't be written a while ago may be writable now.
    const bool retries = access == Access::Write && isReadOnly();
    if (database && (doubtful || retries || path != place || hasMoved()))
        close();
    if (database)
        return true;
    path = place;
    switch (connect(access)) {
    case Health::Good:
        return true;
    case Health::Empty:
        if (access == Access::Write && createTables())
            return true;
        break;
    case Health::Damaged:
        if (access == Access::Write && replaceDamaged())
            return true;
        break;
    case Health::Unusable:
        break;
    }
    wait.NoteShut();
    if (problem.isEmpty())
        problem = u"it is damaged"_s;
    close();
    return false;
}

Store::Health Store::connect(Access access) {
    close();
    std::error_code none; // the opening tells
    if (access == Access::Write)
        fs::create_directories(path.parent_path(), none);
    const int flags = SQLITE_OPEN_READWRITE | (access == Access::Write ? SQLITE_OPEN_CREATE : 0);
    ++serial;
    doubtful = false;
    problem.clear();
    // A file that can't be written is opened for reading, then.
    if (note(sqlite3_open_v2(path.c_str(), &database, flags, nullptr)) != SQLITE_OK)
        return Health::Unusable;
    if (access == Access::Write && isReadOnly()) {
        problem = QString::fromLatin1(sqlite3_errstr(SQLITE_READONLY));
        return Health::Unusable;
    }
    sqlite3_busy_handler(
        database, [](void* held, int) { return static_cast<StoreWait*>(held)->GoOn() ? 1 : 0; }, &wait);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, int(MaxDataBytes) + (1 << 20));
    execute("PRAGMA foreign_keys = ON");
    // The parts of the check must see one state, or a file that is just being made looks half made.
    if (!execute("BEGIN"))
        return Health::Unusable;
    const Health health = check();
    return execute("COMMIT") || health == Health::Damaged ? health : Health::Unusable;
}

Store::Health Store::check() {
    Statement soundness("PRAGMA quick_check(1)");
    const bool sound = soundness.Next() && soundness.Text(0) == u"ok";
    if (!sound)
        return doubtful || sqlite3_errcode(database) == SQLITE_ROW ? Health::Damaged : Health::Unusable;
    Statement objects("SELECT count(*) FROM sqlite_master"), id("PRAGMA application_id");
    if (!objects.Next() || !id.Next())
        return Health::Unusable;
    if (objects.Integer(0) == 0 && id.Integer(0) == 0) {
        // A file too short for a header passes for a new one, but it is somebody's.
        std::error_code none;
        const std::uintmax_t size = fs::file_size(path, none);
        return size == 0 || size >= headerBytes ? Health::Empty : Health::Damaged;
    }
    Statement keys("SELECT id, parent, name, folded FROM keys WHERE id = 1 AND parent IS NULL"),
        values("SELECT id, key, name, folded, type, data FROM vals LIMIT 0");
    return id.Integer(0) == applicationId && keys.Next() && values.Run() ? Health::Good : Health::Damaged;
}

bool Store::createTables() {
    // Another program may make them at the same time, so that they may be there already.
    if (!execute("BEGIN IMMEDIATE"))
        return false;
    if (execute(tables) && execute("COMMIT"))
        return true;
    execute("ROLLBACK");
    return false;
}

bool Store::replaceDamaged() {
    const MoverLock lock(path);
    if (!lock.IsHeld())
        return false;
    // Another program may have replaced it by now.
    Health health = connect(Access::Write);
    if (health == Health::Damaged) {
        close();
        const fs::path journal = withEnding(path, "-journal"), name = freeName(path);
        // The journal first: left behind, it would be taken for one of the new file.
        if (name.empty() || (isThere(journal) && !moveTo(journal, withEnding(name, "-journal"))) || !moveTo(path, name))
            return false;
        health = connect(Access::Write);
    }
    return health == Health::Good || (health == Health::Empty && createTables());
}

bool Store::hasMoved() {
    int moved = 0;
    // Where the question isn't known, an open file can't be moved either.
    return sqlite3_file_control(database, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

void Store::close() {
    for (sqlite3_stmt* statement : std::as_const(statements))
        sqlite3_finalize(statement);
    statements.clear();
    sqlite3_close(database);
    database = nullptr;
}

bool Store::Begin(Access access) {
    const bool writes = access == Access::Write;
    if (depth == 0) {
        if (!Open(access) || !execute(writes ? "BEGIN IMMEDIATE" : "BEGIN"))
            return false;
        turn = writes ? Turn::Writing : Turn::Reading;
        if (writes)
            wait.NoteWritten();
    } else if (!allows(access)) {
        return false;
    }
    ++depth;
    return true;
}

bool Store::End(bool keep) {
    if (!keep)
        turn = Turn::Spoilt;
    if (--depth > 0)
        return IsSound();
    const bool kept = IsSound() && execute("COMMIT");
    turn = Turn::None;
    // A full disk may have ended it already.
    if (!kept && sqlite3_get_autocommit(database) == 0)
        execute("ROLLBACK");
    return kept;
}

bool Store::execute(const char* sql) {
    return note(sqlite3_exec(database, sql, nullptr, nullptr, nullptr)) == SQLITE_OK;
}

sqlite3_stmt* Store::prepare(const char* sql) {
    if (sqlite3_stmt* known = statements.value(sql))
        return known;
    sqlite3_stmt* statement = nullptr;
    if (database &&
        note(sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr)) == SQLITE_OK)
        statements.insert(sql, statement);
    return statement;
}

int Store::note(int result) {
    const int kind = result & 0xff;
    const bool hasRead = kind == SQLITE_ROW || kind == SQLITE_DONE;
    if (kind == SQLITE_BUSY)
        wait.NoteHeld();
    else if (hasRead)
        wait.NoteRead();
    // A plain error is one of the text of a statement: the file no longer has the tables that it speaks of.
    if (kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_ERROR)
        doubtful = true;
    if (kind == SQLITE_OK || hasRead || kind == SQLITE_CONSTRAINT)
        return result;
    if (turn != Turn::None)
        turn = Turn::Spoilt;
    problem = IsHeld() ? u"another program holds it"_s : QString::fromLatin1(sqlite3_errstr(kind));
    return result;
}

Statement::Statement(const char* sql) : statement(Store::Instance().prepare(sql)) {}

Statement::~Statement() {
    sqlite3_reset(statement);
    if (statement)
        sqlite3_clear_bindings(statement);
}

Statement& Statement::operator<<(std::int64_t number) {
    sqlite3_bind_int64(statement, ++bound, number);
    return *this;
}

Statement& Statement::operator<<(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    sqlite3_bind_text(statement, ++bound, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
    return *this;
}

Statement& Statement::operator<<(const QByteArray& bytes) {
    // An empty array has an address as well, so this never binds a NULL.
    sqlite3_bind_blob(statement, ++bound, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
    return *this;
}

bool Statement::Next() {
    return statement && Store::Instance().note(sqlite3_step(statement)) == SQLITE_ROW;
}

bool Statement::Run() {
    const bool done = statement && Store::Instance().note(sqlite3_step(statement)) == SQLITE_DONE;
    if (done && sqlite3_stmt_readonly(statement) == 0)
        Store::Instance().wait.NoteWritten();
    return done;
}

int Statement::Changes() const {
    return sqlite3_changes(sqlite3_db_handle(statement));
}

std::int64_t Statement::Integer(int column) const {
    return sqlite3_column_int64(statement, column);
}

QString Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
}

QByteArray Statement::Bytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    return QByteArray(bytes, sqlite3_column_bytes(statement, column));
}
} // namespace Registry
