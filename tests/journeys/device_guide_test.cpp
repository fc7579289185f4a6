// What docs/device.md says that files hold, used as it stands there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/support/build_paths.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace journeys {
namespace {

using testing::HasSubstr;

class DeviceGuideJourney : public DeviceJourney {
protected:
    /// The block of the guide that begins with this line.
    std::string block(const std::string& first) const
    {
        const auto begin = guide.find("```ini\n" + first + "\n");
        EXPECT_NE(begin, std::string::npos) << first;
        const auto inside = guide.substr(begin + 7);
        return inside.substr(0, inside.find("```"));
    }

    std::string guide = contentOf(build_paths::inProject("docs/device.md"));
};

TEST_F(DeviceGuideJourney, ItsConfigurationMakesTheDriverAskTheDevice)
{
    serve({"--snmp", "0"});
    auto configuration = block("[device]");
    const std::string usual = "127.0.0.1:1161";
    ASSERT_NE(configuration.find(usual), std::string::npos) << configuration;
    configuration.replace(configuration.find(usual), usual.size(), said("snmp: ").front().substr(6));
    const auto file = this->file("quelm.conf", configuration);
    ::chmod(file.c_str(), S_IRUSR | S_IWUSR);
    const auto result = driver({"--config", file, "device", "info"});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("Quelm emulated fax device"));
}

TEST_F(DeviceGuideJourney, ItsExchangeIsOne)
{
    serve({"--exchange", file("exchange.conf", block("[exchange]"))});
    EXPECT_FALSE(said("ready").empty());
}

TEST_F(DeviceGuideJourney, ItNamesAllThatIsKept)
{
    serve();
    for (const auto& entry : std::filesystem::directory_iterator(folder / "state"))
        EXPECT_THAT(guide, HasSubstr("\nDIR/" + entry.path().filename().string()));
}

} // namespace
} // namespace journeys
