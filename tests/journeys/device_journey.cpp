// Starts devices, and looks at what they said and kept.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"

#include "tests/support/build_paths.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <sstream>
#include <stdexcept>

namespace journeys {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds patience = std::chrono::minutes(1);

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { ::close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number_; }
    bool isReadable(std::chrono::milliseconds within) const
    {
        pollfd one{number_, POLLIN, 0};
        return ::poll(&one, 1, static_cast<int>(within.count())) > 0;
    }

private:
    int number_;
};

} // namespace

servers::ServerCommand DeviceJourney::deviceCommand(const Arguments& options) const
{
    servers::ServerCommand command;
    command.arguments = {
        build_paths::inStage("quelm-device"), "serve", "--state", path("state"), "--port", "0", "--no-panel"};
    if (std::ranges::find(options, "--snmp") == options.end())
        command.arguments.emplace_back("--no-snmp");
    command.arguments.insert(command.arguments.end(), options.begin(), options.end());
    command.outputFile = outputFile();
    command.environment = {"LC_ALL=C.UTF-8", "LANGUAGE=" + language};
    return command;
}

void DeviceJourney::serve(const Arguments& options) { serveBy(deviceCommand(options).arguments); }

void DeviceJourney::serveBy(const Arguments& arguments)
{
    auto command = deviceCommand();
    command.arguments = arguments;
    readyBefore_ = timesReady();
    device =
        std::make_unique<servers::ServerProcess>(command, [this] { return timesReady() > readyBefore_; });
}

void DeviceJourney::forgetDevice()
{
    device.reset();
    fs::remove_all(folder / "state");
    fs::remove(outputFile());
}

/// What was said before stays: a file is written anew by `runProgram`.
Result DeviceJourney::runDevice(const Arguments& options, const std::function<void(int)>& meanwhile,
                                const std::string& starter)
{
    Request request;
    const auto command = deviceCommand(options);
    request.arguments = {servers::systemProgram("sh"), "-c", "exec \"$@\" >> '" + outputFile() + "'", "sh"};
    if (!starter.empty())
        request.arguments.insert(request.arguments.begin(), starter);
    request.arguments.insert(request.arguments.end(), command.arguments.begin(), command.arguments.end());
    request.environment = command.environment;
    readyBefore_ = timesReady();
    request.meanwhile = [&](int process) {
        if (meanwhile && soon([this] { return timesReady() > readyBefore_; }))
            meanwhile(process);
    };
    return runProgram(request);
}

std::ptrdiff_t DeviceJourney::timesReady() const
{
    const auto lines = said();
    return std::ranges::count(lines, "ready");
}

void DeviceJourney::killDevice()
{
    device->kill();
    device.reset();
}

bool DeviceJourney::deviceEnds() const
{
    const Descriptor end(static_cast<int>(::syscall(SYS_pidfd_open, device->id(), 0)));
    return end.isReadable(patience);
}

std::string DeviceJourney::address(std::size_t index) const
{
    const std::string word = "jobs: ";
    std::vector<std::string> addresses; // of the last start
    bool hasBegun = true;
    for (const auto& line : said()) {
        if (hasBegun && line.starts_with(word)) {
            addresses.clear();
            hasBegun = false;
        }
        if (line.starts_with(word))
            addresses.push_back(line.substr(word.size()));
        hasBegun = hasBegun || line == "ready";
    }
    return index < addresses.size() ? addresses[index] : std::string();
}

Arguments DeviceJourney::fax(const std::string& document, const Arguments& options) const
{
    Arguments all{"fax", document, "--device", address()};
    all.insert(all.end(), options.begin(), options.end());
    return all;
}

void DeviceJourney::send(const std::string& document, const Arguments& options) const
{
    const auto result = driver(fax(document, options));
    EXPECT_EQ(result.status, 0) << result.errors;
}

std::vector<std::string> DeviceJourney::said() const { return said(""); }

std::vector<std::string> DeviceJourney::said(const std::string& words) const
{
    std::vector<std::string> found;
    if (!fs::exists(outputFile()))
        return found;
    const auto text = contentOf(outputFile());
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = text.find('\n', begin);
        if (end == std::string::npos)
            break; // it is still being written
        if (auto line = text.substr(begin, end - begin); line.find(words) != std::string::npos)
            found.push_back(std::move(line));
        begin = end + 1;
    }
    return found;
}

/// Sleeps until the device has said something more: looking all the time would take the device's own time.
bool DeviceJourney::hasSaid(const std::string& words, std::size_t times) const
{
    const Descriptor changes(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    ::inotify_add_watch(changes.get(), outputFile().c_str(), IN_MODIFY);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (said(words).size() < times) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0 || !changes.isReadable(left))
            return false;
        std::array<char, 4096> events;
        static_cast<void>(::read(changes.get(), events.data(), events.size()));
    }
    return true;
}

std::vector<std::string> DeviceJourney::received(const std::string& number) const
{
    std::vector<fs::path> files;
    const auto place = folder / "state/received" / number;
    if (fs::exists(place))
        for (const auto& entry : fs::directory_iterator(place))
            files.push_back(entry.path());
    const auto callOf = [](const fs::path& file) {
        const auto stem = file.stem().string();
        return std::stoi(stem.substr(stem.find('-') + 1));
    };
    std::ranges::sort(files, {}, callOf);
    return {files.begin(), files.end()};
}

std::vector<FaxPage> DeviceJourney::receivedPages(const std::string& number) const
{
    const auto files = received(number);
    if (files.size() != 1) {
        ADD_FAILURE() << number << " has received " << files.size() << " faxes";
        return {};
    }
    return pagesIn(files.front());
}

std::vector<std::string> DeviceJourney::receivers() const
{
    std::vector<std::string> numbers;
    if (const auto place = folder / "state/received"; fs::exists(place))
        for (const auto& entry : fs::directory_iterator(place))
            numbers.push_back(entry.path().filename().string());
    std::ranges::sort(numbers);
    return numbers;
}

} // namespace journeys
