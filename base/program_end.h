// How a program of the driver ends: one line on standard error, and an exit status.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_PROGRAM_END_H
#define BASE_PROGRAM_END_H

#include <functional>
#include <string_view>

namespace quelm {

/// Takes the user's language, does `work` and returns the program's exit status: 0 when it returned, 2 when
/// it threw a UsageError, 1 for every other exception. Standard streams that the program was started without
/// are occupied first, so that no file that it opens takes their place. What was thrown is told on standard
/// error as one line behind the program's name, and so is what is logged from now on.
int exitStatusOf(std::string_view program, const std::function<void()>& work);

} // namespace quelm

#endif
