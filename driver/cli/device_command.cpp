// The command `device info`: the directory settings that the device reports, as the component shows them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/standard_output.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/core/driver.h"
#include "driver/widgets/widget_names.h"

#include <nlohmann/json.hpp>

#include <string>

namespace quelm {
namespace {

constexpr const char* moreInfoButton = widget_names::ldapMoreInfoButton;

/// A field of the dialog, and what it is for other programs. The label of a field is named after it.
struct Field {
    const char* widget;
    const char* key;
};

/// Those that the component fills, from top to bottom.
constexpr Field fields[] = {
    {widget_names::ldapHostPort, "server"},
    {widget_names::ldapSearchDirectoryRoot, "searchRoot"},
    {widget_names::ldapServerType, "serverType"},
    {widget_names::loginName, "loginName"},
    {widget_names::name, "nameAttribute"},
    {widget_names::email, "emailAttribute"},
    {widget_names::busPhone, "businessPhoneAttribute"},
    {widget_names::busAddr, "businessAddressAttribute"},
    {widget_names::office, "officeAttribute"},
    {widget_names::ldapCity, "cityAttribute"},
    {widget_names::ldapState, "stateAttribute"},
    {widget_names::ldapZipCode, "zipCodeAttribute"},
    {widget_names::ldapCountry, "countryAttribute"},
    {widget_names::ldapFax, "faxAttribute"},
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

/// An object with a text for each field, or null for one that the device does not have.
std::string settingsJson(const Driver& driver)
{
    using Json = nlohmann::ordered_json;
    Json json;
    for (const auto& field : fields) {
        const auto value = driver.show(field.widget).text.value_or("");
        json[field.key] = value.empty() ? Json() : Json(value);
    }
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
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
    if (line.json)
        return writeJsonAnswer(settingsJson(driver));
    std::string answer;
    for (const auto& field : fields) {
        const std::string widget = field.widget;
        const auto value = driver.show(widget).text.value_or("");
        answer +=
            driver.show(widget + " Label").text.value_or("") + (value.empty() ? "" : " ") + value + "\n";
    }
    writeAnswer(answer);
}

} // namespace quelm
