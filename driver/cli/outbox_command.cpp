// The command `outbox`: jobs that wait, and those that were handed over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/standard_output.h"
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
#include "driver/cli/outbox_run.h"
#include "driver/handover/outbox_access.h"
#include "driver/handover/summary.h"
#include "driver/outbox/outbox_checks.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quelm {
namespace {

void list(Outbox& outbox, const OutboxRequest& request)
{
    const auto now = currentTime();
    const auto jobs = outbox.jobs();
    if (request.asJson)
        return writeJsonAnswer(jobsJson(jobs, now));
    writeAnswer(listedJobs(jobs, now));
    for (const auto& job : jobs)
        if (const auto question = questionOf(job, now))
            writeRemark(*question);
}

/// Does something with each of the jobs. One that fails does not keep the others from it: what is wrong with
/// it is told, and the last line says how many failed.
void forEach(Outbox& outbox, const OutboxRequest& request, const std::function<void(int number)>& action)
{
    const bool isOne = request.numbers.size() == 1;
    std::vector<JobResult> results;
    std::size_t failed = 0;
    for (const int number : request.numbers) {
        if (Interruption::requested())
            break;
        std::string error;
        try {
            action(number);
        } catch (const Error& failure) {
            if (isOne && !request.asJson)
                throw;
            ++failed;
            error = failure.what();
            if (!isOne)
                writeUnderProgramName(error);
        }
        if (request.asJson)
            results.push_back(resultOf(outbox, number, error));
    }
    const bool isDone = !request.dryRun && request.action != OutboxAction::show;
    if (request.asJson)
        (isDone ? writeJsonResult : writeJsonAnswer)(resultsJson(results, currentTime()));
    if (failed == 0)
        return;
    if (isOne)
        throw Error(results.front().error);
    throw Error(localizedCount("%d job was left as it was or failed; see the lines ahead of this one",
                               "%d jobs were left as they were or failed; see the lines ahead of this one",
                               failed, failed));
}

void showOne(Outbox& outbox, const OutboxRequest& request)
{
    const auto now = currentTime();
    const auto job = outbox.job(request.numbers.front());
    if (request.asJson)
        return writeJsonAnswer(jobJson(job, now));
    writeAnswer(shownJob(job, now));
    if (const auto question = questionOf(job, now))
        writeRemark(*question);
}

void show(Outbox& outbox, const OutboxRequest& request)
{
    if (request.numbers.size() == 1)
        return showOne(outbox, request);
    bool isFirst = true;
    forEach(outbox, request, [&](int number) {
        const auto now = currentTime();
        const auto job = outbox.job(number);
        if (!request.asJson)
            writeAnswer((isFirst ? "" : "\n") + shownJob(job, now));
        isFirst = false;
        if (const auto question = questionOf(job, now); question && !request.asJson)
            writeRemark(*question);
    });
}

/// Says what would be done, for people.
void sayPlan(const OutboxRequest& request, const std::string& line)
{
    if (!request.asJson)
        writeAnswer(oneLine(line) + "\n");
}

void cancel(Outbox& outbox, const OutboxRequest& request)
{
    forEach(outbox, request, [&](int number) {
        const auto job = outbox.job(number);
        if (request.dryRun) {
            requireCancellable(job);
            // Translators: a job's number and its document.
            return sayPlan(request,
                           localized("job %d (%s) would be cancelled", number, shownText(job.title)));
        }
        outbox.cancel(number, currentTime());
        say(localized("job %d (%s) is cancelled", number, shownText(job.title)));
    });
}

/// What a job that its device may have already asks of the user who cannot be asked.
Error consentMissing(const OutboxJob& job)
{
    return Error(
        localized("job %d: %s may have it already; look there, and say --yes to send it all the same",
                  job.number, shownTarget(job.target)));
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
        throw consentMissing(job);
    if (!*answer)
        throw Error(localized("job %d is left as it is", job.number));
}

void send(Outbox& outbox, const OutboxRequest& request)
{
    forEach(outbox, request, [&](int number) {
        const auto job = outbox.job(number);
        if (request.dryRun) {
            requireReady(job);
            if (job.state == OutboxState::uncertain && !request.yes)
                throw consentMissing(job);
            return sayPlan(request, plannedHandover(job));
        }
        requireConsent(job, request.yes);
        handOverNow(outbox, number, currentTime());
    });
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
        return runOutbox(*outbox, request);
    case OutboxAction::none:
        break;
    }
    throw UsageError(localized("say what to do with the outbox; see quelm-driver outbox --help"));
}

} // namespace quelm
