// Writes a job, and takes it the way that it is to go.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/submission.h"

#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "base/write_target.h"
#include "driver/jobs/job_target.h"
#include "driver/jobs/print_server.h"
#include "driver/outbox/outbox_failure.h"

#include <filesystem>
#include <utility>
#include <variant>

namespace quelm {
namespace {

/// Takes a job for the outbox, and remembers whether it was the outbox that failed.
class KeptSink final : public JobSink {
public:
    explicit KeptSink(JobSink& sink) : sink_(sink) {}

    void write(std::string_view bytes) override
    {
        try {
            sink_.write(bytes);
        } catch (const Error& error) {
            trouble = error.what();
            throw;
        }
    }

    std::string trouble;

private:
    JobSink& sink_;
};

class Submitting {
public:
    Submitting(Outbox* outbox, FaxSession& session, const Document& document, const Submission& submission,
               const JobFacts& facts, std::time_t now, const Transfer& transfer,
               const std::function<void()>& written)
        : outbox_(outbox), session_(session), document_(document), submission_(submission), facts_(facts),
          now_(now), transfer_(transfer), written_(written), target_(submission.target)
    {
    }

    SubmissionEnd run()
    {
        const bool isLater = submission_.sendAt && *submission_.sendAt > now_;
        due_ = isLater ? *submission_.sendAt : now_;
        const auto* file = std::get_if<FileTarget>(&target_);
        if (!isLater && !submission_.toOutbox) {
            const bool isKept = file == nullptr && outbox_ != nullptr && outbox_->settings().keepDays > 0;
            return isKept ? sendKept() : sendUnkept();
        }
        if (file != nullptr)
            requireWritable(*file);
        if (outbox_ == nullptr)
            throw Error(localized("the fax has to wait, and there is no outbox for it to wait in; send it at "
                                  "once"));
        const bool isForQueue = std::holds_alternative<QueueTarget>(target_);
        if (isForQueue && !submission_.toOutbox && due_ - now_ > leastHold)
            return hold();
        return wait();
    }

private:
    /// At once, and nothing of it stays here.
    SubmissionEnd sendUnkept()
    {
        const auto destination = openDestination(target_, {title(), submission_.user}, &document_);
        JobFacts facts = facts_;
        facts.beforeCreditCard = [&] {
            destination->restrictToOwner();
            if (facts_.beforeCreditCard)
                facts_.beforeCreditCard();
        };
        writeFaxJob(session_, document_, submission_.pdl, destination->sink(), facts);
        tellWritten();
        SubmissionEnd end;
        end.receipt = destination->deliver(transfer_);
        return end;
    }

    /// At once, and kept. What cannot be kept goes out all the same.
    SubmissionEnd sendKept()
    {
        std::string trouble;
        int number = 0;
        std::optional<HandoverEnd> end;
        try {
            number = putIn(false, trouble);
            end = handOver(number, trouble);
        } catch (const Error&) {
            if (trouble.empty())
                throw;
        }
        if (end)
            return endOf(number, *end);
        log(Severity::warning, localized("the fax job is not kept: %s", trouble));
        return sendUnkept();
    }

    /// When it throws, nothing went out, and `trouble` says why.
    HandoverEnd handOver(int number, std::string& trouble)
    {
        try {
            return outbox_->handOver(number, now_, transfer_);
        } catch (const Error& error) {
            trouble = error.what();
            throw;
        }
    }

    /// The queue keeps it until its time, or the outbox does: it waits from the moment it is put in.
    SubmissionEnd hold()
    {
        std::string trouble;
        const int number = putIn(true, trouble, true);
        HandoverEnd end;
        try {
            end = outbox_->handOver(number, now_, transfer_);
        } catch (const WaitingUnnoted&) {
            throw;
        } catch (const Error& error) {
            // Nothing was begun.
            end.state = OutboxState::waiting;
            end.trouble = error.what();
        }
        return endOf(number, end);
    }

    SubmissionEnd wait()
    {
        std::string trouble;
        SubmissionEnd end;
        end.kind = SubmissionEnd::Kind::waiting;
        end.number = putIn(true, trouble);
        end.due = due_;
        return end;
    }

    SubmissionEnd endOf(int number, const HandoverEnd& handover) const
    {
        SubmissionEnd end;
        end.receipt = handover.receipt;
        end.number = outbox_->settings().keepDays > 0 ? number : 0;
        switch (handover.state) {
        case OutboxState::handedOver:
            if (handover.isHeld) {
                end.kind = SubmissionEnd::Kind::held;
                end.due = due_;
            }
            return end;
        case OutboxState::waiting:
            end.kind = SubmissionEnd::Kind::waiting;
            end.number = number;
            end.due = due_;
            end.reason = handover.trouble;
            return end;
        case OutboxState::uncertain:
            // Translators: what happened, and a number.
            throw DeliveryInDoubt(localized("%s; the outbox keeps it as job %d", handover.trouble, number));
        default:
            throw Error(handover.trouble);
        }
    }

    /// Puts the job into the outbox; its number. When that fails because of the outbox, `trouble` says why.
    int putIn(bool isUnattended, std::string& trouble, bool isTriedFirst = false)
    {
        std::unique_ptr<OutboxEntry> entry;
        try {
            entry = outbox_->newEntry();
        } catch (const Error& error) {
            trouble = error.what();
            throw;
        }
        KeptSink sink(entry->sink());
        try {
            writeFaxJob(session_, document_, submission_.pdl, sink, facts_);
        } catch (const Error&) {
            trouble = sink.trouble;
            throw;
        }
        try {
            OutboxDraft job = draft(isUnattended);
            job.isTriedFirst = isTriedFirst;
            const int number = entry->commit(job, &document_);
            tellWritten();
            return number;
        } catch (const Error& error) {
            trouble = error.what();
            throw;
        }
    }

    OutboxDraft draft(bool isUnattended)
    {
        OutboxDraft draft;
        draft.target = target_;
        // Who sends it, or looks for it, later may have another server of its own.
        if (auto* queue = std::get_if<QueueTarget>(&draft.target); queue != nullptr && queue->server.empty())
            queue->server = currentPrintServer();
        draft.title = title();
        draft.user = submission_.user;
        draft.pdl = submission_.pdl;
        draft.recipients = session_.recipients();
        draft.options = submission_.options;
        draft.due = due_;
        draft.isUnattended = isUnattended;
        draft.sentBefore = submission_.sentBefore;
        return draft;
    }

    /// A job that waits is written to its file when nobody is there to hear what is wrong with it.
    void requireWritable(const FileTarget& file)
    {
        // "/dev/stdout" and the like would be another program's then.
        if (file.path == "-" || findWriteTarget(file.path).isOpenFile)
            throw Error(
                localized("standard output cannot wait for the fax: name a file, a device or a queue"));
        static_cast<void>(openDestination(target_, {title(), submission_.user}, &document_));
        std::error_code error;
        const auto absolute = std::filesystem::absolute(file.path, error);
        if (error)
            throw Error(
                localized("%s: the folder that the program runs in cannot be found; name the file with "
                          "its whole path",
                          file.path));
        target_ = FileTarget{absolute.string()};
    }

    /// Once: a job that could not be kept is written again.
    void tellWritten()
    {
        if (written_ && !std::exchange(isTold_, true))
            written_();
    }

    std::string title() const { return document_.name(); }

    Outbox* outbox_;
    FaxSession& session_;
    const Document& document_;
    const Submission& submission_;
    const JobFacts& facts_;
    std::time_t now_;
    const Transfer& transfer_;
    const std::function<void()>& written_;
    JobTarget target_;
    std::time_t due_ = 0;
    bool isTold_ = false;
};

} // namespace

SubmissionEnd submit(Outbox* outbox, FaxSession& session, const Document& document,
                     const Submission& submission, const JobFacts& facts, std::time_t now,
                     const Transfer& transfer, const std::function<void()>& written)
{
    return Submitting(outbox, session, document, submission, facts, now, transfer, written).run();
}

} // namespace quelm
