// Opens, checks, reads and writes the outbox's log.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_log.h"

#include "base/error.h"
#include "base/log.h"
#include "base/sqlite/database_file.h"
#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_steps.h"

#include <climits>
#include <string_view>

namespace quelm {
namespace {

// What makes an SQLite file an outbox's log: its application number, its version and its two tables.
constexpr std::int64_t logApplication = 0x51584F42; // "QXOB"
constexpr std::int64_t logVersion = 1;
constexpr const char* markLog = "PRAGMA application_id=0x51584F42; PRAGMA user_version=1";
// When the clock was last looked at to remove what is old: one row.
constexpr const char* sweepTable = "CREATE TABLE sweep(moment INTEGER NOT NULL)";

std::string damagedReason()
{
    return localized(
        "it is damaged; restore it from a copy, or move the outbox's folder away and start anew");
}

} // namespace

template <class Action>
auto OutboxLog::guarded(Action action)
{
    try {
        return action();
    } catch (const sqlite::Failure& failure) {
        failOutbox(path_, sqlite::reasonOf(failure, damagedReason()));
    }
}

OutboxLog::OutboxLog(const OutboxFolder& folder) : path_(folder.path() + "/log.db")
{
    // SQLite would make it for everybody to read.
    folder.requireFile("log.db");
    guarded([this] { connect(); });
}

void OutboxLog::connect()
{
    database_ = sqlite::openDurable(path_);
    if (sqlite::schemaOf(database_).empty())
        prepareFile();
    if (sqlite::pragma(database_, "PRAGMA application_id") != logApplication)
        failOutbox(path_, localized("it is no log of an outbox; move it away"));
    if (sqlite::pragma(database_, "PRAGMA user_version") > logVersion)
        failOutbox(path_, localized("it was written by a newer version of this program; update the program"));
    sqlite::Statement check(database_, "PRAGMA quick_check(1)");
    if (sqlite::schemaOf(database_) != std::vector<std::string>{rowTable, sweepTable} || !check.step() ||
        check.bytes(0) != "ok")
        failOutbox(path_, damagedReason());
}

/// Makes an empty file a log, once, however many programs find it empty at a time.
void OutboxLog::prepareFile()
{
    sqlite::inTransaction(database_, [this] {
        const bool isNew = sqlite::schemaOf(database_).empty() &&
                           sqlite::pragma(database_, "PRAGMA application_id") == 0 &&
                           sqlite::pragma(database_, "PRAGMA user_version") == 0;
        if (!isNew)
            return;
        beforeOutboxStep("make the log");
        sqlite::run(database_, markLog);
        sqlite::run(database_, rowTable);
        sqlite::run(database_, sweepTable);
    });
}

void OutboxLog::transaction(const std::function<void()>& change)
{
    guarded([&] {
        sqlite::inTransaction(database_, [&] {
            change();
            beforeOutboxStep("commit");
        });
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
