// The command `outbox`: jobs that wait, and those that were handed over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"
#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/handing_over.h"
#include "driver/cli/job/job_json.h"
#include "driver/cli/job/question_policy.h"
#include "driver/cli/job/say.h"
#include "driver/cli/outbox_listing.h"
#include "driver/cli/outbox_resend.h"
#include "driver/handover/outbox_access.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"
#include "driver/outbox/outbox_worker.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <thread>

namespace quelm {
namespace {

void list(Outbox& outbox, const OutboxRequest& request)
{
    const auto now = currentTime();
    const auto jobs = outbox.jobs();
    if (request.asJson)
        return writeAnswer(jobsJson(jobs, now));
    writeAnswer(listedJobs(jobs, now));
    for (const auto& job : jobs)
        if (const auto question = questionOf(job, now))
            writeUnderProgramName(*question);
}

void show(Outbox& outbox, const OutboxRequest& request)
{
    const auto now = currentTime();
    const auto job = outbox.job(request.numbers.front());
    if (request.asJson)
        return writeAnswer(jobJson(job, now));
    writeAnswer(shownJob(job, now));
    if (const auto question = questionOf(job, now))
        writeUnderProgramName(*question);
}

/// Does something with each of the jobs. One that fails does not keep the others from it: what is wrong with
/// it is told, and the last line says how many failed.
void forEach(const std::vector<int>& numbers, const std::function<void(int number)>& action)
{
    if (numbers.size() == 1)
        return action(numbers.front());
    std::size_t failed = 0;
    for (const int number : numbers) {
        if (Interruption::requested())
            break;
        try {
            action(number);
        } catch (const Error& error) {
            ++failed;
            writeUnderProgramName(error.what());
        }
    }
    if (failed > 0)
        throw Error(localizedCount(
            "%d job was left as it was or failed; see the lines ahead of this one",
            "%d jobs were left as they were or failed; see the lines ahead of this one", failed, failed));
}

void cancel(Outbox& outbox, const OutboxRequest& request)
{
    forEach(request.numbers, [&outbox](int number) {
        const auto job = outbox.job(number);
        outbox.cancel(number, currentTime());
        say(localized("job %d (%s) is cancelled", number, shownText(job.title)));
    });
}

/// Asks before a job goes out that the device may have already.
void requireConsent(const OutboxJob& job, bool given)
{
    if (job.state != OutboxState::uncertain || given)
        return;
    // Translators: a job's number, its document, its destination.
    const auto question =
        localized("Job %d (%s): %s may have it already, whole or in part.\nSend it once more?", job.number,
                  shownText(job.title), shownTarget(job.target));
    const auto answer = answerOf(Terminal::standard(), question);
    if (!answer)
        throw Error(
            localized("job %d: %s may have it already; look there, and say --yes to send it all the same",
                      job.number, shownTarget(job.target)));
    if (!*answer)
        throw Error(localized("job %d is left as it is", job.number));
}

void send(Outbox& outbox, const OutboxRequest& request)
{
    forEach(request.numbers, [&](int number) {
        requireConsent(outbox.job(number), request.yes);
        handOverNow(outbox, number, currentTime());
    });
}

/// A run of the worker, and what it has done.
class Run {
public:
    explicit Run(Outbox& outbox) : outbox_(outbox) {}

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
                say(line);
            else
                writeUnderProgramName(line);
            if (end.state == OutboxState::failed || end.state == OutboxState::uncertain)
                ++failed_;
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
        }
    }

    Outbox& outbox_;
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

void run(Outbox& outbox, const OutboxRequest& request)
{
    const auto worker = OutboxWorker::start(outbox.settings(), WorkerKind::command);
    if (worker == nullptr) {
        if (request.quiet)
            return;
        const auto other = OutboxWorker::living(outbox.settings());
        return say(other && other->kind == WorkerKind::desktop
                       ? localized("the open desktop sends what waits in the outbox")
                       : localized("another \"quelm-driver outbox run\" sends what waits in the outbox"));
    }
    Run running(outbox);
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

} // namespace

void runOutboxCommand(const CommandLine& line)
{
    const auto setup = setUpDriver(line);
    if (!line.driver.now.empty())
        fixClock(parseLocalTime(line.driver.now));
    const auto outbox = openOutbox(setup.outbox);
    const auto& request = line.outbox;
    settleShortly(*outbox, currentTime());
    switch (request.action) {
    case OutboxAction::list:
        return list(*outbox, request);
    case OutboxAction::show:
        return show(*outbox, request);
    case OutboxAction::cancel:
        return cancel(*outbox, request);
    case OutboxAction::send:
        return send(*outbox, request);
    case OutboxAction::resend:
        return resend(line, setup, *outbox);
    case OutboxAction::run:
        return run(*outbox, request);
    case OutboxAction::none:
        break;
    }
    throw UsageError(localized("say what to do with the outbox; see quelm-driver outbox --help"));
}

} // namespace quelm
