// Takes the SNMP library's habits from it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_SNMP_QUIET_LIBRARY_H
#define BASE_SNMP_QUIET_LIBRARY_H

namespace quelm {

/// From now on net-snmp reads no configuration files and keeps no state in files, and whatever it wants to
/// say goes to the program's log as information. Called once, ahead of all else that starts the library;
/// `programName` is what it calls the program.
void keepSnmpLibraryQuiet(const char* programName);

} // namespace quelm

#endif
