// The way of a job from its record to its destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/job_sending.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/handover/outbox_access.h"
#include "driver/outbox/outbox_sender.h"

#include <mutex>
#include <utility>

namespace quelm {
namespace {

/// Ends the writing of a job that the user cancelled.
class Cancelled : public Error {
public:
    Cancelled() : Error(translated("Sending was cancelled; nothing was handed over.")) {}
};

void stopIf(const Cancellation& cancelled)
{
    if (isCancelled(cancelled))
        throw Cancelled();
}

} // namespace

void writeJob(const JobOrder& order, JobSink& sink, const Cancellation& cancelled)
{
    RecordedFaxSession session(order.job);
    JobFacts facts = order.facts;
    facts.progress = [&cancelled](std::uint64_t, std::uint64_t) { stopIf(cancelled); };
    writeFaxJob(session, order.document->document, order.submission.pdl, sink, facts);
    stopIf(cancelled);
}

SendingEnd sendJob(const JobOrder& order, const Cancellation& cancelled,
                   const std::function<void(const SendingProgress&)>& progress)
{
    using Stage = SendingProgress::Stage;
    const auto report = [&progress](Stage stage) {
        return [&progress, stage](std::uint64_t done, std::uint64_t total) {
            progress({stage, done, total});
        };
    };
    SendingEnd end;
    try {
        stopIf(cancelled);
        RecordedFaxSession session(order.job);
        JobFacts facts = order.facts;
        facts.progress = [&](std::uint64_t done, std::uint64_t total) {
            stopIf(cancelled);
            progress({Stage::writing, done, total});
        };
        const auto outbox = outboxFor(order.submission.target,
                                      order.submission.sendAt || order.submission.toOutbox, order.outbox);
        end.result = submit(outbox.get(), session, order.document->document, order.submission, facts,
                            order.now, {report(Stage::handingOver), cancelled}, [&] {
                                progress({Stage::handingOver, 0, 0});
                            });
        end.kind = SendingEnd::Kind::submitted;
        if (end.result.kind == SubmissionEnd::Kind::waiting) {
            const auto sender = senderOf(order.outbox);
            end.sender = senderSentence(sender);
            end.isUnattended = sender == OutboxSender::nobody;
        }
    } catch (const std::exception& error) {
        // A destination that heeds the cancellation says how much went out.
        end.kind = isCancelled(cancelled) ? SendingEnd::Kind::cancelled : SendingEnd::Kind::failed;
        end.trouble = error.what();
    }
    return end;
}

/// What both threads look at.
struct JobSending::Shared {
    std::mutex lock;
    SendingProgress progress;
    SendingEnd end;
};

JobSending::JobSending() = default;

JobSending::~JobSending() = default;

void JobSending::start(JobOrder order, Ended ended)
{
    shared_ = std::make_shared<Shared>();
    task_.start(
        [order = std::move(order), shared = shared_](const std::stop_token& stop) {
            shared->end = sendJob(
                order, [&stop] { return stop.stop_requested(); },
                [&shared](const SendingProgress& progress) {
                    const std::lock_guard guard(shared->lock);
                    shared->progress = progress;
                });
        },
        [shared = shared_, ended = std::move(ended)] { ended(shared->end); });
}

SendingProgress JobSending::progress() const
{
    if (!shared_)
        return {};
    const std::lock_guard guard(shared_->lock);
    return shared_->progress;
}

} // namespace quelm
