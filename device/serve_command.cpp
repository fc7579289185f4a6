// Puts the parts of the device together, and lets them work until they are to stop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/serve_command.h"

#include "base/cancellation.h"
#include "base/interruption.h"
#include "device/served_device.h"

#include <thread>

namespace quelm::device {

void runServeCommand(const ServeOptions& options)
{
    const Interruption interruption; // is the last to go: the signal then ends the program
    ServedDevice device(options);
    while (!Interruption::requested() && !(options.untilIdle && device.isDone()))
        std::this_thread::sleep_for(cancellationInterval);
    if (!Interruption::requested())
        device.requireAllMade();
}

} // namespace quelm::device
