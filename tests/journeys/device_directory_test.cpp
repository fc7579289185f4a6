// The driver asks the emulated device for its settings, and its directory for people, who then are sent a
// fax. SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class DeviceDirectoryJourney : public DeviceJourney {
protected:
    /// What stands behind the last line of the device's that begins with this word.
    std::string told(const std::string& word) const
    {
        const auto lines = said(word);
        return lines.empty() ? std::string() : lines.front().substr(word.size());
    }

    /// Runs the driver with a configuration file that names the device's agent, and says more.
    Result asking(Arguments arguments, const std::string& more = {}) const
    {
        const auto config = file("quelm.conf", "[device]\nsnmp = " + told("snmp: ") + "\n" + more);
        ::chmod(config.c_str(), S_IRUSR | S_IWUSR);
        arguments.insert(arguments.begin(), {"--config", config});
        return driver(arguments);
    }

    std::string letter = document("letter.ps", "Hello");
};

TEST_F(DeviceDirectoryJourney, TheDeviceTellsWhereItsDirectoryIsAndWhatItsEntriesHold)
{
    serve({"--snmp", "0", "--with-directory"});
    const auto result = asking({"device", "info"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "Host Name and Port: " + told("directory: ") +
                                 "\n"
                                 "Search Directory Root: dc=example\n"
                                 "LDAP Server Type: Quelm emulated fax device\n"
                                 "Login Name:\n"
                                 "Name: cn\n"
                                 "Email Address: mail\n"
                                 "Business Phone: telephoneNumber\n"
                                 "Business Address: postalAddress\n"
                                 "Office: physicalDeliveryOfficeName\n"
                                 "City: l\n"
                                 "State: st\n"
                                 "Zip Code: postalCode\n"
                                 "Country: c\n"
                                 "Internet Fax: facsimileTelephoneNumber\n");
}

TEST_F(DeviceDirectoryJourney, WithoutADirectoryTheDeviceNamesNone)
{
    serve({"--snmp", "0"});
    const auto result = asking({"device", "info"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, StartsWith("Host Name and Port:\nSearch Directory Root:\n"
                                          "LDAP Server Type: Quelm emulated fax device\n"));
    EXPECT_THAT(said("directory: "), IsEmpty());
}

TEST_F(DeviceDirectoryJourney, TheDeviceAnswersBothVersionsThatBearACommunityAndNoOther)
{
    serve({"--snmp", "0"});
    EXPECT_EQ(asking({"device", "info"}, "version=1\n").status, 0);
    EXPECT_EQ(asking({"device", "info"}, "version=2c\n").status, 0);
    expectFailure(asking({"device", "info"}, "version=3\nuser=anne\ntimeout=0.5\n"), 1,
                  "did not answer over SNMP");
    expectFailure(asking({"device", "info"}, "community=sesame\ntimeout=0.5\n"), 1,
                  "did not answer over SNMP");
}

TEST_F(DeviceDirectoryJourney, PeopleOfTheDevicesDirectoryAreFoundInTheirScripts)
{
    serve({"--snmp", "0", "--with-directory"});
    const auto found = [&](const std::string& prefix) {
        const auto result = asking({"directory", "search", "--", prefix});
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.output;
    };
    EXPECT_EQ(found("mül"),
              "Müller, Jürgen  +1 555 0101 201  +1 555 0101 101  mueller.01@lindenhof.example\n"
              "Müller, Anton   +1 555 0101 209  +1 555 0101 109  mueller.09@lindenhof.example\n");
    EXPECT_THAT(found("Παπαδ"), HasSubstr("Παπαδοπούλου, Ελένη"));
    EXPECT_THAT(found("щерб"), HasSubstr("Щербаков, Пётр"));
    EXPECT_THAT(found("לוי"), HasSubstr("לוי, דנה"));
}

TEST_F(DeviceDirectoryJourney, SomebodyOfTheDirectoryReceivesTheFax)
{
    serve({"--snmp", "0", "--with-directory"});
    Arguments arguments = fax(letter, {"--directory", "Παπαδοπούλου, Ελένη", "--cover", "--show-recipients"});
    const auto result = asking(arguments);
    ASSERT_EQ(result.status, 0) << result.errors;
    ASSERT_TRUE(hasSaid("job 1: done"));
    ASSERT_THAT(receivers(), SizeIs(1));
    EXPECT_THAT(receivers().front(), testing::EndsWith("15550103201"));
    EXPECT_THAT(receivedPages(receivers().front()), SizeIs(2)) << "the cover sheet and the letter";
}

TEST_F(DeviceDirectoryJourney, TheDirectoryGoesWithADeviceThatIsKilled)
{
    serve({"--snmp", "0", "--with-directory"});
    const auto directory = static_cast<pid_t>(std::stoi(content("state/directory/slapd.pid")));
    ASSERT_TRUE(isRunning(directory));
    killDevice();
    EXPECT_TRUE(soon([&] { return !isRunning(directory); }));
    serve({"--snmp", "0", "--with-directory"});
    EXPECT_NE(content("state/directory/slapd.pid"), std::to_string(directory) + "\n");
}

} // namespace
} // namespace journeys
