// What the process is told from outside: where its program lies, variables, a display.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_ENVIRONMENT_H
#define BASE_ENVIRONMENT_H

#include <filesystem>
#include <string>

namespace quelm {

/// The folder of the running program; empty when the system does not say.
std::filesystem::path programFolder();

/// An environment variable, or the empty text.
std::string environmentVariable(const char* name);

/// True when the environment names a display to open windows on.
bool hasDisplay();

} // namespace quelm

#endif
