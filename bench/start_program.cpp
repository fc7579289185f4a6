// Starting the programs, beside one that does nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/program.h"
#include "bench/program_paths.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstdlib>

namespace bench {

namespace {

using Words = std::vector<std::string>;

/// The environment of a user who has used the driver before: the second start finds everything in its place.
class User {
public:
    User()
    {
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            ::setenv(name, folder_.path().c_str(), 1);
        ::setenv("LC_ALL", "C.UTF-8", 1);
    }

private:
    TemporaryFolder folder_;
};

void startProgram(benchmark::State& state, const char* program, const Words& arguments)
{
    const User user;
    Words all{inStage(program)};
    all.insert(all.end(), arguments.begin(), arguments.end());
    timesOf(all);
    std::vector<double> walls;
    compareMeasured(
        state, 1,
        [&] {
            const ProgramTimes times = timesOf(all);
            walls.push_back(times.wall);
            return times.cpu;
        },
        [] { return timesOf({doesNothing()}).cpu; });
    std::ranges::nth_element(walls, walls.begin() + static_cast<std::ptrdiff_t>(walls.size() / 2));
    state.counters["wall"] = walls[walls.size() / 2];
}

BENCHMARK_CAPTURE(startProgram, help, "quelm-driver", Words({"--help"}))
    ->Name("start/help")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, attributes_help, "quelm-driver", Words({"attributes", "--help"}))
    ->Name("start/attributes_help")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, attributes, "quelm-driver",
                  Words({"--user", "ann", "attributes", "--to", "Ann=555-1234", "--to", "Ben=555-1235"}))
    ->Name("start/attributes")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, phonebook_list, "quelm-driver", Words({"--user", "ann", "phonebook", "list"}))
    ->Name("start/phonebook_list")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, config_show, "quelm-driver", Words({"--user", "ann", "config", "show"}))
    ->Name("start/config_show")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, fennodial_help, "fennodial", Words({"--help"}))
    ->Name("start/fennodial_help")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, device_help, "quelm-device", Words({"--help"}))
    ->Name("start/device_help")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
