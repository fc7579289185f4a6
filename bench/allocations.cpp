// Replaces the program's allocation functions with ones that count.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t count = 0; // the benchmarks run on one thread

} // namespace

std::size_t bench::allocations() { return count; }

// The other forms of `new` without an alignment end up in this one.
void* operator new(std::size_t size)
{
    ++count;
    if (void* memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
