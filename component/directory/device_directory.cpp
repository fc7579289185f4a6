// Reads the directory's address from the device and connects to it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "directory/device_directory.h"

#include "common/module_state.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/directory_client.h"

LDAPSession* ldapSession = nullptr;
int deviceInfoReady = 0;

namespace {

constexpr const char* directoryTable = "ubqSvcMonServiceDetailTableLDAP";

/// Copies an entry of the device's table, whose text the host may overwrite with the next reading.
bool readSetting(int index, std::string& out)
{
    char* value = nullptr;
    if (!pBiDi->getRecipientData(host::in(directoryTable), index, &value))
        return false;
    out = value != nullptr ? value : "";
    return true;
}

bool createSession()
{
    std::string address;
    std::string searchBase;
    if (pBiDi == nullptr || !readSetting(0, address) || !readSetting(1, searchBase))
        return false;
    ldapSession = new LDAPSession; // kept until the component is unloaded
    ldapSession->setServerIP(address.data());
    ldapSession->setBaseServerPath(searchBase.data());
    return true;
}

} // namespace

void DisableLDAP()
{
    currentPBType = personalPhonebook;
    host::setIndex(widget_names::currentPbType, personalPhonebook);
    host::setSensitive(widget_names::ldapPbType, false);
    host::setWidgetText(widget_names::ldapPbStatus, "Unavailable");
    host::hide(widget_names::ldapMoreInfoButton);
}

void SynchronizeLDAPConnection()
{
    if (ldapSession == nullptr && !createSession()) {
        DisableLDAP();
        return;
    }
    if (ldapSession->openSession())
        ldapSession->bindAnonymousSession(); // a failed bind shows at the next search
    else
        DisableLDAP();
}
