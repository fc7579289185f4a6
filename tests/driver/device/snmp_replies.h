// Answers of a device, put together by hand: also those that no real server gives.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DEVICE_SNMP_REPLIES_H
#define TESTS_DRIVER_DEVICE_SNMP_REPLIES_H

#include "tests/servers/snmp_element.h"
#include "tests/servers/udp_device.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace replies {

using snmp::element;

/// Takes the elements of a request, all of which are shorter than 128 bytes, one by one.
class Elements {
public:
    explicit Elements(std::string_view bytes) : rest_(bytes) {}

    std::string_view next()
    {
        if (rest_.size() < 2 || rest_.size() < 2U + static_cast<unsigned char>(rest_[1]))
            throw std::runtime_error("no such element in the request");
        const std::string_view content = rest_.substr(2, static_cast<unsigned char>(rest_[1]));
        rest_.remove_prefix(2 + content.size());
        return content;
    }

private:
    std::string_view rest_;
};

/// What an answer says.
struct Answer {
    std::string value = element(0x04, "value"); ///< with its tag
    char errorStatus = 0;
    std::string object = {};                   ///< encoded name; empty for the one that was asked for
    bool withVariables = true;                 ///< false: an answer about nothing
    std::optional<std::string> community = {}; ///< without one, that of the request
};

/// Answers each request of version 1 or 2c in this way.
inline servers::DatagramHandler answering(Answer answer)
{
    return [answer = std::move(answer)](const std::string& request, const servers::Reply& reply) {
        Elements message(Elements(request).next());
        const std::string version(message.next());
        const std::string asker(message.next());
        const std::string community = answer.community.value_or(asker);
        Elements pdu(message.next());
        const std::string id(pdu.next());
        pdu.next();
        pdu.next();
        const std::string asked(Elements(Elements(pdu.next()).next()).next());
        const std::string name = element(0x06, answer.object.empty() ? asked : answer.object);
        const std::string variables = answer.withVariables ? element(0x30, name + answer.value) : "";
        const std::string body = element(0x02, id) + element(0x02, std::string(1, answer.errorStatus)) +
                                 element(0x02, std::string(1, '\0')) + element(0x30, variables);
        reply(element(0x30, element(0x02, version) + element(0x04, community) + element(0xA2, body)));
    };
}

} // namespace replies

#endif
