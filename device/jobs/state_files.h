// Folders and files that the device's user alone can read, made durable.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_STATE_FILES_H
#define DEVICE_JOBS_STATE_FILES_H

#include <filesystem>
#include <string>
#include <string_view>

namespace quelm::device {

/// Throws the quelm::Error of a file or folder that the device cannot use, and why.
[[noreturn]] void failState(const std::filesystem::path& path, const std::string& reason);
/// The reason of an errno value.
[[noreturn]] void failState(const std::filesystem::path& path, int error);

/// Makes a folder of mode 0700, whatever the umask says, durably; one that is there already is closed to
/// others. Throws when that fails, or it is a link or another user's.
void makeStateFolder(const std::filesystem::path& path);

/// Throws when a file is none, a link, or another user's; closes it to others.
void requireStateFile(const std::filesystem::path& path);

/// Makes an empty file of mode 0600 when it is missing, and requires it.
void makeStateFile(const std::filesystem::path& path);

/// Closes a plain file to others and makes its content durable.
void synchroniseFile(const std::filesystem::path& path);

/// Makes the names in a folder durable.
void synchroniseFolder(const std::filesystem::path& path);

/// Gives a file, whose content is durable, or a folder another name below the same state folder, durably: the
/// folder of the new name is made when it is missing. Throws, and moves nothing, when the name is taken.
void moveDurably(const std::filesystem::path& from, const std::filesystem::path& to);

/// Moves a file or folder into `folder`, under its own name, or with "-2", "-3" and so on behind it when that
/// is taken; the new path.
std::filesystem::path setAside(const std::filesystem::path& from, const std::filesystem::path& folder);

/// The number that stands between `head` and `tail` in a name as the device writes it: from 1, without
/// leading zeros; 0 for none. One that no device reaches is none, so that others always follow.
[[nodiscard]] int numberIn(std::string_view name, std::string_view head, std::string_view tail);

/// True when there is a plain file of that name.
[[nodiscard]] bool isFile(const std::filesystem::path& path);

/// Removes a file or a folder and all that is in it, as far as that can be done; links are not followed.
void removeQuietly(const std::filesystem::path& path) noexcept;

} // namespace quelm::device

#endif
