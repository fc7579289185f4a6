// Measures a piece of work beside its yardstick, turn by turn, and reports the ratio.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_COMPARISON_H
#define BENCH_COMPARISON_H

#include <benchmark/benchmark.h>

#include <functional>
#include <utility>
#include <vector>

namespace bench {

/// CPU time that this thread has used, in seconds. What other programs take of the machine meanwhile is
/// not in it.
double threadSeconds();

/// The times of a piece of work and of its yardstick, in seconds, turn by turn.
struct Turns {
    std::vector<double> work;
    std::vector<double> yardstick;
};

/// Adds the counters to a benchmark's line: "yardstick", the median time of the yardstick in seconds;
/// "ratio", the median time of the work by that of the yardstick; "each", the median time of the work
/// for each of its `items`, in seconds.
void report(benchmark::State& state, Turns turns, double items);

/// Throws std::runtime_error that says `what` went wrong: a benchmark of something that does not
/// work measures nothing.
void require(bool condition, const char* what);

/// Nothing to prepare ahead of a turn.
inline void nothing() {}

/// CPU time of this thread that `work` takes, in seconds.
template <class Work>
double secondsOf(Work work)
{
    const double start = threadSeconds();
    work();
    return threadSeconds() - start;
}

/// Runs `work` and `yardstick` by turns and reports them; the benchmark's time is that of the work.
/// Whatever slows the machine down for a while hits both alike. Both measure themselves and return their
/// seconds, so that what they do ahead of and behind that does not count. `items` is what the time is
/// divided by, rows or bytes.
template <class Work, class Yardstick>
void compareMeasured(benchmark::State& state, double items, Work work, Yardstick yardstick)
{
    Turns turns;
    while (state.KeepRunning()) {
        turns.work.push_back(work());
        turns.yardstick.push_back(yardstick());
        state.SetIterationTime(turns.work.back());
    }
    report(state, std::move(turns), items);
}

/// The same for a work and a yardstick that count as a whole. `prepare` runs ahead of each turn and is
/// not measured.
template <class Work, class Yardstick, class Prepare = void (*)()>
void compare(benchmark::State& state, double items, Work work, Yardstick yardstick, Prepare prepare = nothing)
{
    compareMeasured(
        state, items,
        [&] {
            prepare();
            return secondsOf(std::ref(work));
        },
        [&] { return secondsOf(std::ref(yardstick)); });
}

} // namespace bench

#endif
