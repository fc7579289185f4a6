// Gives the component the shared phonebook that was chosen in an earlier run.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_KEPT_PHONEBOOK_H
#define DRIVER_CORE_KEPT_PHONEBOOK_H

#include "driver/boundary/host_state.h"
#include "driver/core/callbacks.h"

namespace quelm {

/// Has the component take over the shared phonebook that its preferences show, through its own file chooser,
/// which does not appear, and afterwards begins where it always does. Does nothing when they show none.
/// Nothing is opened or looked at: a phonebook that is gone shows when the component lists it.
void handOverKeptPhonebook(HostState& state, Callbacks& callbacks);

} // namespace quelm

#endif
