// Hands a job of the outbox over, so that the log knows at any moment how far that is.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"
#include "base/error.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/write_target.h"
#include "driver/jobs/cups_destination.h"
#include "driver/outbox/job_file_copy.h"
#include "driver/outbox/job_stream.h"
#include "driver/outbox/outbox.h"
#include "driver/outbox/outbox_checks.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_parts.h"
#include "driver/outbox/outbox_steps.h"

#include <sys/stat.h>

#include <exception>
#include <optional>
#include <utility>

namespace quelm {
namespace {

/// Takes what is written into a file that appears whole.
class AtomicFileSink final : public JobSink {
public:
    explicit AtomicFileSink(AtomicFile& file) : file_(file) {}
    void write(std::string_view bytes) override { file_.write(bytes); }

private:
    AtomicFile& file_;
};

/// True when the job goes to what is no ordinary file, such as a fifo.
bool isSpecial(const std::string& path)
{
    const WriteTarget target = findWriteTarget(path);
    return target.present && !S_ISREG(target.present->st_mode);
}

/// Notes that a job whose files are damaged did not go out, so that it keeps no others from going.
HandoverEnd failDamaged(OutboxParts& parts, int number, std::time_t now, const std::string& trouble)
{
    HandoverEnd end;
    end.trouble = trouble;
    const LogRow row = parts.change(number, [&](LogRow& changed) {
        requireReady(changed);
        // What may have gone out before stays uncertain.
        if (changed.state == OutboxState::waiting)
            changed.state = OutboxState::failed;
        changed.ended = now;
        changed.note = trouble;
    });
    end.state = row.state;
    return end;
}

/// One handing over, by a process that has locked the job.
class Delivery {
public:
    Delivery(OutboxParts& parts, int number, std::time_t now, const Transfer& transfer)
        : parts_(parts), number_(number), now_(now), transfer_(transfer), files_(parts.folder.job(number))
    {
    }

    HandoverEnd run(bool isOwn, bool atOnce)
    {
        isOwn_ = isOwn;
        begin(isOwn, atOnce);
        HandoverEnd end = deliver();
        note(end);
        return end;
    }

private:
    void begin(bool isOwn, bool atOnce)
    {
        // Ahead of the change: to look at a path may take a while.
        const LogRow found = parts_.log.find(number_);
        const auto* file = std::get_if<FileTarget>(&found.target);
        const bool goesToSpecial = file != nullptr && isSpecial(file->path);
        beforeOutboxStep("begin to hand over");
        row_ = parts_.change(number_, [&](LogRow& row) {
            if (!isOwn || row.state != OutboxState::handingOver)
                requireReady(row);
            requireKeptStream(row);
            if (row.state != OutboxState::handingOver)
                row.before = row.state;
            row.state = OutboxState::handingOver;
            row.isBegun = true;
            row.isHeld = false;
            row.token = newToken();
            row.queueJob = 0;
            row.inode = goesToSpecial ? LogRow::specialFile : LogRow::noFile;
        });
        if (!atOnce && std::holds_alternative<QueueTarget>(row_.target) && row_.due - now_ > leastHold)
            holdUntil_ = row_.due;
    }

    HandoverEnd deliver()
    {
        HandoverEnd end;
        try {
            beforeOutboxStep("open the destination");
            if (std::holds_alternative<FileTarget>(row_.target) && row_.inode != LogRow::specialFile)
                end.receipt = deliverToFile(std::get<FileTarget>(row_.target).path);
            else
                end.receipt = deliverElsewhere();
            end.state = OutboxState::handedOver;
            end.isHeld = holdUntil_.has_value();
        } catch (const DeliveryInDoubt& doubt) {
            end.state = OutboxState::uncertain;
            end.trouble = doubt.what();
        } catch (const HoldRefused& refusal) {
            end.state = OutboxState::waiting;
            end.trouble = refusal.what();
        } catch (const Error& error) {
            end.state = OutboxState::failed;
            end.trouble = error.what();
        } catch (const std::exception& error) {
            end.state = isDelivering_ ? OutboxState::uncertain : OutboxState::failed;
            end.trouble = error.what();
        }
        end.cancelled = end.state != OutboxState::handedOver && transfer_.isCancelled();
        const bool isNothingOut = end.state == OutboxState::failed || end.state == OutboxState::waiting;
        isAsItWas_ = end.cancelled && isNothingOut && !isOwn_;
        if (isAsItWas_)
            end.state = row_.before;
        // What an earlier handing over may have brought there is there all the same.
        else if (end.state == OutboxState::failed && row_.before == OutboxState::uncertain)
            end.state = OutboxState::uncertain;
        return end;
    }

    Receipt deliverElsewhere()
    {
        JobLabel label{row_.title, row_.user, row_.token, holdUntil_, {}};
        label.created = [this](int job) {
            beforeOutboxStep("note the queue's number");
            parts_.change(number_, [job](LogRow& row) { row.queueJob = job; });
            beforeOutboxStep("send the document to the queue");
        };
        const auto destination = openDestination(row_.target, label, nullptr);
        if (row_.chargesCard)
            destination->restrictToOwner();
        writeStream(files_, row_, destination->sink());
        beforeOutboxStep("deliver");
        isDelivering_ = true;
        Receipt receipt = destination->deliver(transfer_);
        beforeOutboxStep("go on behind the delivery");
        return receipt;
    }

    /// A file appears in one step, and whether it did can be told by its inode, whenever this process ends.
    Receipt deliverToFile(const std::string& path)
    {
        AtomicFile file(path);
        if (row_.chargesCard)
            file.restrictToOwner();
        AtomicFileSink sink(file);
        writeStream(files_, row_, sink);
        if (transfer_.isCancelled())
            throw Error(localized("%s: the job was cancelled before anything of it went out", path));
        beforeOutboxStep("complete the file");
        const auto inode = file.prepare(preparedName(row_));
        if (!inode)
            throw Error(localized("\"%s\" cannot be written: %s", path,
                                  localized("it was replaced at this moment; try again")));
        beforeOutboxStep("note the file");
        parts_.change(number_, [&](LogRow& row) { row.inode = static_cast<std::int64_t>(*inode); });
        beforeOutboxStep("put the file in its place");
        isDelivering_ = true;
        file.commit();
        beforeOutboxStep("go on behind the delivery");
        return {path, {}, 0};
    }

    void note(const HandoverEnd& end)
    {
        try {
            beforeOutboxStep("note the end");
            parts_.end(number_, [&](LogRow& row) {
                row.state = end.state;
                if (isAsItWas_)
                    return;
                // Its own program tells of it, and nothing of it stays.
                if (isOwn_ && end.state == OutboxState::failed) {
                    row.isUnattended = false;
                    row.before = OutboxState::handingOver;
                }
                row.isHeld = end.isHeld;
                row.note = end.state == OutboxState::handedOver ? end.receipt.note : end.trouble;
                if (end.state == OutboxState::handedOver) {
                    row.place = end.receipt.place;
                    row.queueJob = end.receipt.job;
                }
                if (end.state == OutboxState::waiting)
                    row.isUnattended = true;
                else
                    row.ended = now_;
            });
        } catch (const Error& error) {
            if (end.state == OutboxState::waiting && !isAsItWas_)
                throw WaitingUnnoted(
                    // Translators: a job's number, why its queue does not hold it, and why that cannot be
                    // noted.
                    localized("job %d of the outbox is to wait, for %s; that cannot be noted (%s): see "
                              "what became of it with quelm-driver outbox list",
                              number_, oneLine(end.trouble), error.what()));
            // Its user is told that it failed: what the log takes for a job that waits must not go out.
            if (isOwn_ && end.state == OutboxState::failed && row_.isUnattended)
                parts_.folder.removeJob(number_);
            // The job is where it is all the same: who asked is told that, and the log's user this.
            log(Severity::warning,
                localized("job %d of the outbox: its end cannot be noted: %s", number_, error.what()));
        }
    }

    OutboxParts& parts_;
    int number_;
    std::time_t now_;
    const Transfer& transfer_;
    JobFolder files_;
    LogRow row_;
    std::optional<std::time_t> holdUntil_;
    bool isOwn_ = false;        ///< the program that put it in hands it over for the first time
    bool isDelivering_ = false; ///< something may have gone out
    bool isAsItWas_ = false;    ///< it was cancelled before anything went out
};

} // namespace

HandoverEnd Outbox::handOver(int number, std::time_t now, const Transfer& transfer, bool atOnce)
{
    const auto own = parts_->own.extract(number);
    if (own.empty()) {
        try {
            const FileHandle held = parts_->lock(number);
            return Delivery(*parts_, number, now, transfer).run(false, atOnce);
        } catch (const JobDamaged& damage) {
            return failDamaged(*parts_, number, now, damage.what());
        }
    }
    const bool waits = own.mapped().waits;
    try {
        return Delivery(*parts_, number, now, transfer).run(true, atOnce);
    } catch (const Error&) {
        if (!waits)
            parts_->forget(number);
        throw;
    }
}

} // namespace quelm
