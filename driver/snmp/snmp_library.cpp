// The least that net-snmp needs, in the one order that works.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/snmp/snmp_library.h"

#include "base/snmp/quiet_library.h"

#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

namespace quelm {

namespace {

constexpr const char* programName = "quelm-driver";

void startOnce()
{
    keepSnmpLibraryQuiet(programName);

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
