// The directory that the device is configured with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIRECTORY_DEVICE_DIRECTORY_H
#define DIRECTORY_DEVICE_DIRECTORY_H

class LDAPSession;

/// The one directory session; null until the device's directory settings were read, kept from then on.
extern LDAPSession* ldapSession;

/// 1 once the fax dialog was opened while the host had a device session.
extern int deviceInfoReady;

/// Switches the directory choice off: personal phonebook, "Unavailable", no "More Info...".
void DisableLDAP();

#pragma GCC visibility push(default)
extern "C" {
/// Connects to the device's directory and binds anonymously; asks the device for the directory's
/// address the first time only. Switches the directory choice off when that fails.
void SynchronizeLDAPConnection();
}
#pragma GCC visibility pop

#endif
