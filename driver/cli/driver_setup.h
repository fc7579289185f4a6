// How the driver is to be started: the command line over the configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_DRIVER_SETUP_H
#define DRIVER_CLI_DRIVER_SETUP_H

#include "driver/cli/command_line.h"
#include "driver/core/driver.h"
#include "driver/jobs/job_target.h"
#include "driver/outbox/outbox.h"
#include "driver/plugin/fax_session.h"

#include <optional>
#include <vector>

namespace quelm {

struct DriverSetup {
    DriverOptions driver;
    Pdl pdl = Pdl::dsc;                          ///< that of the named destination, too
    OutboxSettings outbox;                       ///< without a folder where this account has none
    std::vector<NamedTarget> destinations;       ///< that the user can name; those of his own file first
    std::optional<NamedTarget> destination = {}; ///< for jobs of which nobody says where they go
};

/// Reads the configuration files, those of the XDG folders when none is named, and puts what the command line
/// says over them. Throws Error when a file cannot be used, UsageError for an impossible --now or
/// --device-snmp, and a --destination that there is not.
DriverSetup setUpDriver(const CommandLine& line);

/// @{
/// The set-up for a command that chooses for itself alone and ends with what fails first: the option values
/// are not kept, and failures are held until the command releases them.
DriverSetup forOneCommand(DriverSetup setup);
DriverSetup setUpForOneCommand(const CommandLine& line);
/// @}

} // namespace quelm

#endif
