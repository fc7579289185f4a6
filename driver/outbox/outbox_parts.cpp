// Changes jobs in the log, and lets their files follow.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_parts.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/temporary_file.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_steps.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

constexpr int usualKeepDays = 30;
constexpr std::time_t day = 24 * 3600;

bool hasEnded(OutboxState state)
{
    return state == OutboxState::handedOver || state == OutboxState::cancelled;
}

} // namespace

LogRow OutboxParts::change(int number, const std::function<void(LogRow&)>& action)
{
    LogRow row;
    log.transaction([&] {
        row = log.find(number);
        action(row);
        log.update(row);
    });
    return row;
}

FileHandle OutboxParts::lock(int number)
{
    // What is not in the log has no files to look for.
    static_cast<void>(log.find(number));
    FileHandle lock;
    try {
        lock = folder.job(number).lock();
    } catch (const Error& error) {
        throw JobDamaged(error.what());
    }
    if (!lock.isOpen())
        throw JobUnavailable(localized(
            "job %d of the outbox is being handed over by another program; wait for its end", number));
    return lock;
}

void OutboxParts::end(int number, const std::function<void(LogRow&)>& action)
{
    LogRow row;
    bool isKept = true;
    log.transaction([&] {
        row = log.find(number);
        action(row);
        isKept = !((settings.keepDays <= 0 && hasEnded(row.state)) ||
                   (row.state == OutboxState::failed && row.before == OutboxState::handingOver &&
                    !row.isUnattended));
        if (isKept)
            log.update(row);
        else
            log.remove(number);
    });
    if (isKept) {
        tidy(row);
    } else {
        beforeOutboxStep("remove the job's files");
        folder.removeJob(number);
    }
}

void OutboxParts::forget(int number) noexcept
{
    // First, for this works on a full disk: a row without files, of a job that was not begun, is none.
    folder.removeJob(number);
    try {
        log.transaction([&] { log.remove(number); });
    } catch (const std::exception&) {
        return; // the next sweep does it
    }
}

void OutboxParts::tidy(const LogRow& row)
{
    const bool cardGoes = row.holdsCard && hasEnded(row.state);
    const bool streamGoes = row.holdsStream && !row.hasStream;
    if (!cardGoes && !streamGoes)
        return;
    const JobFolder files = folder.job(row.number);
    beforeOutboxStep("remove the card");
    if (cardGoes)
        files.remove("card");
    beforeOutboxStep("remove the stream");
    if (streamGoes)
        files.remove("stream");
    change(row.number, [&](LogRow& now) {
        now.holdsCard = now.holdsCard && !cardGoes;
        now.holdsStream = now.holdsStream && !streamGoes;
    });
}

bool OutboxParts::isExpired(const LogRow& row, std::optional<std::time_t> moment) const
{
    if (row.state == OutboxState::waiting || row.state == OutboxState::handingOver || row.ended == 0)
        return false;
    if (settings.keepDays <= 0 && hasEnded(row.state))
        return true;
    if (!moment)
        return false;
    const int days = settings.keepDays > 0 ? settings.keepDays : usualKeepDays;
    // A job that its queue holds is looked after until it went out.
    return *moment - std::max(row.ended, row.isHeld ? row.due : 0) > days * day;
}

void OutboxParts::sweepJob(const LogRow& row, std::optional<std::time_t> moment)
{
    if (!isExpired(row, moment)) {
        if ((row.holdsCard && hasEnded(row.state)) || (row.holdsStream && !row.hasStream))
            tidy(row);
        return;
    }
    FileHandle held;
    try {
        held = lock(row.number);
    } catch (const JobDamaged&) {
        held = {}; // nobody works with it, and its row is all there is
    }
    log.transaction([&] {
        if (isExpired(log.find(row.number), moment))
            log.remove(row.number);
    });
}

void OutboxParts::sweepJobs(const std::vector<LogRow>& rows, std::optional<std::time_t> moment)
{
    for (const LogRow& row : rows) {
        try {
            sweepJob(row, moment);
        } catch (const Error&) {
            continue; // whoever works with it keeps it for this time, and so does a full disk
        }
    }
}

void OutboxParts::sweepOld()
{
    if (isClockFixed())
        return;
    try {
        if (const auto last = log.lookAtClock(currentTime())) {
            sweepJobs(log.toSweep(*last - day), last); // none is kept for less than a day
            sweepStrays({});
        }
    } catch (const Error&) {
        return; // the next time
    }
}

void OutboxParts::sweep()
{
    folder.sweepEntries();
    const std::vector<LogRow> rows =
        log.toSweep(settings.keepDays > 0 ? 0 : std::numeric_limits<std::int64_t>::max());
    sweepJobs(rows, std::nullopt);
    try {
        sweepStrays(rows);
    } catch (const Error&) {
        return; // a full disk, or a busy one: the next time
    }
}

void OutboxParts::sweepStrays(const std::vector<LogRow>& rows)
{
    const auto there = folder.jobs();
    for (const LogRow& row : rows)
        if (row.state == OutboxState::handingOver && !row.isBegun && !there.contains(row.number))
            log.transaction([&] { log.remove(row.number); });
    const auto isStray = [](const std::set<std::int64_t>& numbers, int number) {
        return !numbers.contains(number);
    };
    if (const auto known = log.numbers();
        std::ranges::none_of(there, [&](int number) { return isStray(known, number); }))
        return;
    // A job that is being put in has its folder before its row is durable; but then the log is taken.
    log.transaction([&] {
        const auto known = log.numbers();
        for (const int number : there)
            if (isStray(known, number))
                folder.removeJob(number);
    });
}

OutboxJob OutboxParts::jobOf(const LogRow& row) const
{
    OutboxJob job = row;
    job.place = oneLine(job.place);
    job.note = oneLine(job.note);
    if (!row.document.empty())
        job.documentPath =
            folder.path() + "/jobs/" + std::to_string(row.number) + "/document/" + row.document;
    return job;
}

std::string newToken()
{
    // The name of a temporary file is made of such a text.
    const std::string name = temporaryName();
    const auto begin = name.find('-') + 1;
    return name.substr(begin, name.find('.', begin) - begin);
}

} // namespace quelm
