// The device's command line, taken apart but not yet acted upon.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_COMMAND_LINE_H
#define DEVICE_COMMAND_LINE_H

#include "device/read_command.h"
#include "device/serve_command.h"

#include <memory>
#include <string>

namespace CLI {
class App;
}

namespace quelm::device {

enum class DeviceCommand { none, read, serve };

struct DeviceCommandLine {
    DeviceCommand command = DeviceCommand::none; ///< none only beside `information`
    ReadOptions read;
    ServeOptions serve;
    /// Not empty when the user asked for help or the version: print it and do nothing else.
    std::string information;
};

/// The commands and options of quelm-device, for those who parse with them and those who describe them.
/// Parsing fills `line`, which must outlive the program.
std::shared_ptr<CLI::App> deviceProgram(DeviceCommandLine& line);

/// Takes `argv` apart. Throws UsageError with one line when it cannot be understood.
DeviceCommandLine parseDeviceCommandLine(int argc, const char* const* argv);

} // namespace quelm::device

#endif
