// Shows the directory settings that the device reports.
#include "directory/device_details.h"

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
    {"1.3.6.1.2.1.1.1.0", "LDAP Server Type"}, // the device's system description
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.122.1", "Login Name"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.118.1", "LDAP Search Directory Root"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.114.11", "LDAP HostPort"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.80", "Name"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.81", "Email"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.83", "Bus Phone"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.84", "Bus Addr"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.85", "Office"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.86", "LDAP City"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.87", "LDAP State"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.88", "LDAP ZipCode"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.89", "LDAP Country"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.91", "LDAP Fax"},
};

} // namespace

void LDAPMoreInfoCB()
{
    if (!deviceInfoReady)
        return;
    if (!ldapSession)
        SynchronizeLDAPConnection();
    constexpr int bufferSize = 1024;
    const auto buffer = std::make_unique<char[]>(bufferSize);
    for (const DeviceObject& object : deviceObjects) {
        std::fill_n(buffer.get(), bufferSize, '\0');
        char* out = buffer.get();
        if (pBiDi) // the session may have gone since; every field is then empty
            pBiDi->fetchSingleOIDResponse(host::in(object.identifier), &out, bufferSize);
        host::setWidgetText(object.field, buffer.get());
    }
    host::show("LDAP Info Dialog");
}

void LDAPInfoClose() { host::hide("LDAP Info Dialog"); }
