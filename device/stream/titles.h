// The titles of jobs, as PostScript and the printer's job language write them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_TITLES_H
#define DEVICE_STREAM_TITLES_H

#include <string>
#include <string_view>

namespace quelm::device {

/// What stands behind `%%Title:`: a PostScript string in parentheses, whose escapes are resolved, or any
/// other text as it stands.
[[nodiscard]] std::string titleOfComment(std::string_view text);

/// The value of `NAME` in the options of `@PJL JOB` or `@PJL EOJ`, in quotation marks; empty without one. A
/// quotation mark cannot stand in it.
[[nodiscard]] std::string nameAmongOptions(std::string_view options);

/// False when a quotation mark stands where none can: within a value, or without another that ends it.
[[nodiscard]] bool areQuotedWhole(std::string_view options);

} // namespace quelm::device

#endif
