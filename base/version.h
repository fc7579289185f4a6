// The version of the programs, as the project has it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_VERSION_H
#define BASE_VERSION_H

#include <string>

namespace quelm {

/// A program's name and version, "quelm-driver 0.1.0": what `--version` prints, and what print jobs and the
/// desktop show of who made them.
std::string programAndVersion(const std::string& program);

} // namespace quelm

#endif
