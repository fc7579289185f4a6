// The way of a job from its record to its destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/job_sending.h"

#include "base/error.h"
#include "base/translation.h"

#include <mutex>
#include <utility>

namespace quelm {
namespace {

/// Ends the writing of a job that the user cancelled.
class Cancelled : public Error {
public:
    Cancelled() : Error(translated("Sending was cancelled; nothing was handed over.")) {}
};

} // namespace

SendingEnd sendJob(const JobOrder& order, const std::function<bool()>& cancelled,
                   const std::function<void(const SendingProgress&)>& progress)
{
    const auto report = [&progress](SendingProgress::Stage stage) {
        return [&progress, stage](std::uint64_t done, std::uint64_t total) {
            progress({stage, done, total});
        };
    };
    const auto stopIfCancelled = [&cancelled] {
        if (cancelled())
            throw Cancelled();
    };
    try {
        stopIfCancelled();
        RecordedFaxSession session(order.job);
        JobFacts facts = order.facts;
        facts.progress = [&](std::uint64_t done, std::uint64_t total) {
            stopIfCancelled();
            progress({SendingProgress::Stage::writing, done, total});
        };
        const auto destination = order.open(order.document->document);
        facts.beforeCreditCard = [&destination] { destination->restrictToOwner(); };
        writeFaxJob(session, order.document->document, order.pdl, destination->sink(), facts);
        stopIfCancelled();
        progress({SendingProgress::Stage::handingOver, 0, 0});
        const Transfer transfer{report(SendingProgress::Stage::handingOver), cancelled};
        return {SendingEnd::Kind::handedOver, {}, destination->deliver(transfer)};
    } catch (const std::exception& error) {
        // A destination that heeds the cancellation says how much went out.
        return {cancelled() ? SendingEnd::Kind::cancelled : SendingEnd::Kind::failed, error.what(), {}};
    }
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
