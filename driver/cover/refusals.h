// Why a cover page is not let into a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_REFUSALS_H
#define DRIVER_COVER_REFUSALS_H

#include <string_view>

namespace quelm {

/// Throws the quelm::Error for a page whose first wrong line begins `text`.
[[noreturn]] void refuseLine(std::string_view text);

/// Throws the quelm::Error for a value that is no text of one line.
[[noreturn]] void refuseValue(std::string_view value);

} // namespace quelm

#endif
