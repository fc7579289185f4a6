// Enters what happens to jobs, recipients and calls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/device_log.h"

#include "base/error.h"
#include "device/jobs/device_steps.h"
#include "device/jobs/dial_keys.h"
#include "device/jobs/log_rows.h"
#include "device/jobs/log_state.h"
#include "device/jobs/state_files.h"

#include <climits>
#include <cstdio>
#include <filesystem>

namespace quelm::device {
namespace {

namespace fs = std::filesystem;

/// One line of what is wrong with a job that is refused.
std::string problemOf(const ReceivedJob& reading)
{
    return reading.refusals.empty() ? std::string() : reading.refusals.front().text;
}

void setState(DeviceDatabase& database, int job, JobState state)
{
    auto change = database.statement("UPDATE job SET state = ?1 WHERE number = ?2");
    Parameters(change).text(wordOf(state)).number(job);
    change.step();
}

int countOf(DeviceDatabase& database, std::string_view text)
{
    auto select = database.statement(text);
    return select.step() ? static_cast<int>(select.number(0)) : 0;
}

std::optional<Moment> momentFrom(DeviceDatabase& database, std::string_view text)
{
    auto select = database.statement(text);
    return select.step() ? momentOf(select.number(0)) : std::nullopt;
}

} // namespace

struct DeviceLog::State : LogState {
    using LogState::LogState;
};

DeviceLog::DeviceLog(const StateFolder& folder) : state_(std::make_unique<State>(folder))
{
    state_->recover();
}

DeviceLog::~DeviceLog() = default;

int DeviceLog::addJob(const ReceivedJob& reading, const std::string& spooled, const std::string& from,
                      Moment now)
{
    JobRecord job;
    job.state = reading.isRefused() ? JobState::refused : JobState::received;
    job.receivedAt = now;
    job.from = from;
    job.reading = reading;
    job.problem = problemOf(reading);
    std::vector<std::string> keys;
    for (const Destination& destination : reading.destinations)
        if (!reading.isRefused())
            keys.push_back(keysFor(destination.number));
    if (!reading.isRefused()) {
        (void)keysFor(reading.creditCard);
        synchroniseFile(spooled);
    }

    const std::lock_guard lock(state_->mutex);
    fs::path moved;
    try {
        state_->database.change([&] {
            job.number = state_->nextJob();
            insertJob(state_->database, job, keys);
            if (reading.isRefused())
                return;
            moved = state_->folder.jobFile(job.number);
            makeStateFolder(moved.parent_path());
            makeStateFile(state_->folder.halfTakenMark(job.number));
            moveDurably(spooled, moved);
        });
    } catch (...) {
        if (!moved.empty() && (!isFile(moved) || std::rename(moved.c_str(), spooled.c_str()) == 0))
            removeQuietly(moved.parent_path());
        throw;
    }
    if (reading.isRefused())
        removeQuietly(spooled);
    else
        state_->unmark(job.number);
    return job.number;
}

std::optional<JobRecord> DeviceLog::nextToRender(int after)
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([&]() -> std::optional<JobRecord> {
        auto select = state_->database.statement(
            "SELECT number FROM job WHERE state = 'received' AND number > ?1 ORDER BY number LIMIT 1");
        select.bindNumber(1, after);
        if (!select.step())
            return std::nullopt;
        return selectJob(state_->database, static_cast<int>(select.number(0)));
    });
}

void DeviceLog::setRendered(int job, int pages, Moment now)
{
    const fs::path file = state_->folder.pagesFile(job);
    synchroniseFile(file);
    synchroniseFolder(file.parent_path());
    const std::lock_guard lock(state_->mutex);
    state_->database.change([&] {
        auto change =
            state_->database.statement("UPDATE job SET state = 'calling', pages = ?1 WHERE number = ?2");
        Parameters(change).number(pages).number(job);
        change.step();
        auto begin = state_->database.statement("UPDATE recipient SET next_attempt = ?1 WHERE job = ?2 AND "
                                                "state = 'waiting'");
        Parameters(begin).number(milliseconds(now)).number(job);
        begin.step();
        state_->finishIfDone(job);
    });
}

void DeviceLog::setPrinted(int job, int pages)
{
    const fs::path file = state_->folder.printedFile(job);
    synchroniseFile(file);
    synchroniseFolder(file.parent_path());
    const std::lock_guard lock(state_->mutex);
    state_->database.change([&] {
        auto change = state_->database.statement("UPDATE job SET pages = ?1 WHERE number = ?2");
        Parameters(change).number(pages).number(job);
        change.step();
        setState(state_->database, job, JobState::printed);
    });
}

void DeviceLog::setFailed(int job, const std::string& problem)
{
    const std::lock_guard lock(state_->mutex);
    state_->database.change([&] {
        auto change = state_->database.statement("UPDATE job SET problem = ?1 WHERE number = ?2");
        Parameters(change).bytes(problem).number(job);
        change.step();
        setState(state_->database, job, JobState::failed);
        auto end = state_->database.statement("UPDATE recipient SET state = 'failed' WHERE job = ?1");
        end.bindNumber(1, job);
        end.step();
        state_->forgetCard(job);
    });
    state_->tidy();
}

std::optional<DueCall> DeviceLog::beginCall(Moment now)
{
    const std::lock_guard lock(state_->mutex);
    DeviceDatabase& database = state_->database;
    const auto find = [&](DueCall& due) {
        auto select = database.statement(
            "SELECT job, position FROM recipient WHERE state = 'waiting' AND next_attempt > 0 AND "
            "next_attempt <= ?1 AND NOT EXISTS(SELECT 1 FROM recipient AS called WHERE called.state = "
            "'calling' "
            "AND called.keys = recipient.keys) ORDER BY job, position LIMIT 1");
        select.bindNumber(1, milliseconds(now));
        if (!select.step())
            return false;
        due.call.job = static_cast<int>(select.number(0));
        due.call.position = static_cast<int>(select.number(1));
        return true;
    };
    DueCall due;
    if (!database.guarded([&] { return find(due); }))
        return std::nullopt;
    database.change([&] {
        auto select =
            database.statement("SELECT r.attempts, r.keys, r.mailbox, j.card, j.pages FROM recipient AS r "
                               "JOIN job AS j ON j.number = r.job WHERE r.job = ?1 AND r.position = ?2");
        Parameters(select).number(due.call.job).number(due.call.position);
        if (!select.step())
            database.failDamaged();
        due.call.attempt = static_cast<int>(select.number(0)) + 1;
        due.keys = select.bytes(1);
        due.mailbox = select.bytes(2);
        due.card = select.bytes(3);
        due.pages = static_cast<int>(select.number(4));
        select.reset();
        due.speed = selectSpeed(database, due.call.job);
        due.call.begunAt = now;
        due.call.number = state_->nextCall();
        insertCall(database, due.call);
        auto change =
            database.statement("UPDATE recipient SET state = 'calling', attempts = ?1 WHERE job = ?2 AND "
                               "position = ?3");
        Parameters(change).number(due.call.attempt).number(due.call.job).number(due.call.position);
        change.step();
    });
    return due;
}

bool DeviceLog::endCall(const CallRecord& call, bool sent, std::optional<Moment> again)
{
    const fs::path kept = state_->folder.incomingCall(call.number);
    const std::lock_guard lock(state_->mutex);
    CallRecord ended = call;
    ended.state = CallState::ended;
    if (isFile(kept) && !call.receiver.empty()) {
        (void)state_->folder.receivedCall(call.receiver, call.number);
        synchroniseFile(kept);
        synchroniseFolder(kept.parent_path());
        state_->isTidy = false;
    }
    const RecipientState next = sent    ? RecipientState::sent
                                : again ? RecipientState::waiting
                                        : RecipientState::failed;
    bool isDone = false;
    state_->database.change([&] {
        updateCall(state_->database, ended);
        auto change = state_->database.statement(
            "UPDATE recipient SET state = ?1, next_attempt = ?2, result = ?3, code = ?4, pages_sent = ?5, "
            "last_call_at = ?6, last_duration = ?7 WHERE job = ?8 AND position = ?9");
        Parameters(change)
            .text(wordOf(next))
            .number(next == RecipientState::waiting ? milliseconds(*again) : 0)
            .bytes(ended.result)
            .number(ended.code)
            .number(ended.pagesSent)
            .number(milliseconds(ended.begunAt))
            .number(ended.duration.count())
            .number(ended.job)
            .number(ended.position);
        change.step();
        isDone = state_->finishIfDone(ended.job);
    });
    state_->tidy();
    return isDone;
}

void DeviceLog::breakOffCall(int call)
{
    const std::lock_guard lock(state_->mutex);
    state_->database.change([&] {
        for (const CallRecord& record :
             selectCalls(state_->database, "number = ?1 AND state = 'calling' AND ?2 = 0", call, 0))
            state_->breakOff(record);
    });
    state_->isTidy = false;
    state_->tidy();
}

std::vector<int> DeviceLog::missingReports()
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([this] {
        auto select =
            state_->database.statement("SELECT number FROM job WHERE state IN('done', 'failed') AND "
                                       "confirmation = 1 AND has_report = 0 ORDER BY number");
        std::vector<int> jobs;
        while (select.step())
            jobs.push_back(static_cast<int>(select.number(0)));
        return jobs;
    });
}

void DeviceLog::setReported(int job)
{
    const std::lock_guard lock(state_->mutex);
    state_->database.change([&] {
        auto change = state_->database.statement("UPDATE job SET has_report = 1 WHERE number = ?1");
        change.bindNumber(1, job);
        change.step();
    });
}

DeviceLoad DeviceLog::load()
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([this] {
        DeviceDatabase& database = state_->database;
        DeviceLoad load;
        load.toRender = countOf(database, "SELECT count(*) FROM job WHERE state = 'received'");
        load.waitingJobs =
            load.toRender + countOf(database, "SELECT count(*) FROM job WHERE state = 'calling'");
        load.runningCalls = countOf(database, "SELECT count(*) FROM call WHERE state = 'calling'");
        load.nextAttempt = momentFrom(
            database, "SELECT min(next_attempt) FROM recipient WHERE state = 'waiting' AND next_attempt > 0");
        return load;
    });
}

std::optional<JobRecord> DeviceLog::job(int number)
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([&] { return selectJob(state_->database, number); });
}

std::vector<JobRecord> DeviceLog::jobs(int before, int most)
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([&] {
        auto select = state_->database.statement(
            "SELECT number FROM job WHERE number < ?1 ORDER BY number DESC LIMIT ?2");
        Parameters(select).number(before > 0 ? before : std::int64_t{INT_MAX} + 1).number(most);
        std::vector<JobRecord> jobs;
        while (select.step())
            if (auto job = selectJob(state_->database, static_cast<int>(select.number(0))))
                jobs.push_back(std::move(*job));
        return jobs;
    });
}

std::vector<CallRecord> DeviceLog::calls(int before, int most)
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([&] {
        return selectCalls(state_->database, "?1 = 0 OR number < ?1 ORDER BY number DESC LIMIT ?2", before,
                           most);
    });
}

std::vector<CallRecord> DeviceLog::callsOf(int job)
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded(
        [&] { return selectCalls(state_->database, "job = ?1 AND ?2 = 0 ORDER BY number", job, 0); });
}

std::optional<Moment> DeviceLog::latestMoment()
{
    const std::lock_guard lock(state_->mutex);
    return state_->database.guarded([this] {
        return momentFrom(state_->database, "SELECT max(coalesce((SELECT max(received_at) FROM job), 0), "
                                            "coalesce((SELECT max(begun_at + duration) FROM call), 0))");
    });
}

} // namespace quelm::device
