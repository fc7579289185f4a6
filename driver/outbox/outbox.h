// The outbox: jobs that wait, are being handed over, were handed over, failed or are uncertain.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_H
#define DRIVER_OUTBOX_OUTBOX_H

#include "driver/documents/document.h"
#include "driver/documents/sink.h"
#include "driver/jobs/output.h"
#include "driver/outbox/outbox_job.h"
#include "driver/outbox/outbox_settings.h"

#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

class OutboxParts;

/// A job on its way into the outbox. Nothing of it is seen before `commit`; destroyed before that, it leaves
/// nothing.
class OutboxEntry {
public:
    virtual ~OutboxEntry() = default;

    /// Takes the print stream, into a file that only its owner can read.
    virtual JobSink& sink() = 0;

    /// Puts the job in, durably; its number. `document` is kept with it when it is not null. A job that is
    /// unattended waits; another one is being handed over, by this process, which keeps its lock until then,
    /// as it does for one that is tried first. Throws quelm::Error, and nothing
    /// of it stays, when that fails. Called once, last.
    virtual int commit(const OutboxDraft& draft, const Document* document) = 0;
};

/// How a handing over ended.
struct HandoverEnd {
    /// handedOver, waiting (nothing went out, and it is tried again: a queue that was to hold the job would
    /// not), failed or uncertain.
    OutboxState state = OutboxState::failed;
    Receipt receipt;        ///< of one that was handed over
    std::string trouble;    ///< of one that was not: one line
    bool cancelled = false; ///< the user ended it
    /// The queue keeps the job until its time.
    bool isHeld = false;
};

/// The outbox in a folder: an SQLite log and, for each job, its files. Whatever moment a program is killed
/// at, the log says what became of each job: it is durable before a job's first byte goes out and after its
/// last.
///
/// Several programs may use one outbox. While one hands a job over, it holds the job's lock, which ends with
/// the program: a job that is being handed over and has no lock is one whose program was killed
/// (`settleOrphans`).
///
/// Belongs to the thread that made it. Operations throw quelm::Error when the log cannot be read or written.
class Outbox {
public:
    /// Opens the outbox, and removes what killed programs left of unfinished entries, and with `keepDays` 0
    /// what was handed over or cancelled. Throws quelm::Error when the folder cannot be made, is somebody
    /// else's or open to others, or the log is damaged or a later version's; it is left as it is then.
    explicit Outbox(const OutboxSettings& settings);
    ~Outbox();
    Outbox(const Outbox&) = delete;
    Outbox& operator=(const Outbox&) = delete;

    [[nodiscard]] const OutboxSettings& settings() const;

    [[nodiscard]] std::unique_ptr<OutboxEntry> newEntry();

    /// All jobs, or those in one state, by their numbers.
    [[nodiscard]] std::vector<OutboxJob> jobs(std::optional<OutboxState> state = {});

    /// One job. Throws quelm::Error when there is none of that number.
    [[nodiscard]] OutboxJob job(int number);

    /// Hands a job over: one that waits, failed or is uncertain, or that this process put in to be handed
    /// over at once. Before its time (more than 5 minutes) a print queue is asked to hold it until then; what
    /// a queue will not hold waits here (`HandoverEnd::state` is waiting, and `trouble` says why). Cancelled
    /// before a byte went out, the job is what it was. A job that was not `isUnattended`, or is tried first,
    /// and failed is removed. `atOnce`: it goes out now although its time is to come.
    ///
    /// Throws WaitingUnnoted when a queue will not hold the job and that it waits cannot be written down; it
    /// waits all the same as soon as this process lets go of it (`settleOrphans`).
    ///
    /// Once it is handed over, the credit card's number is taken out of what is kept.
    ///
    /// Throws quelm::Error, with nothing changed, when there is no such job, it is being handed over by
    /// another program, was cancelled or was handed over already.
    HandoverEnd handOver(int number, std::time_t now, const Transfer& transfer = {}, bool atOnce = false);

    /// Cancels a job that waits, failed or is uncertain, and removes its print stream. A job that a queue
    /// holds is cancelled there, too. Throws quelm::Error, with nothing changed, for any other.
    void cancel(int number, std::time_t now);

    /// Puts in again a job that was handed over, failed or is uncertain, with its bytes; its new number. It
    /// goes to `target`, or without one where it went before. A job that charged a credit card gets `card`;
    /// empty: it goes out without one. Throws quelm::Error when its print stream is not kept, or `card` is no
    /// card's number.
    int sendAgain(int number, const std::string& card, std::time_t now, bool isUnattended,
                  const std::optional<JobTarget>& target = {});

    /// Settles jobs that killed programs were handing over. A job for a queue is looked for there by the
    /// token in its name: it was handed over; or it is taken out there and is what it was before (one that
    /// was not unattended failed). A file: it is there or not. A device's job is uncertain. A queue that
    /// cannot be asked leaves its job as it is; for a day, then it is uncertain. The jobs that were settled.
    std::vector<OutboxJob> settleOrphans(std::time_t now, const Transfer& transfer = {});

    /// Asks the queues about the jobs that they hold and whose time has not come: one that its queue let go
    /// early is not held any more, one that was cancelled there is cancelled, with a note. What cannot be
    /// asked, or the queue does not know any more, stays as it is.
    void askAboutHeld(std::time_t now, const Transfer& transfer = {});

    /// Removes what is older than `keepDays`, as far as that can be done now. It was that old, too, when the
    /// clock was looked at a day or more before: neither a clock that is put forward by mistake nor a fixed
    /// one removes anything. A job that is put in does so, too.
    void removeOld();

    /// When the next waiting job is due; nothing when none waits. Overdue ones do not count.
    [[nodiscard]] std::optional<std::time_t> nextDue(std::time_t now);

private:
    std::unique_ptr<OutboxParts> parts_;
};

} // namespace quelm

#endif
