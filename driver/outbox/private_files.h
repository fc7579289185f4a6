// Folders and files that this user alone can read, reached without following a link.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_PRIVATE_FILES_H
#define DRIVER_OUTBOX_PRIVATE_FILES_H

#include "base/file_handle.h"

#include <sys/stat.h>

#include <string>

namespace quelm {

// `parent` is an open folder, or AT_FDCWD for a `name` that is a whole path. `path` names what is worked on
// in the quelm::Error of a failure.

/// Opens a folder. Throws when it is a link, somebody else's or open to others.
[[nodiscard]] FileHandle openPrivateFolder(int parent, const std::string& name, const std::string& path);

/// Makes a folder, whatever the umask says; false when something of that name is there.
bool makePrivateFolder(int parent, const std::string& name, const std::string& path);

/// Makes a new file, whatever the umask says, to be written and read.
[[nodiscard]] FileHandle makePrivateFile(int parent, const std::string& name, const std::string& path);

/// Opens a file to read it, or to write it, too, and makes it then when it is missing. Throws when it is no
/// plain file, somebody else's or open to others.
enum class Access { read, write };
[[nodiscard]] FileHandle openPrivateFile(int parent, const std::string& name, Access access,
                                         const std::string& path);

/// Throws when it is no plain file, somebody else's or open to others.
void requirePrivateFile(const struct stat& status, const std::string& path);

/// Closes an open file of this process to all but its user, whatever the umask said.
void closeToOthers(const FileHandle& file, const std::string& path);

/// Makes the names in a folder durable.
void synchroniseFolder(const FileHandle& folder, const std::string& path);

/// Takes away all that is in a folder, as far as that can be done; links are taken away, and not followed.
void emptyFolder(const FileHandle& folder) noexcept;

/// The same, and the folder itself; or whatever else has its name.
void removeFolder(int parent, const std::string& name) noexcept;

/// Throws the reason of an errno value.
[[noreturn]] void failOnFile(const std::string& path, int error);

} // namespace quelm

#endif
