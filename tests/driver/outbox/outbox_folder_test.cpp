// Tests of the outbox's folder: made for its user alone, and refused when it is anybody else's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_folder.h"

#include "base/clock.h"
#include "base/sqlite/sqlite.h"
#include "driver/outbox/outbox_worker.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OutboxFolderTest : public OutboxTest {
protected:
    std::string lineOf() const
    {
        return errorLine([this] { open(); });
    }
};

TEST_F(OutboxFolderTest, ItIsMadeWithAllThatIsAboveIt)
{
    outboxFolder = path("a/b/c/outbox/");
    EXPECT_EQ(OutboxFolder(outboxFolder).path(), fs::canonical(path("a/b/c/outbox")));
    struct stat status = {};
    ASSERT_EQ(::stat(path("a/b/c/outbox").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
}

TEST_F(OutboxFolderTest, ALinkAboveItIsFollowedAndOneInItsPlaceIsNot)
{
    fs::create_directory(path("real"));
    fs::create_directory_symlink(path("real"), path("link"));
    EXPECT_EQ(OutboxFolder(path("link/outbox")).path(), path("real/outbox"));
    fs::create_directory_symlink(path("real/outbox"), path("real/another"));
    EXPECT_EQ(errorLine([&] { OutboxFolder(path("real/another")); }),
              "the outbox cannot be used: " + path("real/another") +
                  ": it is a link; put the folder itself in its place");
}

TEST_F(OutboxFolderTest, OneThatOthersMayEnterIsRefused)
{
    open();
    ASSERT_EQ(::chmod(outboxFolder.c_str(), 0755), 0);
    EXPECT_EQ(lineOf(), "the outbox cannot be used: " + outboxFolder +
                            ": others may enter it; close it to them with chmod 700");
}

class OutboxAmongOthers : public OutboxFolderTest {};

TEST_F(OutboxAmongOthers, AnotherUsersOutboxIsRefused)
{
    open();
    giveToOrdinaryUser(outboxFolder);
    EXPECT_THAT(lineOf(), HasSubstr("it belongs to another user"));
}

TEST_F(OutboxFolderTest, AFileInItsPlaceIsRefused)
{
    outboxFolder = file("outbox", "a file");
    EXPECT_THAT(lineOf(), HasSubstr("outbox"));
    EXPECT_EQ(contentOf(outboxFolder), "a file");
}

TEST_F(OutboxFolderTest, ALinkInThePlaceOfTheLogOrTheJobsIsRefused)
{
    for (const std::string name : {"jobs", "new", "log.db"}) {
        fs::remove_all(outboxFolder);
        open();
        fs::remove_all(outboxFolder + "/" + name);
        fs::create_directories(path("elsewhere/1"));
        file("elsewhere/kept", "kept");
        fs::create_symlink(path(name == "log.db" ? "elsewhere/kept" : "elsewhere"),
                           outboxFolder + "/" + name);
        EXPECT_THAT(lineOf(), HasSubstr(name)) << name;
        EXPECT_EQ(contentOf(path("elsewhere/kept")), "kept");
        EXPECT_TRUE(fs::exists(path("elsewhere/1")));
    }
}

TEST_F(OutboxFolderTest, ALogThatOthersMayReadIsRefused)
{
    open();
    ASSERT_EQ(::chmod((outboxFolder + "/log.db").c_str(), 0644), 0);
    EXPECT_THAT(lineOf(), HasSubstr("others may read it"));
}

class DamagedFolderTest : public OutboxFolderTest {
protected:
    DamagedFolderTest()
    {
        fs::create_directories(path("elsewhere/document"));
        for (const auto* name : {"stream", "card", "lock", "document/letter.ps"})
            file(std::string("elsewhere/") + name, "another's");
    }

    /// Lays a link to somebody else's files in the place of the first job's folder.
    void layLink() const
    {
        fs::remove_all(outboxFolder + "/jobs/1");
        fs::create_directory_symlink(path("elsewhere"), outboxFolder + "/jobs/1");
    }

    void expectNothingTouched() const
    {
        for (const auto* name : {"stream", "card", "lock", "document/letter.ps"})
            EXPECT_EQ(contentOf(path(std::string("elsewhere/") + name)), "another's");
    }
};

TEST_F(DamagedFolderTest, AJobWhoseFolderBecameALinkFailsAndKeepsNoOtherFromGoing)
{
    Outbox outbox = open();
    put(outbox, draftFor(FileTarget{path("one.ps")}));
    put(outbox, draftFor(FileTarget{path("two.ps")}));
    layLink();
    EXPECT_THAT(errorLine([&] { outbox.cancel(1, noon); }), HasSubstr("it is a link"));
    EXPECT_THAT(errorLine([&] { outbox.sendAgain(1, "", noon, true); }), HasSubstr("it is a link"));
    OutboxWorker::start(outbox.settings(), WorkerKind::command)->sendDue(outbox, noon, {}, {});
    EXPECT_EQ(outbox.job(1).state, OutboxState::failed);
    EXPECT_THAT(outbox.job(1).note, HasSubstr("it is a link"));
    EXPECT_EQ(outbox.job(2).state, OutboxState::handedOver);
    expectNothingTouched();
}

TEST_F(DamagedFolderTest, AnOrphanWhoseFolderBecameALinkIsSettled)
{
    EXPECT_EQ(inProcess([&] {
                  Outbox outbox = open();
                  OutboxDraft draft = draftFor(FileTarget{path("fax.ps")});
                  put(outbox, draft);
                  setOutboxStepHook([](const char* step) {
                      if (std::string(step) == "open the destination")
                          ::_exit(7);
                  });
                  outbox.handOver(1, noon);
                  return 0;
              }),
              7);
    layLink();
    Outbox outbox = open();
    EXPECT_EQ(outbox.settleOrphans(noon).size(), 1);
    EXPECT_EQ(outbox.job(1).state, OutboxState::waiting);
    expectNothingTouched();
}

TEST_F(DamagedFolderTest, WhatIsTooOldGoesWithoutWhatItsLinkLeadsTo)
{
    {
        Outbox outbox = open();
        put(outbox, draftFor(FileTarget{path("fax.ps")}), streamWithCard(Pdl::dsc, "4929"));
        outbox.handOver(1, noon - 2 * 24 * 3600);
    }
    layLink();
    // The clock runs, and was looked at long ago.
    releaseClock();
    sqlite::run(sqlite::open(outboxFolder + "/log.db", SQLITE_OPEN_READWRITE),
                ("INSERT INTO sweep VALUES(" + std::to_string(noon) + ")").c_str());
    EXPECT_EQ(open(30).jobs().size(), 1);
    Outbox outbox = open(1);
    outbox.removeOld();
    EXPECT_THAT(outbox.jobs(), IsEmpty());
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
    expectNothingTouched();
}

TEST_F(OutboxFolderTest, AStreamThatBecameALinkGoesNowhere)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(FileTarget{path("fax.ps")}));
    fs::remove(outboxFolder + "/jobs/1/stream");
    fs::create_symlink(file("secret", "0123456"), outboxFolder + "/jobs/1/stream");
    const HandoverEnd end = outbox.handOver(number, noon);
    EXPECT_EQ(end.state, OutboxState::failed);
    EXPECT_THAT(end.trouble, HasSubstr("it is no plain file"));
    EXPECT_FALSE(fs::exists(path("fax.ps")));
}

TEST_F(OutboxFolderTest, EntriesOfLivingProgramsStayAndOthersGo)
{
    const OutboxFolder folder(outboxFolder);
    const auto living = folder.makeEntry();
    static_cast<void>(living.folder.make("stream"));
    {
        const auto left = folder.makeEntry();
        static_cast<void>(left.folder.make("stream"));
        static_cast<void>(left.folder.makeDocumentFolder().make("letter.ps"));
    }
    fs::create_directory_symlink(path(""), outboxFolder + "/new/link");
    folder.sweepEntries();
    EXPECT_THAT(allBelow(outboxFolder + "/new"),
                ElementsAre("link", living.name, living.name + "/lock", living.name + "/stream"));
}

} // namespace
} // namespace quelm::tests
