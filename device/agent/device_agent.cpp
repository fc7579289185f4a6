// Runs the SNMP agent on a thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/device_agent.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "device/agent/agent_library.h"
#include "device/agent/agent_objects.h"
#include "device/agent/agent_transport.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>

namespace quelm::device {

namespace {

using Clock = std::chrono::steady_clock;

FileHandle makeBell()
{
    FileHandle bell(::eventfd(0, EFD_CLOEXEC));
    if (!bell.isOpen())
        throw Error(localized("the SNMP agent cannot begin: %s", systemReason(errno)));
    return bell;
}

} // namespace

struct DeviceAgent::State {
    AgentSettings settings;
    Clock::time_point start = Clock::now();
    FileHandle bell = makeBell();
    AgentAnswers answers;
    std::optional<AgentTransport> transport;
    std::thread thread;

    explicit State(AgentSettings given) : settings(std::move(given))
    {
        startAgentLibrary();
        answers.community = settings.community;
        answers.value = [this](const ObjectName& name) {
            return agentValue(name, settings,
                              std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start));
        };
        transport.emplace(settings.addresses, settings.port);
        setAgentAnswers(&answers);
        thread = std::thread([this] { transport->serveUntil(bell.get()); });
    }

    ~State()
    {
        ::eventfd_write(bell.get(), 1);
        thread.join();
        transport.reset();
        setAgentAnswers(nullptr);
    }

    State(const State&) = delete;
    State& operator=(const State&) = delete;
};

DeviceAgent::DeviceAgent(AgentSettings settings) : state_(std::make_unique<State>(std::move(settings))) {}

DeviceAgent::~DeviceAgent() = default;

std::vector<std::string> DeviceAgent::addresses() const { return state_->transport->addresses(); }

} // namespace quelm::device
