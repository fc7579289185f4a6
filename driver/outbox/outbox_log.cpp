// Opens, checks, reads and writes the outbox's log.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_log.h"

#include "base/error.h"
#include "base/log.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_steps.h"

#include <climits>
#include <csignal>
#include <string_view>

namespace quelm {
namespace {

// What makes an SQLite file an outbox's log: its application number, its version and its two tables.
constexpr std::int64_t logApplication = 0x51584F42; // "QXOB"
constexpr std::int64_t logVersion = 1;
constexpr const char* markLog = "PRAGMA application_id=0x51584F42; PRAGMA user_version=1";
// When the clock was last looked at to remove what is old: one row.
constexpr const char* sweepTable = "CREATE TABLE sweep(moment INTEGER NOT NULL)";
constexpr int patienceMilliseconds = 5000;

std::string damagedReason()
{
    return localized(
        "it is damaged; restore it from a copy, or move the outbox's folder away and start anew");
}

std::string reasonOf(const sqlite::Failure& failure)
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
        return damagedReason();
    case SQLITE_IOERR:
        return failure.systemError != 0
                   ? systemReason(failure.systemError)
                   : localized("it could not be written; make room on the disk and try again");
    default:
        return failure.text;
    }
}

std::int64_t pragma(const sqlite::Database& database, const char* text)
{
    sqlite::Statement statement(database, text);
    return statement.step() ? statement.number(0) : 0;
}

/// The tables, indices, views and triggers that are not SQLite's own.
std::vector<std::string> schemaOf(const sqlite::Database& database)
{
    sqlite::Statement schema(database, "SELECT sql FROM sqlite_schema WHERE name NOT GLOB 'sqlite_*'");
    std::vector<std::string> found;
    while (schema.step())
        found.push_back(schema.bytes(0));
    return found;
}

} // namespace

template <class Action>
auto OutboxLog::guarded(Action action)
{
    try {
        return action();
    } catch (const sqlite::Failure& failure) {
        failOutbox(path_, reasonOf(failure));
    }
}

OutboxLog::OutboxLog(const OutboxFolder& folder) : path_(folder.path() + "/log.db")
{
    // A file size limit is to be reported like a full disk, not to end the program.
    struct sigaction present = {};
    if (::sigaction(SIGXFSZ, nullptr, &present) == 0 && present.sa_handler == SIG_DFL)
        std::signal(SIGXFSZ, SIG_IGN);
    // SQLite would make it for everybody to read.
    folder.requireFile("log.db");
    guarded([this] { connect(); });
}

void OutboxLog::connect()
{
    database_ = sqlite::open(path_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW);
    sqlite3_busy_timeout(database_.get(), patienceMilliseconds);
    sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // Durable through a power cut, the end of the transaction included.
    sqlite::run(database_, "PRAGMA synchronous=EXTRA; PRAGMA secure_delete=ON");
    if (schemaOf(database_).empty())
        prepareFile();
    if (pragma(database_, "PRAGMA application_id") != logApplication)
        failOutbox(path_, localized("it is no log of an outbox; move it away"));
    if (pragma(database_, "PRAGMA user_version") > logVersion)
        failOutbox(path_, localized("it was written by a newer version of this program; update the program"));
    sqlite::Statement check(database_, "PRAGMA quick_check(1)");
    if (schemaOf(database_) != std::vector<std::string>{rowTable, sweepTable} || !check.step() ||
        check.bytes(0) != "ok")
        failOutbox(path_, damagedReason());
}

/// Makes an empty file a log, once, however many programs find it empty at a time.
void OutboxLog::prepareFile()
{
    sqlite::run(database_, "BEGIN IMMEDIATE");
    try {
        const bool isNew = schemaOf(database_).empty() && pragma(database_, "PRAGMA application_id") == 0 &&
                           pragma(database_, "PRAGMA user_version") == 0;
        if (isNew) {
            beforeOutboxStep("make the log");
            sqlite::run(database_, markLog);
            sqlite::run(database_, rowTable);
            sqlite::run(database_, sweepTable);
        }
        sqlite::run(database_, "COMMIT");
    } catch (...) {
        sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void OutboxLog::transaction(const std::function<void()>& change)
{
    guarded([&] {
        sqlite::run(database_, "BEGIN IMMEDIATE");
        try {
            change();
            beforeOutboxStep("commit");
            sqlite::run(database_, "COMMIT");
        } catch (...) {
            if (sqlite3_get_autocommit(database_.get()) == 0)
                sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    });
    beforeOutboxStep("go on behind the commit");
}

int OutboxLog::add(const LogRow& row)
{
    return guarded([&] {
        static const std::string text =
            "INSERT INTO job(" + rowColumns() + ") VALUES(" + rowParameters() + ")";
        sqlite::Statement insertion(database_, text);
        const BoundRow bound(insertion, row);
        insertion.step();
        const auto number = sqlite3_last_insert_rowid(database_.get());
        if (number < 1 || number > INT_MAX)
            failOutbox(path_, localized("it has no numbers left; move the outbox's folder away"));
        return static_cast<int>(number);
    });
}

void OutboxLog::update(const LogRow& row)
{
    guarded([&] {
        static const std::string text = "UPDATE job SET " + rowAssignments() + " WHERE number = ?1";
        sqlite::Statement change(database_, text);
        change.bindNumber(1, row.number);
        const BoundRow bound(change, row);
        change.step();
    });
}

void OutboxLog::remove(int number)
{
    guarded([&] {
        sqlite::Statement removal(database_, "DELETE FROM job WHERE number = ?1");
        removal.bindNumber(1, number);
        removal.step();
    });
}

LogRow OutboxLog::find(int number)
{
    return guarded([&] {
        static const std::string text = "SELECT number, " + rowColumns() + " FROM job WHERE number = ?1";
        sqlite::Statement select(database_, text);
        select.bindNumber(1, number);
        if (!select.step())
            throw JobUnavailable(localized("there is no job %d in the outbox", number));
        auto row = readRow(select);
        if (!row)
            failOutbox(path_, localized("what it says of job %d is damaged", number));
        return *row;
    });
}

std::vector<LogRow> OutboxLog::all() { return select("?1 = ?1 AND ?2 = ?2", {}, 0); }

std::vector<LogRow> OutboxLog::inState(OutboxState state)
{
    return select("state = ?1 AND ?2 = ?2", wordOf(state), 0);
}

std::vector<LogRow> OutboxLog::toSweep(std::time_t moment)
{
    return select(
        "state = ?1 OR (ended > 0 AND ended <= ?2) OR holds_stream <> has_stream OR holds_card <> 0",
        wordOf(OutboxState::handingOver), moment);
}

std::vector<LogRow> OutboxLog::select(const std::string& condition, std::string_view text,
                                      std::int64_t number)
{
    return guarded([&] {
        sqlite::Statement select(database_, "SELECT number, " + rowColumns() + " FROM job WHERE " +
                                                condition + " ORDER BY number");
        select.bindText(1, text);
        select.bindNumber(2, number);
        std::vector<LogRow> rows;
        std::string damaged;
        while (select.step())
            if (auto row = readRow(select))
                rows.push_back(std::move(*row));
            else
                damaged.append(damaged.empty() ? "" : ", ").append(std::to_string(select.number(0)));
        if (!damaged.empty() && !toldOfDamage_)
            log(Severity::warning,
                // Translators: a file, and numbers of jobs.
                localized("the outbox's log %s holds jobs that are damaged and left out: %s", path_,
                          damaged));
        toldOfDamage_ = toldOfDamage_ || !damaged.empty();
        return rows;
    });
}

std::optional<std::time_t> OutboxLog::lookAtClock(std::time_t now)
{
    constexpr std::time_t day = 24 * 3600;
    std::optional<std::time_t> last;
    const auto read = [&] {
        sqlite::Statement select(database_, "SELECT moment FROM sweep");
        last.reset();
        if (select.step())
            last = static_cast<std::time_t>(select.number(0));
        return !last || *last > now || now - day >= *last;
    };
    // Mostly there is nothing to note, and nobody is kept waiting.
    if (!guarded(read))
        return std::nullopt;
    bool isMine = false;
    transaction([&] {
        isMine = read();
        if (!isMine)
            return;
        sqlite::run(database_, "DELETE FROM sweep");
        sqlite::Statement insertion(database_, "INSERT INTO sweep VALUES(?1)");
        insertion.bindNumber(1, now);
        insertion.step();
    });
    return isMine && last && *last <= now ? last : std::nullopt;
}

std::set<std::int64_t> OutboxLog::numbers()
{
    return guarded([&] {
        sqlite::Statement select(database_, "SELECT number FROM job");
        std::set<std::int64_t> numbers;
        while (select.step())
            numbers.insert(select.number(0));
        return numbers;
    });
}

} // namespace quelm
