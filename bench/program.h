// The built programs, as a user starts them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_PROGRAM_H
#define BENCH_PROGRAM_H

#include <string>
#include <vector>

namespace bench {

/// What a program took, from the call that starts it until it has been waited for, in seconds.
struct ProgramTimes {
    double cpu = 0;  ///< of the program alone, with all that its start costs the system
    double wall = 0; ///< meanwhile
};

/// Runs a program, the first of `arguments`, without input, and leaves its output in `outputFile`. Throws
/// std::runtime_error unless it ends with status 0. Only the calling thread may be there.
ProgramTimes timesOf(const std::vector<std::string>& arguments, const std::string& outputFile = "/dev/null");

} // namespace bench

#endif
