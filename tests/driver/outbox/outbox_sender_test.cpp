// Tests of who sends what waits, with stand-ins for the system's programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_sender.h"

#include "driver/outbox/outbox_worker.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <set>

namespace quelm {
namespace {

class OutboxSenderTest : public testing::Test {
protected:
    OutboxSenderTest() { ::setenv("PATH", (folder.path().string() + ":/usr/bin:/bin").c_str(), 1); }

    void standIn(const std::string& program, const std::string& body) const
    {
        const auto path = folder / program;
        writeFile(path, "#!/bin/sh\n" + body + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }

    void noSystemd() const
    {
        standIn("systemctl", "echo 'Failed to connect to bus' >&2; exit 1");
        standIn("loginctl", "exit 1");
    }

    KeptVariable searchPath{"PATH"};
    TemporaryFolder folder;
};

TEST_F(OutboxSenderTest, WithoutATimerNobodySends)
{
    noSystemd();
    EXPECT_EQ(timerSender(), OutboxSender::nobody);
    standIn("systemctl", "echo inactive; exit 3");
    EXPECT_EQ(timerSender(), OutboxSender::nobody);
    ::setenv("PATH", (folder / "nowhere").c_str(), 1);
    EXPECT_EQ(timerSender(), OutboxSender::nobody) << "nothing is installed";
}

TEST_F(OutboxSenderTest, ATimerEndsWithTheUsersSessionUnlessHeLingers)
{
    standIn("systemctl", "test \"$*\" = '--user is-active quelm-outbox.timer' && echo active");
    standIn("loginctl", "echo Linger=no");
    EXPECT_EQ(timerSender(), OutboxSender::timer);
    standIn("loginctl", "test \"$*\" = \"show-user $(id -u) --property=Linger\" && echo Linger=yes");
    EXPECT_EQ(timerSender(), OutboxSender::lingeringTimer);
    standIn("loginctl", "exit 1");
    EXPECT_EQ(timerSender(), OutboxSender::timer);
}

TEST_F(OutboxSenderTest, ASystemdThatDoesNotAnswerCountsAsNone)
{
    standIn("systemctl", "exec sleep 100");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(timerSender(), OutboxSender::nobody);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(40));
}

TEST_F(OutboxSenderTest, IsTheProgramThatSendsNow)
{
    noSystemd();
    const OutboxSettings settings{folder / "outbox", 30};
    EXPECT_EQ(senderOf(settings), OutboxSender::nobody);
    {
        const auto worker = OutboxWorker::start(settings, WorkerKind::desktop);
        EXPECT_EQ(senderOf(settings), OutboxSender::desktop);
    }
    const auto worker = OutboxWorker::start(settings, WorkerKind::command);
    EXPECT_EQ(senderOf(settings), OutboxSender::command);
}

TEST_F(OutboxSenderTest, ATimerSendsAlsoWhenThatProgramIsClosed)
{
    standIn("systemctl", "echo active");
    standIn("loginctl", "echo Linger=yes");
    const OutboxSettings settings{folder / "outbox", 30};
    EXPECT_EQ(senderOf(settings), OutboxSender::lingeringTimer);
    const auto worker = OutboxWorker::start(settings, WorkerKind::desktop);
    EXPECT_EQ(senderOf(settings), OutboxSender::lingeringTimer);
}

TEST_F(OutboxSenderTest, EachHasASentenceOfItsOwn)
{
    std::set<std::string> sentences;
    for (const auto sender : {OutboxSender::desktop, OutboxSender::command, OutboxSender::timer,
                              OutboxSender::lingeringTimer, OutboxSender::nobody})
        sentences.insert(senderSentence(sender));
    EXPECT_EQ(sentences.size(), 5U);
    EXPECT_THAT(senderSentence(OutboxSender::nobody), testing::HasSubstr("quelm-driver outbox run --wait"));
}

} // namespace
} // namespace quelm
