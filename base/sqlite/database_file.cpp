// Opens databases that must not lose anything, and words their failures.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/sqlite/database_file.h"

#include "base/system_reason.h"
#include "base/translation.h"

#include <cerrno>
#include <csignal>

namespace quelm::sqlite {

Database openDurable(const std::string& path)
{
    struct sigaction present = {};
    if (::sigaction(SIGXFSZ, nullptr, &present) == 0 && present.sa_handler == SIG_DFL)
        std::signal(SIGXFSZ, SIG_IGN);
    constexpr int patienceMilliseconds = 5000;
    Database database = open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW);
    sqlite3_busy_timeout(database.get(), patienceMilliseconds);
    sqlite3_db_config(database.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // Durable with the end of the transaction included.
    run(database, "PRAGMA synchronous=EXTRA; PRAGMA secure_delete=ON");
    return database;
}

void inTransaction(const Database& database, const std::function<void()>& change)
{
    run(database, "BEGIN IMMEDIATE");
    try {
        change();
        run(database, "COMMIT");
    } catch (...) {
        if (sqlite3_get_autocommit(database.get()) == 0)
            sqlite3_exec(database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

std::int64_t pragma(const Database& database, const char* text)
{
    Statement statement(database, text);
    return statement.step() ? statement.number(0) : 0;
}

std::vector<std::string> schemaOf(const Database& database)
{
    Statement schema(database, "SELECT sql FROM sqlite_schema WHERE name NOT GLOB 'sqlite_*' ORDER BY rowid");
    std::vector<std::string> found;
    while (schema.step())
        found.push_back(schema.bytes(0));
    return found;
}

std::string reasonOf(const Failure& failure, const std::string& damaged)
{
    switch (failure.primaryCode()) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return localized("another program is writing to it; try again in a moment");
    case SQLITE_FULL:
        return systemReason(ENOSPC);
    case SQLITE_READONLY:
        return systemReason(EACCES);
    case SQLITE_CANTOPEN:
        return systemReason(failure.systemError != 0 ? failure.systemError : EACCES);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return damaged;
    case SQLITE_IOERR:
        return failure.systemError != 0
                   ? systemReason(failure.systemError)
                   : localized("it could not be written; make room on the disk and try again");
    default:
        return failure.text;
    }
}

} // namespace quelm::sqlite
