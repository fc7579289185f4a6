// What a person typed in answer to a question that ends in "[y/n]".
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_YES_NO_H
#define BASE_TERMINAL_YES_NO_H

#include <string_view>

namespace quelm {

/// True for "y" and "yes", and for the same in the user's language.
bool isYes(std::string_view answer);

/// True for "n" and "no", and for the same in the user's language. Where a word means yes in one of the two
/// languages and no in the other, the user's language counts.
bool isNo(std::string_view answer);

} // namespace quelm

#endif
