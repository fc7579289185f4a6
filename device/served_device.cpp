// Begins the parts of a device in an order in which each finds what it needs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/served_device.h"

#include "base/error.h"
#include "base/translation.h"
#include "device/agent/device_agent.h"
#include "device/agent/sample_directory.h"
#include "device/calls/device_clock.h"
#include "device/calls/dispatcher.h"
#include "device/exchange/exchange.h"
#include "device/jobs/device_log.h"
#include "device/jobs/state_folder.h"
#include "device/output_lines.h"
#include "device/panel/status_panel.h"
#include "device/port/job_port.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quelm::device {

namespace {

/// A folder without a plan of the exchange gets a sample, which says what can be said there.
Exchange exchangeOf(const ServeOptions& options, const StateFolder& folder)
{
    if (!options.exchange.empty())
        return Exchange(options.exchange);
    static_cast<void>(writeSampleExchange(folder.exchangeFile()));
    return Exchange(folder.exchangeFile());
}

std::vector<std::string> addressesOf(const ServeOptions& options)
{
    return options.addresses.empty() ? std::vector<std::string>{"127.0.0.1", "::1"} : options.addresses;
}

constexpr std::size_t mostLinesWaiting = 10000;

} // namespace

struct ServedDevice::Parts {
    explicit Parts(const ServeOptions& options);
    ~Parts();
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    void beginAgent(const ServeOptions& options);
    void beginPanel(std::uint16_t number);
    void beginPort(const ServeOptions& options);
    void beginCalls(const ServeOptions& options);
    void announce();

    std::function<void(const std::string&)> teller()
    {
        return [this](const std::string& line) { output.tell(line); };
    }
    void wake();
    std::map<int, PanelProgress> progress();

    OutputLines output;
    StateFolder folder;
    DeviceLog log;
    Exchange exchange;
    DeviceClock clock;

    std::atomic<bool> hasWork{false}; ///< a job has come, or was there unfinished
    std::mutex mutex;                 ///< of `dispatcher`; agent, panel and port, which end later, ask for it
    std::optional<SampleDirectory> directory;
    std::optional<DeviceAgent> agent;
    std::optional<StatusPanel> panel;
    std::optional<JobPort> port;

    std::unique_ptr<Dispatcher> dispatcher;
};

/// Whatever can fail to begin does so before the first call.
ServedDevice::Parts::Parts(const ServeOptions& options)
    : output(mostLinesWaiting, options.asJson), folder(options.state), log(folder),
      exchange(exchangeOf(options, folder)), clock(options.realTime, log.latestMoment())
{
    hasWork = log.load().waitingJobs > 0 || !log.missingReports().empty();
    if (options.withDirectory)
        directory.emplace((folder.path() / "directory").string());
    if (options.snmp)
        beginAgent(options);
    if (options.panel)
        beginPanel(*options.panel);
    beginPort(options);
    beginCalls(options);
    announce();
}

/// First nobody is taken a job from any more, then calls are broken off, then the rest goes.
ServedDevice::Parts::~Parts()
{
    port.reset();
    std::unique_ptr<Dispatcher> stopping;
    {
        const std::lock_guard lock(mutex);
        stopping.swap(dispatcher);
    }
}

void ServedDevice::Parts::beginAgent(const ServeOptions& options)
{
    AgentSettings settings;
    settings.addresses = addressesOf(options);
    settings.port = *options.snmp;
    settings.isBusy = [this] { return !progress().empty(); };
    if (directory)
        settings.directory = directory->settings();
    agent.emplace(settings);
}

void ServedDevice::Parts::beginPanel(std::uint16_t number)
{
    PanelSettings settings; // on loopback alone: it shows what others were sent
    settings.port = number;
    settings.progress = [this] { return progress(); };
    settings.now = [this] { return clock.now(); };
    panel.emplace(folder, log, settings);
}

void ServedDevice::Parts::beginPort(const ServeOptions& options)
{
    JobPortSettings settings;
    settings.addresses = addressesOf(options);
    settings.port = options.port;
    settings.now = [this] { return clock.now(); };
    settings.taken = [this](int) {
        hasWork = true;
        wake();
    };
    settings.tell = teller();
    port.emplace(folder, log, settings);
}

void ServedDevice::Parts::beginCalls(const ServeOptions& options)
{
    DispatcherSettings settings;
    settings.lines = options.lines;
    if (!options.identity.empty())
        settings.identity = options.identity;
    settings.tell = teller();
    auto begun = std::make_unique<Dispatcher>(folder, log, exchange, clock, settings);
    const std::lock_guard lock(mutex);
    dispatcher = std::move(begun);
    dispatcher->wake(); // a job may have come meanwhile
}

/// These lines, and those of what happens, are read by programs, and have one language.
void ServedDevice::Parts::announce()
{
    for (const auto& address : port->addresses())
        output.announce("jobs: " + address);
    if (panel)
        output.announce("panel: " + panel->address());
    if (agent)
        for (const auto& address : agent->addresses())
            output.announce("snmp: " + address);
    if (directory)
        output.announce("directory: " + directory->settings().server);
    output.announce("ready");
    output.begin();
}

void ServedDevice::Parts::wake()
{
    const std::lock_guard lock(mutex);
    if (dispatcher)
        dispatcher->wake();
}

std::map<int, PanelProgress> ServedDevice::Parts::progress()
{
    std::map<int, PanelProgress> shown;
    const std::lock_guard lock(mutex);
    if (dispatcher)
        for (const auto& [call, progress] : dispatcher->progress())
            shown[call] = {progress.pagesSent, progress.lineTime};
    return shown;
}

ServedDevice::ServedDevice(const ServeOptions& options) : parts_(std::make_unique<Parts>(options)) {}

ServedDevice::~ServedDevice() = default;

bool ServedDevice::isDone()
{
    // In this order: what a sender left is in the log before its connection is gone.
    return parts_->hasWork && parts_->port->isIdle() && parts_->dispatcher->isIdle() &&
           parts_->port->isIdle();
}

void ServedDevice::requireAllMade()
{
    std::string jobs;
    for (const int job : parts_->dispatcher->sheetsGivenUp())
        jobs += (jobs.empty() ? "" : ", ") + std::to_string(job);
    // Translators: a job's number, or several, with commas between them.
    if (!jobs.empty())
        throw Error(localized("the confirmation sheet of job %s was not written; put right what the device "
                              "said of it, and start it again with the same folder",
                              jobs));
}

} // namespace quelm::device
