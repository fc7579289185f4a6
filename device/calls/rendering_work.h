// Renders the jobs that were taken.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_RENDERING_WORK_H
#define DEVICE_CALLS_RENDERING_WORK_H

#include "device/calls/device_work.h"

namespace quelm::device {

/// Renders the oldest job that no other thread is at and that does not rest; false when there is none. A job
/// that fails for the disk's or the database's sake rests, and holds no other up.
bool renderNext(DeviceWork& work);

} // namespace quelm::device

#endif
