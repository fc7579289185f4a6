// The steps at which the outbox can be interrupted, for tests that interrupt it at each.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_STEPS_H
#define DRIVER_OUTBOX_OUTBOX_STEPS_H

#include <functional>

namespace quelm {

/// Called between any two steps that last: a file written, a name given, a line of the log. It may end the
/// process, or throw what the step would on a full disk.
using OutboxStepHook = std::function<void(const char* step)>;

/// Sets the hook of this process; empty for none.
void setOutboxStepHook(OutboxStepHook hook);

/// Calls the hook ahead of `step`.
void beforeOutboxStep(const char* step);

} // namespace quelm

#endif
