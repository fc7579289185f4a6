// Shows the directory settings that the device reports.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "directory/device_details.h"

#include "common/widget_names.h"
#include "directory/device_directory.h"
#include "host/calls.h"

#include <algorithm>
#include <memory>

namespace {

struct DeviceObject {
    const char* identifier;
    const char* field;
};

constexpr DeviceObject deviceObjects[] = {
    {"1.3.6.1.2.1.1.1.0", widget_names::ldapServerType}, // the device's system description
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.122.1", widget_names::loginName},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.118.1", widget_names::ldapSearchDirectoryRoot},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.114.11", widget_names::ldapHostPort},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.80", widget_names::name},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.81", widget_names::email},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.83", widget_names::busPhone},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.84", widget_names::busAddr},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.85", widget_names::office},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.86", widget_names::ldapCity},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.87", widget_names::ldapState},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.88", widget_names::ldapZipCode},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.89", widget_names::ldapCountry},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.91", widget_names::ldapFax},
};

} // namespace

void LDAPMoreInfoCB()
{
    if (!deviceInfoReady)
        return;
    if (ldapSession == nullptr)
        SynchronizeLDAPConnection();
    constexpr int bufferSize = 1024;
    const auto buffer = std::make_unique<char[]>(bufferSize);
    for (const DeviceObject& object : deviceObjects) {
        std::fill_n(buffer.get(), bufferSize, '\0');
        char* out = buffer.get();
        if (pBiDi != nullptr) // the session may have gone since; every field is then empty
            pBiDi->fetchSingleOIDResponse(host::in(object.identifier), &out, bufferSize);
        host::setWidgetText(object.field, buffer.get());
    }
    host::show(widget_names::ldapInfoDialog);
}

void LDAPInfoClose() { host::hide(widget_names::ldapInfoDialog); }
