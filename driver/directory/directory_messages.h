// What a user is told when a directory cannot be used: which server, what went wrong, what to do.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_MESSAGES_H
#define DRIVER_DIRECTORY_DIRECTORY_MESSAGES_H

#include "base/net/connector.h"
#include "base/net/look_up.h"
#include "driver/directory/directory_query.h"
#include "driver/directory/directory_settings.h"

#include <cstddef>
#include <string>

namespace quelm::directory_messages {

// Each is one line in the user's language. `server` is "host:port".

std::string noAddress(const std::string& text);
/// The server's name was looked up in vain.
std::string notFound(const std::string& server, const HostAnswer& answer);
/// No address of the server was connected to.
std::string notReached(const std::string& server, const ConnectResult& result);
std::string nameServiceSilent(const std::string& server);
std::string timedOut(const std::string& server);
std::string noLibrary(const std::string& server, const std::string& reason);
std::string tlsRefused(const std::string& server, const std::string& reason);
std::string tlsTimedOut(const std::string& server);
std::string authoritiesUnreadable(const std::string& file);
std::string authoritiesUseless(const std::string& file);
/// `authorities` is the file of the configuration, or empty for the system's.
std::string notTrusted(const std::string& server, const std::string& authorities);
std::string bindFailed(const std::string& server, const DirectoryOutcome& outcome);
std::string noSearch(const DirectoryQuery& query);
/// A search that ended badly; `kept` results came before that.
std::string searchFailed(const std::string& server, const DirectoryOutcome& outcome,
                         const DirectoryQuery& query, const DirectorySettings& settings, std::size_t kept);
std::string serversLimit(const std::string& server, std::size_t count);

} // namespace quelm::directory_messages

#endif
