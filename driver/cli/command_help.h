// What the help and the manual pages of the driver's commands say beside their options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_COMMAND_HELP_H
#define DRIVER_CLI_COMMAND_HELP_H

namespace CLI {
class App;
}

namespace quelm {

/// Gives quelm-driver and each of its commands its texts and examples. Called when the commands are there.
void addDriverHelp(CLI::App& program);

/// The same for quelm-desktop.
void addDesktopHelp(CLI::App& program);

} // namespace quelm

#endif
