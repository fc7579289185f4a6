// Starts this program's host and runs the benchmarks that were asked for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/host.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    try {
        const auto host = bench::startHost();
        // A filter may mean the other program's benchmarks alone.
        if (benchmark::RunSpecifiedBenchmarks() == 0 && benchmark::GetBenchmarkFilter().empty())
            throw std::runtime_error("there is no benchmark");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        return 1;
    }
    return 0;
}
