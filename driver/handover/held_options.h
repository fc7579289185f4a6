// The options that a job was made with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_HELD_OPTIONS_H
#define DRIVER_HANDOVER_HELD_OPTIONS_H

#include "driver/outbox/outbox_job.h"

namespace quelm {

class Driver;

/// The values of the options that make the driver's job again, by the names of their widgets, as
/// `DriverOptions::optionValues` takes them. What the job holds counts, not what the dialogs show: unticking
/// a box takes nothing out of a job, and a dialog that was cancelled goes on showing what was typed. Called
/// behind `prepareHandover`. The number of a credit card is not among them.
[[nodiscard]] OptionValues heldOptions(Driver& driver);

} // namespace quelm

#endif
