// Puts right what a device left that was stopped or killed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/log_state.h"

#include "base/error.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"
#include "device/jobs/device_steps.h"
#include "device/jobs/log_rows.h"
#include "device/jobs/state_files.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace quelm::device {
namespace {

namespace fs = std::filesystem;

std::vector<int> numbersIn(DeviceDatabase& database, std::string_view text)
{
    auto select = database.statement(text);
    std::vector<int> numbers;
    while (select.step())
        numbers.push_back(static_cast<int>(select.number(0)));
    return numbers;
}

/// The number behind the highest of a table and of what the files bear.
int numberBehind(DeviceDatabase& database, std::string_view highestOfTable, int highestOfFiles)
{
    auto select = database.statement(highestOfTable);
    select.step();
    const auto number = std::max<std::int64_t>(select.number(0), highestOfFiles) + 1;
    if (number < 1 || number > INT_MAX)
        database.failDamaged();
    return static_cast<int>(number);
}

/// The files of calls, as far as they can be listed.
std::vector<fs::path> incomingCalls(const StateFolder& folder) noexcept
{
    std::vector<fs::path> found;
    try {
        for (const auto& entry : fs::directory_iterator(folder.incoming()))
            if (StateFolder::callOf(entry.path()) != 0)
                found.push_back(entry.path());
    } catch (const std::exception&) {
        found.clear(); // the next start lists them
    }
    return found;
}

} // namespace

void LogState::recover()
{
    database.guarded([this] {
        const auto unknown = unknownJobs();
        kept = keptNumbers(folder);
        tellOfLoss();
        setJobsAside(unknown);
        const auto calls = selectCalls(database, "state = 'calling' AND ?1 = ?2", 0, 0);
        if (!calls.empty())
            database.change([&] {
                for (const CallRecord& call : calls)
                    breakOff(call);
            });
        // Of no call that is known.
        if (!numbersIn(database, "SELECT 1 FROM recipient WHERE state = 'calling' LIMIT 1").empty())
            database.change([this] {
                database.statement("UPDATE recipient SET state = 'waiting' WHERE state = 'calling'").step();
            });
        recoverJobs();
    });
    tidy();
}

/// Numbers are in the database before they are in files.
void LogState::tellOfLoss()
{
    if (database.isNew() && (kept.job > 0 || kept.call > 0))
        log(Severity::warning,
            localized("device.db was missing or empty; the device calls nobody for the jobs "
                      "that it took before, and goes on with the next number"));
    const bool isOlder =
        !numbersIn(database, "SELECT 1 WHERE " + std::to_string(kept.job) +
                                 " > (SELECT coalesce(max(number), 0) FROM job) OR " +
                                 std::to_string(kept.call) + " > (SELECT coalesce(max(number), 0) FROM call)")
             .empty();
    if (isOlder &&
        !numbersIn(database, "SELECT 1 FROM job WHERE state IN('received', 'calling') LIMIT 1").empty())
        log(Severity::warning,
            localized("device.db is older than the files beside it; whoever waits in it is "
                      "called, also if that was done before"));
}

/// Removes jobs that are not in the database because their senders got no word for them yet; the others that
/// are not there are of a newer database than this, and nobody may lose them.
std::vector<int> LogState::unknownJobs()
{
    std::vector<int> unknown;
    for (const int job : keptJobs(folder)) {
        const fs::path path = folder.jobFile(job).parent_path();
        std::error_code error;
        if (!numbersIn(database,
                       "SELECT 1 FROM job WHERE state <> 'refused' AND number = " + std::to_string(job))
                 .empty()) {
            unmark(job);
        } else if (isFile(folder.halfTakenMark(job)) || fs::is_empty(path, error)) {
            removeQuietly(folder.jobFile(job)); // ahead of its mark
            removeQuietly(path);
        } else {
            unknown.push_back(job);
        }
    }
    return unknown;
}

void LogState::setJobsAside(const std::vector<int>& jobs)
{
    constexpr int mostLines = 10;
    int lines = 0;
    for (const int job : jobs)
        try {
            const fs::path aside = setAside(folder.jobFile(job).parent_path(), folder.unknown());
            if (++lines <= mostLines)
                // Translators: a job's number, and what its folder below "unknown" is called now.
                log(Severity::warning,
                    localized("job folder %d is not in device.db; it was moved to unknown/%s", job,
                              oneLine(aside.filename())));
        } catch (const Error& error) {
            // They stay where they are; no job gets their numbers.
            log(Severity::warning, error.what());
            return;
        }
    if (const int more = lines - mostLines; more > 0)
        log(Severity::warning,
            localizedCount("%d more job folder is not in device.db; it was moved to unknown/",
                           "%d more job folders are not in device.db; they were moved to unknown/",
                           static_cast<unsigned long>(more), more));
}

int LogState::nextJob()
{
    int job = numberBehind(database, "SELECT coalesce(max(number), 0) FROM job", kept.job);
    std::error_code error;
    while (fs::exists(fs::symlink_status(folder.jobFile(job).parent_path(), error)))
        ++job; // somebody made it while the device runs
    return job;
}

int LogState::nextCall()
{
    return numberBehind(database, "SELECT coalesce(max(number), 0) FROM call", kept.call);
}

void LogState::unmark(int job) noexcept
{
    try {
        const fs::path mark = folder.halfTakenMark(job);
        if (!isFile(mark))
            return;
        removeQuietly(mark);
        synchroniseFolder(mark.parent_path());
    } catch (const std::exception&) {
        isTidy = false; // the next start does it
    }
}

/// Somebody took files away.
void LogState::recoverJobs()
{
    const auto gone = localized("its file is gone from the device's state");
    for (const int job :
         numbersIn(database, "SELECT number FROM job WHERE state = 'received' ORDER BY number"))
        if (!isFile(folder.jobFile(job)))
            database.change([&] {
                auto change =
                    database.statement("UPDATE job SET state = 'failed', problem = ?1 WHERE number = ?2");
                Parameters(change).bytes(gone).number(job);
                change.step();
                auto end = database.statement("UPDATE recipient SET state = 'failed' WHERE job = ?1");
                end.bindNumber(1, job);
                end.step();
                forgetCard(job);
            });
    for (const int job :
         numbersIn(database, "SELECT number FROM job WHERE state = 'calling' ORDER BY number")) {
        if (isFile(folder.pagesFile(job)))
            continue;
        database.change([&] {
            if (isFile(folder.jobFile(job))) {
                auto change = database.statement("UPDATE job SET state = 'received' WHERE number = ?1");
                change.bindNumber(1, job);
                change.step();
                auto wait = database.statement("UPDATE recipient SET next_attempt = 0 WHERE job = ?1");
                wait.bindNumber(1, job);
                wait.step();
                return;
            }
            auto change =
                database.statement("UPDATE recipient SET state = 'failed', result = ?1 WHERE job = ?2 AND "
                                   "state = 'waiting'");
            Parameters(change).bytes(gone).number(job);
            change.step();
            finishIfDone(job);
        });
    }
}

void LogState::breakOff(const CallRecord& call)
{
    CallRecord broken = call;
    broken.state = CallState::brokenOff;
    updateCall(database, broken);
    // Its next attempt is when this one was: it is due.
    auto change =
        database.statement("UPDATE recipient SET state = 'waiting', attempts = ?1 WHERE job = ?2 AND "
                           "position = ?3 AND state = 'calling'");
    Parameters(change).number(call.attempt - 1).number(call.job).number(call.position);
    change.step();
}

bool LogState::finishIfDone(int job)
{
    auto change =
        database.statement("UPDATE job SET state = 'done' WHERE number = ?1 AND state = 'calling' AND "
                           "NOT EXISTS(SELECT 1 FROM recipient WHERE recipient.job = ?1 AND "
                           "recipient.state IN('waiting', 'calling'))");
    change.bindNumber(1, job);
    change.step();
    const bool isDone = !numbersIn(database, "SELECT 1 WHERE changes() > 0").empty();
    if (isDone)
        forgetCard(job);
    return isDone;
}

void LogState::forgetCard(int job)
{
    auto change = database.statement("UPDATE job SET card = x'', drops_file = 1 WHERE number = ?1 AND "
                                     "(card <> x'' OR drops_file = 2) AND state IN('done', 'failed')");
    change.bindNumber(1, job);
    change.step();
    isTidy = false;
}

void LogState::tidy() noexcept
{
    if (isTidy)
        return;
    std::string problem;
    const auto attempt = [&problem](const auto& action) {
        try {
            action();
        } catch (const std::exception& error) {
            problem = error.what();
        }
    };
    for (const fs::path& file : incomingCalls(folder))
        attempt([&] { settleIncoming(file); });
    attempt([&] { dropJobFiles(); });
    isTidy = problem.empty();
    if (!isTidy && !toldOfTrouble)
        log(Severity::warning, problem);
    toldOfTrouble = !isTidy;
}

/// Moves what a call's receiver kept to its place; removes it when the call did not end, and sets it aside
/// when no such call is known.
void LogState::settleIncoming(const fs::path& file)
{
    const auto calls = database.guarded(
        [&] { return selectCalls(database, "number = ?1 AND ?2 = 0", StateFolder::callOf(file), 0); });
    if (calls.empty()) {
        const fs::path aside = setAside(file, folder.unknown());
        // Translators: a file's name, and the name that it has below "unknown" now.
        log(Severity::warning, localized("%s is of no call in device.db; it was moved to unknown/%s",
                                         oneLine(file.filename()), oneLine(aside.filename())));
        return;
    }
    if (calls.front().state == CallState::calling)
        return;
    if (calls.front().state == CallState::ended && !calls.front().receiver.empty())
        moveDurably(file, folder.receivedCall(calls.front().receiver, calls.front().number));
    else
        removeQuietly(file);
}

void LogState::dropJobFiles()
{
    database.guarded([this] {
        for (const int job : numbersIn(database, "SELECT number FROM job WHERE drops_file = 1")) {
            beforeDeviceStep("remove a job's file");
            removeQuietly(folder.jobFile(job));
            synchroniseFolder(folder.jobFile(job).parent_path());
            database.change([&] {
                auto change = database.statement("UPDATE job SET drops_file = 0 WHERE number = ?1");
                change.bindNumber(1, job);
                change.step();
            });
        }
    });
}

} // namespace quelm::device
