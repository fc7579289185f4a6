// The least that net-snmp needs, in the one order that works.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/snmp_library.h"

#include "base/log.h"

#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <string>

namespace quelm {

namespace {

constexpr const char* programName = "quelm-driver";

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

void startOnce()
{
    netsnmp_ds_set_string(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_APPTYPE, programName);
    for (const int setting : {NETSNMP_DS_LIB_DONT_READ_CONFIGS, NETSNMP_DS_LIB_DONT_PERSIST_STATE,
                              NETSNMP_DS_LIB_DISABLE_PERSISTENT_LOAD, NETSNMP_DS_LIB_DISABLE_PERSISTENT_SAVE})
        netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, setting, 1);
    snmp_register_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_LOGGING, takeMessage, nullptr);
    netsnmp_register_loghandler(NETSNMP_LOGHANDLER_CALLBACK, LOG_DEBUG);

    // Version 3 wants its security model registered, and an engine identifier of our own, before the
    // model makes its nameless user (with which a device's engine is discovered) and its random salts.
    // It does that once configuration files would have been read. To be told so now, ahead of the first
    // session, matters: sessions make TLS known, which at that signal would look through the folders of
    // certificates and write an index of them.
    init_usm();
    setup_engineID(nullptr, programName);
    snmp_call_callbacks(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_POST_PREMIB_READ_CONFIG, nullptr);
    netsnmp_session first;
    snmp_sess_init(&first);
}

} // namespace

void startSnmpLibrary()
{
    static const bool started = [] {
        startOnce();
        return true;
    }();
    static_cast<void>(started);
}

} // namespace quelm
