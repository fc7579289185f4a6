// Names of files as other programs hand them over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_FILE_URI_H
#define DRIVER_DESKTOP_MAIN_WINDOW_FILE_URI_H

#include <string>

namespace quelm {

/// The path, in its own bytes, that a "file:" URI names; empty when it names no file, or one of another
/// computer.
std::string fileOfThisComputer(const std::string& uri);

} // namespace quelm

#endif
