// Starts the SNMP library without its habits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_SNMP_SNMP_LIBRARY_H
#define DRIVER_SNMP_SNMP_LIBRARY_H

namespace quelm {

/// Makes net-snmp ready for sessions of its single-session interface, all versions. What its usual
/// start does beside is left out: it reads no configuration and no MIB files, keeps no state in
/// files, and leaves the process's locale alone. Whatever it wants to say goes to the driver's log
/// as information. Does nothing when it was called before.
void startSnmpLibrary();

} // namespace quelm

#endif
