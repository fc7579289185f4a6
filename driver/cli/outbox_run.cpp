// Sends what waits in the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/outbox_run.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/handing_over.h"
#include "driver/cli/job/job_json.h"
#include "driver/cli/job/question_policy.h"
#include "driver/cli/job/say.h"
#include "driver/cli/outbox_listing.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"
#include "driver/outbox/outbox_worker.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <string>
#include <thread>

namespace quelm {
namespace {

/// A run of the worker, and what it has done.
class Run {
public:
    Run(Outbox& outbox, bool asJson) : outbox_(outbox), asJson_(asJson) {}

    void sendDue(OutboxWorker& worker)
    {
        ProgressLine progress(localized("Sending the job"));
        Transfer transfer;
        transfer.progress = [&progress](std::uint64_t done, std::uint64_t total) {
            progress.show(done, total);
        };
        transfer.cancelled = &Interruption::requested;
        worker.sendDue(outbox_, currentTime(), transfer, [&](const OutboxJob& job, const HandoverEnd& end) {
            progress.wipe();
            const auto line = endOf(job, end, currentTime(), outbox_.settings());
            if (end.state == OutboxState::handedOver)
                sayAlways(line); // the journal of whoever starts this lives from it
            else
                writeUnderProgramName(line);
            if (end.state == OutboxState::failed || end.state == OutboxState::uncertain)
                ++failed_;
            answer(job.number, end.state == OutboxState::handedOver ? "" : line);
        });
    }

    /// Asks the person at the terminal about jobs that are overdue, or names them; each once.
    void askAboutOverdue()
    {
        const auto terminal = Terminal::standard();
        for (const auto& job : outbox_.jobs()) {
            const auto now = currentTime();
            if (!job.isOverdue(now) || !asked_.insert(job.number).second)
                continue;
            const auto answer =
                answerOf(terminal,
                         // Translators: a job's number, its document, its destination, when it was due.
                         localized("Job %d (%s) for %s was due %s.\nSend it now?", job.number,
                                   shownText(job.title), shownTarget(job.target), shownMoment(job.due, now)));
            if (!answer)
                writeUnderProgramName(questionOf(job, now).value_or(""));
            else if (*answer)
                sendOverdue(job.number);
        }
    }

    /// The user knows of every job that was not handed over; the exit status says so, too.
    void requireNoFailure() const
    {
        if (failed_ > 0)
            throw Error(localizedCount("%d job was not handed over; see quelm-driver outbox list",
                                       "%d jobs were not handed over; see quelm-driver outbox list", failed_,
                                       failed_));
    }

private:
    void sendOverdue(int number)
    {
        try {
            handOverNow(outbox_, number, currentTime());
        } catch (const Error& error) {
            writeUnderProgramName(error.what());
            ++failed_;
            return answer(number, error.what());
        }
        answer(number, "");
    }

    /// A line of JSON about a job, where that was asked for.
    void answer(int number, const std::string& error)
    {
        if (asJson_)
            writeResult(resultLine(resultOf(outbox_, number, error), currentTime()));
    }

    Outbox& outbox_;
    bool asJson_;
    std::set<int> asked_;
    std::size_t failed_ = 0;
};

/// Waits until the moment has come, another program may have put a job in, or the user ends the program.
void waitFor(std::time_t due)
{
    constexpr std::chrono::seconds longest{30};
    constexpr std::chrono::milliseconds step{200};
    const auto limit = std::chrono::steady_clock::now() + longest;
    while (!Interruption::requested() && currentTime() < due && std::chrono::steady_clock::now() < limit)
        std::this_thread::sleep_for(step);
}

/// Says what would be handed over now, and what would be asked.
void planRun(Outbox& outbox, const OutboxRequest& request)
{
    const auto now = currentTime();
    auto jobs = outbox.jobs(OutboxState::waiting);
    std::erase_if(jobs, [now](const OutboxJob& job) { return job.due > now; });
    std::ranges::stable_sort(jobs, {}, &OutboxJob::due);
    for (const auto& job : jobs)
        if (const auto question = questionOf(job, now))
            writeRemark(*question);
        else if (request.asJson)
            writeAnswer(resultLine({job.number, job, {}}, now));
        else
            writeAnswer(plannedHandover(job) + "\n");
}

} // namespace

void runOutbox(Outbox& outbox, const OutboxRequest& request)
{
    if (request.dryRun)
        return planRun(outbox, request);
    const auto worker = OutboxWorker::start(outbox.settings(), WorkerKind::command);
    if (worker == nullptr) {
        const auto other = OutboxWorker::living(outbox.settings());
        return say(other && other->kind == WorkerKind::desktop
                       ? localized("the open desktop sends what waits in the outbox")
                       : localized("another \"quelm-driver outbox run\" sends what waits in the outbox"));
    }
    Run running(outbox, request.asJson);
    for (;;) {
        if (!request.quiet)
            running.askAboutOverdue(); // there Ctrl-C ends the program as it stands
        const Interruption interruption;
        running.sendDue(*worker);
        const auto next = outbox.nextDue(currentTime());
        if (!request.wait || !next || Interruption::requested())
            break;
        waitFor(*next);
    }
    running.requireNoFailure();
}

} // namespace quelm
