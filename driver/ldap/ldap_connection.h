// Connections through the LDAP library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_LDAP_LDAP_CONNECTION_H
#define DRIVER_LDAP_LDAP_CONNECTION_H

#include "driver/directory/directory_connection.h"

#include <memory>
#include <vector>

namespace quelm {

class LdapHandle;

class LdapConnection final : public DirectoryConnection {
public:
    /// Connects, as `DirectoryLibrary::connect` says.
    LdapConnection(DirectoryAddress address, const DirectorySettings& settings, Deadline deadline);
    ~LdapConnection() override;

    void bindAnonymously(Deadline deadline) override;
    DirectoryOutcome search(const DirectoryQuery& query, int sizeLimit, Deadline deadline,
                            std::vector<DirectoryEntry>& found) override;
    bool isUsable() override;
    const DirectoryAddress& address() const override { return server_; }

private:
    void requestTls(Deadline deadline);
    void setUpTls(const DirectorySettings& settings, Deadline deadline);

    DirectoryAddress server_;
    std::unique_ptr<LdapHandle> handle_;
    bool usable_ = true;
};

class LdapLibrary final : public DirectoryLibrary {
public:
    [[nodiscard]] std::unique_ptr<DirectoryConnection> connect(const DirectoryAddress& address,
                                                               const DirectorySettings& settings,
                                                               Deadline deadline) const override
    {
        return std::make_unique<LdapConnection>(address, settings, deadline);
    }
};

} // namespace quelm

#endif
