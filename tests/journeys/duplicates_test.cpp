// Recipients that are in the job already.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

class DuplicatesJourney : public Journey {
protected:
    /// How many destinations a job has that names Ann twice and Bob behind her.
    std::size_t destinations(const Arguments& options) const
    {
        Arguments all{"--to", "Ann=1", "--to", "Ann=1", "--to", "Bob=2"};
        all.insert(all.end(), options.begin(), options.end());
        return attributes(all).size() - 5;
    }
};

TEST_F(DuplicatesJourney, AddAddsThemOnceMore) { EXPECT_EQ(destinations({"--duplicates", "add"}), 3U); }

TEST_F(DuplicatesJourney, SkipLeavesThemOut) { EXPECT_EQ(destinations({"--duplicates", "skip"}), 2U); }

TEST_F(DuplicatesJourney, AskFailsWhereNobodyCanBeAsked)
{
    for (const auto& options : {Arguments{}, Arguments{"--duplicates", "ask"}}) {
        Arguments all{"attributes", "--to", "Ann=1", "--to", "Ann=1"};
        all.insert(all.end(), options.begin(), options.end());
        expectFailure(driver(all), 1, "--to Ann=1: this recipient is in the job already");
    }
}

TEST_F(DuplicatesJourney, AskAsksThePersonAtTheTerminal)
{
    Request request;
    request.arguments = {"attributes", "--to", "Ann=1", "--to", "Ann=1", "--to", "Bob=2"};
    request.inputIsTerminal = true;
    for (const auto& [typed, destinations] : {std::pair{"y\n", 3U}, {"what?\nno\n", 2U}}) {
        request.input = typed;
        const auto result = driver(request);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.writes.size(), destinations + 5);
        EXPECT_THAT(result.errors, testing::StartsWith("Name:   Ann\nFax Number:   1\n"));
        EXPECT_THAT(result.errors,
                    testing::EndsWith("Do you want to add a duplicate of this Recipient? [y/n] "));
    }
}

TEST_F(DuplicatesJourney, SameNameWithAnotherNumberIsNoDuplicate)
{
    EXPECT_EQ(attributes({"--to", "Ann=1", "--to", "Ann=2"}).size(), 7U);
}

TEST_F(DuplicatesJourney, NameAndNumberThatJoinToTheSameTextAreTwoPeople)
{
    for (const auto* duplicates : {"ask", "skip", "add"}) {
        const auto lines =
            attributes({"--to", "Anne=5551234", "--to", "Anne5=551234", "--duplicates", duplicates});
        EXPECT_THAT(lines, testing::Contains("%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n"))
            << duplicates;
        EXPECT_THAT(lines, testing::Contains("%%OID_ATT_FAX_DESTINATION_PHONE \"551234\";\r\n"))
            << duplicates;
    }
}

TEST_F(DuplicatesJourney, ARowOfAListIsNamedByItsLine)
{
    const auto list = file("list.csv", "name,number\nAnn,1\nBob,2\nAnn,1\n");
    expectFailure(driver({"attributes", "--recipients", list}), 1,
                  list + ":4: this recipient is in the job already");
}

TEST_F(DuplicatesJourney, AUserWhoIsNotAskedGetsDuplicatesUnlessTheyAreToBeSkipped)
{
    script({"call T40InvokeFaxDialog", "tick \"LanFax Pref Duplicates\" off"});
    EXPECT_EQ(destinations({}), 3U);
    EXPECT_EQ(destinations({"--duplicates", "add"}), 3U);
    EXPECT_EQ(destinations({"--duplicates", "skip"}), 2U);
}

} // namespace
} // namespace journeys
