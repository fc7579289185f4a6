// A folder for the temporary files of one run of another program, which nobody else may enter.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_GHOSTSCRIPT_PRIVATE_FOLDER_H
#define BASE_GHOSTSCRIPT_PRIVATE_FOLDER_H

#include "base/file_handle.h"

#include <string>

namespace quelm {

/// A new folder with mode 0700 below the one for temporary files, removed at the end of its life with all
/// that is in it.
///
/// Whoever uses it holds a shared lock on it (flock): the object does, and the supervisor of the program that
/// runs in it. One that nobody holds is what a run left whose programs were all killed, and the next object
/// removes it.
class PrivateFolder {
public:
    /// Throws quelm::Error when no folder can be made.
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
    FileHandle lock_;
};

} // namespace quelm

#endif
