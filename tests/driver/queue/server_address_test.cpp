// Tests of naming a print server: the user's of now, and one that was kept.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/server_address.h"

#include "driver/jobs/print_server.h"
#include "driver/queue/cups_server.h"
#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/print_listener.h"
#include "tests/servers/slapd_server.h"

#include <gmock/gmock.h>

#include <tuple>
#include <utility>

namespace quelm::tests {
namespace {

class PrintServerTest : public CupsTest {};

TEST_F(PrintServerTest, TheUsersServerOfNowIsNamedForLater)
{
    for (const auto& [server, name] :
         {std::pair{"fax.example:6310", "fax.example:6310"}, std::pair{"fax.example", "fax.example:631"},
          std::pair{"192.0.2.1:80", "192.0.2.1:80"}, std::pair{"[2001:db8::1]:6310", "[2001:db8::1]:6310"},
          std::pair{"[::1]", "[::1]:631"}, std::pair{"/run/cups/socket", "/run/cups/socket"}}) {
        useServer(server);
        EXPECT_EQ(currentPrintServer(), name);
        // libcups keeps a port for the next name that has none.
        cupsSetServer("x:631");
    }
}

TEST_F(PrintServerTest, AKeptNameLeadsToTheSameServerElsewhere)
{
    useServer("other.example:99");
    for (const auto& [name, host, port] :
         {std::tuple{"fax.example:6310", "fax.example", 6310}, std::tuple{"[::1]:631", "::1", 631},
          std::tuple{"/run/cups/socket", "/run/cups/socket", 0},
          std::tuple{"fax.example", "fax.example", 99}}) {
        const auto server = printServerIn(name);
        EXPECT_EQ(server.host, host);
        EXPECT_EQ(server.port, port);
    }
}

TEST_F(PrintServerTest, AServerOnIpv6IsReachedByEitherName)
{
    const Transfer transfer;
    if (!servers::hasIpv6()) {
        EXPECT_THAT(errorLine([&] { CupsServer("queue fax", limits, transfer, "[::1]:631"); }),
                    testing::StartsWith("queue fax: the print server [::1]:631 cannot be reached"));
        return;
    }
    servers::PrintListener listener(servers::Manner::neverCloses, 0, true);
    EXPECT_EQ(CupsServer("queue fax", limits, transfer, listener.address()).name(), listener.address());
    useServer(listener.address());
    EXPECT_EQ(CupsServer("queue fax", limits, transfer).name(), listener.address());
}

} // namespace
} // namespace quelm::tests
