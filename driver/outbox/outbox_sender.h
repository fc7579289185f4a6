// Which program will send a job that waits, and what becomes of it when the user logs out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_SENDER_H
#define DRIVER_OUTBOX_OUTBOX_SENDER_H

#include "driver/outbox/outbox.h"

#include <string>

namespace quelm {

enum class OutboxSender {
    desktop,        ///< the open desktop
    command,        ///< an `outbox run` that waits
    timer,          ///< the user's systemd timer, which ends when the user logs out
    lingeringTimer, ///< the same, which goes on without the user
    nobody,
};

/// Who sends a job that is put into this outbox now: the user's timer, which also sends when other programs
/// are closed, or else the one that lives. Asks the user's systemd within bounds of time; where there is
/// none, no timer counts.
[[nodiscard]] OutboxSender senderOf(const OutboxSettings& settings);

/// Who sends it when no program of ours runs: `timer`, `lingeringTimer` or `nobody`. Asks only the user's
/// systemd, likewise.
[[nodiscard]] OutboxSender timerSender();

/// A sentence for the user: what sends the job, and what if he closes the desktop or logs out; for nobody,
/// what to do. Without a full stop.
[[nodiscard]] std::string senderSentence(OutboxSender sender);

} // namespace quelm

#endif
