// The program quelm-desktop behind its command line: a driver with its windows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_APPLICATION_H
#define DRIVER_DESKTOP_APPLICATION_H

#include "driver/core/driver.h"
#include "driver/jobs/job_target.h"
#include "driver/outbox/outbox.h"
#include "driver/plugin/fax_session.h"

#include <string>
#include <vector>

namespace quelm {

/// How the desktop is started.
struct DesktopOptions {
    DriverOptions driver;
    Pdl pdl = Pdl::dsc;                         ///< the form of jobs, unless the user chose one in the window
    std::string document;                       ///< to open first; may be empty
    std::string creator;                        ///< the program, as jobs name it
    OutboxSettings outbox = {};                 ///< the user's; without a folder there is none
    std::vector<NamedTarget> destinations = {}; ///< of the configuration
    std::string destination = {};               ///< the name of the default one; empty for none
};

/// Starts the driver, shows its main window and returns when that is closed; SIGINT, SIGTERM and SIGHUP
/// close it. Throws quelm::Error when there is no display or the driver cannot start.
void runDesktop(const DesktopOptions& options);

/// Shows `line`, why the desktop could not be started, in a window of its own, and returns when that is
/// closed; SIGINT, SIGTERM and SIGHUP close it. Does nothing where there is no display.
void tellStartFailure(const std::string& line);

} // namespace quelm

#endif
