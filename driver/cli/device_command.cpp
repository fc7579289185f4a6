// The command `device info`: the directory settings that the device reports, as the component shows them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/standard_output.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/core/driver.h"
#include "driver/widgets/widget_names.h"

#include <string>

namespace quelm {
namespace {

constexpr const char* moreInfoButton = widget_names::ldapMoreInfoButton;

/// The fields of the dialog that the component fills, from top to bottom. The label of a field is
/// named after it.
constexpr const char* fields[] = {
    widget_names::ldapHostPort,   widget_names::ldapSearchDirectoryRoot,
    widget_names::ldapServerType, widget_names::loginName,
    widget_names::name,           widget_names::email,
    widget_names::busPhone,       widget_names::busAddr,
    widget_names::office,         widget_names::ldapCity,
    widget_names::ldapState,      widget_names::ldapZipCode,
    widget_names::ldapCountry,    widget_names::ldapFax,
};

void requireAnswer(Driver& driver)
{
    if (const auto& failure = driver.lastFailure().device; !failure.empty())
        driver.failWith(failure);
}

/// Opens the component's dialog of directory settings, as a user does.
void openInformation(Driver& driver)
{
    driver.call("T40InvokeFaxDialog");
    requireAnswer(driver);
    // The button is gone when the directory server cannot be reached; the device can be asked all the same.
    if (driver.show(moreInfoButton).visible)
        driver.press(moreInfoButton);
    else
        driver.call("LDAPMoreInfoCB");
    requireAnswer(driver);
}

} // namespace

void runDeviceInfoCommand(const CommandLine& line)
{
    const auto setup = setUpForOneCommand(line);
    if (setup.driver.device.address.empty())
        throw UsageError(
            localized("no device is named; write --device-snmp HOST[:PORT], or snmp=HOST in [device] "
                      "of the configuration file"));
    Driver driver(setup.driver);
    openInformation(driver);
    driver.releaseFailures();
    if (driver.failedCallbacks() != 0)
        throw Error(
            localized("the component failed while the device was asked; see the line ahead of this one"));
    std::string answer;
    for (const std::string field : fields) {
        const auto value = driver.show(field).text.value_or("");
        answer +=
            driver.show(field + " Label").text.value_or(field) + (value.empty() ? "" : " ") + value + "\n";
    }
    writeAnswer(answer);
}

} // namespace quelm
