// Keeps the confirmation sheets of jobs that asked for one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_CONFIRMATION_H
#define DEVICE_CALLS_CONFIRMATION_H

#include "device/jobs/device_log.h"

namespace quelm::device {

/// Writes a job's sheet, as PDF and as text, which is to be entered then. Throws quelm::Error, which is
/// NoRoom when a disk is full.
void writeConfirmation(const StateFolder& folder, DeviceLog& log, int job);

} // namespace quelm::device

#endif
