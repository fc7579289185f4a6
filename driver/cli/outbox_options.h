// The command `outbox` on the command line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_OUTBOX_OPTIONS_H
#define DRIVER_CLI_OUTBOX_OPTIONS_H

#include "driver/cli/job/job_options.h"

#include <vector>

namespace CLI {
class App;
}

namespace quelm {

enum class OutboxAction { none, list, show, cancel, send, resend, run };

/// What the user asked for.
struct OutboxRequest {
    OutboxAction action = OutboxAction::none;
    std::vector<int> numbers; ///< of jobs; all but `list` and `run` name at least one
    bool asJson = false;
    bool dryRun = false;      ///< say what would be done, and do nothing
    bool yes = false;         ///< also what the device may have already
    bool wait = false;        ///< of `run`: until nothing waits
    bool quiet = false;       ///< of `run`: asks nothing
    bool withoutCard = false; ///< of `resend`
    JobOptions job;           ///< of `resend`: recipients, card, destination
};

/// Adds the actions below the command `outbox`; parsing fills `request`, which must outlive it.
void addOutboxActions(CLI::App& command, OutboxRequest& request);

} // namespace quelm

#endif
