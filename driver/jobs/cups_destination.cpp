// Creates a job in a queue, sends its document, and takes the job back when that fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/cups_destination.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/jobs/cups_server.h"
#include "driver/jobs/print_queues.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quelm {
namespace {

/// "a, b, c", as far as a line has room for them.
std::string listOf(const std::vector<PrintQueue>& queues)
{
    constexpr std::size_t most = 10;
    std::string names;
    for (std::size_t i = 0; i < std::min(queues.size(), most); ++i)
        names += (i == 0 ? "" : ", ") + queues[i].name;
    // Translators: the first of many names of queues.
    return queues.size() > most ? localized("%s and more", names) : names;
}

class QueueDestination final : public SpooledDestination {
public:
    QueueDestination(QueueJob job, const QueueLimits& limits)
        : job_(std::move(job)), limits_(limits), who_(localized("queue %s", job_.queue))
    {
    }

private:
    /// How far the sending of a document came.
    struct Outcome {
        std::uint64_t sent = 0; ///< bytes
        std::string trouble;    ///< what ended it early; empty when it is complete
    };

    Receipt send(int spool, std::uint64_t size, const Transfer& transfer) override
    {
        int number = 0;
        Outcome outcome;
        std::string note;
        {
            CupsServer server(who_, limits_, transfer);
            number = createJob(server);
            outcome = sendDocument(server, number, spool, size, transfer);
            if (outcome.trouble.empty())
                note = stateOfQueue(server);
        }
        if (outcome.trouble.empty())
            return {localized("%s, job %d", who_, number), note, number};
        // The first connection is closed: the server would not heed another while it waits for the rest.
        if (takeBack(number))
            throw Error(
                localized("%s: %s after %d of %d bytes of the job; job %d was cancelled in the queue; "
                          "send it again",
                          who_, outcome.trouble, outcome.sent, size, number));
        throw Error(
            localized("%s: %s after %d of %d bytes of the job; job %d may be left in the queue; cancel "
                      "it there before sending it again",
                      who_, outcome.trouble, outcome.sent, size, number));
    }

    int createJob(CupsServer& server) const
    {
        auto request = newQueueRequest(IPP_OP_CREATE_JOB, job_.queue, job_.user);
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr,
                     ippName(job_.title.empty() ? "Fax" : job_.title).c_str());
        // A queue's own banner page would stand ahead of the attributes, where the device looks for them.
        ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_NAME, "job-sheets", nullptr, "none");
        const auto answer = server.ask(std::move(request), queueResource(job_.queue));
        const int number = answer.integer("job-id");
        if (answer.isSuccess() && number > 0)
            return number;
        if (answer.isSuccess())
            throw Error(localized("%s: the print server %s gives the job no number", who_, server.name()));
        throw Error(refusal(server, answer));
    }

    std::string refusal(CupsServer& server, const IppAnswer& answer) const
    {
        if (answer.isForbidden())
            return localized("%s: %s; ask its administrator to let %s print there", who_, answer.reason,
                             job_.user);
        if (answer.message == nullptr)
            return localized("%s: %s; nothing of the job went out", who_, answer.reason);
        if (answer.status == IPP_STATUS_ERROR_NOT_FOUND)
            return unknownQueue(server);
        if (answer.status == IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS)
            return localized(
                "%s: takes no jobs at present; let it take them again with cupsaccept, or choose "
                "another queue",
                who_);
        return localized("%s: takes no job: %s", who_, answer.reason);
    }

    std::string unknownQueue(CupsServer& server) const
    {
        std::vector<PrintQueue> queues;
        try {
            queues = printQueues(server);
        } catch (const Error&) {
            return localized("%s: the print server %s knows no such queue; list queues with lpstat -e", who_,
                             server.name());
        }
        if (queues.empty())
            return localized("%s: the print server %s knows no such queue; it has no queues", who_,
                             server.name());
        return localized("%s: the print server %s knows no such queue; it has %s", who_, server.name(),
                         listOf(queues));
    }

    Outcome sendDocument(CupsServer& server, int number, int spool, std::uint64_t size,
                         const Transfer& transfer) const
    {
        auto request = newQueueRequest(IPP_OP_SEND_DOCUMENT, job_.queue, job_.user);
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", number);
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "document-name", nullptr,
                     ippName(job_.title.empty() ? "Fax" : job_.title).c_str());
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
                     CUPS_FORMAT_RAW);
        ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);

        Outcome outcome;
        transfer.report(0, size);
        if (server.beginSending(request, queueResource(job_.queue), size)) {
            std::string block(std::size_t{32} * 1024, '\0');
            while (outcome.sent < size) {
                std::size_t count = 0;
                try {
                    count = readSpool(spool, block, outcome.sent);
                } catch (const Error& error) {
                    outcome.trouble = error.what();
                    return outcome;
                }
                if (!server.sendBlock(std::string_view(block).substr(0, count)))
                    break;
                outcome.sent += count;
                transfer.report(outcome.sent, size);
            }
        }
        outcome.trouble = server.endSending(queueResource(job_.queue)).reason;
        if (outcome.trouble.empty() && outcome.sent < size)
            outcome.trouble = localized("the print server %s did not take the rest", server.name());
        return outcome;
    }

    /// What a user who waits for the fax should know of the queue. The job is in it already: that nothing
    /// can be learned is no failure.
    std::string stateOfQueue(CupsServer& server) const
    {
        const auto answer =
            server.ask(newQueueRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, job_.queue, job_.user), "/");
        if (answer.integer("printer-state") != IPP_PSTATE_STOPPED)
            return {};
        const auto message = answer.text("printer-state-message");
        return message.empty() ? localized("the queue is paused")
                               : localized("the queue is paused (%s)", message);
    }

    /// Cancels a job whose bytes did not go out whole. False when nobody knows what becomes of it.
    bool takeBack(int number) const
    {
        QueueLimits limits = limits_;
        limits.connect = std::min(limits.connect, limits.cancel);
        limits.answer = limits.cancel;
        const Transfer unstoppable;
        try {
            CupsServer server(who_, limits, unstoppable);
            auto request = newQueueRequest(IPP_OP_CANCEL_JOB, job_.queue, job_.user);
            ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", number);
            return server.ask(std::move(request), "/jobs").isSuccess();
        } catch (const Error&) {
            return false;
        }
    }

    QueueJob job_;
    QueueLimits limits_;
    std::string who_;
};

} // namespace

std::unique_ptr<JobDestination> openQueue(const QueueJob& job, const QueueLimits& limits)
{
    if (job.queue.empty() || hasControlCharacter(job.queue))
        throw Error(
            localized("a queue is named by a text without control characters; list queues with lpstat -e"));
    return std::make_unique<QueueDestination>(job, limits);
}

} // namespace quelm
