// Tests of summing up a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/summary.h"

#include "base/clock.h"
#include "tests/driver/handover/handover_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SummaryTest : public HandoverTest {
protected:
    void confirm() { driver().press("LanFax OK Button"); }

    JobSummary summary(const Document* document = nullptr, const JobPlan& plan = {})
    {
        return summaryOf(driver(), prepareHandover(driver()), document, plan);
    }

    Document letter(const std::string& pages = "showpage showpage") const
    {
        writeFile(folder / "letter.ps", "%!PS\n" + pages + "\n");
        return Document::open(folder / "letter.ps");
    }

    const std::time_t now = currentTime();
};

TEST_F(SummaryTest, HoldsWhatTheJobIsMadeWith)
{
    add("Ann", "555-1234");
    driver().choose("LanFax Resolution", 2);
    driver().choose("LanFax Send Speed", 0);
    driver().choose("LanFaxConfSheet", 1);
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    driver().tick("LanFax Credit Card", true);
    driver().type("LanFax Credit Card Info", "4111 1111 1111 2345");
    confirm();
    const Document document = letter();
    const auto made = summary(&document, {NetworkAddress{"fax.example", 9100}, now + 3600, false});
    ASSERT_EQ(made.recipients.size(), 1U);
    EXPECT_EQ(made.recipients.front().name, "Ann");
    EXPECT_EQ(made.document, "letter.ps");
    EXPECT_EQ(made.pages, 2U);
    EXPECT_TRUE(made.hasCoverPage);
    EXPECT_EQ(made.resolution, "fine");
    EXPECT_EQ(made.speed, "4800");
    EXPECT_FALSE(made.hasConfirmation);
    EXPECT_EQ(made.dialingPrefix, "9");
    EXPECT_EQ(made.card, "2345");
    EXPECT_EQ(made.plan.sendAt, now + 3600);
    EXPECT_THAT(made.charges,
                ElementsAre("the dialing prefix 9 is dialled", "the credit card ending in 2345 is charged"));
    EXPECT_THAT(made.notReaching, ElementsAre("the device is not told the time; the outbox keeps it",
                                              "the cover sheet does not name the recipients"));
}

TEST_F(SummaryTest, SaysALineForEachSubject)
{
    for (const char* name : {"Ann", "Bob", "Cid", "Dan"})
        add(name, "555-1234");
    driver().choose("LanFax Resolution", 2);
    confirm();
    const Document document = letter();
    EXPECT_THAT(summaryLines(summary(&document, {QueueTarget{"fax"}, {}, false}), now),
                ElementsAre("fax to 4 recipients: Ann (555-1234), Bob (555-1234), Cid (555-1234), ...",
                            "2 pages of letter.ps; no cover sheet",
                            "resolution fine, at most Super G3, with a confirmation sheet",
                            "goes to queue fax at once"));
}

TEST_F(SummaryTest, NamesTheNoteOnTheCoverSheet)
{
    add("Ann", "555-1234");
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().type("LanFax Cover Sheet Notes", "Call me " + std::string(56, 'x'));
    confirm();
    const Document document = letter();
    const auto made = summary(&document);
    EXPECT_EQ(made.note, "Call me " + std::string(56, 'x'));
    EXPECT_THAT(summaryLines(made, now), Contains("a cover sheet with the note \"Call me " +
                                                  std::string(52, 'x') + "...\" and 2 pages of letter.ps"));
}

TEST_F(SummaryTest, ANoteThatDoesNotGoOutIsNotNamed)
{
    add("Ann", "555-1234");
    driver().choose("LanFax Cover Sheet Option", 1);
    driver().type("LanFax Cover Sheet Notes", "Call me");
    driver().choose("LanFax Cover Sheet Option", 0);
    confirm();
    EXPECT_EQ(summary().note, "");
}

TEST_F(SummaryTest, SaysWhenAndWhere)
{
    const auto wayOf = [&](const JobPlan& plan) {
        const auto lines = summaryLines(summary(nullptr, plan), now);
        return lines.size() < 2 ? std::string("nothing") : lines[1];
    };
    const std::time_t later = now + 5 * 24 * 3600;
    EXPECT_EQ(wayOf({}), "nothing") << "no destination yet";
    EXPECT_EQ(wayOf({NetworkAddress{"::1", 9100}, {}, false}), "goes to device [::1]:9100 at once");
    EXPECT_EQ(wayOf({FileTarget{"a.job"}, {}, false}), "goes to a.job at once");
    EXPECT_EQ(wayOf({FileTarget{"-"}, {}, false}), "goes to standard output at once");
    EXPECT_EQ(wayOf({QueueTarget{"fax"}, {}, true}), "waits in the outbox, and goes to queue fax from there");
    EXPECT_THAT(wayOf({QueueTarget{"fax"}, later, false}), HasSubstr("goes to queue fax on "));
    EXPECT_THAT(wayOf({{}, later, false}), HasSubstr("goes out on "));
    EXPECT_EQ(wayOf({{}, {}, false, true}), "goes out at once") << "the time that was chosen is now";
    EXPECT_EQ(wayOf({{}, {}, true, true}), "nothing");
}

TEST_F(SummaryTest, TheTimeIsToldToBeKeptByWhoeverKeepsIt)
{
    const auto keeper = [&](const JobPlan& plan) { return summary(nullptr, plan).notReaching.at(0); };
    EXPECT_EQ(keeper({QueueTarget{"fax"}, now + 3600, false}),
              "the device is not told the time; the print queue keeps it, or else the outbox");
    EXPECT_EQ(keeper({QueueTarget{"fax"}, now + 3600, true}),
              "the device is not told the time; the outbox keeps it");
    EXPECT_EQ(keeper({FileTarget{"a"}, now + 3600, false}),
              "the device is not told the time; the outbox keeps it");
}

TEST_F(SummaryTest, SaysWhatIsChargedThoughItsBoxIsNotTickedOnce)
{
    driver().tick("LanFax Dialing Prefix", true);
    driver().type("LanFax Dialing Prefix Info", "9");
    confirm();
    driver().call("T40InvokeFaxDialog");
    driver().tick("LanFax Dialing Prefix", false);
    confirm();
    const auto made = summary();
    EXPECT_THAT(made.charges,
                ElementsAre("the dialing prefix 9 is dialled, though its box is not ticked any more"));
    EXPECT_THAT(made.notReaching, IsEmpty());
}

TEST_F(SummaryTest, OfACardWithFewDigitsNoneIsTold)
{
    driver().tick("LanFax Credit Card", true);
    driver().type("LanFax Credit Card Info", "4111");
    confirm();
    EXPECT_EQ(summary().card, "...");
}

TEST_F(SummaryTest, PagesThatNobodyCountedAreNotMadeUp)
{
    driver().choose("LanFax Cover Sheet Option", 1);
    confirm();
    const Document uncounted = letter("showpage systemdict /quit get exec");
    EXPECT_THAT(summaryLines(summary(&uncounted), now),
                testing::Contains("a cover sheet and letter.ps, whose pages cannot be counted"));
    const Document one = letter("showpage");
    EXPECT_THAT(summaryLines(summary(&one), now), testing::Contains("a cover sheet and 1 page of letter.ps"));
}

TEST_F(SummaryTest, ADriverThatWasJustStartedIsSummedUp)
{
    start();
    const auto made = summaryOf(driver(), {}, nullptr, {});
    EXPECT_EQ(made.document, "");
    EXPECT_THAT(summaryLines(made, now),
                ElementsAre("resolution standard, at most Super G3, with a confirmation sheet"));
}

} // namespace
} // namespace quelm
