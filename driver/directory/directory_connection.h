// One connection to a directory server: connecting, TLS, binding and searching, each in its time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_CONNECTION_H
#define DRIVER_DIRECTORY_DIRECTORY_CONNECTION_H

#include "base/bounded_call.h"
#include "driver/directory/directory_address.h"
#include "driver/directory/directory_entry.h"
#include "driver/directory/directory_error.h"
#include "driver/directory/directory_query.h"
#include "driver/directory/directory_settings.h"

#include <memory>
#include <vector>

namespace quelm {

/// An established connection. Every call returns by its deadline, also when the server stops in the
/// middle of an answer, and none raises SIGPIPE. LDAP version 3; referrals are not followed. What
/// ldap.conf, an ldaprc file or the environment say about servers, limits and trust is overruled.
class DirectoryConnection {
public:
    DirectoryConnection() = default;
    virtual ~DirectoryConnection() = default;
    DirectoryConnection(const DirectoryConnection&) = delete;
    DirectoryConnection& operator=(const DirectoryConnection&) = delete;

    /// Binds without credentials. Throws DirectoryError when that is refused or not answered.
    virtual void bindAnonymously(Deadline deadline) = 0;

    /// Searches, and adds the entries to `found` in the order in which they come, at most
    /// `sizeLimit` and 64 MiB; when the server sends more, the code is 4. What came before a failure stays in
    /// `found`. Never throws for what a server does.
    virtual DirectoryOutcome search(const DirectoryQuery& query, int sizeLimit, Deadline deadline,
                                    std::vector<DirectoryEntry>& found) = 0;

    /// False once the connection is of no more use: the server hung up or said that it will, or an
    /// answer was given up.
    virtual bool isUsable() = 0;

    virtual const DirectoryAddress& address() const = 0;
};

/// Makes connections. Implemented by the module "directory", which brings the LDAP library.
class DirectoryLibrary {
public:
    static constexpr const char* moduleName = "directory";

    DirectoryLibrary() = default;
    virtual ~DirectoryLibrary() = default;
    DirectoryLibrary(const DirectoryLibrary&) = delete;
    DirectoryLibrary& operator=(const DirectoryLibrary&) = delete;

    /// Connects. With an "ldaps" address, or when the settings ask for StartTLS, TLS is there when
    /// this returns, with a certificate that a trusted authority issued for the server's name
    /// ("localhost" stands for this machine's full name, as the LDAP library has it). Throws
    /// DirectoryError otherwise: a server that refuses TLS is not talked to in plain.
    [[nodiscard]] virtual std::unique_ptr<DirectoryConnection>
    connect(const DirectoryAddress& address, const DirectorySettings& settings, Deadline deadline) const = 0;
};

} // namespace quelm

#endif
