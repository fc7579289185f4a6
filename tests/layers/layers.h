// Which folder may include and link which, and a checker that reads include lines and the build's targets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LAYERS_LAYERS_H
#define TESTS_LAYERS_LAYERS_H

#include <filesystem>
#include <string>
#include <vector>

namespace layers {

/// The outcome of one look at a tree of sources.
struct Findings {
    int files = 0;    ///< sources and headers that were read
    int includes = 0; ///< lines that include a file of the project
    /// One line each, such as "base/log.cpp:3 includes host/texts.h: base may include ...".
    std::vector<std::string> violations;
};

/// The folders that are checked, named from the project's root.
std::vector<std::string> checkedFolders();

/// Reads every source and header of the checked folders below `root` (host/, component/, base/, driver/;
/// tests may include anything and are not read). A file of the project is included as "folder/file.h", from
/// the root; one of the component from component/; a file that lies beside the including one may be named
/// alone. Folders that do not exist are passed over; a folder of sources that has no row is a violation.
Findings check(const std::filesystem::path& root);

/// Compares what the build links with the table. `rooms` has a line "FOLDER: FOLDER FOLDER..." for each room
/// of the build, which is `files` of the findings. Rows of the driver need no target in a build without the
/// driver.
Findings checkTargets(const std::filesystem::path& rooms);

} // namespace layers

#endif
