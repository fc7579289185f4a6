// Tests of what is told of a job because no device gets to see it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/not_reaching.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Recipients = std::vector<JobRecipient>;

const JobRecipient ann{1, "Ann", "555-1234", "", "", "", ""};
const JobRecipient bob{1, "Bob", "555-1235", "Acme", "555-1", "", ""};
const JobRecipient cid{1, "Cid", "555-1236", "", "", "cid@a.example", ""};

JobView withSender()
{
    JobView view;
    view.senderNumber = "555-9";
    view.senderName = "Zoe";
    view.senderOrganization = "Acme";
    view.senderEmail = "z@a.example";
    return view;
}

TEST(NotReaching, AnEverydayJobHasNothingToSay)
{
    EXPECT_THAT(notReaching({}, {ann}), IsEmpty());
    EXPECT_THAT(notReaching({}, {}), IsEmpty());
    JobView view = withSender();
    EXPECT_THAT(notReaching(view, {ann}), IsEmpty()) << "nobody asked for the sender on a cover sheet";
    view.coverGoes = view.showsRecipients = view.showsSender = true;
    view.note = "Call me";
    EXPECT_THAT(notReaching(view, {bob}), IsEmpty()) << "all of it is shown";
}

TEST(NotReaching, WithoutACoverSheetNamesWhatOnlyThatWouldShow)
{
    JobView view = withSender();
    view.note = "Call me";
    view.showsRecipients = view.showsCustomText = view.showsSender = true;
    view.customText = "Everybody";
    view.isA4 = true;
    EXPECT_THAT(
        notReaching(view, {ann, bob, cid}),
        ElementsAre("the note is not sent, as no cover sheet goes out",
                    "the recipients' names and more stay here, as no cover sheet goes out: the "
                    "organization, the phone number, the e-mail address",
                    "your own text for the recipients is not sent, as no cover sheet goes out",
                    "no cover sheet goes out that would show these: the sender's name, the sender's fax "
                    "number, the sender's organization, the sender's e-mail address"));
}

TEST(NotReaching, ACoverSheetThatNamesNobodySaysSo)
{
    JobView view;
    view.coverGoes = true;
    EXPECT_THAT(notReaching(view, {ann}), ElementsAre("the cover sheet does not name the recipients"));
    EXPECT_THAT(
        notReaching(view, {bob}),
        ElementsAre("the cover sheet does not name the recipients, nor show these data of theirs: the "
                    "organization, the phone number"));
}

TEST(NotReaching, ACoverSheetForSeveralShowsLessOfThem)
{
    JobView view;
    view.coverGoes = view.showsRecipients = true;
    EXPECT_THAT(notReaching(view, {ann, bob}),
                ElementsAre("with several recipients the cover sheet does not show these data of theirs: the "
                            "organization, the phone number"));
    JobRecipient longName = ann;
    longName.name = std::string(28, 'a');
    EXPECT_THAT(notReaching(view, {longName, ann}), IsEmpty()) << "30 bytes leave room for one more";
    longName.name = std::string(29, 'a');
    EXPECT_THAT(notReaching(view, {longName, ann}),
                ElementsAre("the cover sheet has room for the name of the first 1 recipient only"));
    EXPECT_THAT(notReaching(view, {ann, longName}), IsEmpty()) << "the last one is named whole";
    view.showsCustomText = true;
    view.customText = "Everybody";
    EXPECT_THAT(notReaching(view, {longName, ann}), IsEmpty());
}

TEST(NotReaching, TheOwnTextForRecipientsIsToldOfWhereItDoesNotStandAsAskedFor)
{
    JobView view;
    view.coverGoes = true;
    view.customText = "Everybody";
    EXPECT_THAT(notReaching(view, {ann}),
                ElementsAre("the cover sheet does not name the recipients",
                            "the cover sheet does not show your own text for the recipients"));
    view.showsCustomText = true;
    EXPECT_THAT(notReaching(view, {ann, ann}),
                ElementsAre("the cover sheet does not name the recipients",
                            "with several recipients the cover sheet shows your own text for them, although "
                            "it is not to show recipients"));
    view.showsRecipients = true;
    view.showsCustomText = false;
    EXPECT_THAT(notReaching(view, {ann}),
                ElementsAre("the cover sheet does not show your own text for the recipients"));
}

TEST(NotReaching, TheSenderOfAFaxForSeveralStandsOnOtherLines)
{
    JobView view = withSender();
    view.coverGoes = view.showsRecipients = view.showsSender = true;
    EXPECT_THAT(notReaching(view, {ann, ann}),
                ElementsAre("with several recipients the cover sheet shows the sender on other lines than "
                            "meant, the fax number as the name: Name: 555-9, Organization: Zoe, Voice: "
                            "Acme, E-Mail: z@a.example"));
    view.showsSender = false;
    EXPECT_THAT(notReaching(view, {ann, ann}),
                ElementsAre("with several recipients the cover sheet shows the sender although it is not to, "
                            "and on other lines than meant: Name: 555-9, Organization: Zoe, Voice: Acme, "
                            "E-Mail: z@a.example"));
    EXPECT_THAT(notReaching(view, {ann}),
                ElementsAre("the cover sheet does not show these: the sender's name, the sender's fax "
                            "number, the sender's organization, the sender's e-mail address"));
}

TEST(NotReaching, ThePaperSizeChangesNothing)
{
    JobView view;
    view.coverGoes = view.showsRecipients = view.isA4 = true;
    EXPECT_THAT(notReaching(view, {ann}),
                ElementsAre("the cover sheet is 8.5 inches wide and 11 high, although A4 is chosen for it"));
}

TEST(NotReaching, APrefixOrCardWhoseBoxIsNotTickedIsNamed)
{
    JobView view;
    view.typedPrefix = "9";
    view.typedCard = "4111 1111 1111 2345";
    EXPECT_THAT(notReaching(view, {ann}),
                ElementsAre("the dialing prefix 9 is not dialled, as its box is not ticked",
                            "the credit card ending in 2345 is not charged, as its box is not ticked"));
    view.typedCard = "4111";
    EXPECT_THAT(notReaching(view, {ann}).back(), "the credit card is not charged, as its box is not ticked");
    view.leavesKeptCard = true;
    EXPECT_THAT(notReaching(view, {ann}).back(),
                "the credit card is not charged; --kept-credit-card charges it");
    view.typedCard = "4111 1111 1111 2345";
    EXPECT_THAT(notReaching(view, {ann}).back(),
                "the credit card ending in 2345 is not charged; --kept-credit-card charges it");
    view.prefixTicked = view.cardTicked = true;
    EXPECT_THAT(notReaching(view, {ann}), IsEmpty());
    view.prefixTicked = view.cardTicked = false;
    view.prefix = "9";
    view.card = "4111";
    EXPECT_THAT(notReaching(view, {ann}), IsEmpty()) << "the job holds them all the same, as a remark says";
}

} // namespace
} // namespace quelm
