// The command `outbox run`.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_OUTBOX_RUN_H
#define DRIVER_CLI_OUTBOX_RUN_H

#include "driver/cli/outbox_options.h"
#include "driver/outbox/outbox.h"

namespace quelm {

/// Hands over what is due and not overdue, or with --dry-run says what that is. Throws quelm::Error at its
/// end when a job was not handed over.
void runOutbox(Outbox& outbox, const OutboxRequest& request);

} // namespace quelm

#endif
