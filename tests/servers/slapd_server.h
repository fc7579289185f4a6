// A real directory server (slapd) with a directory of the test's own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_SLAPD_SERVER_H
#define TESTS_SERVERS_SLAPD_SERVER_H

#include "tests/servers/certificates.h"
#include "tests/servers/server_process.h"
#include "tests/support/temporary_folder.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace servers {

/// One entry: its name (DN) and its attributes in order. Values may hold any bytes; an attribute
/// with several values stands there once for each.
struct DirectoryRecord {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
};

/// A person below "dc=example" (an inetOrgPerson). Empty texts are attributes that it lacks. Two
/// persons of one surname and given name need a `number` to tell them apart.
DirectoryRecord person(const std::string& surname, const std::string& givenName = "",
                       const std::string& fax = "", const std::string& phone = "",
                       const std::string& mail = "", int number = 0);

/// So many persons: "Surname0001" and on, each with a given name and a fax number.
std::vector<DirectoryRecord> persons(int count);

/// What the server serves and how.
struct SlapdSettings {
    /// Below the base entry "dc=example", in the order in which searches find them.
    std::vector<DirectoryRecord> records;
    /// The most results that the server gives; 0 for no limit.
    int sizeLimit = 0;
    /// With a certificate the server speaks TLS: at `tlsPort`, and on request (StartTLS) at `port`.
    std::optional<Certificate> certificate;
    /// False refuses anonymous binds.
    bool anonymousBind = true;
    /// More lines for its configuration file's global part.
    std::string configuration;
};

/// A running slapd on loopback ports (IPv4; IPv6 too where the machine has it).
class SlapdServer {
public:
    /// Fills the directory, starts the server and waits until it serves. Throws std::runtime_error
    /// with the server's own words when that fails.
    explicit SlapdServer(const SlapdSettings& settings);

    /// Where it listens in plain and, with a certificate, under TLS from the first byte.
    int port() const { return plainPort_; }
    int tlsPort() const { return securePort_; }
    /// "127.0.0.1:PORT"
    std::string address() const { return "127.0.0.1:" + std::to_string(plainPort_); }
    /// "ldaps://localhost:PORT"
    std::string tlsAddress() const { return "ldaps://localhost:" + std::to_string(securePort_); }

    /// The entry below which the records lie.
    static std::string base() { return "dc=example"; }

    /// Starts it again after `process().stop()` or `kill()`: the same ports, the same directory.
    void start();
    ServerProcess& process() { return *server_; }

private:
    void configure(const SlapdSettings& settings) const;
    void fill(const SlapdSettings& settings) const;

    TemporaryFolder folder_;
    int plainPort_ = 0;
    int securePort_ = 0;
    std::unique_ptr<ServerProcess> server_;
};

/// True when this machine has the IPv6 loopback address.
bool hasIpv6();

} // namespace servers

#endif
