// Writes a recorded job with its document and hands it over or puts it into the outbox, on a thread of its
// own. SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_JOB_SENDING_H
#define DRIVER_DESKTOP_SENDING_JOB_SENDING_H

#include "driver/desktop/sending/document_loading.h"
#include "driver/desktop/sending/recorded_job.h"
#include "driver/desktop/toolkit/background_task.h"
#include "driver/jobs/job_writer.h"
#include "driver/outbox/submission.h"

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>

namespace quelm {

/// All that it takes to send one job.
struct JobOrder {
    std::shared_ptr<const LoadedDocument> document;
    RecordedJob job;
    JobFacts facts; ///< without `progress`
    Submission submission;
    OutboxSettings outbox; ///< the user's; without a folder there is none
    std::time_t now = 0;   ///< the time of `facts`
};

/// How a sending ended.
struct SendingEnd {
    enum class Kind { submitted, cancelled, failed };
    Kind kind = Kind::failed;
    std::string trouble;  ///< of a failed or cancelled one: one line, which says how much was handed over
    SubmissionEnd result; ///< of a job that was submitted
    /// Of one that waits: what sends it, as `senderSentence` says it.
    std::string sender;
    bool isUnattended = false; ///< nothing sends it by itself
};

/// How far a sending is.
struct SendingProgress {
    enum class Stage { writing, handingOver };
    Stage stage = Stage::writing;
    std::uint64_t done = 0; ///< bytes of `total`; 0 of 0 when that is not known yet
    std::uint64_t total = 0;
};

/// Writes the job of an order into a sink as sending it would, on the calling thread. Throws quelm::Error, as
/// `writeFaxJob` does and when it was cancelled.
void writeJob(const JobOrder& order, JobSink& sink, const Cancellation& cancelled);

/// Writes the job of an order and submits it, on the calling thread. `cancelled` is asked and `progress` told
/// from there.
[[nodiscard]] SendingEnd sendJob(const JobOrder& order, const Cancellation& cancelled,
                                 const std::function<void(const SendingProgress&)>& progress);

/// Sends one job at a time, without keeping the main loop from its work.
class JobSending {
public:
    using Ended = std::function<void(const SendingEnd&)>;

    JobSending();
    /// Cancels a job that is being sent, and waits for that.
    ~JobSending();

    /// Starts sending; `ended` is called on the main loop, once. None is being sent already.
    void start(JobOrder order, Ended ended);

    /// Asks for the end of the sending, which `ended` is told of as usual.
    void cancel() { task_.cancel(); }

    bool running() const { return task_.running(); }

    /// How far the sending is now.
    SendingProgress progress() const;

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
    BackgroundTask task_;
};

} // namespace quelm

#endif
