// Where the driver finds its installation, its user and its settings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_INSTALLATION_H
#define DRIVER_CONFIG_INSTALLATION_H

#include <string>

namespace quelm {

/// An existing folder as an absolute path without a trailing "/"; for an empty text, the folder of
/// the running program. Throws quelm::Error when there is no such folder.
std::string resolveHome(const std::string& given);

/// The user's name, or for an empty text the login name of the process. Throws quelm::Error for a
/// name that cannot name a file, as phonebooks and option files are named after it.
std::string resolveUser(const std::string& given);

/// The user's folder for files of one kind: what the variable says ("XDG_DATA_HOME"), if that is an absolute
/// path, or `belowHome` (".local/share") in his home folder, by HOME or by his account. Empty when nothing
/// says.
std::string xdgFolder(const char* variable, const char* belowHome);

/// The outbox of this account: quelm/outbox in the XDG state folder. Empty when nothing says where that is.
std::string outboxFolder();

/// The component of an installation.
std::string defaultComponent(const std::string& home);

/// The file of a user's kept options, below the folder of settings or, when that text is empty, below
/// quelm in the XDG config folder.
std::string featureFilePath(const std::string& configDirectory, const std::string& user);

/// Makes sure that an installation has its folder db/, in which the component makes its own.
/// What cannot be made shows when the component starts.
void prepareInstallation(const std::string& home);

} // namespace quelm

#endif
