// A session with a directory server that survives the server's restarts, and its last search's results.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_SESSION_H
#define DRIVER_DIRECTORY_DIRECTORY_SESSION_H

#include "driver/directory/directory_connection.h"
#include "driver/directory/directory_report.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// What the boundary's LDAPSession does.
class DirectorySession {
public:
    /// What goes wrong is said to `to`, which outlives the session.
    explicit DirectorySession(DirectoryReport& to) : report_(to) {}

    /// The server's address, as `parseDirectoryAddress` takes it. An open connection is closed.
    void setAddress(const std::string& text);
    /// The entry below which searches look, without the blanks around it.
    void setBase(const std::string& text);

    /// Connects anew. False when the server was not reached within `settings.connectTimeout`, TLS
    /// included; the session is closed then.
    [[nodiscard]] bool open(const DirectorySettings& settings);

    /// Binds without credentials, within what opening has left of `settings.connectTimeout`. On
    /// false the session is closed; the next search tries both again.
    [[nodiscard]] bool bind(const DirectorySettings& settings);

    /// Searches below the base, within `settings.searchTimeout`. A session that is not open, or
    /// whose server went away since, is opened once more first, and bound when it was to be bound.
    ///
    /// True when the results can be shown: the search ended well, the limit was exceeded (code 4),
    /// or it ended early after some results came, which `code` tells (81 the server went away, 85
    /// the time ran out, else the server's). False with no results otherwise. A base that does not
    /// exist (code 32) is a failure, not an empty result: no name would ever be found there.
    [[nodiscard]] bool search(DirectoryQuery query, const DirectorySettings& settings);

    /// The next result of the last search, or nothing. Every result is given once.
    [[nodiscard]] std::optional<DirectoryEntry> next();

    std::size_t count() const { return results_.size(); }
    int code() const { return lastCode_; }

private:
    void connect(const DirectorySettings& settings, Deadline deadline);
    DirectoryOutcome attempt(const DirectoryQuery& query, const DirectorySettings& settings,
                             Deadline deadline);
    bool conclude(const DirectoryOutcome& outcome, const DirectoryQuery& query,
                  const DirectorySettings& settings);

    DirectoryReport& report_;
    std::string addressText_;
    std::string base_;
    std::unique_ptr<DirectoryConnection> connection_; ///< null when it is closed
    bool binds_ = false;                              ///< the session is to be bound whenever it is opened
    std::chrono::milliseconds leftForBind_{0};

    std::vector<DirectoryEntry> results_;
    std::size_t position_ = 0;
    int lastCode_ = ldap_code::success;
};

} // namespace quelm

#endif
