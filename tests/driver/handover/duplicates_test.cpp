// Tests of finding and removing recipients of one number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/duplicates.h"

#include "tests/driver/handover/handover_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

JobRecipient someone(const std::string& name, const std::string& number, const std::string& mailbox = {})
{
    JobRecipient recipient;
    recipient.type = 1;
    recipient.name = name;
    recipient.number = number;
    recipient.mailbox = mailbox;
    return recipient;
}

TEST(SharedNumbers, AreThoseThatDialTheSame)
{
    EXPECT_THAT(sharedNumbers({someone("Ann", "555-1234"), someone("Bob", "1"), someone("Cid", "(555) 1234"),
                               someone("Ann", "555 1234"), someone("Dee", "555/12.34")}),
                ElementsAre(SharedNumber{0, 2}, SharedNumber{0, 3}, SharedNumber{0, 4}));
}

TEST(SharedNumbers, TellMailboxesAndPausesApart)
{
    EXPECT_THAT(sharedNumbers({someone("Ann", "5", "1"), someone("Bob", "5", "2"), someone("Cid", "5"),
                               someone("Dee", "5,1"), someone("Eve", "+5"), someone("Fay", "5*")}),
                IsEmpty());
    EXPECT_THAT(sharedNumbers({someone("Ann", "5", "1"), someone("Bob", "5", "1")}), SizeIs(1));
}

TEST(SharedNumbers, LeaveOutWhomTheComponentAsksAbout)
{
    EXPECT_THAT(sharedNumbers({someone("Ann", "5"), someone("Ann", "5")}), IsEmpty());
    EXPECT_THAT(sharedNumbers({someone("Ann", "5"), someone("Bob", "5"), someone("Bob", "5")}),
                ElementsAre(SharedNumber{0, 1}, SharedNumber{0, 2}));
}

TEST(SharedNumbers, OfTenThousandTakeNoTime)
{
    std::vector<JobRecipient> all(10'000, someone("Ann", "5"));
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i].name += std::to_string(i);
    EXPECT_THAT(sharedNumbers(all), SizeIs(9'999));
}

TEST(SharedNumbers, AreNamedInASentenceEach)
{
    const std::vector<JobRecipient> recipients{someone("Ann", "555-1234"),
                                               someone("B\nob\x1b", "(555) 1234")};
    EXPECT_THAT(
        sharedNumberWarnings(recipients, sharedNumbers(recipients)),
        ElementsAre(
            "B ob  ((555) 1234) has the same fax number as Ann (555-1234), so the fax goes there twice"));
}

class RemovalTest : public HandoverTest {
protected:
    std::vector<std::string> names()
    {
        std::vector<std::string> all;
        for (const auto& row : driver().rows("LanFax Recipient List"))
            all.push_back(row.at(0));
        return all;
    }
};

TEST_F(RemovalTest, TakesOutExactlyTheseWithAndWithoutTheQuestion)
{
    for (const auto* name : {"A", "B", "C", "D", "E"})
        add(name, "1");
    removeRecipients(driver(), {3, 1});
    EXPECT_THAT(names(), ElementsAre("A", "C", "E"));
    EXPECT_FALSE(driver().pendingQuestion());
    driver().tick("LanFax Pref Remove One", false);
    removeRecipients(driver(), {0});
    EXPECT_THAT(names(), ElementsAre("C", "E"));
    removeRecipients(driver(), {});
    EXPECT_THAT(names(), ElementsAre("C", "E"));
    EXPECT_EQ(driver().faxSession().count(RecipientList::job), 2U);
}

} // namespace
} // namespace quelm
