// Tests of the log: what is none of ours is refused and left as it is, and nonsense in it does no harm.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_log.h"

#include "base/error.h"
#include "driver/outbox/outbox_worker.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <thread>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OutboxLogTest : public OutboxTest {
protected:
    std::string logPath() const { return outboxFolder + "/log.db"; }

    /// Does with the log what nobody but its user could.
    void alter(const std::string& statements) const
    {
        const auto database = sqlite::open(logPath(), SQLITE_OPEN_READWRITE);
        sqlite::run(database, statements.c_str());
    }

    /// The line with which the outbox is refused; its log must stay as it is.
    std::string refusal() const
    {
        const std::string before = contentOf(logPath());
        const std::string line = errorLine([this] { open(); });
        EXPECT_EQ(contentOf(logPath()), before);
        return line;
    }

    void putTwo() const
    {
        Outbox outbox = open();
        put(outbox, draftFor(FileTarget{path("one.ps")}));
        put(outbox, draftFor(FileTarget{path("two.ps")}));
    }
};

TEST_F(OutboxLogTest, ALaterVersionsIsRefused)
{
    putTwo();
    alter("PRAGMA user_version=2");
    EXPECT_EQ(refusal(), "the outbox cannot be used: " + logPath() +
                             ": it was written by a newer version of this program; update the program");
}

TEST_F(OutboxLogTest, AnotherProgramsIsRefused)
{
    putTwo();
    alter("PRAGMA application_id=7");
    EXPECT_THAT(refusal(), HasSubstr("it is no log of an outbox; move it away"));
}

TEST_F(OutboxLogTest, ADamagedOneIsRefused)
{
    putTwo();
    const std::string whole = contentOf(logPath());
    const auto size = whole.size();
    for (const std::string& bytes :
         {std::string("no database at all, but long enough to be one"), whole.substr(0, size / 2),
          whole.substr(0, size - 4096) + std::string(4096, '\xFF')}) {
        std::filesystem::resize_file(logPath(), 0);
        std::ofstream(logPath(), std::ios::binary) << bytes;
        EXPECT_THAT(refusal(), HasSubstr("it is damaged"));
    }
}

TEST_F(OutboxLogTest, OneWithMoreInItIsRefused)
{
    putTwo();
    alter("CREATE TRIGGER gone AFTER INSERT ON job BEGIN DELETE FROM job; END");
    EXPECT_THAT(refusal(), HasSubstr("it is damaged"));
}

TEST_F(OutboxLogTest, NonsenseInARowIsLeftOutAndToldOnce)
{
    const std::vector<std::string> nonsense{
        "state='sent'",
        "state=x'00'",
        "kind='telegram'",
        "name=''",
        "name='relative.ps'",
        "name=x'2f0061'",
        "kind='device', port=0",
        "kind='device', port=-1",
        "kind='device', port=65536",
        "pdl='pcl'",
        "recipients=x'31'",
        "recipients='garbage'",
        "options=x'4100'",
        "due=-1",
        "due=9223372036854775807",
        "size=-5",
        "queue_job=-1",
        "queue_job=4294967296",
        "document='../../x'",
        "document='..'",
        "document=x'6100'",
        "token='../x'",
        "token='0123'",
        "card_at=9223372036854775807",
        "card_size=8",
        "begun=2",
        "before=''",
        "number=4294967298",
        "number=-2",
    };
    putTwo();
    fs::rename(outboxFolder, path("sound"));
    for (const std::string& change : nonsense) {
        fs::remove_all(outboxFolder);
        fs::copy(path("sound"), outboxFolder, fs::copy_options::recursive);
        fs::permissions(outboxFolder, fs::perms::owner_all);
        alter("UPDATE job SET " + change + " WHERE number=2");
        LogCapture capture;
        Outbox outbox = open();
        EXPECT_EQ(outbox.jobs().size(), 1) << change;
        EXPECT_EQ(outbox.jobs().size(), 1) << change;
        EXPECT_EQ(outbox.nextDue(noon), noon);
        const std::string number = change.starts_with("number=") ? change.substr(7) : "2";
        EXPECT_THAT(capture.messages, ElementsAre("the outbox's log " + logPath() +
                                                  " holds jobs that are damaged and left out: " + number))
            << change;
        EXPECT_THAT(errorLine([&] { outbox.handOver(2, noon); }),
                    AnyOf(HasSubstr("what it says of job 2 is damaged"), HasSubstr("there is no job 2")))
            << change;
        EXPECT_THAT(outbox.settleOrphans(noon), IsEmpty());
    }
    Outbox outbox = open();
    OutboxWorker::start({outboxFolder, 30}, WorkerKind::command)->sendDue(outbox, noon, {}, {});
    EXPECT_EQ(contentOf(path("one.ps")), "the job");
    EXPECT_FALSE(fs::exists(path("two.ps")));
}

TEST_F(OutboxLogTest, ARowThatSaysNothingOfItsFileTouchesNone)
{
    putTwo();
    alter("UPDATE job SET state='handing over', begun=1, token='', inode=5 WHERE number=1");
    file(".quelm-outbox-", "another's");
    Outbox outbox = open();
    EXPECT_EQ(outbox.settleOrphans(noon).size(), 1);
    EXPECT_EQ(outbox.job(1).state, OutboxState::uncertain);
    EXPECT_EQ(contentOf(path(".quelm-outbox-")), "another's");
}

TEST_F(OutboxLogTest, TextsOfAnyBytesComeBackAndAreShownInOneLine)
{
    Outbox outbox = open();
    OutboxDraft draft = draftFor(FileTarget{path("new\nline \xFF.ps")});
    draft.title = "a\x1b[31m\nb\xFF";
    draft.recipients.front().name = "\xFE\x01";
    const int number = put(outbox, draft);
    alter("UPDATE job SET note='one' || char(10) || 'two' || char(27), place=char(7)");
    const OutboxJob job = outbox.job(number);
    EXPECT_EQ(std::get<FileTarget>(job.target).path, path("new\nline \xFF.ps"));
    EXPECT_EQ(job.title, draft.title);
    EXPECT_EQ(job.recipients, draft.recipients);
    EXPECT_EQ(job.note, "one two ");
    EXPECT_EQ(job.place, " ");
}

TEST_F(OutboxLogTest, ManyProgramsMayBeginItAtOnceAndNoneLosesAJob)
{
    constexpr int programs = 6;
    std::vector<std::thread> threads;
    threads.reserve(programs);
    for (int i = 0; i < programs; ++i)
        threads.emplace_back([this] {
            Outbox outbox = open();
            put(outbox, draftFor(FileTarget{path("fax.ps")}));
            put(outbox, draftFor(FileTarget{path("fax.ps")}));
        });
    for (auto& thread : threads)
        thread.join();
    std::vector<int> numbers;
    for (const auto& job : open().jobs())
        numbers.push_back(job.number);
    EXPECT_EQ(numbers.size(), 2 * programs);
}

TEST_F(OutboxLogTest, ATransactionThatFailsChangesNothing)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(FileTarget{path("fax.ps")}));
    OutboxLog log{OutboxFolder(outboxFolder)};
    EXPECT_EQ(errorLine([&] {
                  log.transaction([&] {
                      log.remove(number);
                      throw Error("no");
                  });
              }),
              "no");
    EXPECT_EQ(log.find(number).number, number);
    log.transaction([&] { log.remove(number); });
    EXPECT_THAT(log.all(), IsEmpty());
}

} // namespace
} // namespace quelm::tests
