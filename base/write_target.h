// Where a path leads that is to be written to, found without following a stranger's link.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_WRITE_TARGET_H
#define BASE_WRITE_TARGET_H

#include "base/file_handle.h"

#include <sys/stat.h>

#include <optional>
#include <string>

namespace quelm {

/// The place of a file that is to be written: a folder, held by its descriptor, and a name in it.
struct WriteTarget {
    FileHandle folder;                  ///< opened as a path; not open when it cannot be reached
    std::string folderPath;             ///< for messages
    std::string name;                   ///< in `folder`; empty when the path ends as those of folders do
    std::optional<struct stat> present; ///< what is there now; nothing for a new file
    bool isOpenFile = false;            ///< the system's own link to an open pipe or device, to be followed

    int error = 0;       ///< why the folder cannot be reached, as an errno value
    std::string problem; ///< why nothing may be written there: the end of a sentence for the user
};

/// Follows a path's symbolic links one by one, each looked at through the descriptor of its folder.
///
/// In a sticky folder where a group or everybody may write, such as /tmp, a link counts only when this
/// process's user or the folder's owner made it, and so does a file, device or fifo that is to be written; a
/// stranger's is a `problem`, whatever the system's own settings for that are.
[[nodiscard]] WriteTarget findWriteTarget(const std::string& path);

/// What `openat` needs besides the access mode to open what was found there, and not what a link leads to.
[[nodiscard]] int openFlags(const WriteTarget& target);

/// True when an open file is the one that was found there.
[[nodiscard]] bool isFoundFile(const FileHandle& opened, const WriteTarget& target);

} // namespace quelm

#endif
