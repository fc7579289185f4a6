// What the main window says of jobs in the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_OUTBOX_TEXTS_H
#define DRIVER_DESKTOP_SENDING_OUTBOX_TEXTS_H

#include "driver/desktop/sending/outbox_sending.h"
#include "driver/outbox/outbox.h"
#include "driver/outbox/submission.h"

#include <ctime>
#include <string>

namespace quelm {

/// How a job of the outbox ended, as a message.
[[nodiscard]] std::string endedText(const OutboxJob& job, const HandoverEnd& end);

/// What became of a job whose program was killed, as a message.
[[nodiscard]] std::string settledText(const OutboxJob& job);

/// That a job that was submitted waits, or is held by its queue, as a message; `sender` is that of its
/// `SendingEnd`.
[[nodiscard]] std::string submittedText(const SubmissionEnd& end, const std::string& sender,
                                        const std::string& document, unsigned long recipients,
                                        std::time_t now);

/// What is asked about a job that is overdue, and behind it for whom it is and where it goes.
[[nodiscard]] std::string overdueText(const OutboxJob& job, std::time_t now);
[[nodiscard]] std::string overdueDetails(const OutboxJob& job);

/// What is asked before jobs are left behind.
[[nodiscard]] std::string leftBehindText(const JobsLeftBehind& left, std::time_t now);

} // namespace quelm

#endif
