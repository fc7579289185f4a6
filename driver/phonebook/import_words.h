// The options of an import as they are typed ahead of a file in the phonebook program's menu.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_IMPORT_WORDS_H
#define DRIVER_PHONEBOOK_IMPORT_WORDS_H

#include "driver/phonebook/import.h"

#include <string>

namespace quelm {

/// Takes the words off the front of `line` that begin with "--" and their values, as quelm-driver phonebook
/// import has them; what is left is the file. Throws Error for a word that is none of them, and for a value
/// that is none.
ImportOptions takeImportOptions(std::string& line);

} // namespace quelm

#endif
