// Where the built programs are: one source alone knows, which so is the only one that differs from clone to
// clone. SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_PROGRAM_PATHS_H
#define BENCH_PROGRAM_PATHS_H

#include <string>

namespace bench {

/// A file that a user's installation has, as it was built.
std::string inStage(const std::string& file);

/// The program that does nothing.
std::string doesNothing();

} // namespace bench

#endif
