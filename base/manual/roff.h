// The little of roff that manual pages are written in.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_MANUAL_ROFF_H
#define BASE_MANUAL_ROFF_H

#include <string>

namespace quelm::roff {

/// A text that comes out as it stands, in one line of input: blanks and dashes can be copied from the page.
std::string escaped(const std::string& text);

std::string bold(const std::string& text);
std::string italic(const std::string& text);

/// Lines of input for a paragraph, none of which is taken for a request; ends with a line feed. `marked` is
/// escaped already, and may hold what `bold` and `italic` gave.
std::string filled(const std::string& marked);

/// One line of input that is never broken, for what is shown as it was typed.
std::string literal(const std::string& text);

/// A request with its arguments, each in quotation marks: `.TH "A" "1"`.
std::string request(const std::string& name, const std::initializer_list<std::string>& arguments = {});

} // namespace quelm::roff

#endif
