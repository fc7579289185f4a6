// What a device says while it serves reaches its reader line by line, and never makes the device wait.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/output_lines.h"

#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <csignal>
#include <optional>
#include <string>
#include <vector>

namespace quelm::device {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Standard output is a pipe, which the test reads.
class OutputLinesTest : public testing::Test {
protected:
    OutputLinesTest()
    {
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        before = ::dup(STDOUT_FILENO);
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[1]);
    }
    ~OutputLinesTest() override
    {
        lines.reset();
        ::dup2(before, STDOUT_FILENO);
        ::close(before);
        if (ends[0] >= 0)
            ::close(ends[0]);
    }

    /// The next line that was written.
    std::string next() const
    {
        std::string line;
        for (char byte = 0; byte != '\n' && ::read(ends[0], &byte, 1) == 1;)
            line += byte;
        return line;
    }
    void closeReader()
    {
        ::close(ends[0]);
        ends[0] = -1;
    }

    int ends[2] = {-1, -1};
    int before = -1;
    std::optional<OutputLines> lines{std::in_place};
};

TEST_F(OutputLinesTest, WhatHappensIsSaidBehindTheBeginning)
{
    lines->tell("job 1: received");
    lines->announce("jobs: 127.0.0.1:9100");
    lines->announce("ready");
    lines->begin();
    lines->tell("job 2: received");
    EXPECT_EQ(next(), "jobs: 127.0.0.1:9100\n");
    EXPECT_EQ(next(), "ready\n");
    EXPECT_EQ(next(), "job 1: received\n");
    EXPECT_EQ(next(), "job 2: received\n");
}

TEST_F(OutputLinesTest, EachIsOneLine)
{
    lines->begin();
    lines->tell("job 1: a title\nof two\x1b[2J lines");
    EXPECT_EQ(next(), "job 1: a title of two [2J lines\n");
}

TEST_F(OutputLinesTest, WhatWasSaidIsWrittenAtTheEnd)
{
    lines->begin();
    for (int i = 0; i < 500; ++i)
        lines->tell(std::to_string(i));
    lines.reset();
    for (int i = 0; i < 500; ++i)
        ASSERT_EQ(next(), std::to_string(i) + "\n");
}

TEST_F(OutputLinesTest, AReaderThatTakesNothingHoldsNobodyUpAndIsToldWhatItMissed)
{
    lines.reset();
    lines.emplace(100);
    lines->begin();
    ::fcntl(ends[0], F_SETPIPE_SZ, 4096);
    constexpr int count = 5000;
    for (int i = 0; i < count; ++i)
        lines->tell("event " + std::to_string(i));
    // What there was room for comes, in order; the rest is counted.
    int come = 0;
    int leftOut = 0;
    int last = -1;
    bool inOrder = true;
    while (come + leftOut < count) {
        const auto line = next();
        const std::string event = "event ";
        if (line.starts_with(event)) {
            const int number = std::stoi(line.substr(event.size()));
            inOrder = inOrder && number > last;
            last = number;
            ++come;
        } else if (line.ends_with(" lines were left out, for nobody read them\n")) {
            leftOut += std::stoi(line);
        } else {
            break;
        }
    }
    EXPECT_TRUE(inOrder);
    EXPECT_GE(come, 100);
    EXPECT_GE(leftOut, 1000);
    EXPECT_EQ(come + leftOut, count);
}

TEST_F(OutputLinesTest, AReaderThatTakesNothingDoesNotHoldUpTheEnd)
{
    ::fcntl(ends[0], F_SETPIPE_SZ, 4096);
    lines->begin();
    for (int i = 0; i < 5000; ++i)
        lines->tell("event " + std::to_string(i));
    lines.reset(); // returns
    EXPECT_EQ(next(), "event 0\n");
}

TEST_F(OutputLinesTest, AReaderThatIsGoneEndsNothing)
{
    std::signal(SIGPIPE, SIG_DFL);
    closeReader();
    lines->begin();
    for (int i = 0; i < 100; ++i)
        lines->tell("nobody hears it");
    lines.reset();
}

TEST(LineJson, HasTheNumberAndTheRestOfALineApart)
{
    using Json = nlohmann::json;
    EXPECT_EQ(Json::parse(lineJson("job 12: done, 2 of 2 sent")),
              Json({{"event", "job"}, {"number", 12}, {"text", "done, 2 of 2 sent"}}));
    EXPECT_EQ(Json::parse(lineJson("jobs: [::1]:9100")), Json({{"event", "jobs"}, {"text", "[::1]:9100"}}));
    EXPECT_EQ(Json::parse(lineJson("job from 10.0.0.1: not kept: \xff")),
              Json({{"event", "job"}, {"text", "from 10.0.0.1: not kept: \ufffd"}}));
    EXPECT_EQ(Json::parse(lineJson("7 lines were left out")),
              Json({{"event", "note"}, {"text", "7 lines were left out"}}));
    EXPECT_EQ(Json::parse(lineJson("ready")), Json({{"event", "ready"}}));
}

TEST_F(OutputLinesTest, LinesAreObjectsWhereThatWasAskedFor)
{
    lines.emplace(10000, true);
    lines->announce("ready");
    EXPECT_EQ(next(), "{\"event\":\"ready\"}\n");
}

} // namespace
} // namespace quelm::device
