// Stands between the device and the system where files are written through.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/jobs/made_durable.h"

#include "device/jobs/device_steps.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <system_error>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;

struct Event {
    bool isStep = false;
    std::string name; ///< of the step, or the path
};

struct Record {
    std::mutex mutex;
    std::optional<fs::path> root;
    std::vector<Event> events;
};

Record& record()
{
    static Record only;
    return only;
}

void enter(bool isStep, const std::string& name)
{
    const std::lock_guard lock(record().mutex);
    if (record().root)
        record().events.push_back(
            {isStep, isStep ? name : fs::path(name).lexically_relative(*record().root).string()});
}

int writeThrough(long call, int file)
{
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/fd/" + std::to_string(file), error);
    const auto result = static_cast<int>(::syscall(call, file));
    if (result == 0)
        enter(false, path);
    return result;
}

} // namespace

MadeDurable::MadeDurable(const fs::path& root)
{
    {
        const std::lock_guard lock(record().mutex);
        record().root = fs::canonical(root);
        record().events.clear();
    }
    setDeviceStepHook([](const char* step) { enter(true, step); });
}

MadeDurable::~MadeDurable()
{
    setDeviceStepHook({});
    const std::lock_guard lock(record().mutex);
    record().root.reset();
}

std::vector<std::string> MadeDurable::between(std::string_view from, std::string_view to) const
{
    const std::lock_guard lock(record().mutex);
    const auto end = record().events.end();
    const auto step = [end](auto begin, std::string_view name) {
        const auto found =
            std::find_if(begin, end, [&](const Event& event) { return event.isStep && event.name == name; });
        EXPECT_NE(found, end) << name;
        return found;
    };
    auto first = record().events.begin();
    if (!from.empty())
        first = step(first, from);
    if (first != end && !from.empty())
        ++first;
    const auto last = to.empty() ? end : step(first, to);
    std::vector<std::string> paths;
    for (auto event = first; event != last; ++event)
        if (!event->isStep)
            paths.push_back(event->name);
    return paths;
}

} // namespace quelm::device::tests

// The linker takes these ahead of the system's, also for the database library, to which they must be visible.
extern "C" {
[[gnu::visibility("default")]] int fsync(int file)
{
    return quelm::device::tests::writeThrough(SYS_fsync, file);
}
[[gnu::visibility("default")]] int fdatasync(int file)
{
    return quelm::device::tests::writeThrough(SYS_fdatasync, file);
}
}
