// Sends a job of the outbox once more.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_OUTBOX_RESEND_H
#define DRIVER_CLI_OUTBOX_RESEND_H

#include "driver/cli/command_line.h"
#include "driver/cli/driver_setup.h"
#include "driver/outbox/outbox.h"

namespace quelm {

/// Sends a job again: its bytes as they went out, or, to other recipients, a job made anew of its document
/// and option values. A job that charged a credit card asks for its number, which is not kept. Throws
/// quelm::Error when it is not handed over.
void resend(const CommandLine& line, const DriverSetup& setup, Outbox& outbox);

} // namespace quelm

#endif
