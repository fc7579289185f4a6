// Tests of telephone calls between two fax machines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/fax_call.h"

#include "base/disk_room.h"
#include "base/error.h"
#include "base/file_io.h"
#include "tests/device/line/call_support.h"
#include "tests/support/failure_line.h"

#include <sys/resource.h>

#include <array>
#include <thread>

namespace quelm::device::tests {
namespace {

using namespace std::chrono_literals;
using Kind = CallResult::Kind;
using test::failureLine;

class FaxCallTest : public CallTest {
protected:
    /// What was kept is what was sent, dot for dot, as far as it was kept.
    void expectKept(int count)
    {
        const auto sent = pagesIn(caller.pages);
        if (count == 0) {
            EXPECT_FALSE(std::filesystem::exists(answering.keepAs));
            EXPECT_EQ(folder.names(), std::vector<std::string>{"pages.tif"});
            return;
        }
        EXPECT_EQ(pagesIn(answering.keepAs), std::vector<Page>(sent.begin(), sent.begin() + count));
        EXPECT_EQ(folder.names(), (std::vector<std::string>{"kept.tif", "pages.tif"}));
    }

    /// The call failed behind so many pages, which were kept.
    void expectStopped(const CallResult& result, int pages, const char* words)
    {
        EXPECT_EQ(result.kind, Kind::failed);
        EXPECT_EQ(result.words, words);
        EXPECT_NE(result.code, 0);
        EXPECT_EQ(result.pagesSent, pages);
        EXPECT_EQ(result.pagesKept, pages);
        expectKept(pages);
    }
};

/// A setting of a call that goes well.
struct Setting {
    const char* name;
    int down;
    int callersFastest;
    int answeringFastest;
    bool callerCorrects;
    bool answeringCorrects;
    int expectedRate;
};

void PrintTo(const Setting& setting, std::ostream* stream) { *stream << setting.name; }

class GoodCallTest : public FaxCallTest, public testing::WithParamInterface<Setting> {};

constexpr std::array settings{
    Setting{"Standard", 98, 14400, 14400, true, true, 14400},
    Setting{"Fine", 196, 14400, 14400, true, true, 14400},
    Setting{"Superfine", 391, 14400, 14400, true, true, 14400},
    Setting{"StandardWithoutCorrection", 98, 14400, 14400, false, false, 14400},
    Setting{"FineWithoutCorrection", 196, 14400, 14400, true, false, 14400},
    Setting{"SuperfineWithoutCorrection", 391, 14400, 14400, false, true, 14400},
    Setting{"StandardSlowly", 98, 4800, 14400, true, true, 4800},
    Setting{"FineToASlowMachine", 196, 14400, 4800, true, true, 4800},
    Setting{"SuperfineSlowly", 391, 4800, 4800, true, true, 4800},
    Setting{"FineSlowlyWithoutCorrection", 196, 4800, 14400, false, false, 4800},
};

TEST_P(GoodCallTest, EveryPageArrivesDotForDot)
{
    const Setting& setting = GetParam();
    sendPages(2, setting.down);
    caller.fastest = setting.callersFastest;
    answering.fastest = setting.answeringFastest;
    caller.errorCorrection = setting.callerCorrects;
    answering.errorCorrection = setting.answeringCorrects;
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.kind, Kind::sent);
    EXPECT_EQ(result.words, "sent");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.libraryWords, "OK");
    EXPECT_EQ(result.pagesSent, 2);
    EXPECT_EQ(result.pagesKept, 2);
    EXPECT_EQ(result.repeatedFrames, 0);
    EXPECT_EQ(result.damagedRows, 0);
    EXPECT_EQ(result.bitRate, setting.expectedRate);
    EXPECT_EQ(result.errorCorrection, setting.callerCorrects && setting.answeringCorrects);
    EXPECT_EQ(result.identity, "+1 555 010 4477");
    EXPECT_EQ(result.subAddress, "");
    EXPECT_GT(result.duration, 10s);
    expectKept(2);
}

INSTANTIATE_TEST_SUITE_P(Settings, GoodCallTest, testing::ValuesIn(settings),
                         [](const auto& setting) { return std::string(setting.param.name); });

TEST_F(FaxCallTest, PagesOfAllLengthsArrive)
{
    writePages(caller.pages, {samplePage(1, 98, 1), samplePage(2, 98, 7717), samplePage(3, 98, 1146)});
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.words, "sent");
    expectKept(3);
}

TEST_F(FaxCallTest, EmptyAndFullPagesArrive)
{
    Page white = samplePage(1, 98, 1146);
    std::fill(white.dots.begin(), white.dots.end(), std::uint8_t{0});
    Page black = white;
    std::fill(black.dots.begin(), black.dots.end(), std::uint8_t{0xFF});
    Page checks = samplePage(1, 98, 60);
    std::fill(checks.dots.begin(), checks.dots.end(), std::uint8_t{0x55});
    writePages(caller.pages, {white, black, checks});
    EXPECT_EQ(carryCall(caller, answering).words, "sent");
    expectKept(3);
}

TEST_F(FaxCallTest, ManyPagesArriveInTheirOrder)
{
    sendPages(40, 98, 50);
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.pagesKept, 40);
    expectKept(40);
}

TEST_F(FaxCallTest, TheMailboxIsToldToTheOtherMachine)
{
    caller.subAddress = "0123456789*#";
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.kind, Kind::sent);
    EXPECT_EQ(result.subAddress, "0123456789*#");
}

TEST_F(FaxCallTest, TheSameCallIsTheSameTwice)
{
    const CallResult first = carryCall(caller, answering);
    const std::string kept = contentOf(answering.keepAs);
    answering.keepAs = folder / "again.tif";
    const CallResult second = carryCall(caller, answering);
    EXPECT_EQ(second.duration, first.duration);
    EXPECT_EQ(contentOf(answering.keepAs), kept) << "nor does a time of day or a machine's name stand in it";
}

TEST_F(FaxCallTest, ErrorCorrectionRepairsANoisyLine)
{
    sendPages(3, 98, 800);
    answering.noise = 19.5;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const CallResult result = carryCall(caller, answering, {}, seed);
        EXPECT_EQ(result.words, "sent");
        EXPECT_EQ(result.bitRate, 9600);
        EXPECT_GT(result.repeatedFrames, 0) << "seed " << seed;
        EXPECT_EQ(result.damagedRows, 0);
        expectKept(3);
    }
}

TEST_F(FaxCallTest, ANoisyLineMakesTheCallSlower)
{
    answering.noise = 17;
    int slower = 0;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const CallResult result = carryCall(caller, answering, {}, seed);
        if (result.kind != Kind::sent)
            continue;
        slower += result.bitRate < 9600 ? 1 : 0;
        expectKept(3);
    }
    EXPECT_GT(slower, 0);
}

TEST_F(FaxCallTest, ALineThatIsTooNoisyFailsTheCall)
{
    answering.noise = 12;
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.kind, Kind::failed);
    EXPECT_EQ(result.words, "the line is too noisy");
    EXPECT_NE(result.code, 0);
    EXPECT_NE(result.libraryWords, "");
    EXPECT_EQ(result.pagesSent, 0);
    EXPECT_EQ(result.bitRate, 0);
    expectKept(0);
}

TEST_F(FaxCallTest, NoiseIsTheSameForASeedAndAnotherForAnother)
{
    sendPages(2, 98, 800);
    answering.noise = 19;
    const auto outcome = [&](unsigned seed) {
        const CallResult result = carryCall(caller, answering, {}, seed);
        return std::pair(result.duration, result.repeatedFrames);
    };
    EXPECT_EQ(outcome(7), outcome(7));
    EXPECT_NE(outcome(7), outcome(8));
}

TEST_F(FaxCallTest, WithoutErrorCorrectionDamageIsSaid)
{
    sendPages(1, 98, 1146);
    answering.noise = 18.5;
    answering.errorCorrection = false;
    int damaged = 0;
    for (unsigned seed = 1; seed <= 6; ++seed) {
        const CallResult result = carryCall(caller, answering, {}, seed);
        if (result.kind != Kind::sent || pagesIn(answering.keepAs) == pagesIn(caller.pages))
            continue;
        ++damaged;
        EXPECT_GT(result.damagedRows, 0) << "seed " << seed;
        EXPECT_EQ(result.words, "sent, with damaged lines") << "seed " << seed;
    }
    EXPECT_GT(damaged, 0);
}

TEST_F(FaxCallTest, AMachineThatHangsUpKeepsThePagesThatItHas)
{
    for (const bool corrects : {true, false})
        for (const int page : {0, 1, 2}) {
            std::filesystem::remove(answering.keepAs);
            answering.errorCorrection = corrects;
            answering.hangsUpAfterPage = page;
            const CallResult result = carryCall(caller, answering);
            EXPECT_EQ(result.libraryWords, "The call dropped prematurely");
            expectStopped(result, page, "the other machine hung up");
        }
}

TEST_F(FaxCallTest, AMachineThatHangsUpBehindTheLastPageHasThemAll)
{
    for (const int page : {3, 9}) {
        answering.hangsUpAfterPage = page;
        EXPECT_EQ(carryCall(caller, answering).words, "sent");
        expectKept(3);
    }
}

TEST_F(FaxCallTest, AMachineWithoutPaperKeepsThePagesThatItHas)
{
    for (const bool corrects : {true, false})
        for (const int pages : {0, 1, 2}) {
            std::filesystem::remove(answering.keepAs);
            answering.errorCorrection = corrects;
            answering.paperForPages = pages;
            const CallResult result = carryCall(caller, answering);
            expectStopped(result, pages, "the other machine is out of paper");
        }
}

TEST_F(FaxCallTest, AMachineWithPaperForAllPagesTakesThem)
{
    answering.paperForPages = 3;
    EXPECT_EQ(carryCall(caller, answering).words, "sent");
    expectKept(3);
}

TEST_F(FaxCallTest, ANumberThatIsBusyIsHeardToBe)
{
    answering.kind = AnsweringParty::Kind::busy;
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.kind, Kind::busy);
    EXPECT_EQ(result.words, "busy");
    EXPECT_EQ(result.code, -1);
    EXPECT_EQ(result.libraryWords, "");
    EXPECT_LT(result.duration, 5s);
    expectKept(0);
}

TEST_F(FaxCallTest, ANumberThatNobodyAnswersRingsSixTimes)
{
    answering.kind = AnsweringParty::Kind::noAnswer;
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.kind, Kind::noAnswer);
    EXPECT_EQ(result.words, "no answer");
    EXPECT_EQ(result.code, -1);
    EXPECT_GT(result.duration, 5 * 6s);
    EXPECT_LT(result.duration, 6 * 6s);
    expectKept(0);
}

TEST_F(FaxCallTest, APersonWhoAnswersIsNoFaxMachine)
{
    answering.kind = AnsweringParty::Kind::voice;
    const CallResult result = carryCall(caller, answering);
    EXPECT_EQ(result.kind, Kind::failed);
    EXPECT_EQ(result.words, "no fax machine answers");
    EXPECT_EQ(result.libraryWords, "Timed out waiting for initial communication");
    EXPECT_EQ(result.pagesSent, 0);
    EXPECT_EQ(result.bitRate, 0);
    EXPECT_LT(result.duration, 2min);
    expectKept(0);
}

TEST_F(FaxCallTest, TheWatchIsAskedEvery20Milliseconds)
{
    CallProgress last;
    const CallResult result = carryCall(caller, answering, [&](const CallProgress& progress) {
        EXPECT_EQ(progress.lineTime, last.lineTime + 20ms);
        EXPECT_GE(progress.pagesSent, last.pagesSent);
        last = progress;
        return true;
    });
    EXPECT_EQ(last.lineTime, result.duration);
    EXPECT_EQ(last.pagesSent, 3);
}

TEST_F(FaxCallTest, TheWatchBreaksEveryCallOff)
{
    const auto until = [](std::chrono::milliseconds time) {
        return [time](const CallProgress& progress) { return progress.lineTime < time; };
    };
    for (const auto kind : {AnsweringParty::Kind::fax, AnsweringParty::Kind::busy,
                            AnsweringParty::Kind::noAnswer, AnsweringParty::Kind::voice}) {
        answering.kind = kind;
        const CallResult result = carryCall(caller, answering, until(1s));
        EXPECT_EQ(result.kind, Kind::cancelled);
        EXPECT_EQ(result.words, "broken off");
        EXPECT_EQ(result.duration, 1s);
        expectKept(0);
    }
}

TEST_F(FaxCallTest, WhatArrivedBeforeACallWasBrokenOffIsKept)
{
    const CallResult result =
        carryCall(caller, answering, [](const CallProgress& progress) { return progress.pagesSent < 2; });
    EXPECT_EQ(result.kind, Kind::cancelled);
    EXPECT_EQ(result.pagesKept, 2);
    expectKept(2);
}

TEST_F(FaxCallTest, PagesThatTheOtherMachineCannotKeepAreNotSent)
{
    const WriteSignalsIgnored ignored;
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    for (const rlim_t most : {0U, 100U, 1500U, 4000U})
        for (const bool errorCorrection : {true, false}) {
            answering.errorCorrection = errorCorrection;
            const rlimit full{most, before.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &full);
            const std::string line = failureLine<NoRoom>([&] { (void)carryCall(caller, answering); });
            ::setrlimit(RLIMIT_FSIZE, &before);
            EXPECT_TRUE(line.starts_with(answering.keepAs + ": cannot be written: ")) << most << line;
            expectKept(0);
            EXPECT_EQ(folder.names().size(), 1U) << "but for the pages that are sent";
        }
    EXPECT_EQ(carryCall(caller, answering).kind, Kind::sent) << "made again, nothing is in its way";
    expectKept(3);
}

TEST_F(FaxCallTest, PathsMayBeLong)
{
    std::string deep = folder.path();
    for (int level = 0; level < 3; ++level)
        deep += "/" + std::string(200, 'd');
    std::filesystem::create_directories(deep);
    answering.keepAs = deep + "/kept.tif";
    std::filesystem::rename(caller.pages, deep + "/pages.tif");
    caller.pages = deep + "/pages.tif";
    EXPECT_EQ(carryCall(caller, answering).words, "sent");
    EXPECT_EQ(pagesIn(answering.keepAs), pagesIn(caller.pages));
}

TEST_F(FaxCallTest, PagesThatCannotBeReadAreNamed)
{
    caller.pages = folder / "none.tif";
    EXPECT_EQ(failureLine([&] { (void)carryCall(caller, answering); }),
              caller.pages + ": the pages cannot be read: No such file or directory");
    caller.pages = writeFile(folder / "text.tif", "Dear Ms Ann,\n");
    EXPECT_EQ(failureLine([&] { (void)carryCall(caller, answering); }),
              caller.pages + ": there are no pages in it that can be faxed");
}

TEST_F(FaxCallTest, SeveralCallsGoOnAtOnce)
{
    constexpr int lines = 4;
    std::array<CallResult, lines> results;
    std::vector<std::thread> threads;
    for (int line = 0; line < lines; ++line)
        threads.emplace_back([&, line] {
            AnsweringParty party = answering;
            party.keepAs = folder / ("kept-" + std::to_string(line) + ".tif");
            party.fastest = line % 2 == 0 ? 14400 : 4800;
            results.at(static_cast<std::size_t>(line)) = carryCall(caller, party);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (int line = 0; line < lines; ++line) {
        EXPECT_EQ(results.at(static_cast<std::size_t>(line)).words, "sent");
        EXPECT_EQ(pagesIn(folder / ("kept-" + std::to_string(line) + ".tif")), pagesIn(caller.pages));
    }
}

TEST_F(FaxCallTest, NothingIsWrittenToStandardError)
{
    testing::internal::CaptureStderr();
    answering.noise = 8;
    (void)carryCall(caller, answering);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace quelm::device::tests
