// Which folder may include which, and a checker that reads the sources' include lines.
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
    /// One line each, such as "model/recipient.cpp:3 includes ui/fax_dialog.h: model/ may include ...".
    std::vector<std::string> violations;
};

/// The folders that are checked, named from the project's root.
std::vector<std::string> checkedFolders();

/// Reads every source and header of the checked folders below `root` (host/, model/, ..., driver/; tests
/// may include anything and are not read). A file of the project is included as "folder/file.h", from the
/// root; a file that lies beside the including one may be named alone. Folders that do not exist are
/// passed over; a folder of sources below driver/ that has no rule is a violation.
Findings check(const std::filesystem::path& root);

} // namespace layers

#endif
