// What the system says of an error number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_SYSTEM_REASON_H
#define BASE_SYSTEM_REASON_H

#include <string>

namespace quelm {

/// Why a system call failed, as the end of a line for the user: in words that tell what to do where that
/// helps whatever was being done. `error` is an errno value. Who can say more about one, because of what was
/// being done, words that one alone and leaves the others to this.
std::string systemReason(int error);

} // namespace quelm

#endif
