// Creates a job in a queue, sends its document, and takes the job back when that fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/queue/cups_server.h"
#include "driver/queue/cups_system.h"
#include "driver/queue/queue_hold.h"
#include "driver/queue/server_job.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <exception>
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

std::string notHeldBy(const CupsServer& server)
{
    return localized("the print server %s does not hold the job until its time", server.name());
}

class QueueDestination final : public SpooledDestination {
public:
    QueueDestination(QueueJob job, const QueueLimits& limits)
        : job_(std::move(job)), limits_(limits), who_(localized("queue %s", job_.queue))
    {
    }

private:
    /// How far the sending of a job came.
    struct Outcome {
        std::uint64_t sent = 0;         ///< bytes of its document
        std::string trouble;            ///< what ended it early; empty when it is complete
        bool isNotHeld = false;         ///< that the server does not hold it, which it was to
        std::exception_ptr unkept = {}; ///< why the one who keeps its number could not
        std::string note;               ///< what the user should know
    };

    Receipt send(int spool, std::uint64_t size, const Transfer& transfer) override
    {
        int number = 0;
        Outcome outcome;
        {
            const auto connection = connect(transfer);
            CupsServer& server = *connection;
            requireTrustedClock(server, transfer);
            number = createJob(server, transfer);
            try {
                hand(server, number, spool, size, transfer, outcome);
            } catch (const std::exception& failure) {
                outcome.trouble = failure.what();
            }
        }
        if (outcome.trouble.empty())
            return {localized("%s, job %d", who_, number), outcome.note, number};
        // The first connection is closed: the server would not heed another while it waits for the rest.
        endWithout(number, size, outcome);
    }

    std::unique_ptr<CupsServer> connect(const Transfer& transfer) const
    {
        try {
            return std::make_unique<CupsServer>(who_, limits_, transfer, job_.server);
        } catch (const Error& error) {
            failBeforeJob(error.what(), transfer);
        }
    }

    /// A server that cannot be asked cannot be trusted to hold a job either.
    [[noreturn]] void failBeforeJob(const std::string& line, const Transfer& transfer) const
    {
        if (job_.holdUntil && !transfer.isCancelled())
            throw HoldRefused(line);
        throw Error(line);
    }

    /// Takes back a job that did not go out as it was to, and says what became of it.
    [[noreturn]] void endWithout(int number, std::uint64_t size, const Outcome& outcome) const
    {
        const auto left = takeBack(number, outcome.sent == size);
        if (left == TakenBack::whole && outcome.unkept != nullptr)
            std::rethrow_exception(outcome.unkept);
        // A job that is not held says nothing of its bytes: the server has them all, or was given none.
        const auto trouble = who_ + ": " +
                             (outcome.isNotHeld ? outcome.trouble
                                                : localized("%s after %d of %d bytes of the job",
                                                            outcome.trouble, outcome.sent, size));
        if (left == TakenBack::whole && outcome.isNotHeld)
            throw HoldRefused(trouble);
        if (left == TakenBack::whole)
            throw Error(localized("%s; job %d was cancelled in the queue; send it again", trouble, number));
        if (left == TakenBack::late)
            throw DeliveryInDoubt(
                localized("%s; something of job %d may have been printed; look at the device "
                          "before sending it again",
                          trouble, number));
        throw DeliveryInDoubt(localized(
            "%s; job %d may be left in the queue; cancel it there before sending it again", trouble, number));
    }

    void requireTrustedClock(CupsServer& server, const Transfer& transfer) const
    {
        if (!job_.holdUntil)
            return;
        const std::time_t asked = currentTime();
        const auto clock = askForClock(server, job_.queue, job_.user);
        if (clock.message == nullptr && !clock.isForbidden())
            failBeforeJob(refusal(server, clock), transfer);
        if (clock.status == IPP_STATUS_ERROR_NOT_FOUND)
            throw Error(refusal(server, clock));
        const auto trouble = holdTrouble(server, clock, asked, *job_.holdUntil);
        if (!trouble.empty())
            throw HoldRefused(who_ + ": " + trouble);
    }

    /// What becomes of a created job; `outcome` says how far it came, also when this throws.
    void hand(CupsServer& server, int number, int spool, std::uint64_t size, const Transfer& transfer,
              Outcome& outcome) const
    {
        if (job_.created) {
            try {
                job_.created(number);
            } catch (const std::exception&) {
                outcome.unkept = std::current_exception();
                throw;
            }
        }
        lookAtHold(server, number, outcome);
        if (outcome.trouble.empty())
            sendDocument(server, number, spool, size, transfer, outcome);
        if (outcome.trouble.empty())
            lookAtHold(server, number, outcome);
        if (outcome.trouble.empty())
            outcome.note = stateOfQueue(server, number);
    }

    /// A server may take a time and do as it likes.
    void lookAtHold(CupsServer& server, int number, Outcome& outcome) const
    {
        if (!job_.holdUntil)
            return;
        const auto answer = askForServerJob(server, job_.queue, job_.user, number);
        outcome.trouble = answer.trouble;
        if (answer.trouble.empty() && !(answer.job && isHeldUntil(*answer.job, *job_.holdUntil))) {
            outcome.isNotHeld = true;
            outcome.trouble = notHeldBy(server);
        }
    }

    int createJob(CupsServer& server, const Transfer& transfer) const
    {
        auto request = newQueueRequest(IPP_OP_CREATE_JOB, job_.queue, job_.user);
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr,
                     serverJobName(job_.title, job_.token).c_str());
        // A queue's own banner page would stand ahead of the attributes, where the device looks for them.
        ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_NAME, "job-sheets", nullptr, "none");
        if (job_.holdUntil)
            ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_NAME, "job-hold-until", nullptr,
                         holdTime(*job_.holdUntil).c_str());
        const auto answer = server.ask(std::move(request), queueResource(job_.queue));
        const int number = answer.integer("job-id");
        if (answer.isSuccess() && number > 0)
            return number;
        if (answer.isSuccess())
            throw Error(localized("%s: the print server %s gives the job no number", who_, server.name()));
        if (job_.holdUntil && answer.message != nullptr &&
            answer.status == IPP_STATUS_ERROR_ATTRIBUTES_OR_VALUES)
            throw HoldRefused(who_ + ": " + notHeldBy(server));
        if (answer.message == nullptr && !answer.isForbidden())
            failBeforeJob(refusal(server, answer), transfer);
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
            queues = queuesOf(server);
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

    void sendDocument(CupsServer& server, int number, int spool, std::uint64_t size, const Transfer& transfer,
                      Outcome& outcome) const
    {
        auto request = newJobRequest(IPP_OP_SEND_DOCUMENT, job_.queue, job_.user, number);
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "document-name", nullptr,
                     ippName(job_.title.empty() ? "Fax" : job_.title).c_str());
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
                     CUPS_FORMAT_RAW);
        ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);

        transfer.report(0, size);
        if (server.beginSending(request, queueResource(job_.queue), size)) {
            std::string block(std::size_t{32} * 1024, '\0');
            while (outcome.sent < size) {
                const std::size_t count = readSpool(spool, block, outcome.sent);
                if (!server.sendBlock(std::string_view(block).substr(0, count)))
                    break;
                outcome.sent += count;
                transfer.report(outcome.sent, size);
            }
        }
        outcome.trouble = server.endSending(queueResource(job_.queue)).reason;
        if (outcome.trouble.empty() && outcome.sent < size)
            outcome.trouble = localized("the print server %s did not take the rest", server.name());
    }

    /// What a user who waits for the fax should know of the queue. The job is in it already: that nothing
    /// can be learned is no failure.
    std::string stateOfQueue(CupsServer& server, int number) const
    {
        const auto answer =
            server.ask(newQueueRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, job_.queue, job_.user), "/");
        if (answer.integer("printer-state") == IPP_PSTATE_STOPPED) {
            const auto message = answer.text("printer-state-message");
            return message.empty() ? localized("the queue is paused")
                                   : localized("the queue is paused (%s)", message);
        }
        if (job_.holdUntil)
            return {};
        // A queue may hold all jobs until its administrator looks at them, or for the night.
        const auto told = askForServerJob(server, job_.queue, job_.user, number);
        if (!told.job || told.job->state != IPP_JSTATE_HELD)
            return {};
        // Translators: %s is the print system's word for until when, such as "night" or "indefinite".
        return localized("the queue itself holds the job (%s); release it there", told.job->holdUntil);
    }

    /// What is left of a job that was to be taken back.
    enum class TakenBack {
        whole, ///< nothing of it was or will be printed
        late,  ///< it is not in the queue any more, but something of it may have been printed
        no,    ///< nobody knows what becomes of it
    };

    /// Cancels a job that did not go out as it was to.
    TakenBack takeBack(int number, bool wasAllSent) const
    {
        QueueLimits limits = limits_;
        limits.connect = std::min(limits.connect, limits.cancel);
        limits.answer = limits.cancel;
        const Transfer unstoppable;
        try {
            CupsServer server(who_, limits, unstoppable, job_.server);
            const auto end = cancelServerJob(server, job_.queue, job_.user, number);
            const auto told = askForServerJob(server, job_.queue, job_.user, number);
            const auto wasProcessed = told.job ? told.job->wasProcessed : std::nullopt;
            if (wasProcessed.value_or(false) || (told.job && told.job->state == IPP_JSTATE_COMPLETED))
                return TakenBack::late;
            if (end == CancelEnd::refused)
                return TakenBack::no;
            // Without its last byte a document is not printed; of another one a server may have forgotten it.
            return wasProcessed || !wasAllSent ? TakenBack::whole : TakenBack::late;
        } catch (const std::exception&) {
            return TakenBack::no;
        }
    }

    QueueJob job_;
    QueueLimits limits_;
    std::string who_;
};

} // namespace

std::unique_ptr<JobDestination> CupsSystem::openQueue(const QueueJob& job, const QueueLimits& limits) const
{
    if (job.queue.empty() || hasControlCharacter(job.queue))
        throw Error(
            localized("a queue is named by a text without control characters; list queues with lpstat -e"));
    return std::make_unique<QueueDestination>(job, limits);
}

} // namespace quelm
