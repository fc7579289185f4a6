// The host's query session with the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_DEVICE_SESSION_H
#define HOST_DEVICE_SESSION_H

#pragma GCC visibility push(default)

/// Reads settings from the device. The component reaches the one instance through `pBiDi` and
/// never creates or destroys it. Calls return within the host's time limits.
class __attribute__((visibility("default"))) BaseBiDiSession {
public:
    /// Reads one entry of a device table; "ubqSvcMonServiceDetailTableLDAP" holds the directory
    /// server's address at index 0 and its search base at index 1. True: `*value` points at the
    /// text (UTF-8), which the host owns and which stays valid until the next call. False:
    /// `*value` is untouched.
    bool getRecipientData(char* table, int index, char** value);

    /// Reads one SNMP object, given as a dotted number, as text into `*buffer`: at most `size`
    /// bytes, terminator included, always terminated. On false the buffer is untouched.
    bool fetchSingleOIDResponse(char* oid, char** buffer, int size);
};

extern "C" {
/// The session with the device; null while the host has no connection to one.
extern BaseBiDiSession* pBiDi;
}

#pragma GCC visibility pop

#endif
