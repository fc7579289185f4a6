// Reads the thread's clock and reports medians.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"

#include <algorithm>
#include <ctime>
#include <stdexcept>

namespace bench {

namespace {

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

double threadSeconds()
{
    std::timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void report(benchmark::State& state, Turns turns, double items)
{
    require(!turns.work.empty(), "there was no turn");
    const double work = median(std::move(turns.work));
    const double yardstick = median(std::move(turns.yardstick));
    state.counters["each"] = work / items;
    state.counters["yardstick"] = yardstick;
    state.counters["ratio"] = work / yardstick;
}

void require(bool condition, const char* what)
{
    if (!condition)
        throw std::runtime_error(what);
}

} // namespace bench
