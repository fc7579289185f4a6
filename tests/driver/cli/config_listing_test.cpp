// Tests of the configuration as people and programs read it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/config_listing.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

class ConfigListingTest : public testing::Test {
protected:
    ConfigListingTest()
    {
        configuration.sources = {{"/home/ann/quelm.conf", false}, {"/etc/xdg/quelm/quelm.conf", true}};
        configuration.values = {{"job", "prefix", "0", "/etc/xdg/quelm/quelm.conf", 7},
                                {"destination Lab", "device", "10.0.0.7", "/etc/xdg/quelm/quelm.conf", 9},
                                {"device", "privacy-passphrase", "battery staple", "/x", 2}};
    }

    Configuration configuration;
};

TEST_F(ConfigListingTest, NamesTheFilesThatWereLookedForAndTheLineOfEachValue)
{
    const auto text = configurationText(configuration);
    EXPECT_THAT(text, HasSubstr("/home/ann/quelm.conf       not there\n"));
    EXPECT_THAT(text, HasSubstr("/etc/xdg/quelm/quelm.conf  read\n"));
    EXPECT_THAT(text, testing::ContainsRegex("\n\\[job\\] prefix +0 +/etc/xdg/quelm/quelm.conf:7\n"));
    EXPECT_THAT(text, testing::ContainsRegex(
                          "\n\\[destination Lab\\] device +10.0.0.7 +/etc/xdg/quelm/quelm.conf:9\n"));
    EXPECT_THAT(text, testing::ContainsRegex("\n\\[sender\\] name +- +default\n"));
    EXPECT_THAT(text, testing::ContainsRegex("\n\\[outbox\\] keep-days +30 +default\n"));
}

TEST_F(ConfigListingTest, HoldsNoSecret)
{
    for (const auto& text : {configurationText(configuration), configurationJson(configuration)}) {
        EXPECT_THAT(text, HasSubstr("*****"));
        EXPECT_THAT(text, Not(HasSubstr("battery")));
    }
}

} // namespace
} // namespace quelm
