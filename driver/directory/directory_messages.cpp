// Puts the directory's troubles into words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_messages.h"

#include "base/duration_text.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/directory/directory_entry.h"
#include "driver/directory/directory_error.h"

#include <cerrno>

namespace quelm::directory_messages {

namespace {

std::string searchProblem(const std::string& server, const DirectoryOutcome& outcome,
                          const DirectoryQuery& query, const DirectorySettings& settings)
{
    switch (outcome.code) {
    case ldap_code::timeout:
        return localized(
            "the directory server %s did not answer a search within %s; search for a longer name, "
            "or raise the search timeout",
            server, durationText(settings.searchTimeout));
    case ldap_code::timeLimitExceeded:
        return localized(
            "the directory server %s gave up a search that took too long; search for a longer name", server);
    case ldap_code::serverDown:
        return localized("the directory server %s ended the connection during a search; search again",
                         server);
    case ldap_code::filterError:
        return localized("the directory server %s was not asked: %s is no search filter; search for a name",
                         server, directoryText(query.filter));
    case ldap_code::noSuchObject:
        return localized("the directory server %s has no entry \"%s\" to search below; check the search root "
                         "that the device gives",
                         server, directoryText(query.base));
    default:
        return localized("the directory server %s refused the search for %s (%s); ask its administrator",
                         server, directoryText(query.filter), outcome.message);
    }
}

} // namespace

std::string noAddress(const std::string& text)
{
    return localized("\"%s\" is no address of a directory server; check the address that the device gives",
                     directoryText(text));
}

std::string notFound(const std::string& server, const HostAnswer& answer)
{
    if (answer.kind == HostAnswer::Kind::unavailable || answer.kind == HostAnswer::Kind::late)
        return nameServiceSilent(server);
    return localized("the directory server %s cannot be found (%s); check the address that the device gives",
                     server, answer.reason);
}

std::string notReached(const std::string& server, const ConnectResult& result)
{
    if (result.kind == ConnectResult::Kind::late)
        return timedOut(server);
    const int error = result.errors.back();
    if (error == ECONNREFUSED)
        return localized(
            "the directory server %s refuses connections; check that it runs, and the address that "
            "the device gives",
            server);
    return localized(
        "the directory server %s cannot be reached (%s); check the network, and the address that "
        "the device gives",
        server, systemReason(error));
}

std::string nameServiceSilent(const std::string& server)
{
    return localized(
        "the directory server %s cannot be found, because the name service does not answer; check "
        "the network",
        server);
}

std::string timedOut(const std::string& server)
{
    return localized(
        "the directory server %s did not answer in time; check that it runs, and the address that "
        "the device gives",
        server);
}

std::string noLibrary(const std::string& server, const std::string& reason)
{
    return localized(
        "the directory server %s cannot be talked to (%s); check the address that the device gives", server,
        reason);
}

std::string tlsRefused(const std::string& server, const std::string& reason)
{
    return localized("the directory server %s does not start TLS (%s); give it a certificate, or do without "
                     "StartTLS",
                     server, reason);
}

std::string tlsTimedOut(const std::string& server)
{
    return localized(
        "the directory server %s did not answer in time while TLS was set up; check that it speaks "
        "TLS there",
        server);
}

std::string authoritiesUnreadable(const std::string& file)
{
    return localized("the file of certificate authorities \"%s\" cannot be read; check its name and rights",
                     file);
}

std::string authoritiesUseless(const std::string& file)
{
    return localized(
        "the file of certificate authorities \"%s\" cannot be used; it must hold certificates (PEM)", file);
}

std::string notTrusted(const std::string& server, const std::string& authorities)
{
    if (authorities.empty())
        return localized(
            "the directory server %s is not trusted; check that it speaks TLS there, and that its "
            "certificate is valid, is for this name and comes from an authority that this system "
            "trusts",
            server);
    return localized("the directory server %s is not trusted; check that it speaks TLS there, and that its "
                     "certificate is valid, is for this name and comes from an authority in \"%s\"",
                     server, authorities);
}

std::string bindFailed(const std::string& server, const DirectoryOutcome& outcome)
{
    if (outcome.code == ldap_code::timeout)
        return timedOut(server);
    if (outcome.code >= ldap_code::firstOfTheClient)
        return localized("the directory server %s ended the connection; check that it is a directory server",
                         server);
    return localized("the directory server %s refuses to be used without a login (%s); let it be searched "
                     "anonymously",
                     server, outcome.message);
}

std::string noSearch(const DirectoryQuery& query)
{
    return localized("the directory was not asked: \"%s\" within scope %d is no search; search for a name",
                     directoryText(query.filter), query.scope);
}

std::string searchFailed(const std::string& server, const DirectoryOutcome& outcome,
                         const DirectoryQuery& query, const DirectorySettings& settings, std::size_t kept)
{
    std::string problem = searchProblem(server, outcome, query, settings);
    if (kept == 0)
        return problem;
    return localizedCount("%s. Shown is the one result before that",
                          "%s. Shown are the %d results before that", kept, problem, kept);
}

std::string serversLimit(const std::string& server, std::size_t count)
{
    return localizedCount(
        "the directory server %s gives no more than one result; search for a longer name to "
        "see the others",
        "the directory server %s gives no more than %d results; search for a longer name to "
        "see the others",
        count, server, count);
}

} // namespace quelm::directory_messages
