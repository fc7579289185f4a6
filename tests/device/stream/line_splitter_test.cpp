// How bytes become lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/line_splitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quelm::device {
namespace {

using testing::ElementsAre;

std::string shown(const Line& line)
{
    constexpr const char* ends[] = {"", "<LF>", "<CRLF>", "<CR>"};
    return std::to_string(line.number) + "@" + std::to_string(line.begin) + " " + line.text +
           ends[static_cast<int>(line.end)];
}

/// All lines of a text that comes in pieces.
std::vector<std::string> linesOf(std::string_view bytes, std::size_t size)
{
    LineSplitter splitter(1);
    std::vector<std::string> lines;
    const auto keep = [&] {
        if (!splitter.isReady())
            return;
        lines.push_back(shown(splitter.line()));
        splitter.next();
    };
    while (!bytes.empty()) {
        for (auto piece = bytes.substr(0, size); !piece.empty(); keep())
            piece.remove_prefix(splitter.take(piece));
        bytes.remove_prefix(std::min(size, bytes.size()));
    }
    splitter.endLine();
    keep();
    return lines;
}

TEST(LineSplitter, KnowsAllLineEndsHoweverTheBytesCome)
{
    for (std::size_t size = 1; size < 16; ++size) {
        EXPECT_THAT(
            linesOf("a\nbc\r\nd\r\r\n\ne", size),
            ElementsAre("1@0 a<LF>", "2@2 bc<CRLF>", "3@6 d<CR>", "4@8 <CRLF>", "5@10 <LF>", "6@11 e"))
            << size;
        EXPECT_THAT(linesOf("a\r", size), ElementsAre("1@0 a<CR>")) << size;
        EXPECT_THAT(linesOf("a\n", size), ElementsAre("1@0 a<LF>")) << size;
    }
}

TEST(LineSplitter, KeepsTheBeginningOfALineThatIsTooLong)
{
    LineSplitter splitter(1);
    const std::string bytes(100'000, 'x');
    EXPECT_EQ(splitter.take(bytes), bytes.size());
    EXPECT_EQ(splitter.take("\ny"), 1U);
    ASSERT_TRUE(splitter.isReady());
    EXPECT_EQ(splitter.line().text, std::string(Line::longest, 'x'));
    EXPECT_TRUE(splitter.line().isCut);
    splitter.next();
    splitter.take("y\n");
    EXPECT_FALSE(splitter.line().isCut);
    EXPECT_EQ(splitter.line().begin, bytes.size() + 1);
}

TEST(LineSplitter, ALineOfExactlyTheBoundIsWhole)
{
    LineSplitter splitter(1);
    splitter.take(std::string(Line::longest, 'x'));
    splitter.take("\n");
    EXPECT_FALSE(splitter.line().isCut);
}

TEST(LineSplitter, WhatIsPassedOverIsInNoLine)
{
    LineSplitter splitter(7);
    splitter.take("a");
    splitter.endLine();
    EXPECT_EQ(shown(splitter.line()), "7@0 a");
    splitter.next();
    splitter.skip(9);
    splitter.take("b\n");
    EXPECT_EQ(shown(splitter.line()), "7@10 b<LF>");
}

} // namespace
} // namespace quelm::device
