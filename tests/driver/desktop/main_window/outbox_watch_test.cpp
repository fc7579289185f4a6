// Tests of the outbox in the main window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/outbox_watch.h"

#include "base/clock.h"
#include "tests/driver/desktop/main_window/main_window_fixture.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>
#include <unistd.h>

namespace quelm {
namespace {

using servers::Manner;
using servers::PrintListener;
using testing::AllOf;
using testing::HasSubstr;

constexpr std::time_t hour = 3600;

class OutboxWatchTest : public MainWindowTest {
protected:
    /// Puts a job in for a file, due so many seconds from now; its number.
    int put(std::time_t due, const std::string& title = "letter.ps")
    {
        return put(due, FileTarget{folder / (title + ".job")}, title);
    }
    int put(std::time_t due, const JobTarget& target, const std::string& title, bool isUnattended = true,
            const std::string& stream = "the job")
    {
        Outbox outbox(this->outbox());
        return put(outbox, due, target, title, isUnattended, stream);
    }
    static int put(Outbox& outbox, std::time_t due, const JobTarget& target, const std::string& title,
                   bool isUnattended, const std::string& stream)
    {
        OutboxDraft draft;
        draft.target = target;
        draft.title = title;
        draft.user = "ann";
        draft.recipients.resize(1);
        draft.recipients.front().name = "Ann";
        draft.recipients.front().number = "555-1231";
        draft.due = currentTime() + due;
        draft.isUnattended = isUnattended;
        const auto entry = outbox.newEntry();
        entry->sink().write(stream);
        return entry->commit(draft, nullptr);
    }

    OutboxState stateOf(int number) const { return Outbox(outbox()).job(number).state; }

    static bool comesToSay(const std::string& text)
    {
        return loopUntil([&] { return shownText("Main Message").find(text) != std::string::npos; });
    }
    static bool asks()
    {
        return loopUntil([] { return onScreen("Main Overdue Question") != nullptr; });
    }
    static std::string asked(const std::string& question = "Main Overdue Question")
    {
        if (onScreen(question) == nullptr)
            return {};
        gchar* text = nullptr;
        g_object_get(onScreen(question), "text", &text, nullptr);
        const std::unique_ptr<gchar, decltype(&g_free)> owned(text, g_free);
        return owned ? owned.get() : "";
    }

    /// Closes the window ahead of a job for `device`. The lines `answer` of a script tell whether a timer
    /// sends it: what follows is left to the loop.
    void closeAheadOf(const PrintListener& device, const std::string& answer)
    {
        writeFile(folder / "systemctl", "#!/bin/sh\necho > '" + (folder / "asked") + "'\n" + answer + "\n");
        close();
        put(1, parseNetworkAddress(device.address()), "letter.ps", true, std::string(8'000'000, ' '));
        open();
        window->close();
        EXPECT_TRUE(soon([this] {
            g_main_context_iteration(nullptr, FALSE);
            return std::filesystem::exists(folder / "asked");
        }));
    }

    /// The job's time comes, and it goes out in part; the loop does not run meanwhile.
    void begin(PrintListener& device) const
    {
        auto later = localTime();
        later.tm_sec += 1;
        fixClock(later);
        EXPECT_TRUE(device.waitForBytes(1000));
        EXPECT_TRUE(soon([this] { return window->isHalfOut(); }));
    }

    /// Closes the window as soon as a part of the job counts as sent.
    bool askToStop()
    {
        return loopUntil([this] {
            const auto question = asked("Main Quit Question");
            if (question.empty())
                window->close();
            else if (question != "A fax job is being sent.")
                press("Main Quit Question No"); // too early
            return asked("Main Quit Question") == "A fax job is being sent.";
        });
    }
};

TEST_F(OutboxWatchTest, WhatGoesOutIsTold)
{
    close();
    put(-1);
    open();
    EXPECT_TRUE(comesToSay("The fax job of letter.ps for 1 recipient was written to " +
                           (folder / "letter.ps.job") + "."));
    EXPECT_EQ(contentOf(folder / "letter.ps.job"), "the job");
}

TEST_F(OutboxWatchTest, WhatFailsIsTold)
{
    close();
    const int number = put(-1, NetworkAddress{"127.0.0.1", 1}, "letter.ps");
    open();
    EXPECT_TRUE(comesToSay("The fax job of letter.ps was not handed over: "));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("outbox send " + std::to_string(number)));
    EXPECT_EQ(stateOf(number), OutboxState::failed);
}

TEST_F(OutboxWatchTest, OverdueJobsAskOneAfterTheOtherAndOnce)
{
    close();
    const int first = put(-3 * hour, "first.ps");
    put(-2 * hour, "second.ps");
    const int third = put(-2 * hour, "third.ps");
    open();
    ASSERT_TRUE(asks());
    EXPECT_EQ(asked(), "The fax job of first.ps was to go out today at 11:07.");
    press("Main Overdue Question No");
    ASSERT_TRUE(asks());
    EXPECT_THAT(asked(), HasSubstr("second.ps"));
    press("Main Overdue Question Yes");
    ASSERT_TRUE(asks());
    EXPECT_THAT(asked(), HasSubstr("third.ps"));
    press("Main Overdue Question Other");
    ASSERT_TRUE(comesToSay("The fax job of second.ps for 1 recipient was written to "));
    ASSERT_TRUE(loopUntil([&] { return stateOf(third) == OutboxState::cancelled; }));
    EXPECT_EQ(stateOf(first), OutboxState::waiting);
    EXPECT_FALSE(std::filesystem::exists(folder / "first.ps.job"));
    // A job that is sent leads to another look into the outbox.
    openDocument();
    fillFax({"Ann"});
    const int due = put(-1, "due.ps");
    enterText("Main Destination File", folder / "fax.job");
    sendAndRead();
    ASSERT_TRUE(comesToSay("The fax job of due.ps "));
    EXPECT_EQ(stateOf(due), OutboxState::handedOver);
    loopUntilIdle();
    EXPECT_EQ(onScreen("Main Overdue Question"), nullptr);
}

TEST_F(OutboxWatchTest, WhateverADocumentIsCalledTheQuestionStaysOnTheScreen)
{
    close();
    put(-2 * hour, FileTarget{folder / "fax.job"}, std::string(250, 'x') + "\n\xff\x1b");
    open();
    ASSERT_TRUE(asks());
    EXPECT_THAT(asked(), testing::EndsWith("x \uFFFD  was to go out today at 12:07."));
    EXPECT_LT(gtk_widget_get_allocated_width(onScreen("Main Overdue Question")), 900);
}

TEST_F(OutboxWatchTest, NothingIsAskedAboveADialog)
{
    press("Main Fax Setup Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("LanFax OK Button") != nullptr; }));
    close();
    put(-2 * hour);
    const int due = put(-1, "due.ps");
    open();
    ASSERT_TRUE(loopUntil([] { return onScreen("LanFax OK Button") != nullptr; }));
    ASSERT_TRUE(loopUntil([&] { return stateOf(due) == OutboxState::handedOver; }));
    ASSERT_TRUE(comesToSay("due.ps"));
    loopUntilIdle();
    EXPECT_EQ(onScreen("Main Overdue Question"), nullptr);
    driver->press("LanFax Cancel Button");
    settle();
    EXPECT_TRUE(asks());
}

TEST_F(OutboxWatchTest, AJobWhoseProgramWasKilledIsToldAtTheStart)
{
    PrintListener device(Manner::stalls, 1000);
    close();
    ASSERT_EQ(inProcess([&] {
                  Outbox outbox(this->outbox());
                  const int number = put(outbox, 0, parseNetworkAddress(device.address()), "letter.ps", false,
                                         std::string(8'000'000, ' '));
                  Transfer transfer;
                  transfer.progress = [](std::uint64_t done, std::uint64_t) {
                      if (done > 0)
                          _exit(7);
                  };
                  outbox.handOver(number, currentTime(), transfer);
                  return 0;
              }),
              7);
    open();
    EXPECT_TRUE(comesToSay("Whether the fax job of letter.ps went out is not known: "));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("outbox show 1"));
}

// --- The end -----------------------------------------------------------------------------------------

TEST_F(OutboxWatchTest, ClosingAsksWhenJobsAreLeftBehind)
{
    put(hour);
    quitBehindAQuestion();
}

TEST_F(OutboxWatchTest, ClosingAsksNothingWhenNothingWaitsOrATimerSends)
{
    writeFile(folder / "systemctl", "#!/bin/sh\necho active\n");
    put(hour);
    window->close();
    EXPECT_TRUE(loopUntil([this] { return closed; }));
    EXPECT_EQ(onScreen("Main Quit Question"), nullptr);
}

TEST_F(OutboxWatchTest, ASignalClosesWithoutAQuestion)
{
    put(hour);
    window->closeAtOnce();
    EXPECT_TRUE(closed);
}

TEST_F(OutboxWatchTest, ClosingAsksWhileAJobIsHalfOut)
{
    PrintListener device(Manner::stalls, 1000);
    close();
    const int number =
        put(-1, parseNetworkAddress(device.address()), "letter.ps", true, std::string(8'000'000, ' '));
    open();
    ASSERT_TRUE(device.waitForBytes(1000));
    ASSERT_TRUE(askToStop());
    press("Main Quit Question Yes");
    EXPECT_TRUE(loopUntil([this] { return closed; })) << "the job itself is not asked about twice";
    close();
    EXPECT_EQ(stateOf(number), OutboxState::uncertain);
}

/// The user closes the window before the job begins, and whether anybody else sends it is known late.
TEST_F(OutboxWatchTest, WhetherToStayIsAskedOfWhatIsTrueNow)
{
    PrintListener device(Manner::stalls, 1000);
    closeAheadOf(device, "sleep 1; exit 1");
    begin(device);
    ASSERT_TRUE(askToStop());
    press("Main Quit Question Yes");
    EXPECT_TRUE(loopUntil([this] { return closed; })) << "nothing waits any more";
}

TEST_F(OutboxWatchTest, AJobThatBeginsWhileTheWindowClosesIsAskedAbout)
{
    PrintListener device(Manner::stalls, 1000);
    closeAheadOf(device, "sleep 0.1; echo active");
    begin(device);
    ASSERT_TRUE(loopUntil([this] { return closed || !asked("Main Quit Question").empty(); }));
    EXPECT_FALSE(closed);
    EXPECT_EQ(asked("Main Quit Question"), "A fax job is being sent.");
    press("Main Quit Question Yes");
    EXPECT_TRUE(loopUntil([this] { return closed; }));
}

TEST_F(OutboxWatchTest, AJobThatBeginsBehindTheQuestionIsAskedAbout)
{
    PrintListener device(Manner::stalls, 1000);
    closeAheadOf(device, "exit 1");
    ASSERT_TRUE(loopUntil([] { return asked("Main Quit Question").starts_with("A fax job waits"); }));
    begin(device);
    press("Main Quit Question Yes");
    ASSERT_TRUE(loopUntil(
        [this] { return closed || asked("Main Quit Question").starts_with("A fax job is being sent"); }));
    EXPECT_FALSE(closed);
    press("Main Quit Question No");
    loopUntilIdle();
    EXPECT_FALSE(closed);
}

TEST_F(OutboxWatchTest, StoppingAJobAsksAboutWhatWaitsBesides)
{
    PrintListener device(Manner::stalls, 1000);
    close();
    put(hour);
    put(-1, parseNetworkAddress(device.address()), "letter.ps", true, std::string(8'000'000, ' '));
    open();
    ASSERT_TRUE(device.waitForBytes(1000));
    ASSERT_TRUE(askToStop());
    press("Main Quit Question Yes");
    ASSERT_TRUE(loopUntil([] { return asked("Main Quit Question").starts_with("A fax job waits"); }));
    EXPECT_FALSE(closed);
    press("Main Quit Question Yes");
    EXPECT_TRUE(loopUntil([this] { return closed; }));
}

TEST_F(OutboxWatchTest, StoppingOnesOwnJobAsksAboutWhatWaitsBesides)
{
    PrintListener device(Manner::neverCloses);
    put(hour);
    openDocument();
    fillFax({"Ann"});
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    window->close();
    ASSERT_TRUE(loopUntil([] { return asked("Main Quit Question") == "A fax job is being sent."; }));
    press("Main Quit Question Yes");
    ASSERT_TRUE(loopUntil([] { return asked("Main Quit Question").starts_with("A fax job waits"); }));
    EXPECT_FALSE(closed);
    EXPECT_EQ(onScreen("Main Progress"), nullptr) << "it was stopped";
    press("Main Quit Question No");
    loopUntilIdle();
    EXPECT_FALSE(closed);
    EXPECT_TRUE(isUsable("Main Send Button"));
}

TEST_F(OutboxWatchTest, TheQuestionWhetherToStopGoesWithTheJob)
{
    PrintListener device(Manner::stalls, 1000);
    close();
    put(-1, parseNetworkAddress(device.address()), "letter.ps", true, std::string(8'000'000, ' '));
    open();
    ASSERT_TRUE(device.waitForBytes(1000));
    ASSERT_TRUE(askToStop());
    device.stop();
    ASSERT_TRUE(comesToSay("Whether the fax job of letter.ps went out is not known: "));
    EXPECT_TRUE(loopUntil([] { return onScreen("Main Quit Question") == nullptr; }));
    EXPECT_FALSE(closed);
}

} // namespace
} // namespace quelm
