// Looks at a file before the loader does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_SHARED_OBJECT_H
#define BASE_SHARED_OBJECT_H

#include <string>

namespace quelm {

/// Why the loader must not be given this file, in words for the user; empty when it may. The
/// loader words all mistakes alike, and a library that was cut short (a broken download, a full
/// disk) ends the whole process.
std::string problemOfSharedObject(const std::string& file);

/// Why the loader could not load `file` just now, in its words but without the file's name.
std::string loaderMessage(const std::string& file);

} // namespace quelm

#endif
