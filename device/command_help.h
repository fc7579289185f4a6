// What the help and the manual pages of the device's commands say beside their options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_COMMAND_HELP_H
#define DEVICE_COMMAND_HELP_H

namespace CLI {
class App;
}

namespace quelm::device {

/// Gives quelm-device and each of its commands its texts and examples. Called when the commands are there.
void addDeviceHelp(CLI::App& program);

} // namespace quelm::device

#endif
