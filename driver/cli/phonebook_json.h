// Phonebooks as data for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_PHONEBOOK_JSON_H
#define DRIVER_CLI_PHONEBOOK_JSON_H

#include "driver/phonebook/actions.h"

#include <string>
#include <vector>

namespace quelm {

// Each is JSON in UTF-8, with a line end behind it. Texts that are no UTF-8 have U+FFFD in place of their bad
// bytes. docs/command-line.md lists the keys.

/// A phonebook, as one object: its entries, its groups, and what cannot be read.
[[nodiscard]] std::string phonebookJson(const std::string& path, const std::vector<Phonebook::Item>& items);

/// One record of a phonebook with the items, as one object.
[[nodiscard]] std::string itemJson(const Phonebook::Item& item, const std::vector<Phonebook::Item>& items);

/// What a change did, or would do.
[[nodiscard]] std::string changeJson(const Outcome& outcome, Doing doing);

} // namespace quelm

#endif
