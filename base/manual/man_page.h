// Manual pages of a program and its commands.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_MANUAL_MAN_PAGE_H
#define BASE_MANUAL_MAN_PAGE_H

#include "base/command_line/command_view.h"

#include <string>
#include <vector>

namespace quelm {

/// A page of section 1.
struct ManPage {
    std::string name; ///< "quelm-driver-fax"
    std::string text; ///< roff with the macros of man(7), in UTF-8
};

/// A page for the program and one for each of its commands, in the user's language. `date` is "2026-11-23".
std::vector<ManPage> manPages(const CommandView& program, const std::string& date);

} // namespace quelm

#endif
