// From a filled job and a document to the place that takes it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/write_document.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/version.h"
#include "driver/handover/outbox_access.h"
#include "driver/handover/send_time.h"
#include "driver/outbox/outbox_sender.h"

#include <optional>
#include <string_view>

namespace quelm {
namespace {

/// Takes a job and forgets it.
class DroppingSink final : public JobSink {
public:
    void write(std::string_view /*bytes*/) override {}
};

/// Says how far the job has come: its writing first, its sending behind that.
class ShownProgress {
public:
    explicit ShownProgress(const JobTarget& target) : isFile_(std::holds_alternative<FileTarget>(target))
    {
        line_.emplace(localized("Writing the job"));
    }

    void show(std::uint64_t done, std::uint64_t total) { line_->show(done, total); }

    /// A job that is cut off on its way can do harm at the device. So a signal is no sudden end from here on.
    void beginSending()
    {
        line_.reset();
        line_.emplace(localized("Sending the job"));
        if (!isFile_)
            interruption_.emplace();
    }

    /// Wiped, so that something else can be written.
    void wipe() { line_->wipe(); }

private:
    bool isFile_;
    // The signal is raised again when all else is done.
    std::optional<Interruption> interruption_;
    std::optional<ProgressLine> line_;
};

std::string waitingLine(const SubmissionEnd& end, const std::string& document, std::size_t recipients,
                        std::time_t now, const OutboxSettings& outbox)
{
    const std::string sender = senderSentence(senderOf(outbox));
    std::string text =
        end.due > now
            // Translators: a job's number, its document, how many recipients, "tomorrow at 04:05" and the
            // like, and a sentence about what sends the job then.
            ? localizedCount("job %d in the outbox: fax job of %s for %d recipient waits until %s; %s",
                             "job %d in the outbox: fax job of %s for %d recipients waits until %s; %s",
                             recipients, end.number, document, recipients, shownMoment(end.due, now), sender)
            : localizedCount("job %d in the outbox: fax job of %s for %d recipient waits to be sent; %s",
                             "job %d in the outbox: fax job of %s for %d recipients waits to be sent; %s",
                             recipients, end.number, document, recipients, sender);
    return end.reason.empty() ? text : text + "; " + end.reason;
}

std::string handedOverLine(const SubmissionEnd& end, const JobTarget& target, const std::string& document,
                           std::size_t recipients, std::time_t now)
{
    const auto& place = end.receipt.place;
    if (end.kind == SubmissionEnd::Kind::held)
        // Translators: a queue and job, its document, how many recipients, "tomorrow at 04:05" and the like.
        return localizedCount("%s: fax job of %s for %d recipient handed over, and held until %s",
                              "%s: fax job of %s for %d recipients handed over, and held until %s",
                              recipients, place, document, recipients, shownMoment(end.due, now));
    if (std::holds_alternative<FileTarget>(target))
        // Translators: a file, its document.
        return localizedCount("%s: fax job of %s for %d recipient", "%s: fax job of %s for %d recipients",
                              recipients, place, document, recipients);
    // Translators: a device or queue, its document.
    return localizedCount("%s: fax job of %s for %d recipient handed over",
                          "%s: fax job of %s for %d recipients handed over", recipients, place, document,
                          recipients);
}

} // namespace

Document openDocument(const std::string& path)
{
    auto document = Document::open(path);
    for (const auto& warning : document.warnings())
        log(Severity::warning, warning);
    return document;
}

JobFacts factsOfNow()
{
    JobFacts facts;
    facts.creator = programAndVersion("quelm-driver");
    facts.now = localTime();
    return facts;
}

bool waits(const Submission& submission) { return submission.toOutbox || submission.sendAt.has_value(); }

void requireUsableTarget(const Submission& submission)
{
    const auto* queue = std::get_if<QueueTarget>(&submission.target);
    if (queue != nullptr && (queue->name.empty() || !isPlainText(queue->name)))
        throw Error(localized("a queue is named by a text without control characters; list queues with "
                              "lpstat -e"));
    const auto* file = std::get_if<FileTarget>(&submission.target);
    if (file != nullptr && file->path == "-" && waits(submission))
        throw Error(localized("a fax job for standard output cannot wait until its time; write it to a "
                              "file, or send it now with --send-now"));
}

void writeDocument(FaxSession& session, const Document& document, const Submission& submission,
                   const OutboxSettings& outbox, const std::function<void(const SubmissionEnd&)>& tell)
{
    requireUsableTarget(submission);
    ShownProgress progress(submission.target);
    const auto opened = outboxFor(submission.target, waits(submission), outbox);
    const auto show = [&progress](std::uint64_t done, std::uint64_t total) { progress.show(done, total); };
    JobFacts facts = factsOfNow();
    facts.progress = show;
    Transfer transfer;
    transfer.progress = show;
    transfer.cancelled = &Interruption::requested;
    SubmissionEnd end;
    try {
        end = submit(opened.get(), session, document, submission, facts, currentTime(), transfer,
                     [&progress] { progress.beginSending(); });
    } catch (const Error& error) {
        // The signal that comes next leaves nobody who could tell.
        if (Interruption::requested()) {
            progress.wipe();
            writeUnderProgramName(oneLine(error.what()));
        }
        throw;
    }
    progress.wipe();
    tell(end);
}

void tryDocument(FaxSession& session, const Document& document, Pdl pdl)
{
    DroppingSink sink;
    writeFaxJob(session, document, pdl, sink, factsOfNow());
}

std::string endLine(const SubmissionEnd& end, const JobTarget& target, const std::string& document,
                    std::size_t recipients, std::time_t now, const OutboxSettings& outbox)
{
    if (end.kind == SubmissionEnd::Kind::waiting)
        return waitingLine(end, document, recipients, now, outbox);
    auto text = handedOverLine(end, target, document, recipients, now);
    return end.receipt.note.empty() ? text : text + "; " + end.receipt.note;
}

} // namespace quelm
