// How the device is asked over SNMP.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DEVICE_DEVICE_SETTINGS_H
#define DRIVER_DEVICE_DEVICE_SETTINGS_H

#include <chrono>
#include <string>

namespace quelm {

enum class SnmpVersion { v1, v2c, v3 };

/// Authentication and encryption of version 3. Texts are as the device's administrator set them.
struct SnmpUser {
    std::string name;
    std::string authentication = {};           ///< "MD5", "SHA", "SHA-224" ... "SHA-512"; empty for none
    std::string authenticationPassphrase = {}; ///< at least 8 characters when there is authentication
    std::string privacy = {};                  ///< "DES" or "AES"; empty for none; needs authentication
    std::string privacyPassphrase = {};        ///< at least 8 characters when there is privacy
};

/// The device and what it takes to ask it.
struct DeviceSettings {
    std::string address; ///< "HOST" or "HOST:PORT" ("[::1]:161" for IPv6); empty for no device
    SnmpVersion version = SnmpVersion::v2c;
    std::string community = "public"; ///< of versions 1 and 2c
    SnmpUser user;                    ///< of version 3
    /// How long one request waits for its answer, repetitions included.
    std::chrono::milliseconds timeout{std::chrono::seconds(3)};
    int retries = 2; ///< how often a request is repeated within that time
    /// The objects (dotted numbers) that hold the directory server's host and port, and the entry
    /// below which it is searched: index 0 and 1 of the device's directory table.
    std::string directoryServerObject = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.114.11";
    std::string directoryBaseObject = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.118.1";
};

} // namespace quelm

#endif
