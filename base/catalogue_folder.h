// Where the programs' catalogues of translations lie.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_CATALOGUE_FOLDER_H
#define BASE_CATALOGUE_FOLDER_H

#include <string>

namespace quelm {

/// Takes the user's language, with the catalogues in locale/ beside the running program, for what is said
/// until a driver uses those of its installation.
void useOwnTranslations();

/// The catalogues of an installation: its locale/ or, when it has none, that beside the running program.
std::string localeFolder(const std::string& home);

} // namespace quelm

#endif
