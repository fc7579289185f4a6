// Asks the name service for the device.
#include "driver/core/device_address.h"

#include "driver/core/error.h"
#include "driver/core/translation.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include <netdb.h>

namespace quelm {

namespace {

/// What the name service said.
struct Answer {
    int error = 0;
    int systemError = 0; ///< errno, when `error` is EAI_SYSTEM
    std::vector<DeviceEndpoint> endpoints;
};

Answer ask(const NetworkAddress& device, int flags)
{
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = SOCK_DGRAM;
    wanted.ai_flags = AI_NUMERICSERV | flags;
    addrinfo* found = nullptr;
    Answer answer;
    answer.error = getaddrinfo(device.host.c_str(), std::to_string(device.port).c_str(), &wanted, &found);
    answer.systemError = errno;
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, &freeaddrinfo);
    for (const addrinfo* entry = found; answer.error == 0 && entry != nullptr; entry = entry->ai_next) {
        std::array<char, NI_MAXHOST> numeric{};
        if (getnameinfo(entry->ai_addr, entry->ai_addrlen, numeric.data(), numeric.size(), nullptr, 0,
                        NI_NUMERICHOST) != 0)
            continue;
        DeviceEndpoint& endpoint = answer.endpoints.emplace_back();
        std::memcpy(&endpoint.address, entry->ai_addr, entry->ai_addrlen);
        endpoint.size = entry->ai_addrlen;
        endpoint.numeric = numeric.data();
        endpoint.port = device.port;
    }
    return answer;
}

std::string troubleOf(const NetworkAddress& device, const Answer& answer)
{
    switch (answer.error) {
    case 0:
    case EAI_NONAME:
    case EAI_NODATA:
    case EAI_ADDRFAMILY:
    case EAI_IDN_ENCODE:
        return localized("The device %s is not known to the name service; check its name", toText(device));
    case EAI_AGAIN:
        return localized("The device %s cannot be looked up: the name service does not answer; try again "
                         "later, or give its IP address",
                         toText(device));
    default:
        return localized("The device %s cannot be looked up: %s; give its IP address", toText(device),
                         answer.error == EAI_SYSTEM ? std::strerror(answer.systemError)
                                                    : gai_strerror(answer.error));
    }
}

} // namespace

std::vector<DeviceEndpoint> findDevice(const NetworkAddress& device, Deadline deadline)
{
    if (Answer numeric = ask(device, AI_NUMERICHOST); !numeric.endpoints.empty())
        return std::move(numeric.endpoints);
    auto lookup = startCall([device] { return ask(device, AI_IDN); });
    if (!lookup.isBackBefore(deadline))
        throw Error(localized("The device %s cannot be looked up: the name service does not answer in time; "
                              "try again later, or give its IP address",
                              toText(device)));
    Answer answer = lookup.get();
    if (answer.endpoints.empty())
        throw Error(troubleOf(device, answer));
    return std::move(answer.endpoints);
}

} // namespace quelm
