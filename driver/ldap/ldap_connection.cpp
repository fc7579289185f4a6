// Connects, sets TLS up, binds and searches.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/ldap/ldap_connection.h"

#include "base/broken_pipe_guard.h"
#include "base/net/connector.h"
#include "base/net/look_up.h"
#include "driver/directory/directory_messages.h"
#include "driver/ldap/ldap_handle.h"

#include <ldap.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <utility>

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;

/// Where systems keep the certificate authorities that they trust.
std::string systemAuthorities()
{
    for (const char* file : {"/etc/ssl/certs/ca-certificates.crt", "/etc/pki/tls/certs/ca-bundle.crt",
                             "/etc/ssl/ca-bundle.pem", "/etc/ssl/cert.pem"})
        if (access(file, R_OK) == 0)
            return file;
    return "";
}

/// The addresses of a name are tried in turn, each with its share of the time that its look-up leaves.
FileHandle connectedSocket(const DirectoryAddress& server, Deadline deadline)
{
    const HostAnswer answer = lookUp({server.host, server.port}, SOCK_STREAM, deadline);
    const bool silent = answer.kind == HostAnswer::Kind::unavailable || answer.kind == HostAnswer::Kind::late;
    if (answer.kind != HostAnswer::Kind::found)
        throw DirectoryError(silent ? ldap_code::timeout : ldap_code::serverDown,
                             directory_messages::notFound(server.shown(), answer));
    ConnectResult result = connectToAny(answer.addresses, {deadline, {}});
    if (result.kind != ConnectResult::Kind::connected)
        throw DirectoryError(result.kind == ConnectResult::Kind::late ? ldap_code::timeout
                                                                      : ldap_code::serverDown,
                             directory_messages::notReached(server.shown(), result));
    // Requests are short and wait for their answers.
    const int on = 1;
    setsockopt(result.connection.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return std::move(result.connection);
}

/// The bytes of results that a search may fill the memory with.
constexpr std::size_t mostKept = std::size_t{64} << 20U;

/// What is left of a search's time in the whole seconds that servers count. One more than that, as
/// the server must not give up ahead of us.
timeval serversTimeLimit(Deadline deadline)
{
    const auto left = std::chrono::ceil<std::chrono::seconds>(deadline - Clock::now());
    timeval limit{};
    limit.tv_sec = static_cast<time_t>(std::max<long long>(left.count(), 0) + 1);
    return limit;
}

} // namespace

LdapConnection::LdapConnection(DirectoryAddress address, const DirectorySettings& settings, Deadline deadline)
    : server_(std::move(address))
{
    const BrokenPipeGuard guard;
    handle_ = std::make_unique<LdapHandle>(connectedSocket(server_, deadline), server_, deadline);
    if (!server_.tls && settings.startTls)
        requestTls(deadline);
    if (server_.tls || settings.startTls)
        setUpTls(settings, deadline);
}

LdapConnection::~LdapConnection() = default;

void LdapConnection::requestTls(Deadline deadline)
{
    int id = 0;
    const int error = ldap_start_tls(handle_->get(), nullptr, nullptr, &id);
    const DirectoryOutcome outcome = handle_->outcomeOf(error, id, deadline);
    if (outcome.code == ldap_code::timeout)
        throw DirectoryError(outcome.code, directory_messages::tlsTimedOut(server_.shown()));
    if (outcome.code != ldap_code::success)
        throw DirectoryError(outcome.code, directory_messages::tlsRefused(server_.shown(), outcome.message));
}

void LdapConnection::setUpTls(const DirectorySettings& settings, Deadline deadline)
{
    const std::string authorities =
        settings.certificateAuthorities.empty() ? systemAuthorities() : settings.certificateAuthorities;
    if (!std::ifstream(authorities).good())
        throw DirectoryError(ldap_code::connectError, directory_messages::authoritiesUnreadable(authorities));
    const int demand = LDAP_OPT_X_TLS_DEMAND;
    const int oldestVersion = LDAP_OPT_X_TLS_PROTOCOL_TLS1_2;
    const int client = 0;
    if (!handle_->set(LDAP_OPT_X_TLS_REQUIRE_CERT, &demand) ||
        !handle_->set(LDAP_OPT_X_TLS_CACERTDIR, nullptr) ||
        !handle_->set(LDAP_OPT_X_TLS_CACERTFILE, authorities.c_str()) ||
        !handle_->set(LDAP_OPT_X_TLS_PROTOCOL_MIN, &oldestVersion) ||
        !handle_->set(LDAP_OPT_X_TLS_NEWCTX, &client))
        throw DirectoryError(ldap_code::connectError, directory_messages::authoritiesUseless(authorities));
    if (handle_->installTls(deadline))
        return;
    if (Clock::now() >= deadline)
        throw DirectoryError(ldap_code::timeout, directory_messages::tlsTimedOut(server_.shown()));
    // What of it is wrong, the library does not tell.
    throw DirectoryError(ldap_code::connectError,
                         directory_messages::notTrusted(server_.shown(), settings.certificateAuthorities));
}

void LdapConnection::bindAnonymously(Deadline deadline)
{
    const BrokenPipeGuard guard;
    berval noPassword{};
    int id = 0;
    const int error =
        ldap_sasl_bind(handle_->get(), "", LDAP_SASL_SIMPLE, &noPassword, nullptr, nullptr, &id);
    const DirectoryOutcome outcome = handle_->outcomeOf(error, id, deadline);
    if (outcome.code == ldap_code::success)
        return;
    usable_ = false;
    throw DirectoryError(outcome.code, directory_messages::bindFailed(server_.shown(), outcome));
}

DirectoryOutcome LdapConnection::search(const DirectoryQuery& query, int sizeLimit, Deadline deadline,
                                        std::vector<DirectoryEntry>& found)
{
    const BrokenPipeGuard guard;
    std::vector<char*> attributes;
    for (const std::string& attribute : query.attributes)
        attributes.push_back(const_cast<char*>(attribute.c_str()));
    attributes.push_back(nullptr);
    timeval serversLimit = serversTimeLimit(deadline);
    int id = 0;
    int error = ldap_search_ext(handle_->get(), query.base.c_str(), query.scope, query.filter.c_str(),
                                query.attributes.empty() ? nullptr : attributes.data(),
                                query.namesOnly ? 1 : 0, nullptr, nullptr, &serversLimit, sizeLimit, &id);
    if (error != LDAP_SUCCESS) {
        usable_ = error == LDAP_FILTER_ERROR; // then nothing was sent
        return {ldapResultCode(error), ldap_err2string(error)};
    }
    std::size_t kept = 0;
    for (;;) {
        const LdapMessage message = handle_->receive(id, deadline, error);
        if (!message) {
            usable_ = false;
            return {ldapResultCode(error), ldap_err2string(error)};
        }
        const int kind = ldap_msgtype(message.get());
        if (kind == LDAP_RES_SEARCH_RESULT)
            return handle_->outcomeOf(message.get());
        if (kind == LDAP_RES_SEARCH_ENTRY) {
            if (found.size() >= static_cast<std::size_t>(sizeLimit)) {
                usable_ = false; // the server goes on sending what nobody wants
                return {ldap_code::sizeLimitExceeded, ldap_err2string(LDAP_SIZELIMIT_EXCEEDED)};
            }
            found.push_back(handle_->entryOf(message.get()));
            kept += found.back().size();
            if (kept > mostKept) {
                usable_ = false;
                return {ldap_code::sizeLimitExceeded, ldap_err2string(LDAP_SIZELIMIT_EXCEEDED)};
            }
        }
        // Otherwise a reference to another server, which is not followed.
        if (Clock::now() >= deadline) {
            usable_ = false;
            return {ldap_code::timeout, ldap_err2string(LDAP_TIMEOUT)};
        }
    }
}

bool LdapConnection::isUsable()
{
    if (!usable_)
        return false;
    // Between requests a server has nothing to say but goodbye.
    const BrokenPipeGuard guard;
    int error = LDAP_SUCCESS;
    const LdapMessage message = handle_->receive(LDAP_RES_ANY, Clock::now(), error);
    usable_ = !message && error == LDAP_TIMEOUT;
    return usable_;
}

} // namespace quelm
