// What becomes of a job's lists when one of them destroys recipients that another one lists, too.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/joined_lists.h"

#include "tests/support/component_test.h"

class JoinedListsTest : public StartedComponentTest {
protected:
    /// The names in the group's places, "-" for a place that holds nobody.
    static std::string places(Tarvik40Fax& job)
    {
        std::string names;
        for (int n = 0; n < job.groupMemberList.recipientListSize(); ++n) {
            Tarvik40FaxRecipient* member = job.groupMemberList.getFaxRecipientN(n);
            names += member != nullptr ? field(member, "RecipientName") : "-";
        }
        return names;
    }
};

TEST_F(JoinedListsTest, ARemovedOneLeavesItsPlacesInTheGroupEmpty)
{
    auto* a = addRecipient("A", "1");
    addRecipient("B", "1");
    job().setGroupRecipientList(false);
    job().setGroupRecipientList(false);
    EXPECT_TRUE(job().removeFaxRecipient(a, false));
    EXPECT_EQ(places(job()), "-B-B");
    EXPECT_EQ(job().getRecipientListCount(GROUP_MEMBER_LIST), 4);
}

TEST_F(JoinedListsTest, AStrangerLeavesTheGroupAsItIs)
{
    addRecipient("A", "1");
    job().setGroupRecipientList(false);
    auto stranger = makeRecipient("A", "1");
    EXPECT_FALSE(job().removeFaxRecipient(stranger.get(), false));
    EXPECT_FALSE(job().removeFaxRecipient(nullptr, false));
    EXPECT_EQ(places(job()), "A");
}

TEST_F(JoinedListsTest, AWalkOfTheGroupGoesOnBehindAnEmptyPlace)
{
    addRecipient("A", "1");
    addRecipient("B", "1");
    auto* c = addRecipient("C", "1");
    job().setGroupRecipientList(false);
    job().groupMemberList.walkFaxRecipientList(true);
    job().removeFaxRecipientN(1, false);
    EXPECT_EQ(job().groupMemberList.walkFaxRecipientList(false), c);
    EXPECT_EQ(job().groupMemberList.walkFaxRecipientList(false), nullptr);
}

TEST_F(JoinedListsTest, EmptyPlacesAreForgottenWithTheOthers)
{
    addRecipient("A", "1");
    addRecipient("B", "1");
    job().setGroupRecipientList(false);
    job().removeFaxRecipientN(0, false);
    job().setGroupRecipientList(true);
    EXPECT_EQ(places(job()), "");
    EXPECT_EQ(jobNames(), std::vector<std::string>{"B"});
}

TEST_F(JoinedListsTest, AJobThatIsNotPublishedKeepsItsGroupRight)
{
    Tarvik40Fax other;
    for (const char* name : {"A", "B"})
        other.addFaxRecipient(makeRecipient(name, "1").release(), false);
    other.groupMemberList.appendRecipientList(&other.recipientList);
    EXPECT_TRUE(other.removeFaxRecipientN(0, false));
    EXPECT_EQ(places(other), "-B");
    EXPECT_TRUE(other.removeAllFaxRecipients(RECIPIENT_LIST));
    EXPECT_EQ(places(other), "--");
    std::string text;
    EXPECT_FALSE(other.assembleGroupMemberListData(text));
}

TEST_F(JoinedListsTest, MembersThatAreDestroyedLeaveTheJob)
{
    addRecipient("A", "1");
    addRecipient("B", "1");
    job().setGroupRecipientList(false);
    job().setGroupRecipientList(false); // each twice, and destroyed once
    auto* c = addRecipient("C", "1");
    job().removeFaxRecipientN(0, false); // and a place that holds nobody
    EXPECT_TRUE(job().removeAllFaxRecipients(GROUP_MEMBER_LIST));
    EXPECT_EQ(job().getRecipientListCount(GROUP_MEMBER_LIST), 0);
    EXPECT_EQ(jobNames(), std::vector<std::string>{"C"});
    EXPECT_EQ(job().getFaxRecipientN(0, RECIPIENT_LIST), c);
}

TEST_F(JoinedListsTest, APickThatTheGroupListsLeavesItsPlaceEmpty)
{
    addPick("A", "1");
    addPick("B", "1");
    job().groupMemberList.appendRecipientList(&job().tmpRecipientList);
    EXPECT_TRUE(job().removeFaxRecipientN(1, true));
    EXPECT_EQ(places(job()), "A-");
    EXPECT_TRUE(job().removeAllFaxRecipients(CUR_RECIPIENT_LIST));
    EXPECT_EQ(places(job()), "--");
}

TEST_F(JoinedListsTest, AcceptedPicksStayMembers)
{
    addPick("A", "1");
    job().groupMemberList.appendRecipientList(&job().tmpRecipientList);
    job().appendTmpFaxRecipientList();
    EXPECT_EQ(places(job()), "A");
    job().removeFaxRecipientN(0, false);
    EXPECT_EQ(places(job()), "-");
}

TEST_F(JoinedListsTest, ThousandsAreRemovedAtOnce)
{
    for (int n = 0; n < 20'000; ++n)
        addRecipient("r" + std::to_string(n), "1");
    job().groupMemberList.appendRecipientList(&job().recipientList);
    job().removeAllFaxRecipients(RECIPIENT_LIST);
    std::string text;
    EXPECT_FALSE(job().assembleGroupMemberListData(text));
    EXPECT_EQ(job().getRecipientListCount(GROUP_MEMBER_LIST), 20'000);
}

TEST_F(JoinedListsTest, ListsOfAJobThatIsGoneAreJoinedNoMore)
{
    Tarvik40FaxRecipientList lonely;
    auto* a = addRecipient("A", "1");
    for (int n = 0; n < 3; ++n) {
        Tarvik40Fax other; // perhaps where the one before it was
        other.groupMemberList.addFaxRecipient(a);
    }
    lonely.addFaxRecipient(a);
    job().setGroupRecipientList(false);
    EXPECT_TRUE(job().removeFaxRecipient(a, false));
    EXPECT_EQ(places(job()), "-");
    EXPECT_EQ(lonely.recipientListSize(), 1); // no list of a job
    EXPECT_EQ(lonely.getFaxRecipientN(0), a);
}
