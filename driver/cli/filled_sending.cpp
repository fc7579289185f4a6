// From a filled job to its end, with words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/filled_sending.h"

#include "base/clock.h"
#include "base/command_line/json_answer.h"
#include "base/standard_output.h"
#include "base/texts.h"
#include "driver/cli/job/job_json.h"
#include "driver/cli/job/say.h"
#include "driver/cli/job/write_document.h"
#include "driver/handover/held_options.h"
#include "driver/handover/job_view.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"
#include "driver/outbox/outbox_sender.h"
#include "driver/widgets/widget_names.h"

namespace quelm {

namespace {

/// What standard error was told as warnings.
std::vector<std::string> warningsAbout(const FilledJob& job, const Document* document)
{
    auto warnings = job.handover().allWarnings();
    if (document != nullptr)
        warnings.insert(warnings.end(), document->warnings().begin(), document->warnings().end());
    return warnings;
}

} // namespace

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

void sendFilled(FilledJob& job, const Document& document, const Submission& submission,
                const SendingWords& words)
{
    const auto* file = std::get_if<FileTarget>(&submission.target);
    const bool toStandardOutput = file != nullptr && file->path == "-";
    const auto now = currentTime();
    requireUsableTarget(submission);
    JobPlan plan{submission.target, submission.sendAt, submission.toOutbox};
    plan.leavesKeptCard = job.leavesKeptCard();
    const auto summary = summaryOf(job.driver(), job.handover(), &document, plan);
    // What a plain file holds can be looked at; all else goes, now or later. A job for nobody is refused.
    if ((file == nullptr || waits(submission)) && job.recipientCount() > 0)
        for (const auto& line : summaryLines(summary, now))
            say(line);
    const auto tell = [&](const SubmissionEnd& end) {
        if (toStandardOutput)
            return job.tellKeptCard();
        say(endLine(end, submission.target, words.document, job.recipientCount(), now, job.outbox()) +
            behindSummary(job.remarks()));
        if (!words.asJson)
            return;
        SentJob sent{end, words.coverPicture, {}};
        if (end.kind == SubmissionEnd::Kind::waiting)
            sent.sender = senderSentence(senderOf(job.outbox()));
        writeJsonResult(sentJson(summary, warningsAbout(job, &document), sent));
    };
    writeDocument(job.session(), document, submission, job.outbox(), tell);
}

void sumUp(FilledJob& job, const Document& document, const std::optional<JobTarget>& plannedTarget,
           const Submission& submission, bool asJson)
{
    requireUsableTarget(submission);
    // A file that cannot be written to is refused; nothing of one stays.
    if (plannedTarget && std::holds_alternative<FileTarget>(*plannedTarget))
        static_cast<void>(openDestination(*plannedTarget, {document.name(), job.user()}, &document));
    tryDocument(job.session(), document, job.pdl());
    JobPlan plan{plannedTarget, submission.sendAt, submission.toOutbox};
    plan.isTimeChosen = choiceOf(job.driver(), widget_names::lanFaxSendTime) == 1;
    plan.leavesKeptCard = job.leavesKeptCard();
    const auto summary = summaryOf(job.driver(), job.handover(), &document, plan);
    if (asJson)
        return writeJsonAnswer(summaryJson(summary, warningsAbout(job, &document)));
    std::string text;
    for (const auto& line : summaryLines(summary, currentTime()))
        text += oneLine(line) + "\n";
    writeAnswer(text);
}

void answerPreview(FilledJob& job, const std::string& coverPicture)
{
    const auto summary = summaryOf(job.driver(), job.handover(), nullptr, {});
    writeJsonResult(sentJson(summary, warningsAbout(job, nullptr), {{}, coverPicture, {}}));
}

} // namespace quelm
