// Which phonebook is the current one, and the folders that phonebooks live in.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/phonebook_state.h"

#include "common/module_state.h"
#include "phonebook/phonebook_listing.h"
#include "tests/support/phonebook_test.h"
#include "ui/phonebook_dialog.h"

class PhonebookStateTest : public PhonebookTest {
protected:
    /// Both phonebooks were listed once; the shared one is the current one.
    void listBoth()
    {
        keepShared({});
        PopulatePersonalPBEntries();
        PopulateSharedPBEntries();
    }
};

TEST_F(PhonebookStateTest, NoPhonebookIsCurrentUntilOneIsListed)
{
    EXPECT_NE(personalPBDatabase, nullptr);
    EXPECT_EQ(personalPBIterator, nullptr);
    EXPECT_EQ(sharedPBDatabase, nullptr);
    EXPECT_EQ(sharedPBIterator, nullptr);
    EXPECT_EQ(currentPBDatabase, nullptr);
    EXPECT_EQ(currentPBIterator, nullptr);
    EXPECT_EQ(currentPBType, 0);
    EXPECT_EQ(shownPBType, -1);
    ASSERT_NE(sharedPBPath, nullptr);
    EXPECT_EQ(*sharedPBPath, "");
}

TEST_F(PhonebookStateTest, KindZeroMakesThePersonalPhonebookTheCurrentOne)
{
    listBoth();
    SetCurrentPBInfo(0);
    EXPECT_EQ(currentPBDatabase, personalPBDatabase);
    EXPECT_EQ(currentPBIterator, personalPBIterator);
    EXPECT_NE(currentPBIterator, nullptr);
}

TEST_F(PhonebookStateTest, KindOneMakesTheSharedPhonebookTheCurrentOne)
{
    listBoth();
    SetCurrentPBInfo(0);
    SetCurrentPBInfo(1);
    EXPECT_EQ(currentPBDatabase, sharedPBDatabase);
    EXPECT_EQ(currentPBIterator, sharedPBIterator);
    EXPECT_NE(currentPBIterator, nullptr);
    EXPECT_NE(currentPBIterator, personalPBIterator);
}

TEST_F(PhonebookStateTest, AnyOtherKindChangesNothing)
{
    listBoth();
    for (int kind : {2, 3, -1, 1000}) {
        SetCurrentPBInfo(0);
        SetCurrentPBInfo(kind);
        EXPECT_EQ(currentPBDatabase, personalPBDatabase) << kind;
        EXPECT_EQ(currentPBIterator, personalPBIterator) << kind;
    }
}

TEST_F(PhonebookStateTest, APhonebookThatIsNotOpenIsCurrentAllTheSame)
{
    PopulatePersonalPBEntries();
    SetCurrentPBInfo(1);
    EXPECT_EQ(currentPBDatabase, nullptr);
    EXPECT_EQ(currentPBIterator, nullptr);
}

TEST_F(PhonebookStateTest, ChangingTheCurrentPhonebookCallsNothing)
{
    listBoth();
    host.journal.clear();
    SetCurrentPBInfo(0);
    EXPECT_EQ(host.journal.all(), "");
}

TEST_F(PhonebookStateTest, AFolderThatExistsIsLeftAlone)
{
    EXPECT_TRUE(ensurePhonebookDirectory("/opt/quelm/db/phonebook"));
    EXPECT_EQ(host.journal.all(), lines({R"(exists "/opt/quelm/db/phonebook" -> yes)"}));
}

TEST_F(PhonebookStateTest, AMissingFolderIsMadeWithTheDecimalMode777)
{
    EXPECT_TRUE(ensurePhonebookDirectory("/opt/quelm/db/more"));
    EXPECT_EQ(host.journal.all(),
              lines({R"(exists "/opt/quelm/db/more" -> no)", R"(createDirectory "/opt/quelm/db/more" 777)"}));
}

TEST_F(PhonebookStateTest, AFolderThatCannotBeMadeIsReported)
{
    host.faults.fail(fake::Op::createDirectory);
    EXPECT_FALSE(ensurePhonebookDirectory("/opt/quelm/db/more"));
}
