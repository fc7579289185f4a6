// The phonebook that a user had before his phonebooks moved.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_FORMER_PHONEBOOK_H
#define DRIVER_STORE_FORMER_PHONEBOOK_H

#include <string>

namespace quelm {

/// Copies the phonebook at `former` to `present`, once: it is looked through and copied whole or not at all,
/// and stays where it is. A file beside `present` says that this was done, so that a phonebook that the user
/// removes does not come back. Nothing happens when there is a phonebook at `present`, when `former` is
/// empty, or when what lies there is no plain file of the user's own: anybody could have laid it there.
///
/// Throws quelm::Error when the user's own phonebook cannot be copied; the next call tries again.
void takeOverPhonebook(const std::string& former, const std::string& present);

} // namespace quelm

#endif
