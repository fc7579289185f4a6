// Whether what is configured about the device fits together.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_DEVICE_FIT_H
#define DRIVER_CONFIG_DEVICE_FIT_H

#include "driver/device/device_settings.h"

#include <string>

namespace quelm {

/// What does not fit together in [device], as the end of a sentence that the file begins ("has ...");
/// empty when all does. No secret is in it.
std::string deviceMismatch(const DeviceSettings& device);

/// True when the settings hold what others must not read.
[[nodiscard]] bool holdsSecret(const DeviceSettings& device);

} // namespace quelm

#endif
