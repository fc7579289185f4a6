// The print queues in the order in which the main window offers them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_QUEUE_NAMES_H
#define DRIVER_DESKTOP_SENDING_QUEUE_NAMES_H

#include <functional>
#include <string>
#include <vector>

namespace quelm {

/// The names of the print queues, the default one first. Asks `cancelled` now and then, on any thread. Throws
/// quelm::Error when they are not known.
std::vector<std::string> queueNames(const std::function<bool()>& cancelled);

} // namespace quelm

#endif
