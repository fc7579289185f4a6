// Sends what waits in the outbox, one program at a time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_WORKER_H
#define DRIVER_OUTBOX_OUTBOX_WORKER_H

#include "base/file_handle.h"
#include "driver/outbox/outbox.h"

#include <sys/types.h>

#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quelm {

/// What kind of program sends the outbox's jobs.
enum class WorkerKind {
    desktop, ///< an open quelm-desktop
    command, ///< `outbox run`, also when a timer starts it
};

/// A living worker, as others see it.
struct WorkerPresence {
    WorkerKind kind = WorkerKind::command;
    pid_t process = 0;
};

/// The right to send what waits in an outbox. One at a time has it, of all processes; it ends with the
/// process.
class OutboxWorker {
public:
    /// Takes the right; null when another worker lives. Throws quelm::Error when the outbox's folder cannot
    /// be used.
    static std::unique_ptr<OutboxWorker> start(const OutboxSettings& settings, WorkerKind kind);

    /// Who has the right now; nothing when nobody has, also where there is no outbox yet. Throws quelm::Error
    /// when its folder cannot be used.
    static std::optional<WorkerPresence> living(const OutboxSettings& settings);

    /// Removes what is too old, settles what killed programs left, then hands over all jobs that are due and
    /// not overdue, in the order of their times; `ended` is told of each. Stops between two jobs, and as a
    /// transfer does within one, when it is cancelled. Throws quelm::Error when the log cannot be used.
    void sendDue(Outbox& outbox, std::time_t now, const Transfer& transfer,
                 const std::function<void(const OutboxJob&, const HandoverEnd&)>& ended);

private:
    explicit OutboxWorker(FileHandle lock) : lock_(std::move(lock)) {}

    FileHandle lock_;
};

} // namespace quelm

#endif
