// Counts what the program allocates.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_ALLOCATIONS_H
#define BENCH_ALLOCATIONS_H

#include <cstddef>

namespace bench {

/// How often the program has called `operator new` so far.
std::size_t allocations();

} // namespace bench

#endif
