// Puts jobs into the outbox, lists, cancels and repeats them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/documents/file_sink.h"
#include "driver/jobs/queue_inquiry.h"
#include "driver/outbox/card_line.h"
#include "driver/outbox/job_file_copy.h"
#include "driver/outbox/outbox_checks.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_parts.h"
#include "driver/outbox/outbox_steps.h"

#include <utility>

namespace quelm {
namespace {

/// A job's folder that is removed unless it became a job's.
class NewFolder {
public:
    explicit NewFolder(const OutboxFolder& outbox) : outbox_(outbox), entry(outbox.makeEntry()) {}
    ~NewFolder()
    {
        if (!isKept)
            outbox_.drop(entry);
    }
    NewFolder(const NewFolder&) = delete;
    NewFolder& operator=(const NewFolder&) = delete;

private:
    const OutboxFolder& outbox_;

public:
    OutboxFolder::Entry entry;
    bool isKept = false;
};

/// Puts a job in whose files are complete; its number.
int putIn(OutboxParts& parts, NewFolder& files, LogRow& row)
{
    if (const auto* file = std::get_if<FileTarget>(&row.target);
        file != nullptr && !file->path.starts_with('/'))
        throw Error(
            localized("%s: cannot be the destination of a job in the outbox; name a file with its whole "
                      "path",
                      file->path));
    if (!row.isUnattended) {
        row.state = row.before = OutboxState::handingOver;
        row.token = newToken();
    }
    parts.log.transaction([&] {
        row.number = parts.log.add(row);
        static_cast<void>(parts.log.find(row.number)); // it can be read again
        beforeOutboxStep("name the job's folder");
        parts.folder.publish(files.entry, row.number);
    });
    files.isKept = true;
    if (!row.isUnattended || row.isTriedFirst)
        parts.own.insert_or_assign(row.number, OwnJob{std::move(files.entry.lock), row.isUnattended});
    else
        files.entry.lock.close();
    return row.number;
}

class NewJob final : public OutboxEntry {
public:
    explicit NewJob(OutboxParts& parts)
        : parts_(parts), files_(parts.folder), path_(files_.entry.folder.path()),
          stream_(files_.entry.folder.make("stream")), card_(files_.entry.folder.make("card")),
          streamSink_(stream_, path_ + "/stream"), cardSink_(card_, path_ + "/card"),
          cut_(streamSink_, cardSink_)
    {
    }

    JobSink& sink() override { return cut_; }

    int commit(const OutboxDraft& draft, const Document* document) override
    {
        cut_.finish();
        beforeOutboxStep("synchronise the stream");
        synchroniseJobFile(stream_, path_ + "/stream");
        const JobFolder& folder = files_.entry.folder;
        LogRow row;
        static_cast<OutboxDraft&>(row) = draft;
        row.size = cut_.size();
        row.hasStream = row.holdsStream = true;
        row.queued = currentTime();
        if (cut_.position()) {
            synchroniseJobFile(card_, path_ + "/card");
            row.chargesCard = row.holdsCard = true;
            row.cardAt = *cut_.position();
            row.cardSize = cut_.lineSize();
        } else {
            folder.remove("card");
        }
        if (document != nullptr) {
            beforeOutboxStep("keep the document");
            row.document = document->name();
            if (row.document.empty() || row.document == "." || row.document == "..")
                row.document = "document";
            const JobFolder place = folder.makeDocumentFolder();
            copyJobDocument(*document, place.make(row.document), place.path() + "/" + row.document);
            place.synchronise();
        }
        const int number = putIn(parts_, files_, row);
        parts_.sweepOld();
        return number;
    }

private:
    OutboxParts& parts_;
    NewFolder files_;
    std::string path_;
    FileHandle stream_;
    FileHandle card_;
    FileSink streamSink_;
    FileSink cardSink_;
    CardLineCut cut_;
};

/// Takes a job that its queue holds out of it. Throws quelm::Error when it is not there to be held any more.
void cancelHeld(const LogRow& row)
{
    const auto& queue = std::get<QueueTarget>(row.target);
    const QueuedJob job = findQueuedJob(queue, row.user, row.token, row.queueJob);
    const bool isThere = job.content == QueuedJob::Content::complete && !job.isCancelled;
    if (isThere && !job.isHeld)
        throw JobUnavailable(
            localized("job %d of the outbox cannot be cancelled: queue %s does not hold it any "
                      "more; look for job %d there",
                      row.number, queue.name, row.queueJob));
    if (!isThere && !job.isCancelled)
        throw JobUnavailable(
            localized("job %d of the outbox cannot be cancelled: queue %s has no job %d any more", row.number,
                      queue.name, row.queueJob));
    if (isThere && !cancelQueuedJob(queue, row.user, row.queueJob, {}, row.token))
        throw Error(
            localized("job %d of the outbox cannot be cancelled: queue %s does not cancel its job %d; "
                      "cancel it there",
                      row.number, queue.name, row.queueJob));
}

} // namespace

Outbox::Outbox(const OutboxSettings& settings) : parts_(std::make_unique<OutboxParts>(settings))
{
    parts_->sweep();
}

Outbox::~Outbox() = default;

const OutboxSettings& Outbox::settings() const { return parts_->settings; }

std::unique_ptr<OutboxEntry> Outbox::newEntry() { return std::make_unique<NewJob>(*parts_); }

std::vector<OutboxJob> Outbox::jobs(std::optional<OutboxState> state)
{
    std::vector<OutboxJob> jobs;
    for (const LogRow& row : state ? parts_->log.inState(*state) : parts_->log.all())
        jobs.push_back(parts_->jobOf(row));
    return jobs;
}

OutboxJob Outbox::job(int number) { return parts_->jobOf(parts_->log.find(number)); }

void Outbox::cancel(int number, std::time_t now)
{
    const FileHandle held = parts_->lock(number);
    const LogRow before = parts_->log.find(number);
    if (before.state == OutboxState::handedOver && before.isHeld)
        try {
            cancelHeld(before);
        } catch (const JobUnavailable&) {
            parts_->change(number, [](LogRow& row) {
                row.isHeld = false;
                row.note = localized("the queue does not hold it any more");
            });
            throw;
        }
    parts_->end(number, [now](LogRow& row) {
        requireCancellable(row);
        row.state = OutboxState::cancelled;
        row.isHeld = false;
        row.ended = now;
        row.hasStream = false;
    });
}

int Outbox::sendAgain(int number, const std::string& card, std::time_t now, bool isUnattended,
                      const std::optional<JobTarget>& target)
{
    const FileHandle held = parts_->lock(number);
    const LogRow before = parts_->log.find(number);
    requireRepeatable(before);
    const std::string line = before.chargesCard && !card.empty() ? cardLine(before.pdl, card) : std::string();

    NewFolder files(parts_->folder);
    const JobFolder& folder = files.entry.folder;
    const JobFolder source = parts_->folder.job(number);
    LogRow row;
    static_cast<OutboxDraft&>(row) = before;
    row.isUnattended = isUnattended;
    row.isTriedFirst = false;
    row.sentBefore = number;
    row.due = row.queued = now;
    if (target)
        row.target = *target;
    row.hasStream = row.holdsStream = true;
    row.size = before.size - before.cardSize + line.size();
    folder.take(source, "stream");
    if (!line.empty()) {
        row.chargesCard = row.holdsCard = true;
        row.cardAt = before.cardAt;
        row.cardSize = line.size();
        const FileHandle file = folder.make("card");
        FileSink(file, folder.path() + "/card").write(line);
        synchroniseJobFile(file, folder.path() + "/card");
    }
    if (!before.document.empty()) {
        row.document = before.document;
        folder.takeDocument(source, row.document);
    }
    return putIn(*parts_, files, row);
}

void Outbox::removeOld() { parts_->sweepOld(); }

std::optional<std::time_t> Outbox::nextDue(std::time_t now)
{
    std::optional<std::time_t> next;
    for (const LogRow& row : parts_->log.inState(OutboxState::waiting))
        if (!row.isOverdue(now) && (!next || row.due < *next))
            next = row.due;
    return next;
}

} // namespace quelm
