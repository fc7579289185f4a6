// Where a user's phonebooks live.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONFIG_USER_PLACE_H
#define DRIVER_CONFIG_USER_PLACE_H

#include <string>

namespace quelm {

/// The folder that the component is told as the driver's own.
struct UserPlace {
    std::string location; ///< holds db/phonebook; absolute, without a trailing "/"
    /// The file that the user's phonebook was before users had folders of their own; empty where it still is.
    std::string formerPhonebook;
};

/// Finds the place of a user in an installation, and makes what it lacks.
///
/// A folder that was named (`givenHome` is not empty) and one in a build tree hold the phonebooks themselves.
/// In an installation for many users each has a folder of his own, quelm in the XDG data folder, that nobody
/// else may enter, so that nobody can lay something in the way of his phonebook. In it, db/phonebook/shared
/// leads to the machine's phonebooks for all, and fennodial to the phonebook program; both are made anew when
/// they lead elsewhere. A link that cannot be made is logged.
///
/// Throws quelm::Error when that folder cannot be made, belongs to somebody else or may be written by others.
UserPlace prepareUserPlace(const std::string& givenHome, const std::string& installation,
                           const std::string& user);

} // namespace quelm

#endif
