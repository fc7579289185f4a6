// Certificates for servers under test, made by the openssl program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_CERTIFICATES_H
#define TESTS_SERVERS_CERTIFICATES_H

#include <string>

namespace servers {

/// A server's certificate and its private key: two PEM files.
struct Certificate {
    std::string certificate;
    std::string key;
};

/// A certificate authority that nobody else trusts. It keeps its files in a folder of the caller's.
class CertificateAuthority {
public:
    /// `name` starts its files' names, so that several can share a folder. Throws
    /// std::runtime_error when the openssl program fails.
    CertificateAuthority(std::string folder, std::string name);

    /// The authority's own certificate: what clients are told to trust.
    const std::string& certificate() const { return own_.certificate; }

    /// Issues a certificate for the names, such as "DNS:localhost,IP:127.0.0.1". With `expired` it
    /// held for one day in the past.
    Certificate issue(const std::string& file, const std::string& names, bool expired = false) const;

private:
    void openssl(const std::string& arguments) const;

    std::string folder_;
    std::string name_;
    Certificate own_;
};

} // namespace servers

#endif
