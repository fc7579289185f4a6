// Goes through the jobs of a queue for the one with a token in its name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/translation.h"
#include "driver/queue/cups_server.h"
#include "driver/queue/cups_system.h"
#include "driver/queue/server_job.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>
#include <vector>

namespace quelm {
namespace {

using Content = QueuedJob::Content;

constexpr int jobsOfAPage = 500;

QueuedJob queuedJobOf(const ServerJob& job)
{
    QueuedJob queued;
    queued.number = job.number;
    queued.isCancelled = job.isEndedEarly();
    // Servers drop documents behind the end of a job, and count none then.
    const bool hasDocument = job.documents > 0 && !job.isIncoming;
    const bool isComplete = job.wasProcessed.value_or(hasDocument) || job.state == IPP_JSTATE_COMPLETED ||
                            (hasDocument && !job.isEndedEarly());
    queued.content = isComplete ? Content::complete : Content::incomplete;
    queued.isHeld = isComplete && job.state == IPP_JSTATE_HELD;
    return queued;
}

/// What is worth more when several jobs bear a token.
std::pair<Content, bool> rankOf(const QueuedJob& job) { return {job.content, !job.isCancelled}; }

class Inquiry {
public:
    Inquiry(const QueueTarget& target, const std::string& user, const std::string& token,
            const QueueLimits& limits, const Transfer& transfer)
        : queue_(target.name), user_(user), token_(token), who_(localized("queue %s", target.name)),
          patience_(limits.answer), server_(who_, limits, transfer, target.server)
    {
    }

    QueuedJob find(int number)
    {
        const auto answer = askForServerJob(server_, queue_, user_, number);
        if (!answer.trouble.empty())
            fail(answer.trouble);
        return answer.job && bearsToken(answer.job->name, token_) ? queuedJobOf(*answer.job) : QueuedJob();
    }

    /// Goes through all jobs by their numbers, page by page: histories can be long, and not every server
    /// begins where it is asked to.
    QueuedJob findAny()
    {
        const auto deadline = std::chrono::steady_clock::now() + patience_;
        QueuedJob best;
        int next = 1;
        while (std::chrono::steady_clock::now() < deadline) {
            const auto jobs = jobsFrom(next);
            int last = 0;
            for (const ServerJob& job : jobs) {
                last = std::max(last, job.number);
                const auto queued = queuedJobOf(job);
                if (bearsToken(job.name, token_) && rankOf(queued) >= rankOf(best))
                    best = queued;
            }
            // Fewer are the last ones; more come from a server that tells all at once.
            if (jobs.size() != jobsOfAPage)
                return best;
            if (last < next)
                break;
            next = last + 1;
        }
        fail(localized("the print server %s has too many jobs to look through", server_.name()));
    }

private:
    std::vector<ServerJob> jobsFrom(int first)
    {
        auto request = newQueueRequest(IPP_OP_GET_JOBS, queue_, user_);
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "limit", jobsOfAPage);
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "first-job-id", first);
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "which-jobs", nullptr, "all");
        askForServerJobs(request);
        const auto answer = server_.ask(std::move(request), queueResource(queue_));
        if (answer.message != nullptr && answer.status == IPP_STATUS_ERROR_NOT_FOUND)
            return {};
        if (!answer.isSuccess())
            fail(answer.reason);
        return serverJobsIn(answer);
    }

    [[noreturn]] void fail(const std::string& reason) const
    {
        throw Error(localized("%s: cannot be asked about its jobs: %s", who_, reason));
    }

    std::string queue_;
    std::string user_;
    std::string token_;
    std::string who_;
    std::chrono::milliseconds patience_;
    CupsServer server_;
};

} // namespace

QueuedJob CupsSystem::findQueuedJob(const QueueTarget& target, const std::string& user,
                                    const std::string& token, int number, const QueueLimits& limits,
                                    const Transfer& transfer) const
{
    Inquiry inquiry(target, user, token, limits, transfer);
    return number > 0 ? inquiry.find(number) : inquiry.findAny();
}

bool CupsSystem::cancelQueuedJob(const QueueTarget& target, const std::string& user, int number,
                                 const QueueLimits& limits, const std::string& token) const
{
    QueueLimits shorter = limits;
    shorter.connect = std::min(limits.connect, limits.cancel);
    shorter.answer = limits.cancel;
    const Transfer unstoppable;
    try {
        CupsServer server(localized("queue %s", target.name), shorter, unstoppable, target.server);
        if (!token.empty()) {
            const auto told = askForServerJob(server, target.name, user, number);
            if (!told.trouble.empty())
                return false;
            // The number of a job that was forgotten may be another's by now.
            if (!told.job || !bearsToken(told.job->name, token))
                return true;
        }
        return cancelServerJob(server, target.name, user, number) != CancelEnd::refused;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace quelm
