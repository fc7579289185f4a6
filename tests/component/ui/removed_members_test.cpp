// Recipients of the job that are removed while the group that is being saved still lists them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/fax_job.h"
#include "tests/support/phonebook_test.h"
#include "ui/recipient_selection.h"
#include "ui/save_to_phonebook.h"

namespace {

constexpr const char* jobList = "LanFax Recipient List";
constexpr const char* memberList = "LanFaxAddGroup Group List";
constexpr const char* groupWindow = "LanFax Add Group Window";

using Names = std::vector<std::string>;

} // namespace

class RemovedMembersTest : public PhonebookTest {
protected:
    RemovedMembersTest()
    {
        for (const char* name : {"Anne", "Bernard", "Carla", "Dora"})
            addRecipient(name, "1");
        job().updatePBEntryList(RECIPIENT_LIST);
        host.press("LanFax Save Group Button");
    }

    /// "Remove..." with these rows selected, and a yes.
    void removeRows(std::vector<int> rows)
    {
        host.selectRows(jobList, std::move(rows));
        host.press("LanFax Remove Button");
        host.answer(true);
    }

    void ok()
    {
        host.type("LanFaxAddGroup Group Name", "Team");
        host.press("LanFaxAddGroup Ok Button");
    }

    /// The data of the records that were written, one a line.
    std::string written() const
    {
        std::string all;
        for (const fake::Record& record : host.savedRecords)
            all += record.key + " " + record.data;
        return all;
    }

    int members() { return job().getRecipientListCount(GROUP_MEMBER_LIST); }
};

TEST_F(RemovedMembersTest, OkSavesThoseWhoAreLeft)
{
    removeRows({1, 2});
    EXPECT_EQ(members(), 4); // their places stay, and hold nobody
    ok();
    EXPECT_EQ(written(), "gTeam .sgen\r\n,uAnne,uDora\r\n.egen\r\n");
    EXPECT_FALSE(host.visible(groupWindow));
    EXPECT_EQ(members(), 0);
}

TEST_F(RemovedMembersTest, OkSavesNothingWhenNobodyIsLeft)
{
    removeRows({0, 1, 2, 3});
    ok();
    EXPECT_EQ(written(), "");
    EXPECT_TRUE(host.visible(groupWindow));
    host.press("LanFaxAddGroup Cancel Button");
    EXPECT_EQ(members(), 0);
}

TEST_F(RemovedMembersTest, TheWindowShowsThoseWhoAreLeftAndThoseWhoCame)
{
    removeRows({0, 2});
    addRecipient("Emil", "5");
    T40SaveGroup(); // once more: everybody who is there now joins those who were
    EXPECT_EQ(host.names(memberList), (Names{"Bernard", "Dora", "Bernard", "Dora", "Emil"}));
    EXPECT_EQ(members(), 7);
    ok();
    EXPECT_EQ(written(), "gTeam .sgen\r\n,uBernard,uDora,uBernard,uDora,uEmil\r\n.egen\r\n");
}

TEST_F(RemovedMembersTest, EveryPlaceOfARemovedOneIsEmptied)
{
    T40SaveGroup(); // everybody twice
    removeRows({0});
    ok();
    EXPECT_EQ(written(), "gTeam .sgen\r\n,uBernard,uCarla,uDora,uBernard,uCarla,uDora\r\n.egen\r\n");
}

TEST_F(RemovedMembersTest, ARecipientAtTheAddressOfARemovedOneIsNoMember)
{
    for (int round = 0; round < 50; ++round) {
        removeRows({0});
        addRecipient("Emil" + std::to_string(round), "5"); // memory is used again
        job().updatePBEntryList(RECIPIENT_LIST);
    }
    ok();
    EXPECT_EQ(written(), "");
    EXPECT_TRUE(host.visible(groupWindow));
}

struct Removal {
    const char* testName;
    void (*remove)(Tarvik40Fax& job);
};

static void PrintTo(const Removal& removal, std::ostream* out) { *out << removal.testName; }

/// Ways in which the first recipient of the job, and nobody else, is removed.
class WayOfRemovingTest : public RemovedMembersTest, public testing::WithParamInterface<Removal> {};

INSTANTIATE_TEST_SUITE_P(
    All, WayOfRemovingTest,
    testing::Values(Removal{"ByObject",
                            [](Tarvik40Fax& job) {
                                job.removeFaxRecipient(job.getFaxRecipientN(0, RECIPIENT_LIST), false);
                            }},
                    Removal{"ByPosition", [](Tarvik40Fax& job) { job.removeFaxRecipientN(0, false); }},
                    Removal{"FromTheListItself",
                            [](Tarvik40Fax& job) {
                                job.recipientList.removeFaxRecipient(job.getFaxRecipientN(0, RECIPIENT_LIST));
                            }},
                    Removal{"TheSelectedOne",
                            [](Tarvik40Fax&) {
                                fakeHost().setSelection(jobList, {0});
                                T40RemoveSingleFaxRecipient();
                            }},
                    Removal{"TheSelectedOneWithAQuestion",
                            [](Tarvik40Fax&) {
                                fakeHost().setSelection(jobList, {0});
                                T40RemoveSingleFaxRecipientTest();
                                fakeHost().answer(true);
                            }},
                    Removal{"TheSelectedOnes",
                            [](Tarvik40Fax&) {
                                fakeHost().setSelection(jobList, {0});
                                T40RemoveMultipleFaxRecipients();
                            }}),
    [](const auto& tested) { return std::string(tested.param.testName); });

TEST_P(WayOfRemovingTest, EmptiesThePlaceInTheGroup)
{
    GetParam().remove(job());
    ok();
    EXPECT_EQ(written(), "gTeam .sgen\r\n,uBernard,uCarla,uDora\r\n.egen\r\n");
}

/// Ways in which all recipients of the job are removed.
class WayOfRemovingAllTest : public RemovedMembersTest, public testing::WithParamInterface<Removal> {};

INSTANTIATE_TEST_SUITE_P(
    All, WayOfRemovingAllTest,
    testing::Values(Removal{"OfTheJob", [](Tarvik40Fax& job) { job.removeAllFaxRecipients(RECIPIENT_LIST); }},
                    Removal{"OfTheListItself",
                            [](Tarvik40Fax& job) { job.recipientList.removeAllFaxRecipients(); }},
                    Removal{"ByTheCallback", [](Tarvik40Fax&) { T40RemoveAllFaxRecipients(); }}),
    [](const auto& tested) { return std::string(tested.param.testName); });

TEST_P(WayOfRemovingAllTest, EmptiesEveryPlaceInTheGroup)
{
    GetParam().remove(job());
    EXPECT_EQ(members(), 4);
    ok();
    EXPECT_EQ(written(), "");
    job().updatePBEntryList(GROUP_MEMBER_LIST);
    EXPECT_TRUE(host.names(memberList).empty());
}
