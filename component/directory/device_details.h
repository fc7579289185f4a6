// "LDAP Info Dialog": the directory settings that the device reports.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIRECTORY_DEVICE_DETAILS_H
#define DIRECTORY_DEVICE_DETAILS_H

#pragma GCC visibility push(default)
extern "C" {
/// Reads the settings from the device and shows them. Does nothing until the fax dialog was opened
/// with a device session.
void LDAPMoreInfoCB();

/// Hides the settings.
void LDAPInfoClose();
}
#pragma GCC visibility pop

#endif
