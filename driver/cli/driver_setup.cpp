// Merging command line and configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/driver_setup.h"

#include "base/clock.h"
#include "base/error.h"
#include "driver/config/configuration_file.h"
#include "driver/config/installation.h"
#include "driver/device/device_address.h"

#include <optional>
#include <string>

namespace quelm {
namespace {

void fillIn(std::string& option, const std::optional<std::string>& configured)
{
    if (option.empty() && configured)
        option = *configured;
}

void checkDeviceOption(const std::string& address)
{
    try {
        parseNetworkAddress(address, snmpPort);
    } catch (const Error& error) {
        throw UsageError("--device-snmp: " + std::string(error.what()));
    }
}

} // namespace

DriverSetup setUpDriver(const CommandLine& line)
{
    DriverSetup setup;
    setup.driver = line.driver;
    if (!line.driver.now.empty())
        parseLocalTime(line.driver.now);
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
    setup.pdl = line.job.pdl.value_or(configuration.pdl.value_or(Pdl::dsc));
    setup.outbox = {outboxFolder(), configuration.outboxKeepDays};
    return setup;
}

DriverSetup setUpForOneCommand(const CommandLine& line)
{
    auto setup = setUpDriver(line);
    setup.driver.saveFeatures = false;
    setup.driver.holdFailures = true;
    return setup;
}

} // namespace quelm
