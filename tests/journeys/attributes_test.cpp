// What `attributes` puts out: the component's writes, one by one and byte for byte.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class AttributesJourney : public Journey {
protected:
    /// The line that holds `name`, with its line end.
    std::string lineOf(const std::string& name, const Arguments& arguments) const
    {
        Arguments all{"--to", "Ann=555-1234"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto text = attributeText(all);
        const auto found = text.find(name);
        if (found == std::string::npos)
            return "";
        const auto start = text.rfind('\n', found) + 1;
        return text.substr(start, text.find('\n', found) + 1 - start);
    }
};

TEST_F(AttributesJourney, AnEverydayJobIsSixWrites)
{
    EXPECT_THAT(
        attributes({"--to", "Ann=555-1234", "--speed", "14.4"}),
        ElementsAre("%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n",
                    "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"
                    "%%OID_ATT_FAX_RESOLUTION 0;\r\n"
                    "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n",
                    "%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n", "%%QLMbegin\r\n", "%%QLMend\r\n"));
}

TEST_F(AttributesJourney, PjlCarriesPrefixAndMailboxAndNoBrackets)
{
    const auto list = file("list.csv", "name,number,mailbox\nAnn,555-1234,12\n");
    EXPECT_THAT(attributes({"--recipients", list, "--prefix", "9", "--pdl", "pjl", "--speed", "14.4"}),
                ElementsAre("@PJL COMMENT OID_ATT_FAX_COVER_SHEET FALSE;\r\n",
                            "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n",
                            "@PJL COMMENT OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"
                            "@PJL COMMENT OID_ATT_FAX_RESOLUTION 0;\r\n"
                            "@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n",
                            "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n"
                            "@PJL COMMENT OID_ATT_FAX_MAILBOX \"12\";\r\n"));
}

TEST_F(AttributesJourney, TheCreditCardStandsBetweenTheBrackets)
{
    const auto writes = attributes({"--to", "Ann=1", "--credit-card", "1234 5678"});
    ASSERT_EQ(writes.size(), 7U);
    EXPECT_THAT(std::vector(writes.end() - 3, writes.end()),
                ElementsAre("%%QLMbegin\r\n", "%%OID_ATT_CREDIT_CARD \"1234 5678\";\r\n", "%%QLMend\r\n"));
}

TEST_F(AttributesJourney, PjlCarriesTheCreditCardWithoutBrackets)
{
    const auto writes = attributes({"--to", "Ann=1", "--credit-card", "12", "--pdl", "pjl"});
    EXPECT_EQ(writes.back(), "@PJL COMMENT OID_ATT_CREDIT_CARD \"12\";\r\n");
    EXPECT_EQ(writes.size(), 5U);
}

TEST_F(AttributesJourney, EveryResolutionHasTheDevicesCode)
{
    EXPECT_EQ(lineOf("RESOLUTION", {"--resolution", "standard"}), "%%OID_ATT_FAX_RESOLUTION 0;\r\n");
    EXPECT_EQ(lineOf("RESOLUTION", {"--resolution", "fine"}), "%%OID_ATT_FAX_RESOLUTION 1;\r\n");
    EXPECT_EQ(lineOf("RESOLUTION", {"--resolution", "superfine"}), "%%OID_ATT_FAX_RESOLUTION 2;\r\n");
}

TEST_F(AttributesJourney, EverySpeedHasItsValue)
{
    EXPECT_EQ(lineOf("FAX_TYPE", {"--speed", "4800"}),
              "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_FORCED_4800;\r\n");
    EXPECT_EQ(lineOf("FAX_TYPE", {"--speed", "14.4"}), "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n");
    EXPECT_EQ(lineOf("FAX_TYPE", {"--speed", "super-g3"}),
              "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n");
    EXPECT_EQ(lineOf("FAX_TYPE", {}), "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n");
}

TEST_F(AttributesJourney, TheConfirmationSheetCanBeLeftOut)
{
    EXPECT_EQ(lineOf("CONFIRMATION", {}), "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n");
    EXPECT_EQ(lineOf("CONFIRMATION", {"--confirmation"}), "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n");
    EXPECT_EQ(lineOf("CONFIRMATION", {"--no-confirmation"}), "%%OID_ATT_FAX_CONFIRMATION_SHEET FALSE;\r\n");
}

TEST_F(AttributesJourney, ACoverSheetIsAnnounced)
{
    EXPECT_EQ(lineOf("COVER_SHEET", {"--cover"}), "%%OID_ATT_FAX_COVER_SHEET TRUE;\r\n");
    EXPECT_EQ(lineOf("COVER_SHEET", {"--no-cover"}), "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n");
}

TEST_F(AttributesJourney, ThePrefixStandsAheadOfEveryNumber)
{
    const auto text = attributeText({"--to", "Ann=1", "--to", "Bob=2", "--prefix", "9*#,"});
    EXPECT_THAT(text, HasSubstr("PHONE \"9*#,,1\";\r\n"));
    EXPECT_THAT(text, HasSubstr("PHONE \"9*#,,2\";\r\n"));
}

TEST_F(AttributesJourney, DelayedSendingReachesNoLine)
{
    const auto now = attributeText({"--to", "Ann=1"});
    for (const auto* time : {"0:05", "09:30", "12:30", "23:59"})
        EXPECT_EQ(attributeText({"--to", "Ann=1", "--send-at", time}), now) << time;
}

TEST_F(AttributesJourney, NumbersAreDialledWithoutTheirPunctuation)
{
    EXPECT_THAT(attributeText({"--to", "Ann=+1 (555) 123-4567"}), HasSubstr("PHONE \"+15551234567\";\r\n"));
}

TEST_F(AttributesJourney, RecipientsStandInTheOrderGiven)
{
    const auto list = file("list.csv", "name,number\nCid,3\nDee,4\n");
    const auto writes = attributes({"--to", "Ann=1", "--recipients", list, "--to", "Bob=2"});
    ASSERT_EQ(writes.size(), 9U);
    EXPECT_THAT(writes[3], HasSubstr("\"1\""));
    EXPECT_THAT(writes[4], HasSubstr("\"2\""));
    EXPECT_THAT(writes[5], HasSubstr("\"3\""));
    EXPECT_THAT(writes[6], HasSubstr("\"4\""));
}

TEST_F(AttributesJourney, WritesAFileWhenOneIsNamed)
{
    const auto text = attributeText({"--to", "Ann=1"});
    const auto result = driver({"attributes", "--to", "Ann=1", "--output", path("out")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(content("out"), text);
    EXPECT_THAT(files(), ElementsAre("out"));
}

TEST_F(AttributesJourney, ADashIsStandardOutput)
{
    EXPECT_EQ(attributeText({"--to", "Ann=1", "--output", "-"}), attributeText({"--to", "Ann=1"}));
    EXPECT_THAT(files(), Not(testing::Contains("-")));
}

} // namespace
} // namespace journeys
