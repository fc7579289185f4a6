// Asks the system's name service, which knows no time-out of ours.
#include "driver/jobs/host_lookup.h"

#include "driver/core/error.h"
#include "driver/core/translation.h"
#include "driver/jobs/cancellable_call.h"

#include <netdb.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace quelm {
namespace {

/// What the name service answered.
struct Answer {
    int error = 0;
    int systemError = 0; ///< errno, when `error` is EAI_SYSTEM
    std::vector<SocketAddress> addresses;
};

Answer ask(const NetworkAddress& address)
{
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = SOCK_STREAM;
    // Not AI_ADDRCONFIG: it hides ::1 on machines without a network. What cannot be reached is passed over.
    wanted.ai_flags = AI_NUMERICSERV | AI_IDN;
    addrinfo* found = nullptr;
    Answer answer;
    answer.error = ::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &wanted, &found);
    answer.systemError = errno;
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, &::freeaddrinfo);
    if (answer.error != 0)
        return answer;
    for (const addrinfo* entry = found; entry != nullptr; entry = entry->ai_next) {
        SocketAddress& copy = answer.addresses.emplace_back();
        std::memcpy(&copy.storage, entry->ai_addr, entry->ai_addrlen);
        copy.size = entry->ai_addrlen;
    }
    return answer;
}

std::string failureOf(const std::string& who, const Answer& answer)
{
    switch (answer.error) {
    case EAI_NONAME:
    case EAI_NODATA:
    case EAI_ADDRFAMILY:
    case EAI_IDN_ENCODE:
        return localized("%s: there is no host of that name; check the name", who);
    case EAI_AGAIN:
        return localized(
            "%s: the name service does not answer; try again later, or give the device's IP address", who);
    default:
        return localized("%s: the name cannot be looked up: %s", who,
                         answer.error == EAI_SYSTEM ? std::strerror(answer.systemError)
                                                    : ::gai_strerror(answer.error));
    }
}

} // namespace

std::vector<SocketAddress> lookUpHost(const NetworkAddress& address, const std::string& who,
                                      std::chrono::milliseconds limit, const Transfer& transfer)
{
    auto answer = callWithin(limit, transfer, [address] { return ask(address); });
    if (!answer && transfer.isCancelled())
        throw Error(localized("%s: the job was cancelled before anything of it went out", who));
    if (!answer)
        throw Error(localized("%s: the name service does not answer within %s; try again later, or give the "
                              "device's IP address",
                              who, durationText(limit)));
    if (answer->error != 0)
        throw Error(failureOf(who, *answer));
    return std::move(answer->addresses);
}

} // namespace quelm
