// How the driver is to be started: the command line over the configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_DRIVER_SETUP_H
#define DRIVER_CLI_DRIVER_SETUP_H

#include "driver/cli/command_line.h"
#include "driver/core/driver.h"
#include "driver/outbox/outbox.h"
#include "driver/plugin/fax_session.h"

namespace quelm {

struct DriverSetup {
    DriverOptions driver;
    Pdl pdl = Pdl::dsc;
    OutboxSettings outbox; ///< without a folder where this account has none
};

/// Reads the configuration file, the user's own when none is named, and puts what the command line
/// says over it. Throws Error when the file cannot be used, UsageError for an impossible --now or
/// --device-snmp.
DriverSetup setUpDriver(const CommandLine& line);

/// The same for a command that chooses for itself alone and ends with what fails first: the option values are
/// not kept, and failures are held until the command releases them.
DriverSetup setUpForOneCommand(const CommandLine& line);

} // namespace quelm

#endif
