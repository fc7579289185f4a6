// Where the build put the programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/program_paths.h"

namespace bench {

std::string inStage(const std::string& file) { return std::string(BENCH_STAGE) + "/" + file; }

std::string doesNothing() { return BENCH_DOES_NOTHING; }

} // namespace bench
