// What the device is to be, as the command line says it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_SERVE_OPTIONS_H
#define DEVICE_SERVE_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quelm::device {

struct ServeOptions {
    std::string state;                  ///< the folder of everything that the device keeps
    std::uint16_t port = 9100;          ///< for jobs; 0 for any free one
    std::vector<std::string> addresses; ///< numeric, as given; empty for loopback of both families
    std::string exchange;               ///< empty for the state folder's exchange.conf
    int lines = 1;
    bool realTime = false;
    bool untilIdle = false;
    std::optional<std::uint16_t> panel = 8631; ///< 0 for any free one; nothing for no status pages
    std::optional<std::uint16_t> snmp = 1161;  ///< likewise; nothing for no agent
    bool withDirectory = false;
    bool asJson = false;  ///< what happens is said in JSON, an object a line
    std::string identity; ///< of the station: digits, blanks and "+", at most 20; empty for the usual one
};

} // namespace quelm::device

#endif
