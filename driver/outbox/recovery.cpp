// Finds out what became of the jobs that killed programs were handing over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "base/write_target.h"
#include "driver/jobs/queue_inquiry.h"
#include "driver/outbox/job_stream.h"
#include "driver/outbox/outbox.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_parts.h"
#include "driver/outbox/outbox_steps.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

namespace quelm {
namespace {

/// What became of a job.
struct Finding {
    enum class Kind {
        nothing,  ///< of it went out
        whole,    ///< its destination has it
        uncertain ///< nobody can say
    };
    Kind kind = Kind::uncertain;
    std::string place = {};
    int queueJob = 0;
    bool isHeld = false;
};

/// The file of a job is there in its place, or still beside it, or nobody can say.
Finding findFile(const LogRow& row, const std::string& path)
{
    const WriteTarget target = findWriteTarget(path);
    if (target.error != 0 || !target.problem.empty())
        return {};
    struct stat beside = {};
    if (::fstatat(target.folder.get(), preparedName(row).c_str(), &beside, AT_SYMLINK_NOFOLLOW) == 0) {
        beforeOutboxStep("remove the file beside the destination");
        if (::unlinkat(target.folder.get(), preparedName(row).c_str(), 0) == 0)
            return {Finding::Kind::nothing};
        return {};
    }
    if (errno != ENOENT)
        return {};
    if (row.inode == LogRow::noFile)
        return {Finding::Kind::nothing};
    const bool isThere = target.present && static_cast<std::int64_t>(target.present->st_ino) == row.inode;
    return isThere ? Finding{Finding::Kind::whole, path} : Finding{};
}

/// Asks the queue; nothing while it cannot be asked, or what there is of the job is still in it.
std::optional<Finding> askQueue(const LogRow& row, const QueueTarget& target, const Transfer& transfer)
{
    QueueLimits limits;
    limits.answer = limits.connect; // nobody waits for the fax meanwhile, and others do
    try {
        const QueuedJob job = findQueuedJob(target, row.user, row.token, row.queueJob, limits, transfer);
        switch (job.content) {
        case QueuedJob::Content::absent:
            // A job of which the log has the number was there, and its server may have forgotten it since.
            return Finding{row.queueJob == 0 ? Finding::Kind::nothing : Finding::Kind::uncertain};
        case QueuedJob::Content::incomplete:
            beforeOutboxStep("take the job out of its queue");
            if (!job.isCancelled && !cancelQueuedJob(target, row.user, job.number, limits, row.token))
                return std::nullopt;
            return Finding{Finding::Kind::nothing};
        case QueuedJob::Content::complete:
            break;
        }
        const std::string place = localized("%s, job %d", localized("queue %s", target.name), job.number);
        return Finding{job.isCancelled ? Finding::Kind::uncertain : Finding::Kind::whole, place, job.number,
                       job.isHeld};
    } catch (const Error&) {
        return std::nullopt;
    }
}

std::optional<Finding> find(const LogRow& row, std::time_t now, const Transfer& transfer)
{
    if (!row.isBegun)
        return Finding{Finding::Kind::nothing};
    if (row.token.empty())
        return Finding{}; // there is nothing to find it by
    if (const auto* queue = std::get_if<QueueTarget>(&row.target)) {
        const auto finding = askQueue(row, *queue, transfer);
        // A server that is gone for good must not keep its job from its user.
        constexpr std::time_t patience = 24 * 3600;
        return finding || now - std::max(row.due, row.queued) <= patience ? finding : Finding{};
    }
    const auto* file = std::get_if<FileTarget>(&row.target);
    return file != nullptr && row.inode != LogRow::specialFile ? findFile(row, file->path) : Finding{};
}

void settle(LogRow& row, const Finding& finding, std::time_t now)
{
    switch (finding.kind) {
    case Finding::Kind::whole:
        row.state = OutboxState::handedOver;
        row.place = finding.place;
        row.queueJob = finding.queueJob;
        row.isHeld = finding.isHeld;
        row.note.clear();
        break;
    case Finding::Kind::nothing:
        // A job that its own program was to hand over at once was nothing before.
        if (row.before != OutboxState::handingOver) {
            row.state = row.before;
            return;
        }
        row.state = OutboxState::failed;
        // What failed before its own program could say so stays for its user to see.
        row.isUnattended = true;
        row.note = localized("the program that was to hand it over ended before anything of it went out");
        break;
    case Finding::Kind::uncertain:
        row.state = OutboxState::uncertain;
        row.note =
            localized("the program that handed it over ended on the way; look at the destination, which "
                      "may have it, before sending it again");
        break;
    }
    row.ended = now;
}

/// A job's lock; none for one whose folder is gone, which nobody can hold either.
FileHandle lockIfThere(OutboxParts& parts, int number)
{
    try {
        return parts.lock(number);
    } catch (const JobDamaged&) {
        return {};
    }
}

/// Looks at a job that its queue held when it was last asked.
void askAbout(OutboxParts& parts, const LogRow& row, std::time_t now, const Transfer& transfer)
{
    QueueLimits limits;
    limits.answer = limits.connect;
    const QueuedJob job =
        findQueuedJob(std::get<QueueTarget>(row.target), row.user, row.token, row.queueJob, limits, transfer);
    const bool isThere = job.content == QueuedJob::Content::complete;
    if (!job.isCancelled && (!isThere || job.isHeld))
        return;
    parts.end(row.number, [&](LogRow& changed) {
        changed.isHeld = false;
        if (!job.isCancelled) {
            changed.note = localized("the queue did not hold it until its time");
            return;
        }
        changed.state = OutboxState::cancelled;
        changed.ended = now;
        changed.hasStream = false;
        changed.note = localized("it was cancelled in its queue");
    });
}

} // namespace

void Outbox::askAboutHeld(std::time_t now, const Transfer& transfer)
{
    for (const LogRow& listed : parts_->log.inState(OutboxState::handedOver)) {
        if (transfer.isCancelled())
            return;
        if (!listed.waitsInQueue(now) || !std::holds_alternative<QueueTarget>(listed.target))
            continue;
        try {
            const FileHandle held = parts_->lock(listed.number);
            const LogRow row = parts_->log.find(listed.number);
            if (row.waitsInQueue(now))
                askAbout(*parts_, row, now, transfer);
        } catch (const Error&) {
            continue; // somebody works with it, or its server cannot be asked
        }
    }
}

std::vector<OutboxJob> Outbox::settleOrphans(std::time_t now, const Transfer& transfer)
{
    std::vector<OutboxJob> settled;
    for (const LogRow& listed : parts_->log.inState(OutboxState::handingOver)) {
        if (parts_->own.contains(listed.number))
            continue;
        try {
            const FileHandle held = lockIfThere(*parts_, listed.number);
            const LogRow row = parts_->log.find(listed.number);
            if (row.state != OutboxState::handingOver)
                continue;
            const auto finding = find(row, now, transfer);
            if (!finding)
                continue;
            beforeOutboxStep("settle the job");
            LogRow end;
            parts_->end(row.number, [&](LogRow& changed) {
                settle(changed, *finding, now);
                end = changed;
            });
            settled.push_back(parts_->jobOf(end));
        } catch (const JobUnavailable&) {
            continue; // its program lives, or another one settles it
        }
    }
    return settled;
}

} // namespace quelm
