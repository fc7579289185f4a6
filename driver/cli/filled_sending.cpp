// From a filled job to its end, with words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/filled_sending.h"

#include "base/clock.h"
#include "driver/cli/job/say.h"
#include "driver/cli/job/write_document.h"
#include "driver/handover/held_options.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"

namespace quelm {

Submission submissionOf(FilledJob& job, const JobTarget& target, std::time_t begun)
{
    Submission submission;
    submission.target = target;
    submission.user = job.user();
    submission.pdl = job.pdl();
    submission.sendAt = stillAhead(chosenMoment(job.driver(), begun), currentTime());
    submission.options = heldOptions(job.driver());
    return submission;
}

void sendFilled(FilledJob& job, const Document& document, const std::string& name,
                const Submission& submission)
{
    const auto* file = std::get_if<FileTarget>(&submission.target);
    const bool toStandardOutput = file != nullptr && file->path == "-";
    const auto now = currentTime();
    requireUsableTarget(submission);
    // What a plain file holds can be looked at; all else goes, now or later. A job for nobody is refused.
    if ((file == nullptr || waits(submission)) && job.recipientCount() > 0) {
        JobPlan plan{submission.target, submission.sendAt, submission.toOutbox};
        plan.leavesKeptCard = job.leavesKeptCard();
        for (const auto& line : summaryLines(summaryOf(job.driver(), job.handover(), &document, plan), now))
            say(line);
    }
    const auto tell = [&](const SubmissionEnd& end) {
        if (toStandardOutput)
            return job.tellKeptCard();
        say(endLine(end, submission.target, name, job.recipientCount(), now, job.outbox()) +
            behindSummary(job.remarks()));
    };
    writeDocument(job.session(), document, submission, job.outbox(), tell);
}

} // namespace quelm
