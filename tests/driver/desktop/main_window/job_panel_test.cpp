// Tests of making, previewing and sending a job in the main window, on a display and over the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/job_panel.h"

#include "base/file_handle.h"
#include "driver/outbox/outbox.h"
#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace quelm {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class JobPanelTest : public MainWindowTest {
protected:
    void chargeCard()
    {
        driver->call("T40InvokeFaxDialog");
        driver->tick("LanFax Credit Card", true);
        driver->type("LanFax Credit Card Info", "4111 1111 1111 2345");
        driver->press("LanFax OK Button");
        settle();
    }

    /// Adds a recipient, and leaves the fax dialog unconfirmed.
    void fillRecipientAndCancel()
    {
        driver->call("T40InvokeFaxDialog");
        driver->press("AddFaxRcpt");
        driver->type("RecipientName", "Ann");
        driver->type("RecipientNumber", "555-1231");
        driver->press("LanFaxAddRcpt OK Button");
        driver->press("LanFax Cancel Button");
        settle();
        EXPECT_EQ(driver->faxSession().recipients().size(), 1U);
    }

    static std::string detailsOf(const std::string& question)
    {
        gchar* text = nullptr;
        g_object_get(onScreen(question), "secondary-text", &text, nullptr);
        const std::unique_ptr<gchar, decltype(&g_free)> owned(text, g_free);
        return owned ? owned.get() : "";
    }
};

std::string titleOf(const std::string& name)
{
    const gchar* title = gtk_window_get_title(GTK_WINDOW(onScreen(name)));
    return title == nullptr ? "" : title;
}

/// While it lives, the process can open no more files than it has.
class NoMoreFiles {
public:
    NoMoreFiles()
    {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const FileHandle next(::dup(STDIN_FILENO));
        const rlimit none{static_cast<rlim_t>(next.get()), before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;

private:
    rlimit before_ = {};
};

TEST_F(JobPanelTest, WithoutARecipientTheFaxDialogOpensInsteadOfSending)
{
    openDocument();
    enterText("Main Destination File", folder / "fax.job");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("LanFax OK Button") != nullptr; }));
    EXPECT_EQ(shownText("Main Message"), "Add a recipient first.");
    fillFax({"Ann"});
    EXPECT_EQ(shownText("Main Message"), "");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
}

TEST_F(JobPanelTest, TheJobIsWhatTheDriverWrites)
{
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_EQ(sendAndRead(),
              "The fax job of letter.ps for 2 recipients was written to " + (folder / "fax.job") + ".");
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(JobPanelTest, AJobInPjlIsToo)
{
    openDocument();
    fillFax({"Ann"});
    chooseItem("Main Job Format", 1);
    enterText("Main Destination File", folder / "fax.job");
    sendAndRead();
    EXPECT_EQ(job(), expectedJob(Pdl::pjl));
    EXPECT_THAT(job(), HasSubstr("@PJL COMMENT OID_ATT_"));
}

TEST_F(JobPanelTest, PreviewsAndEarlierJobsLeaveNoTraceInAJob)
{
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    press("Main Preview Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Preview Caption") == "Cover page (1 of 3)"; }));
    press("Preview Close Button");
    for (const auto* name : {"first.job", "second.job"}) {
        enterText("Main Destination File", folder / name);
        sendAndRead();
    }
    EXPECT_EQ(contentOf(folder / "first.job"), contentOf(folder / "second.job"));
    EXPECT_EQ(contentOf(folder / "second.job"), expectedJob());
}

TEST_F(JobPanelTest, AJobAfterAChangeNamesItsOwnRecipientsAlone)
{
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    enterText("Main Destination File", folder / "first.job");
    sendAndRead();
    driver->call("T40InvokeFaxDialog");
    driver->select("LanFax Recipient List", {0, 1});
    driver->press("LanFax Remove Button");
    driver->answer(true);
    fillFax({"Carl", "Dora"}, true);
    press("Main Preview Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Preview Caption") == "Cover page (1 of 3)"; }));
    press("Preview Close Button");
    enterText("Main Destination File", folder / "second.job");
    sendAndRead();
    EXPECT_THAT(contentOf(folder / "first.job"), HasSubstr("/RecipientName    (Ann, Bob)\n"));
    EXPECT_THAT(contentOf(folder / "second.job"), HasSubstr("/RecipientName    (Carl, Dora)\n"));
}

TEST_F(JobPanelTest, ANumberThatStandsTwiceIsAskedAbout)
{
    openDocument();
    fillFax({"Ann"});
    numbersGiven = 0;
    fillFax({"Bob"});
    enterText("Main Destination File", folder / "fax.job");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Duplicates Question No") != nullptr; }));
    press("Main Duplicates Question No");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Duplicates Question Yes") != nullptr; }));
    press("Main Duplicates Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
    EXPECT_EQ(shownText("Main Message"),
              "The fax job of letter.ps for 2 recipients was written to " + (folder / "fax.job") + ".");
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(JobPanelTest, ATextThatTheCoverSheetHasNoRoomForIsAskedAbout)
{
    openDocument();
    fillFax({std::string(31, 'W')}, true);
    enterText("Main Destination File", folder / "fax.job");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Cover Sheet Question No") != nullptr; }));
    press("Main Cover Sheet Question No");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Cover Sheet Question Yes") != nullptr; }));
    press("Main Cover Sheet Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
    EXPECT_EQ(shownText("Main Message"),
              "The fax job of letter.ps for 1 recipient was written to " + (folder / "fax.job") + ".");
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(JobPanelTest, TheQuestionsAboutTheCoverSheetAndDuplicatesComeOneAfterTheOther)
{
    openDocument();
    fillFax({std::string(31, 'W')});
    numbersGiven = 0;
    fillFax({"Bob"}, true);
    enterText("Main Destination File", folder / "fax.job");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Cover Sheet Question Yes") != nullptr; }));
    press("Main Cover Sheet Question Yes");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Duplicates Question No") != nullptr; }));
    press("Main Duplicates Question No");
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
}

TEST_F(JobPanelTest, TheCoverPageOfAJobInAnotherScriptIsWhatTheDriverWrites)
{
    openDocument();
    fillFax({"\u738b\u5c0f\u660e", "J\u00fcrgen"}, true);
    press("Main Preview Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Preview Caption") == "Cover page (1 of 3)"; }));
    press("Preview Close Button");
    enterText("Main Destination File", folder / "fax.job");
    sendAndRead();
    EXPECT_EQ(job(), expectedJob());
    EXPECT_THAT(job(), HasSubstr("/RecipientName    (\\001"));
}

TEST_F(JobPanelTest, WhoDoesNotWantToBeAskedAboutDuplicatesIsWarned)
{
    openDocument();
    fillFax({"Ann"});
    driver->call("T40InvokeFaxDialog");
    driver->tick("LanFax Pref Duplicates", false);
    numbersGiven = 0;
    fillFax({"Bob"});
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(
        sendAndRead(),
        AllOf(HasSubstr("was written to"),
              HasSubstr(
                  "Bob (555-1231) has the same fax number as Ann (555-1231), so the fax goes there twice")));
}

TEST_F(JobPanelTest, ACardIsNamedByItsLastDigitsAndTheJobIsItsOwnersAlone)
{
    openDocument();
    fillFax({"Ann"});
    chargeCard();
    EXPECT_TRUE(loopUntil([] {
        return shownText("Main Fax Summary") ==
               "1 recipient, without a cover page; the credit card ending in 2345 is charged";
    }));
    const auto path = writeFile(folder / "fax.job", "before");
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    enterText("Main Destination File", path);
    askToReplace();
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
    EXPECT_EQ(shownText("Main Message"), "The fax job of letter.ps for 1 recipient was written to " + path +
                                             "; the credit card ending in 2345 is charged.");
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(JobPanelTest, ARecipientWhoCannotBeFaxedToIsToldAndNothingIsShownOrSent)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fax.job");
    addBadRecipient();
    const auto isTold = [] {
        return shownText("Main Message").starts_with("Mal (1) cannot be sent a fax: ");
    };
    ASSERT_TRUE(loopUntil(isTold));
    press("Main Message Close Button");
    for (const auto* button : {"Main Preview Button", "Main Send Button"}) {
        press(button);
        ASSERT_TRUE(loopUntil(isTold)) << button;
        EXPECT_EQ(onScreen("Preview Window"), nullptr);
        EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
    }
    driver->call("T40InvokeFaxDialog");
    driver->select("LanFax Recipient List", {1});
    driver->press("LanFax Remove Button");
    driver->answer(true);
    driver->press("LanFax OK Button");
    dialogs->act([] {});
    EXPECT_TRUE(loopUntil([] { return shownText("Main Message").empty(); }));
    EXPECT_THAT(sendAndRead(), HasSubstr("for 1 recipient was written to"));
}

TEST_F(JobPanelTest, AMissingDestinationIsAskedFor)
{
    openDocument();
    fillFax({"Ann"});
    EXPECT_THAT(sendAndRead(), HasSubstr("Name the file"));
    chooseItem("Main Destination Kind", deviceItem);
    EXPECT_THAT(sendAndRead(), HasSubstr("Name the device"));
    chooseItem("Main Destination Kind", queueItem);
    EXPECT_THAT(sendAndRead(), HasSubstr("Choose the print queue"));
}

TEST_F(JobPanelTest, AFailureIsToldInOneLineAndCanBePutRight)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "no such folder/fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("no such folder"));
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

TEST_F(JobPanelTest, ADeviceIsToldApartFromAnAddressThatIsNone)
{
    openDocument();
    fillFax({"Ann"});
    chooseItem("Main Destination Kind", deviceItem);
    enterText("Main Destination Device", "a b:c");
    EXPECT_THAT(sendAndRead(), HasSubstr("\"a b:c\" is no address"));
    enterText("Main Destination Device", "127.0.0.1:1");
    EXPECT_THAT(sendAndRead(), HasSubstr("Device 127.0.0.1:1"));
}

TEST_F(JobPanelTest, AFileIsReplacedOnlyAfterAQuestion)
{
    openDocument();
    fillFax({"Ann"});
    const auto path = writeFile(folder / "fax.job", "precious");
    enterText("Main Destination File", path);
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Replace Question No") != nullptr; }));
    press("Main Replace Question No");
    EXPECT_EQ(job(), "precious");
    EXPECT_TRUE(isUsable("Main Send Button"));

    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Replace Question Yes") != nullptr; }));
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(JobPanelTest, TheJobIsOfTheDocumentThatTheQuestionWasAskedFor)
{
    openDocument();
    fillFax({"Ann"});
    const auto other = writeFile(folder / "other.ps", "%!PS\n(another letter) show showpage\n");
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    askToReplace();
    window->openDocument(other);
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("The fax job of letter.ps for 1 recipient was written"));
    EXPECT_EQ(job(), expectedJob());
}

TEST_F(JobPanelTest, AFailureAfterTheQuestionIsToldInOneLine)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    // The bar's picture is read before no more files can be opened.
    window->tell(Gtk::MESSAGE_ERROR, "a message");
    loopUntilIdle();
    askToReplace();
    {
        const NoMoreFiles none;
        press("Main Replace Question Yes");
        ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    }
    EXPECT_THAT(shownText("Main Message"), HasSubstr("Too many open files"));
    EXPECT_EQ(job(), "precious");
    enterText("Main Destination File", folder / "another.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

TEST_F(JobPanelTest, QuestionsBearTheWindowsTitle)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    askToReplace();
    EXPECT_EQ(titleOf("Main Replace Question"), window->get_title());
    press("Main Replace Question No");
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    window->close();
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Quit Question") != nullptr; }));
    EXPECT_EQ(titleOf("Main Quit Question"), window->get_title());
}

TEST_F(JobPanelTest, AFifoThatNobodyReadsDoesNotHoldUpTheWindow)
{
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", folder / "fifo");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    press("Main Cancel Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("cancelled"));
    EXPECT_TRUE(isUsable("Main Send Button"));
}

TEST_F(JobPanelTest, TheDocumentItselfIsNeverReplaced)
{
    const auto path = writeFile(folder / "own.ps", contentOf(sampleLetter()));
    openDocument(path);
    fillFax({"Ann"});
    enterText("Main Destination File", path);
    EXPECT_THAT(sendAndRead(), HasSubstr("is the document itself"));
    EXPECT_EQ(contentOf(path), contentOf(sampleLetter()));
}

TEST_F(JobPanelTest, ADeviceGetsTheJobByteForByte)
{
    servers::PrintListener device(servers::Manner::takesAll);
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("for 2 recipients was handed over to"));
    EXPECT_EQ(device.received(), expectedJob());
    EXPECT_EQ(onScreen("Main Progress"), nullptr);
}

TEST_F(JobPanelTest, AFaxForLaterWaitsInTheOutboxAsItWouldGoOut)
{
    servers::PrintListener device(servers::Manner::takesAll);
    openDocument();
    fillFax({"Ann", "Bob"}, true);
    sendAt(4, 5, false);
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(
        shownText("Main Message"),
        testing::StartsWith("The fax job of letter.ps for 2 recipients waits as job 1 of the outbox until "
                            "tomorrow at 04:05; the open desktop sends it"));
    EXPECT_EQ(device.connections(), 0);
    const auto waiting = Outbox(outbox()).job(1);
    EXPECT_EQ(waiting.state, OutboxState::waiting);
    EXPECT_EQ(waiting.size, expectedJob().size());
    EXPECT_EQ(waiting.options.at("LanFax Cover Sheet Option"), "1");
}

TEST_F(JobPanelTest, ATimeThatPassesWhileAQuestionIsOpenIsAtOnce)
{
    openDocument();
    fillFax({"Ann"});
    for (const int minute : {7, 8}) {
        fixClock(parseLocalTime("2024-03-05T14:07"));
        sendAt(2, minute, true);
        enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
        askToReplace();
        fixClock(parseLocalTime("2024-03-05T14:09"));
        press("Main Replace Question Yes");
        ASSERT_TRUE(
            loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
        EXPECT_THAT(shownText("Main Message"), HasSubstr("was written to"));
        EXPECT_EQ(job(), expectedJob());
    }
}

TEST_F(JobPanelTest, ATimeIsThatOfTheDayOnWhichSendWasPressed)
{
    openDocument();
    fillFax({"Ann"});
    sendAt(11, 59, true);
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    askToReplace();
    fixClock(parseLocalTime("2024-03-05T23:58"));
    press("Main Replace Question Yes");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("until today at 23:59"));
}

TEST_F(JobPanelTest, KeptOptionsThatCannotBeTakenOverAreAskedAboutUntilTheFaxDialogIsConfirmed)
{
    restartWith("[features]\nLanFax Cover Sheet Option=7\n");
    openDocument();
    fillRecipientAndCancel();
    enterText("Main Destination File", folder / "fax.job");
    // A look at the job takes the dialogs over in the user's place, and confirms nothing.
    press("Main Preview Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Preview Window") != nullptr; }));
    press("Preview Close Button");
    for (const std::string answer : {"No", "Yes", "No"}) {
        press("Main Send Button");
        ASSERT_TRUE(loopUntil([&] { return onScreen("Main Options Question " + answer) != nullptr; }));
        press("Main Options Question " + answer);
        if (answer == "No") {
            EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
            continue;
        }
        ASSERT_TRUE(
            loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
        EXPECT_EQ(job(), expectedJob());
        std::filesystem::remove(folder / "fax.job");
    }
    driver->call("T40InvokeFaxDialog");
    driver->press("LanFax OK Button");
    settle();
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

TEST_F(JobPanelTest, WhenNoKeptOptionCanBeReadThatIsAskedAboutToo)
{
    restartWith("rubbish");
    openDocument();
    fillRecipientAndCancel();
    enterText("Main Destination File", folder / "fax.job");
    press("Main Send Button");
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Options Question No") != nullptr; }));
    EXPECT_THAT(detailsOf("Main Options Question"), HasSubstr("ann.ini"));
    press("Main Options Question No");
    EXPECT_FALSE(driver->choicesTakenOver());
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
}

TEST_F(JobPanelTest, AKeptPreferenceThatCannotBeTakenOverIsNotAskedAbout)
{
    restartWith("[features]\nLanFax Pref Duplicates=7\n");
    openDocument();
    fillRecipientAndCancel();
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to"));
}

TEST_F(JobPanelTest, AFileForLaterIsWrittenLater)
{
    openDocument();
    fillFax({"Ann"});
    sendAt(4, 5, false);
    enterText("Main Destination File", folder / "fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("waits as job 1 of the outbox until tomorrow at 04:05"));
    EXPECT_FALSE(std::filesystem::exists(folder / "fax.job"));
    enterText("Main Destination File", folder / "no such folder/fax.job");
    EXPECT_THAT(sendAndRead(), HasSubstr("no such folder"));
}

TEST_F(JobPanelTest, WhatWasHandedOverToADeviceIsKeptWithoutTheCard)
{
    servers::PrintListener device(servers::Manner::takesAll);
    openDocument();
    fillFax({"Ann"});
    chargeCard();
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != "" && isUsable("Main Send Button"); }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("ending in 2345 is charged"));
    EXPECT_THAT(device.received(), HasSubstr("\"4111 1111 1111 2345\""));
    const auto kept = Outbox(outbox()).job(1);
    EXPECT_EQ(kept.state, OutboxState::handedOver);
    EXPECT_TRUE(kept.chargesCard);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(outbox().folder)) {
        const auto content = entry.is_regular_file() ? contentOf(entry.path()) : std::string();
        EXPECT_THAT(content,
                    AllOf(testing::Not(HasSubstr("4111111111112345")), testing::Not(HasSubstr("1111 2345"))))
            << entry.path();
    }
}

TEST_F(JobPanelTest, ASendingCanBeCancelled)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    for (const auto* control : {"Main Send Button", "Main Preview Button", "Main Open Button",
                                "Main Fax Setup Button", "Main Destination Device"})
        EXPECT_FALSE(isUsable(control)) << control;
    press("Main Cancel Button");
    ASSERT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
    EXPECT_THAT(shownText("Main Message"), HasSubstr("cancelled"));
    EXPECT_TRUE(isUsable("Main Send Button"));
    EXPECT_EQ(onScreen("Main Progress"), nullptr);
}

TEST_F(JobPanelTest, ClosingTheWindowWhileAJobIsSentAsksFirst)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    quitBehindAQuestion();
}

} // namespace
} // namespace quelm
