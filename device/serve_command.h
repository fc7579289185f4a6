// The command `serve`: the device itself.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_SERVE_COMMAND_H
#define DEVICE_SERVE_COMMAND_H

#include "device/serve_options.h"

namespace quelm::device {

/// Serves until it is told to stop or, with `untilIdle`, until all is done. Throws quelm::Error when it
/// cannot begin or go on, or ends by itself and something that a job asked for was not made.
void runServeCommand(const ServeOptions& options);

} // namespace quelm::device

#endif
