// What printer drivers and network monitors ask a device for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/agent_objects.h"

#include <unistd.h>

#include <array>
#include <climits>
#include <functional>
#include <map>

namespace quelm::device {

namespace {

using std::chrono::milliseconds;
using Answer = std::function<AgentValue(const AgentSettings&, milliseconds uptime)>;

/// One number for all devices of this kind, below that of the settings.
const ObjectName deviceKind = {1, 3, 6, 1, 4, 1, 32473, 8, 74, 1};

/// The standard says what these numbers mean.
constexpr std::int32_t deviceIsRunning = 2; // hrDeviceStatus
constexpr std::int32_t printerIsIdle = 3;   // hrPrinterStatus
constexpr std::int32_t printerPrints = 4;
/// sysServices: the sum of 2^(layer - 1) for the layers that a device serves; here the application's.
constexpr std::int32_t applicationLayer = 64;

Answer text(std::string DirectorySettings::*member)
{
    return [member](const AgentSettings& settings, milliseconds) { return settings.directory.*member; };
}

Answer text(std::string AgentSettings::*member)
{
    return [member](const AgentSettings& settings, milliseconds) { return settings.*member; };
}

Answer always(const AgentValue& value)
{
    return [value](const AgentSettings&, milliseconds) { return value; };
}

AgentValue hostName(const AgentSettings& /*settings*/, milliseconds /*uptime*/)
{
    std::array<char, HOST_NAME_MAX + 1> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

AgentValue ticks(const AgentSettings& /*settings*/, milliseconds uptime)
{
    // It begins anew at 2^32, after 497 days.
    return AgentTicks{
        std::chrono::duration<std::uint32_t, std::centi>(static_cast<std::uint32_t>(uptime.count() / 10))};
}

AgentValue printerStatus(const AgentSettings& settings, milliseconds /*uptime*/)
{
    return AgentInteger{settings.isBusy && settings.isBusy() ? printerPrints : printerIsIdle};
}

ObjectName below(ObjectName name, std::initializer_list<std::uint32_t> numbers)
{
    name.insert(name.end(), numbers);
    return name;
}

std::map<ObjectName, Answer> table()
{
    const ObjectName system = {1, 3, 6, 1, 2, 1, 1};
    const ObjectName hostDevice = {1, 3, 6, 1, 2, 1, 25, 3, 2, 1};
    const ObjectName printer = {1, 3, 6, 1, 2, 1, 25, 3, 5, 1};
    const ObjectName generalPrinter = {1, 3, 6, 1, 2, 1, 43, 5, 1, 1};
    const ObjectName directory = {1, 3, 6, 1, 4, 1, 32473, 8, 74, 6, 2, 1, 9, 7, 155};
    return {
        {below(system, {1, 0}), text(&AgentSettings::description)}, // sysDescr
        {below(system, {2, 0}), always(deviceKind)},                // sysObjectID
        {below(system, {3, 0}), ticks},                             // sysUpTime
        {below(system, {4, 0}), always(std::string())},             // sysContact
        {below(system, {5, 0}), hostName},                          // sysName
        {below(system, {6, 0}), always(std::string())},             // sysLocation
        {below(system, {7, 0}), always(AgentInteger{applicationLayer})},

        {below(hostDevice, {1, 1}), always(AgentInteger{1})},                           // hrDeviceIndex
        {below(hostDevice, {2, 1}), always(ObjectName{1, 3, 6, 1, 2, 1, 25, 3, 1, 5})}, // a printer
        {below(hostDevice, {3, 1}), text(&AgentSettings::description)},                 // hrDeviceDescr
        {below(hostDevice, {4, 1}), always(ObjectName{0, 0})},                          // hrDeviceID
        {below(hostDevice, {5, 1}), always(AgentInteger{deviceIsRunning})},             // hrDeviceStatus
        {below(printer, {1, 1}), printerStatus},                                        // hrPrinterStatus
        {below(printer, {2, 1}), always(std::string(1, '\0'))},       // hrPrinterDetectedErrorState: none
        {below(generalPrinter, {16, 1}), text(&AgentSettings::name)}, // prtGeneralPrinterName

        {below(directory, {114, 11}), text(&DirectorySettings::server)},
        {below(directory, {118, 1}), text(&DirectorySettings::base)},
        {below(directory, {122, 1}), always(std::string())}, // the login: none is needed
        {below(directory, {384, 80}), text(&DirectorySettings::nameAttribute)},
        {below(directory, {384, 81}), text(&DirectorySettings::mailAttribute)},
        {below(directory, {384, 83}), text(&DirectorySettings::phoneAttribute)},
        {below(directory, {384, 84}), text(&DirectorySettings::addressAttribute)},
        {below(directory, {384, 85}), text(&DirectorySettings::officeAttribute)},
        {below(directory, {384, 86}), text(&DirectorySettings::cityAttribute)},
        {below(directory, {384, 87}), text(&DirectorySettings::stateAttribute)},
        {below(directory, {384, 88}), text(&DirectorySettings::zipCodeAttribute)},
        {below(directory, {384, 89}), text(&DirectorySettings::countryAttribute)},
        {below(directory, {384, 91}), text(&DirectorySettings::faxAttribute)},
    };
}

const std::map<ObjectName, Answer>& answers()
{
    static const std::map<ObjectName, Answer> all = table();
    return all;
}

} // namespace

const std::vector<ObjectName>& agentObjects()
{
    static const std::vector<ObjectName> names = [] {
        std::vector<ObjectName> all;
        for (const auto& [name, answer] : answers())
            all.push_back(name);
        return all;
    }();
    return names;
}

AgentValue agentValue(const ObjectName& name, const AgentSettings& settings, milliseconds uptime)
{
    return answers().at(name)(settings, uptime);
}

} // namespace quelm::device
