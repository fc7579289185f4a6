// Merging command line and configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/driver_setup.h"

#include "base/clock.h"
#include "base/error.h"
#include "driver/cli/job/given_target.h"
#include "driver/config/configuration_file.h"
#include "driver/config/installation.h"
#include "driver/device/device_address.h"
#include "driver/widgets/widget_names.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace quelm {
namespace {

void fillIn(std::string& option, const std::optional<std::string>& configured)
{
    if (option.empty() && configured)
        option = *configured;
}

/// The same server whatever the user's own is: one without a port is at that of print servers.
std::string printServerOf(const NamedDestination& destination)
{
    constexpr std::uint16_t printPort = 631;
    return destination.server.empty() ? "" : toText(parseNetworkAddress(destination.server, printPort));
}

NamedTarget targetOf(const NamedDestination& destination)
{
    switch (destination.kind) {
    case NamedDestination::Kind::device:
        return {destination.name, parseNetworkAddress(destination.place), destination.pdl};
    case NamedDestination::Kind::queue:
        return {destination.name, QueueTarget{destination.place, printServerOf(destination)},
                destination.pdl};
    case NamedDestination::Kind::file:
    case NamedDestination::Kind::none:
        break;
    }
    return {destination.name, FileTarget{destination.place}, destination.pdl};
}

/// The form of jobs that the destination takes to which this one goes.
std::optional<Pdl> formOf(const CommandLine& line, const DriverSetup& setup)
{
    const auto& job = line.job;
    if (job.destination)
        return destinationNamed(*job.destination, setup.destinations).pdl;
    const bool isElsewhere = line.command != Command::fax || job.output || job.device || job.queue;
    return isElsewhere || !setup.destination ? std::nullopt : setup.destination->pdl;
}

/// What the dialogs show before the user chose something else.
std::map<std::string, std::string> defaultsOf(const Configuration& configuration)
{
    std::map<std::string, std::string> values;
    const auto add = [&values](const char* widget, const std::string& value) {
        if (!value.empty())
            values.emplace(widget, value);
    };
    const auto& sender = configuration.sender;
    add(widget_names::senderFaxName, sender.name);
    add(widget_names::senderFaxNumber, sender.number);
    add(widget_names::senderFaxOrganization, sender.organization);
    add(widget_names::senderFaxTelNumber, sender.phone);
    add(widget_names::senderFaxEmailAddr, sender.email);
    add(widget_names::lanFaxSharedPbName, configuration.sharedPhonebook);
    add(widget_names::lanFaxDialingPrefixInfo, configuration.dialingPrefix);
    if (!configuration.dialingPrefix.empty()) // it goes out only while its box is ticked
        add(widget_names::lanFaxDialingPrefix, "1");
    if (const auto index = resolutionIndex(configuration.resolution))
        add(widget_names::lanFaxResolution, std::to_string(*index));
    return values;
}

void checkDeviceOption(const std::string& address)
{
    try {
        parseNetworkAddress(address, snmpPort);
    } catch (const Error& error) {
        throw UsageError("--device-snmp: " + std::string(error.what()));
    }
}

void checkNow(const std::string& now)
{
    try {
        parseLocalTime(now);
    } catch (const Error& error) {
        throw UsageError("--now: " + std::string(error.what()));
    }
}

} // namespace

DriverSetup setUpDriver(const CommandLine& line)
{
    DriverSetup setup;
    setup.driver = line.driver;
    if (!line.driver.now.empty())
        checkNow(line.driver.now);
    if (!line.driver.device.address.empty())
        checkDeviceOption(line.driver.device.address);
    const auto named = line.config.empty() ? std::nullopt : std::optional(line.config);
    const auto configuration = loadConfiguration(named);
    fillIn(setup.driver.home, configuration.home);
    fillIn(setup.driver.user, configuration.user);
    fillIn(setup.driver.component, configuration.component);
    setup.driver.device = configuration.device;
    if (!line.driver.device.address.empty())
        setup.driver.device.address = line.driver.device.address;
    setup.driver.directory = configuration.directory;
    setup.driver.defaults = defaultsOf(configuration);
    for (const auto& destination : configuration.destinations)
        setup.destinations.push_back(targetOf(destination));
    if (const auto* destination = configuration.findDestination(configuration.destination))
        setup.destination = targetOf(*destination);
    setup.pdl = line.job.pdl.value_or(formOf(line, setup).value_or(configuration.pdl.value_or(Pdl::dsc)));
    setup.outbox = {outboxFolder(), configuration.outboxKeepDays};
    return setup;
}

DriverSetup setUpForOneCommand(const CommandLine& line) { return forOneCommand(setUpDriver(line)); }

DriverSetup forOneCommand(DriverSetup setup)
{
    setup.driver.saveFeatures = false;
    setup.driver.holdFailures = true;
    return setup;
}

} // namespace quelm
