// Progress and words for the handing over of jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/handing_over.h"

#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/job/say.h"
#include "driver/cli/job/write_document.h"
#include "driver/handover/summary.h"

#include <algorithm>
#include <chrono>

namespace quelm {
namespace {

/// What to say of a job that its destination does not have.
std::string troubleOf(const OutboxJob& job, const HandoverEnd& end)
{
    if (!end.trouble.empty())
        return oneLine(end.trouble);
    // Translators: a job's number and its document.
    return localized("job %d (%s) was not handed over", job.number, shownText(job.title));
}

} // namespace

std::string endOf(const OutboxJob& job, const HandoverEnd& end, std::time_t now,
                  const OutboxSettings& settings)
{
    if (end.state != OutboxState::handedOver)
        return localized("job %d: %s", job.number, troubleOf(job, end));
    SubmissionEnd handed;
    handed.kind = end.isHeld ? SubmissionEnd::Kind::held : SubmissionEnd::Kind::handedOver;
    handed.receipt = end.receipt;
    handed.number = job.number;
    handed.due = job.due;
    return localized("job %d: %s", job.number,
                     endLine(handed, job.target, shownText(job.title), job.recipients.size(), now, settings));
}

void handOverNow(Outbox& outbox, int number, std::time_t now)
{
    const OutboxJob job = outbox.job(number);
    const Interruption interruption;
    ProgressLine progress(localized("Sending the job"));
    Transfer transfer;
    transfer.progress = [&progress](std::uint64_t done, std::uint64_t total) { progress.show(done, total); };
    transfer.cancelled = &Interruption::requested;
    const HandoverEnd end = outbox.handOver(number, now, transfer, true);
    progress.wipe();
    const bool handedOver = end.state == OutboxState::handedOver;
    // The signal that comes next leaves nobody who could tell.
    if (handedOver)
        say(endOf(job, end, now, outbox.settings()));
    else if (Interruption::requested())
        writeUnderProgramName(endOf(job, end, now, outbox.settings()));
    if (!handedOver)
        throw Error(localized("job %d: %s", number, troubleOf(job, end)));
}

std::string plannedHandover(const OutboxJob& job)
{
    const auto count = job.recipients.size();
    // Translators: a job's number, its document, how many recipients, its destination.
    return oneLine(localizedCount("job %d (%s) for %d recipient would go to %s now",
                                  "job %d (%s) for %d recipients would go to %s now", count, job.number,
                                  shownText(job.title), count, shownTarget(job.target)));
}

JobResult resultOf(Outbox& outbox, int number, const std::string& error)
{
    JobResult result{number, {}, error};
    const auto jobs = outbox.jobs();
    const auto found = std::ranges::find(jobs, number, &OutboxJob::number);
    if (found != jobs.end())
        result.job = *found;
    return result;
}

void settleShortly(Outbox& outbox, std::time_t now)
{
    constexpr std::chrono::seconds longest{5};
    Transfer transfer;
    transfer.cancelled = [limit = std::chrono::steady_clock::now() + longest] {
        return std::chrono::steady_clock::now() > limit;
    };
    outbox.settleOrphans(now, transfer);
    outbox.askAboutHeld(now, transfer);
}

} // namespace quelm
