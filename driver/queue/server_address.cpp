// Asks libcups for the user's print server, and names it for later.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/server_address.h"

#include "base/net/network_address.h"

#include <cups/cups.h>

#include <cstdint>

namespace quelm {

std::string serverOfNow()
{
    const PrintServer server = printServerIn(cupsServer());
    if (server.port == 0)
        return server.host;
    return toText({server.host, static_cast<std::uint16_t>(server.port)});
}

PrintServer printServerIn(const std::string& text)
{
    if (text.starts_with('/'))
        return {text, 0};
    const auto port = static_cast<std::uint16_t>(ippPort());
    const auto address = networkAddressIn(text, port);
    return address ? PrintServer{address->host, address->port} : PrintServer{text, port};
}

} // namespace quelm
