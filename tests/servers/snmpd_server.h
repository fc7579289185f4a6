// A real SNMP server (snmpd) that plays the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_SNMPD_SERVER_H
#define TESTS_SERVERS_SNMPD_SERVER_H

#include "tests/servers/server_process.h"
#include "tests/support/temporary_folder.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace servers {

/// The objects that a device's directory settings are read from.
inline const std::string directoryServerObject = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.114.11";
inline const std::string directoryBaseObject = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.118.1";

/// One object that the device has.
struct DeviceObject {
    std::string name;               ///< dotted numbers
    std::string value;              ///< for octet_str any bytes, at most 2,000
    std::string type = "octet_str"; ///< snmpd's word: integer, uinteger, counter, timeticks, object_id, ...
};

/// A user of version 3. Without `authentication`, or `privacy`, the user asks without.
struct DeviceUser {
    std::string name;
    std::string authentication = {}; ///< "MD5", "SHA", "SHA-256", ...
    std::string authenticationPassphrase = {};
    std::string privacy = {}; ///< "DES" or "AES"
    std::string privacyPassphrase = {};
};

struct SnmpdSettings {
    std::vector<DeviceObject> objects;
    std::string description = "Quelm Fax 7"; ///< 1.3.6.1.2.1.1.1.0
    std::string community = "public";        ///< of versions 1 and 2c
    std::vector<DeviceUser> users;
};

/// All fourteen objects of the component's dialog of directory settings but the description, each
/// with a value of its own; `server` and `base` where they stand among them.
std::vector<DeviceObject> directorySettings(const std::string& server, const std::string& base);

/// A running snmpd on one UDP port of 127.0.0.1 and, where the machine has it, of ::1.
class SnmpdServer {
public:
    /// Starts the server and waits until it serves. Throws std::runtime_error with the server's own
    /// words when that fails.
    explicit SnmpdServer(SnmpdSettings settings);

    int port() const { return number_; }
    /// "127.0.0.1:PORT"
    std::string address() const { return "127.0.0.1:" + std::to_string(number_); }

    /// Starts it again after `process().stop()` or `kill()`, on the same port. It remembers who it
    /// was (version 3's engine) and counts that it was started once more.
    void start();
    /// The same for another device that took its place: another engine, and these settings.
    void startAnother(SnmpdSettings other);
    /// The process; frozen, it is a device that does not answer.
    ServerProcess& process() { return *server_; }

private:
    void configure() const;

    TemporaryFolder folder_;
    SnmpdSettings settings_;
    int number_ = 0;
    int incarnation_ = 0;
    std::unique_ptr<ServerProcess> server_;
};

} // namespace servers

#endif
