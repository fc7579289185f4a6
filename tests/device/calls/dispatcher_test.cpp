// Tests of rendering jobs and calling their recipients, as it goes on behind the port.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/dispatcher.h"

#include "base/error.h"
#include "device/jobs/device_steps.h"
#include "tests/device/jobs/state_support.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>
#include <regex>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class DispatcherTest : public StateTest {
protected:
    DispatcherTest()
    {
        open();
        settings.rest = milliseconds(1);
        settings.tell = [this](const std::string& line) {
            const std::lock_guard lock(mutex_);
            lines_.push_back(line);
        };
    }
    ~DispatcherTest() override { dispatcher.reset(); }

    /// A job of one small page that needs no rendering.
    int addPage(const ReceivedJob& reading)
    {
        const int job = add(reading);
        writePages(folder->pagesFile(job), {samplePage(job)});
        log->setRendered(job, 1, noon);
        return job;
    }

    int addDocument(ReceivedJob reading, const std::string& document)
    {
        reading.postScriptEnd = document.size();
        return add(reading, document);
    }

    /// What the exchange is to say from the next start on.
    void exchangeSays(const std::string& text)
    {
        exchange = Exchange(writeFile(outer / "exchange.conf", text));
    }

    void start() { dispatcher = std::make_unique<Dispatcher>(*folder, *log, exchange, *clock, settings); }

    void runUntilIdle()
    {
        start();
        EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
        dispatcher.reset();
    }

    /// Runs it until it has told of a disk without room, for which something is still to be done.
    void runWithoutRoom()
    {
        const KeptVariable kept("TMPDIR");
        ::setenv("TMPDIR", "/proc", 1); // never has room
        start();
        EXPECT_TRUE(soon([&] { return hasTold("trouble: /proc: cannot be written: the disk is full"); }));
        EXPECT_FALSE(dispatcher->isIdle());
        dispatcher.reset();
    }

    /// A folder for temporary files on a disk without room, until `makeRoom` is called.
    void takeRoom()
    {
        fs::create_symlink("/proc", outer / "place"); // never has room
        ::setenv("TMPDIR", (outer / "place").c_str(), 1);
    }
    void makeRoom()
    {
        fs::create_directory(outer / "room");
        fs::create_symlink(outer / "room", outer / "other");
        fs::rename(outer / "other", outer / "place");
    }

    /// From now on the database refuses the changes, counted from 0, of which `isRefused` is true.
    void failCommits(const std::function<bool(int)>& isRefused)
    {
        setDeviceStepHook([=, this](const char* step) {
            if (std::string_view(step) == "commit" && isRefused(commits++))
                throw Error("the disk is full");
        });
    }
    /// The database takes `before` changes, and then refuses so many.
    void failCommits(int before, int failures)
    {
        failCommits([=](int commit) { return commit >= before && commit < before + failures; });
    }

    /// The lines told so far, each moment as "TIME".
    std::vector<std::string> lines()
    {
        const std::lock_guard lock(mutex_);
        std::vector<std::string> shown;
        for (const std::string& line : lines_)
            shown.push_back(
                std::regex_replace(std::regex_replace(line, std::regex("\\d\\d:\\d\\d:\\d\\d"), "TIME"),
                                   std::regex(", \\d+ s"), ", SECONDS"));
        return shown;
    }

    bool hasTold(const std::string& part)
    {
        const std::lock_guard lock(mutex_);
        return std::ranges::any_of(
            lines_, [&](const std::string& line) { return line.find(part) != std::string::npos; });
    }

    DispatcherSettings settings;
    Exchange exchange;
    std::unique_ptr<DeviceClock> clock = std::make_unique<DeviceClock>(false);
    std::unique_ptr<Dispatcher> dispatcher;
    std::atomic<int> commits = 0;

private:
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

TEST_F(DispatcherTest, AJobIsRenderedAndEachRecipientGetsItsPages)
{
    addDocument(faxFor({"111", "222"}), "%!PS\n9 9 99 99 rectfill showpage showpage\n");
    runUntilIdle();
    EXPECT_THAT(lines(), ElementsAre("job 1: fax to 2 recipients from 127.0.0.1, 2 pages",
                                     "call 1: job 1, 111: sent, 2 pages, 14400 bit/s, SECONDS",
                                     "call 2: job 1, 222: sent, 2 pages, 14400 bit/s, SECONDS",
                                     "job 1: done, 2 of 2 sent"));
    const auto pages = pagesIn(folder->pagesFile(1));
    EXPECT_EQ(pages.size(), 2U);
    EXPECT_EQ(pagesIn(folder->receivedCall("111", 1)), pages);
    EXPECT_EQ(pagesIn(folder->receivedCall("222", 2)), pages);
    const auto calls = log->callsOf(1);
    EXPECT_EQ(calls[1].begunAt >= calls[0].begunAt + calls[0].duration, true) << "as if it had lasted";
    EXPECT_GT(calls[0].duration, seconds(10));
}

TEST_F(DispatcherTest, OneThatIsBusyIsCalledAgainBehindGrowingPauses)
{
    exchangeSays("[number 111]\nbusy = 2\n[number 222]\nbusy = always\n[number 333]\nanswer = no-answer\n");
    addPage(faxFor({"111"}));
    addPage(faxFor({"222", "333"}));
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "sent 3");
    EXPECT_EQ(recipientsOf(2), "failed 4, failed 4");
    const auto calls = log->callsOf(1);
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_GE(calls[1].begunAt, calls[0].begunAt + calls[0].duration + seconds(60));
    EXPECT_GE(calls[2].begunAt, calls[1].begunAt + calls[1].duration + seconds(120));
    EXPECT_LT(calls[2].begunAt, calls[1].begunAt + seconds(240));
    EXPECT_THAT(lines(), Contains("call 1: job 1, 111: busy, SECONDS, again at TIME"));
    EXPECT_THAT(lines(), Contains(AllOf(HasSubstr("222: busy"), HasSubstr("given up"))));
    EXPECT_THAT(lines(), Contains(AllOf(HasSubstr("333: no answer"), HasSubstr("given up"))));
    EXPECT_THAT(lines(), Contains("job 2: done, 0 of 2 sent"));
    EXPECT_EQ(log->callsOf(2).size(), 8U);
}

TEST_F(DispatcherTest, ACallThatGotThroughAndFailedIsNotRepeated)
{
    exchangeSays("[number 111]\nanswer = voice\n");
    addPage(faxFor({"111", "**"}));
    runUntilIdle();
    EXPECT_EQ(log->callsOf(1).size(), 2U);
    EXPECT_EQ(recipientsOf(1), "failed 1, failed 1");
    EXPECT_THAT(lines(), Contains("call 2: job 1, **: failed, SECONDS: there is no such number"));
}

TEST_F(DispatcherTest, AJobThatIsNoFaxIsPrinted)
{
    addDocument({}, "%!PS\nshowpage\n");
    runUntilIdle();
    EXPECT_THAT(lines(), ElementsAre("job 1: printed, 1 page"));
    EXPECT_EQ(log->job(1)->state, JobState::printed);
    EXPECT_TRUE(fs::exists(folder->printedFile(1)));
}

TEST_F(DispatcherTest, NobodyIsCalledForAJobThatCannotBeRendered)
{
    ReceivedJob reading = faxFor({"111"});
    reading.confirmationSheet = true;
    addDocument(reading, "%!PS\nshowpage boo\n");
    addDocument(faxFor({"222"}), "%!PS\nshowpage\n");
    runUntilIdle();
    EXPECT_EQ(log->job(1)->state, JobState::failed);
    EXPECT_THAT(contentOf(folder->reportText(1)), HasSubstr("nobody was called"));
    EXPECT_THAT(contentOf(folder->reportPdf(1)), StartsWith("%PDF-"));
    EXPECT_TRUE(log->job(1)->hasReport);
    EXPECT_THAT(log->callsOf(1), IsEmpty());
    EXPECT_THAT(lines(), Contains(StartsWith("job 1: failed: ")));
    EXPECT_EQ(recipientsOf(2), "sent 1") << "the next one is none the worse for it";
}

TEST_F(DispatcherTest, AJobThatComesLaterIsFoundWhenItIsWakened)
{
    start();
    EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
    addDocument(faxFor({"111"}), "%!PS\nshowpage\n");
    EXPECT_FALSE(dispatcher->isIdle()) << "it takes Ghostscript a moment";
    dispatcher->wake();
    EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
    EXPECT_THAT(dispatcher->progress(), IsEmpty());
    EXPECT_EQ(recipientsOf(1), "sent 1");
}

TEST_F(DispatcherTest, SeveralLinesCallEachRecipientOnce)
{
    settings.lines = 4;
    std::vector<std::string> numbers;
    for (int number = 0; number < 12; ++number)
        numbers.push_back(std::to_string(100 + number % 6));
    addPage(faxFor(numbers));
    runUntilIdle();
    const auto calls = log->callsOf(1);
    EXPECT_EQ(calls.size(), 12U);
    const JobRecord job = *log->job(1);
    for (const RecipientRecord& recipient : job.recipients)
        EXPECT_EQ(recipient.state, RecipientState::sent);
    const auto atOnce = [](const CallRecord& one, const CallRecord& other) {
        return one.number < other.number && other.begunAt < one.begunAt + one.duration;
    };
    bool overlap = false;
    for (const CallRecord& one : calls) {
        for (const CallRecord& other : calls) {
            overlap = overlap || atOnce(one, other);
            EXPECT_FALSE(atOnce(one, other) && one.receiver == other.receiver) << one.receiver;
        }
    }
    EXPECT_TRUE(overlap) << "the lines took turns";
}

TEST_F(DispatcherTest, ACallThatIsUnderWayIsBrokenOffAndMadeAgain)
{
    clock = std::make_unique<DeviceClock>(true);
    addPage(faxFor({"111"}));
    start();
    EXPECT_TRUE(soon([&] {
        const auto calls = dispatcher->progress();
        return !calls.empty() && calls.begin()->second.lineTime > milliseconds(0);
    }));
    EXPECT_FALSE(dispatcher->isIdle());
    const auto begun = std::chrono::steady_clock::now();
    dispatcher.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begun, seconds(5));
    EXPECT_THAT(lines(), ElementsAre("call 1: job 1, 111: broken off"));
    EXPECT_EQ(recipientsOf(1), "waiting 0");
    EXPECT_TRUE(fs::is_empty(path / "incoming"));

    clock = std::make_unique<DeviceClock>(false);
    open();
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "sent 1");
}

TEST_F(DispatcherTest, RenderingIsGivenUpWhenTheDeviceStops)
{
    addDocument(faxFor({"111"}), "%!PS\n{} loop\n");
    start();
    EXPECT_TRUE(soon([&] { return outer.names().size() > 1; })) << "Ghostscript gets a folder of its own";
    EXPECT_FALSE(dispatcher->isIdle());
    dispatcher.reset();
    EXPECT_EQ(log->job(1)->state, JobState::received);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DispatcherTest, InRealTimeAPauseLasts)
{
    clock = std::make_unique<DeviceClock>(true);
    exchangeSays("[number 111]\nbusy = always\n");
    addPage(faxFor({"111"}));
    // A call that found somebody busy has just ended, twice.
    const Moment now = clock->now();
    for (int attempt = 1; attempt <= 2; ++attempt)
        log->endCall(begin(now).call, false, now + milliseconds(attempt == 2 ? 300 : 0));
    start();
    EXPECT_TRUE(soon([&] { return !dispatcher->progress().empty(); }));
    EXPECT_GE(clock->now(), now + milliseconds(300));
    EXPECT_EQ(log->callsOf(1).size(), 3U);
}

TEST_F(DispatcherTest, InRealTimeACallLastsAsLongAsOnALine)
{
    clock = std::make_unique<DeviceClock>(true);
    addPage(faxFor({"111"}));
    const auto begun = std::chrono::steady_clock::now();
    start();
    EXPECT_TRUE(soon([&] {
        const auto calls = dispatcher->progress();
        return !calls.empty() && calls.begin()->second.lineTime >= seconds(1);
    }));
    // What a line carries at a time is far less than half a second.
    EXPECT_GE(std::chrono::steady_clock::now() - begun, milliseconds(500));
}

TEST_F(DispatcherTest, InRealTimeADocumentThatNeedsForEverHoldsNoSecondAttemptUp)
{
    clock = std::make_unique<DeviceClock>(true);
    addPage(faxFor({"111"}));
    addDocument(faxFor({"222"}), "%!PS\n{} loop\n");
    const Moment now = clock->now();
    log->endCall(begin(now).call, false, now + milliseconds(500));
    start();
    EXPECT_TRUE(soon([&] { return !dispatcher->progress().empty(); }));
    EXPECT_GE(clock->now(), now + milliseconds(500));
}

TEST_F(DispatcherTest, APauseIsNotPassedOverWhileSomebodyIsCalled)
{
    settings.lines = 2;
    exchangeSays("[number 111]\nbusy = 1\n");
    std::optional<Moment> ended;
    settings.tell = [&, tell = settings.tell](const std::string& line) {
        if (line.find("222: sent") != std::string::npos)
            ended = clock->now();
        tell(line);
    };
    addPage(faxFor({"111", "222"}));
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "sent 2, sent 1");
    const auto calls = log->callsOf(1);
    ASSERT_EQ(calls.size(), 3U);
    ASSERT_TRUE(ended);
    EXPECT_LT(*ended, calls[1].begunAt + calls[1].duration + seconds(15));
    EXPECT_GE(calls[2].begunAt, calls[0].begunAt + seconds(60));
}

TEST_F(DispatcherTest, SeveralLinesTellOfTheSameTroubleOnceAndOfTheNextAgain)
{
    settings.lines = 4;
    addPage(faxFor({"111", "222", "333", "444"}));
    failCommits(0, 12);
    runUntilIdle();
    EXPECT_EQ(std::ranges::count(lines(), "trouble: the disk is full"), 1);
    addPage(faxFor({"111", "222"}));
    commits = 0;
    settings.lines = 1;
    failCommits([](int commit) { return commit == 1 || commit == 4; }); // the first ends of two calls
    runUntilIdle();
    EXPECT_EQ(recipientsOf(2), "sent 1, sent 1");
    EXPECT_EQ(std::ranges::count(lines(), "trouble: the disk is full"), 1 + 2) << "the first was over";
}

TEST_F(DispatcherTest, WhatTheDatabaseDoesNotTakeIsToldOnceAndTriedAgain)
{
    addPage(faxFor({"111"}));
    failCommits(0, 12);
    runUntilIdle();
    EXPECT_EQ(commits, 12 + 2) << "the call's begin and its end";
    EXPECT_EQ(recipientsOf(1), "sent 1");
    EXPECT_EQ(log->callsOf(1).size(), 1U);
    EXPECT_EQ(std::ranges::count(lines(), "trouble: the disk is full"), 1);
}

TEST_F(DispatcherTest, TheEndOfACallIsEnteredHoweverLongThatTakes)
{
    addPage(faxFor({"111"}));
    std::atomic<bool> isToldEarly = false;
    failCommits([&](int commit) {
        isToldEarly = isToldEarly || hasTold("sent");
        return commit >= 1 && commit < 6;
    });
    runUntilIdle();
    EXPECT_FALSE(isToldEarly);
    EXPECT_EQ(commits, 5 + 2);
    EXPECT_EQ(recipientsOf(1), "sent 1");
    EXPECT_EQ(log->callsOf(1).size(), 1U) << "a call that succeeded is never made again";
    EXPECT_EQ(pagesIn(folder->receivedCall("111", 1)).size(), 1U);
}

TEST_F(DispatcherTest, AConfirmationSheetIsKeptWhenTheJobAskedForOne)
{
    ReceivedJob reading = faxFor({"111"});
    reading.confirmationSheet = true;
    addPage(reading);
    addPage(faxFor({"222"}));
    runUntilIdle();
    EXPECT_THAT(lines(), Contains("job 1: confirmation sheet job-1.pdf"));
    EXPECT_TRUE(fs::exists(folder->reportPdf(1)) && fs::exists(folder->reportText(1)));
    EXPECT_FALSE(fs::exists(folder->reportPdf(2)));
}

TEST_F(DispatcherTest, ASheetThatFailedIsToldOfOnceAndMadeByTheNextStart)
{
    ReceivedJob reading = faxFor({"111"});
    reading.confirmationSheet = true;
    addPage(reading);
    fs::remove(path / "reports");
    start();
    EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
    EXPECT_THAT(dispatcher->sheetsGivenUp(), ElementsAre(1));
    dispatcher.reset();
    EXPECT_TRUE(hasTold("trouble: "));
    EXPECT_FALSE(log->job(1)->hasReport);
    open();
    start();
    EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
    EXPECT_THAT(dispatcher->sheetsGivenUp(), IsEmpty());
    dispatcher.reset();
    EXPECT_TRUE(fs::exists(folder->reportPdf(1)));
    EXPECT_TRUE(log->job(1)->hasReport);
}

TEST_F(DispatcherTest, ASheetThatADiskHasNoRoomForIsWrittenOnceItHas)
{
    ReceivedJob reading = faxFor({"111"});
    reading.confirmationSheet = true;
    addPage(reading);
    fs::remove(path / "reports");
    log->endCall(begin(clock->now()).call, true, {});
    runWithoutRoom();
    EXPECT_EQ(std::ranges::count_if(lines(), [](const auto& line) { return line.starts_with("trouble"); }),
              1);
    open();
    runUntilIdle();
    EXPECT_TRUE(log->job(1)->hasReport);
}

TEST_F(DispatcherTest, ASheetThatTheDatabaseDoesNotTakeIsEnteredOnceItDoes)
{
    ReceivedJob reading = faxFor({"111"});
    reading.confirmationSheet = true;
    addPage(reading);
    failCommits(2, 3); // behind the call's begin and its end
    runUntilIdle();
    EXPECT_EQ(commits, 3 + 3);
    EXPECT_TRUE(log->job(1)->hasReport);
    EXPECT_THAT(lines(), Contains("job 1: confirmation sheet job-1.pdf"));
}

TEST_F(DispatcherTest, ADiskThatHasRoomAgainIsUsedWithoutAnotherStart)
{
    ReceivedJob reading = faxFor({"111"});
    reading.confirmationSheet = true;
    addDocument(reading, "%!PS\nshowpage\n");
    const KeptVariable kept("TMPDIR");
    takeRoom();
    start();
    EXPECT_TRUE(soon([&] { return hasTold("the disk is full"); }));
    EXPECT_THAT(dispatcher->progress(), IsEmpty());
    makeRoom();
    EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
    dispatcher.reset();
    EXPECT_EQ(recipientsOf(1), "sent 1");
    EXPECT_TRUE(log->job(1)->hasReport);
}

TEST_F(DispatcherTest, ACallThatADiskHasNoRoomForIsTriedHoweverOften)
{
    exchangeSays("[number 111]\nnoise = 5\n"); // it fails, as one that cannot write does
    addPage(faxFor({"111"}));
    const KeptVariable kept("TMPDIR");
    takeRoom();
    start();
    // A try that begins anew has less line time behind it.
    int begun = 0;
    milliseconds last{0};
    EXPECT_TRUE(soon([&] {
        const auto calls = dispatcher->progress();
        const auto lineTime = calls.empty() ? last : calls.begin()->second.lineTime;
        begun += lineTime < last ? 1 : 0;
        last = lineTime;
        return begun >= 8 || hasTold("failed");
    }));
    dispatcher.reset();
    EXPECT_FALSE(hasTold("failed"));
    EXPECT_EQ(recipientsOf(1), "waiting 0");
}

TEST_F(DispatcherTest, PagesThatCannotBeReadForAMomentFailNobody)
{
    settings.rest = milliseconds(50);
    addPage(faxFor({"111"}));
    const fs::path pages = folder->pagesFile(1);
    fs::rename(pages, outer.path() / "pages");
    start();
    EXPECT_TRUE(soon([&] { return hasTold("pages.tif"); }));
    fs::rename(outer.path() / "pages", pages);
    EXPECT_TRUE(soon([&] { return dispatcher->isIdle(); }));
    dispatcher.reset();
    EXPECT_EQ(recipientsOf(1), "sent 1");
}

TEST_F(DispatcherTest, ADocumentThatNeedsForEverHoldsNobodyUp)
{
    addDocument(faxFor({"111"}), "%!PS\n{} loop\n");
    addDocument(faxFor({"222"}), "%!PS\n{} loop\n");
    ReceivedJob reading = faxFor({"333"});
    reading.confirmationSheet = true;
    addDocument(reading, "%!PS\nshowpage\n");
    start();
    EXPECT_TRUE(soon([&] { return hasTold("job 3: confirmation sheet job-3.pdf"); }));
    dispatcher.reset();
    EXPECT_EQ(recipientsOf(3), "sent 1");
    EXPECT_EQ(log->job(1)->state, JobState::received);
}

TEST_F(DispatcherTest, ADiskWithoutRoomFailsNoJob)
{
    addDocument(faxFor({"111"}), "%!PS\nshowpage\n");
    runWithoutRoom();
    EXPECT_EQ(log->job(1)->state, JobState::received);
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "sent 1");
    EXPECT_EQ(std::ranges::count_if(lines(), [](const auto& line) { return line.starts_with("trouble"); }),
              1);
}

TEST_F(DispatcherTest, ACallWhosePagesADiskHasNoRoomForIsMadeAgainAndKeptOnce)
{
    addPage(faxFor({"111"}));
    exchangeSays("[number 111]\nnoise = 5\n"); // it fails, as one that cannot write does
    runWithoutRoom();
    EXPECT_EQ(recipientsOf(1), "waiting 0") << "it is not counted";
    EXPECT_TRUE(fs::is_empty(path / "incoming"));
    exchangeSays("");
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "sent 1");
    EXPECT_THAT(files(), Contains(StartsWith("received/111/")).Times(1));
}

TEST_F(DispatcherTest, PagesThatAreGoneEndTheirRecipientsAndNobodyElses)
{
    addPage(faxFor({"111"}));
    addPage(faxFor({"222"}));
    fs::remove(folder->pagesFile(1));
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "failed 1");
    EXPECT_THAT(log->job(1)->recipients[0].result, HasSubstr("pages.tif"));
    EXPECT_EQ(recipientsOf(2), "sent 1");
}

TEST_F(DispatcherTest, NoLineShowsACard)
{
    ReceivedJob reading = faxFor({"9,111"});
    reading.creditCard = "4000123412341234";
    reading.confirmationSheet = true;
    addPage(reading);
    runUntilIdle();
    EXPECT_EQ(recipientsOf(1), "sent 1");
    EXPECT_THAT(lines(), Each(Not(HasSubstr("4000"))));
    EXPECT_EQ(log->callsOf(1)[0].dialled, "9,111 ****************");
    EXPECT_FALSE(keeps("4000123412341234"));
}

} // namespace
} // namespace quelm::device::tests
