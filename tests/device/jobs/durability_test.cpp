// Tests of what is written through, ahead of what: a power cut leaves nothing behind that was not.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/jobs/made_durable.h"
#include "tests/device/jobs/state_support.h"

#include <gmock/gmock.h>

namespace quelm::device::tests {
namespace {

using testing::Contains;
using testing::IsSupersetOf;

constexpr const char* name = "give a file its name";
constexpr const char* commit = "commit";
constexpr const char* behindCommit = "go on behind the commit";

class DurabilityTest : public StateTest {
protected:
    DurabilityTest() { open(); }
};

TEST_F(DurabilityTest, TheFoldersOfTheStateAreDurable)
{
    close();
    const MadeDurable durable(outer.path());
    path = outer.path() / "new";
    open();
    EXPECT_THAT(durable.between("", commit), IsSupersetOf({".", "new"}));
}

TEST_F(DurabilityTest, AJobIsDurableBeforeItIsEnteredAndItsEntryBeforeItsSenderIsTold)
{
    const MadeDurable durable(path);
    add(faxFor({"111"}));
    EXPECT_THAT(durable.between("", name), IsSupersetOf({"incoming/spooled", "jobs", "jobs/1"}));
    EXPECT_THAT(durable.between(name, commit), IsSupersetOf({"jobs/1", "incoming"}));
    const auto entering = durable.between(commit, behindCommit);
    ASSERT_THAT(entering, Contains("device.db"));
    EXPECT_EQ(entering.back(), ".") << "what could undo it is gone for good";
    EXPECT_THAT(durable.between(behindCommit, ""), Contains("jobs/1")) << "its mark does not come back";
}

TEST_F(DurabilityTest, PagesAreDurableBeforeTheyAreEntered)
{
    {
        add(faxFor({"111"}));
        writeFile(folder->pagesFile(1), "pages");
        const MadeDurable durable(path);
        log->setRendered(1, 1, noon);
        EXPECT_THAT(durable.between("", commit), IsSupersetOf({"jobs/1/pages.tif", "jobs/1"}));
    }
    add({});
    writeFile(folder->printedFile(2), "pages");
    const MadeDurable durable(path);
    log->setPrinted(2, 1);
    EXPECT_THAT(durable.between("", commit), IsSupersetOf({"printed/job-2.tif", "printed"}));
}

TEST_F(DurabilityTest, WhatAReceiverKeptIsDurableBeforeItsCallIsKnownToHaveEnded)
{
    addRendered(faxFor({"111"}));
    const DueCall due = begin();
    const MadeDurable durable(path);
    endSent(due, "111");
    EXPECT_THAT(durable.between("", commit), IsSupersetOf({"incoming/call-1.tif", "incoming"}));
    EXPECT_THAT(durable.between(behindCommit, name), Contains("received"));
    EXPECT_THAT(durable.between(name, ""), IsSupersetOf({"received/111", "incoming"}));
}

TEST_F(DurabilityTest, AFileThatHoldsACardIsGoneForGoodBeforeThatIsEntered)
{
    ReceivedJob reading = faxFor({"111"});
    reading.creditCard = "4000123412341234";
    addRendered(reading);
    const DueCall due = begin();
    const MadeDurable durable(path);
    endSent(due);
    EXPECT_THAT(durable.between("remove a job's file", commit), Contains("jobs/1"));
}

} // namespace
} // namespace quelm::device::tests
