// Another program at the registry's file, which must exist: it holds it, or does to it what no program of ours would.
#pragma once

#include "platform/registry/Registry.h"

#include <sqlite3.h>

class OtherProgram {
public:
    OtherProgram() { sqlite3_open(Registry::StorePath().toUtf8().constData(), &database); }
    ~OtherProgram() { sqlite3_close(database); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    bool Does(const char* sql) const { return sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }

private:
    sqlite3* database = nullptr;
};
