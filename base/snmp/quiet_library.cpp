// Sets net-snmp's switches.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/snmp/quiet_library.h"

#include "base/log.h"

#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <string>

namespace quelm {

namespace {

/// The library's messages, which it otherwise writes to standard error.
int takeMessage(int /*major*/, int /*minor*/, void* message, void* /*ours*/) noexcept
{
    try {
        const auto* given = static_cast<const snmp_log_message*>(message);
        std::string text = given->msg == nullptr ? "" : given->msg;
        while (text.ends_with('\n'))
            text.pop_back();
        log(Severity::information, "SNMP: " + text);
    } catch (...) {
        // Without memory there is no message; the library must not notice.
    }
    return SNMPERR_SUCCESS;
}

} // namespace

void keepSnmpLibraryQuiet(const char* programName)
{
    netsnmp_ds_set_string(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_APPTYPE, programName);
    for (const int setting : {NETSNMP_DS_LIB_DONT_READ_CONFIGS, NETSNMP_DS_LIB_DONT_PERSIST_STATE,
                              NETSNMP_DS_LIB_DISABLE_PERSISTENT_LOAD, NETSNMP_DS_LIB_DISABLE_PERSISTENT_SAVE})
        netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, setting, 1);
    snmp_register_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_LOGGING, takeMessage, nullptr);
    netsnmp_register_loghandler(NETSNMP_LOGHANDLER_CALLBACK, LOG_DEBUG);
}

} // namespace quelm
