// Copies what getaddrinfo answers, and waits for it no longer than is wanted.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/net/look_up.h"

#include "base/cancellable_call.h"
#include "base/system_reason.h"

#include <netdb.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

namespace quelm {

namespace {

HostAnswer::Kind kindOf(int error)
{
    switch (error) {
    case 0:
        return HostAnswer::Kind::found;
    case EAI_NONAME:
    case EAI_NODATA:
    case EAI_ADDRFAMILY:
    case EAI_IDN_ENCODE:
        return HostAnswer::Kind::unknown;
    case EAI_AGAIN:
        return HostAnswer::Kind::unavailable;
    default:
        return HostAnswer::Kind::failed;
    }
}

HostAnswer ask(const NetworkAddress& host, int socketType, int flags)
{
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = socketType;
    // Not AI_ADDRCONFIG: it hides ::1 on machines without a network. What cannot be reached is passed over.
    wanted.ai_flags = AI_NUMERICSERV | flags;
    addrinfo* list = nullptr;
    const int error = ::getaddrinfo(host.host.c_str(), std::to_string(host.port).c_str(), &wanted, &list);
    const int systemError = errno;
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(list, &::freeaddrinfo);
    HostAnswer answer;
    answer.kind = kindOf(error);
    if (error != 0) {
        answer.reason = error == EAI_SYSTEM ? systemReason(systemError) : ::gai_strerror(error);
        return answer;
    }
    for (const addrinfo* entry = list; entry != nullptr; entry = entry->ai_next) {
        SocketAddress& copy = answer.addresses.emplace_back();
        std::memcpy(&copy.storage, entry->ai_addr, entry->ai_addrlen);
        copy.size = entry->ai_addrlen;
    }
    return answer;
}

} // namespace

HostAnswer lookUp(const NetworkAddress& host, int socketType, Deadline deadline,
                  const Cancellation& cancelled)
{
    if (HostAnswer numeric = ask(host, socketType, AI_NUMERICHOST); numeric.kind == HostAnswer::Kind::found)
        return numeric;
    auto answer = callBefore(deadline, cancelled, [=] { return ask(host, socketType, AI_IDN); });
    if (answer)
        return *std::move(answer);
    return {isCancelled(cancelled) ? HostAnswer::Kind::cancelled : HostAnswer::Kind::late, {}, {}};
}

} // namespace quelm
