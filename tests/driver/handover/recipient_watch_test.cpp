// Tests of naming the recipients that come in and are wrong.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/recipient_watch.h"

#include "tests/driver/handover/handover_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RecipientWatchTest : public HandoverTest {
protected:
    void removeAll()
    {
        std::vector<int> rows;
        for (std::size_t row = 0; row < driver().rows("LanFax Recipient List").size(); ++row)
            rows.push_back(static_cast<int>(row));
        driver().select("LanFax Recipient List", rows);
        driver().press("LanFax Remove Button");
        driver().answer(true);
    }

    RecipientWatch watch{driver()};
};

TEST_F(RecipientWatchTest, NamesWhoeverIsWrongOnce)
{
    add("Ann", "1");
    EXPECT_THAT(watch.newProblems(), IsEmpty());
    add("Bob", "2", "\";");
    EXPECT_THAT(watch.newProblems(), ElementsAre(HasSubstr("Bob (2) cannot be sent a fax: the mailbox")));
    EXPECT_THAT(watch.newProblems(), IsEmpty());
    add("Cid", "3", ";");
    EXPECT_THAT(watch.newProblems(), ElementsAre(HasSubstr("Cid (3) cannot be sent a fax: the mailbox")));
}

TEST_F(RecipientWatchTest, SeesARecipientWhoIsEdited)
{
    add("Ann", "1");
    add("Bob", "2");
    EXPECT_THAT(watch.newProblems(), IsEmpty());
    driver().select("LanFax Recipient List", {0});
    driver().press("LanFax Details Button");
    EXPECT_THAT(watch.newProblems(), IsEmpty());
    driver().type("RecipientMailbox", "1\"");
    driver().press("LanFaxAddRcpt OK Button");
    EXPECT_THAT(watch.newProblems(), ElementsAre(HasSubstr("Ann (1)")));
}

TEST_F(RecipientWatchTest, NamesAgainWhoComesBackAfterARemoval)
{
    add("Ann", "1", "\"");
    EXPECT_THAT(watch.newProblems(), ElementsAre(HasSubstr("Ann")));
    removeAll();
    EXPECT_THAT(watch.newProblems(), IsEmpty());
    add("Ann", "1", "\"");
    EXPECT_THAT(watch.newProblems(), ElementsAre(HasSubstr("Ann")));
}

TEST_F(RecipientWatchTest, RequireSaysWhereTheRecipientWasGiven)
{
    add("Ann", "1");
    EXPECT_NO_THROW(watch.require("--entry Ann"));
    add("Bob", "2", "\"");
    EXPECT_THAT(refusal([&] { watch.require("--entry Bob"); }),
                HasSubstr("--entry Bob: Bob (2) cannot be sent a fax"));
}

} // namespace
} // namespace quelm
