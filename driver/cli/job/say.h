// What a command says of its doings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_SAY_H
#define DRIVER_CLI_JOB_SAY_H

#include <string>

namespace quelm {

/// Writes a line about what will be or was done to standard error, which is no trouble and so has no
/// program's name ahead: `messageLine` of it. Nothing when the program is to be quiet.
void say(const std::string& line);

/// The same, also then: what a command was started to find out.
void sayAlways(const std::string& line);

} // namespace quelm

#endif
