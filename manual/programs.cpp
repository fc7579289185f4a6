// Takes the commands and options from where the programs parse with them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "manual/programs.h"

#include "device/command_line.h"
#include "driver/cli/command_line.h"
#include "driver/phonebook/fennodial_program.h"

#include <CLI/CLI.hpp>

namespace quelm {

std::vector<CommandView> describedPrograms()
{
    CommandLine driver;
    CommandLine desktop;
    device::DeviceCommandLine device;
    return {viewOf(*driverProgram(driver)), viewOf(*desktopProgram(desktop)), viewOf(*fennodialProgram()),
            viewOf(*device::deviceProgram(device))};
}

} // namespace quelm
