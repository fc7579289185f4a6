// Tests of the drawing of pages; Ghostscript does it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/page_rendering.h"

#include "tests/driver/desktop/main_loop.h"
#include "tests/support/kept_variable.h"
#include "tests/support/processes.h"
#include "tests/support/temporary_folder.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quelm {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using Pages = RenderingRequest::Pages;

/// Width and height of a PNG picture; nothing when the bytes are none.
std::optional<std::pair<int, int>> sizeOf(const std::string& png)
{
    GInputStream* stream =
        g_memory_input_stream_new_from_data(png.data(), static_cast<gssize>(png.size()), nullptr);
    GdkPixbuf* picture = gdk_pixbuf_new_from_stream(stream, nullptr, nullptr);
    g_object_unref(stream);
    if (picture == nullptr)
        return std::nullopt;
    const std::pair size(gdk_pixbuf_get_width(picture), gdk_pixbuf_get_height(picture));
    g_object_unref(picture);
    return size;
}

class PageRenderingTest : public testing::Test {
protected:
    static FileHandle stream(const std::string& content)
    {
        FileHandle file = makeUnnamedFile();
        writeAll(file.get(), content, "the stream");
        return file;
    }

    static std::string pages(int count)
    {
        return "%!PS-Adobe-3.0\n1 1 " + std::to_string(count) +
               " { pop << /PageSize [72 144] >> setpagedevice 10 10 20 20 rectfill showpage } for\n";
    }

    void start(const FileHandle& content)
    {
        rendering.start(
            content, request, [this](std::string png) { drawn.push_back(std::move(png)); },
            [this](const RenderingEnd& outcome) { end = outcome; });
    }

    /// Draws, and waits for the end.
    void draw(const std::string& content)
    {
        end.reset();
        drawn.clear();
        start(stream(content));
        EXPECT_FALSE(end);
        ASSERT_TRUE(loopUntil([this] { return end.has_value(); }));
        EXPECT_FALSE(rendering.running());
    }

    std::string scriptInsteadOfGhostscript(const std::string& script)
    {
        const auto path = writeFile(folder / "gs", "#!/bin/sh\n" + script);
        chmod(path.c_str(), 0755);
        return path;
    }

    TemporaryFolder folder;
    RenderingRequest request;
    PageRendering rendering;
    std::vector<std::string> drawn;
    std::optional<RenderingEnd> end;
};

TEST_F(PageRenderingTest, AllPagesComeInTheirResolution)
{
    request.resolution = 144;
    draw(pages(3));
    EXPECT_EQ(end->trouble, "");
    EXPECT_EQ(end->pageCount, 3);
    ASSERT_EQ(drawn.size(), 3U);
    for (const auto& page : drawn)
        EXPECT_EQ(sizeOf(page), std::pair(144, 288));
}

TEST_F(PageRenderingTest, TheFirstPageAloneEndsTheRun)
{
    request.pages = Pages::first;
    request.timeLimit = std::chrono::seconds(20);
    draw(pages(1) + "{ } loop\n");
    EXPECT_EQ(end->trouble, "");
    EXPECT_EQ(drawn.size(), 1U);
}

TEST_F(PageRenderingTest, PagesAreCountedWithoutBeingDrawn)
{
    request.pages = Pages::count;
    draw(pages(7) + "(quelm pages: 99\\n) print\n");
    EXPECT_EQ(end->trouble, "");
    EXPECT_EQ(end->pageCount, 7);
    EXPECT_TRUE(drawn.empty());
}

TEST_F(PageRenderingTest, WhatADocumentPrintsIsNoPicture)
{
    draw("%!PS\n(chatter\\n) print (%stdout) (w) file (more chatter\\n) writestring\n" + pages(1));
    EXPECT_EQ(end->trouble, "");
    EXPECT_EQ(drawn.size(), 1U);
}

TEST_F(PageRenderingTest, AFaultyDocumentShowsThePagesAheadOfTheFault)
{
    draw(pages(2) + "nonsense\n");
    EXPECT_EQ(drawn.size(), 2U);
    EXPECT_THAT(end->trouble, HasSubstr("undefined in nonsense"));
    EXPECT_EQ(end->trouble.find('\n'), std::string::npos);
}

TEST_F(PageRenderingTest, ADocumentReadsNoOtherFiles)
{
    draw("%!PS\n(/etc/passwd) (r) file pop\n" + pages(1));
    EXPECT_TRUE(drawn.empty());
    EXPECT_THAT(end->trouble, HasSubstr("invalidfileaccess"));
}

TEST_F(PageRenderingTest, ADocumentThatNeverEndsIsEnded)
{
    request.timeLimit = milliseconds(300);
    draw(pages(1) + "{ } loop\n");
    EXPECT_NE(end->trouble, "");
}

TEST_F(PageRenderingTest, TheTimeLimitHoldsForAProgramThatLeavesItsPipesToAnother)
{
    request.ghostscript =
        scriptInsteadOfGhostscript("sleep 60 & echo $! >" + (folder / "left") + "\nsleep 60\n");
    request.timeLimit = milliseconds(300);
    draw("%!PS\n");
    EXPECT_NE(end->trouble, "");
    const pid_t left = processIdIn(folder / "left");
    EXPECT_TRUE(soon([left] { return !isRunning(left); }));
}

TEST_F(PageRenderingTest, APageThatIsTooLargeIsRefused)
{
    request.pictureLimit = 100;
    draw(pages(1));
    EXPECT_TRUE(drawn.empty());
    EXPECT_THAT(end->trouble, HasSubstr("too large"));
}

TEST_F(PageRenderingTest, ADocumentThatIsTooLargeIsShownInPart)
{
    request.totalLimit = 1;
    draw(pages(1000));
    EXPECT_FALSE(drawn.empty());
    EXPECT_LT(drawn.size(), 1000U);
    EXPECT_THAT(end->trouble, HasSubstr("very large"));
}

TEST_F(PageRenderingTest, WithoutGhostscriptThatIsTold)
{
    request.ghostscript = folder / "nothing here";
    draw(pages(1));
    EXPECT_THAT(end->trouble, HasSubstr("not installed"));
}

TEST_F(PageRenderingTest, ACancelledRunIsSilent)
{
    const auto content = stream(pages(1) + "{ } loop\n");
    start(content);
    ASSERT_TRUE(loopUntil([this] { return !drawn.empty(); }));
    rendering.cancel();
    EXPECT_FALSE(rendering.running());
    loopUntilIdle();
    EXPECT_FALSE(end);
}

TEST_F(PageRenderingTest, GhostscriptDoesNotOutliveADesktopThatIsKilled)
{
    const auto endless = stream("%!PS\n{ } loop\n");
    const KeptVariable kept("TMPDIR");
    setenv("TMPDIR", folder.path().c_str(), 1);
    request.ghostscript = scriptInsteadOfGhostscript("echo $$ >" + (folder / "id") + "; exec gs \"$@\"\n");
    const auto desktop = ::fork();
    if (desktop == 0) {
        start(endless);
        for (;;)
            ::pause();
    }
    const auto id = processIdIn(folder / "id");
    ::kill(desktop, SIGKILL);
    int status = -1;
    ASSERT_EQ(::waitpid(desktop, &status, 0), desktop);
    EXPECT_TRUE(soon([&] { return !isRunning(id); }));
    EXPECT_TRUE(soon([&] {
        return folder.names() == std::vector<std::string>{"gs", "id"};
    })) << "its folder for temporary files is gone";
}

TEST_F(PageRenderingTest, GhostscriptGetsNothingFromTheEnvironmentThatChangesIt)
{
    const KeptVariable kept("GS_OPTIONS");
    setenv("GS_OPTIONS", "-dNOSAFER", 1);
    draw("%!PS\n(/etc/passwd) (r) file pop\n" + pages(1));
    EXPECT_TRUE(drawn.empty());
    EXPECT_THAT(end->trouble, HasSubstr("invalidfileaccess"));
}

TEST_F(PageRenderingTest, ANewRunTakesThePlaceOfTheOneBefore)
{
    const auto endless = stream("%!PS\n{ } loop\n");
    start(endless);
    draw(pages(2));
    EXPECT_EQ(drawn.size(), 2U);
    loopUntilIdle();
    EXPECT_EQ(drawn.size(), 2U);
}

TEST_F(PageRenderingTest, RunsOverTheSameStreamDoNotDisturbEachOther)
{
    const auto content = stream(pages(5));
    PageRendering other;
    std::optional<RenderingEnd> otherEnd;
    RenderingRequest count;
    count.pages = Pages::count;
    start(content);
    other.start(
        content, count, [](const std::string&) {}, [&](const RenderingEnd& outcome) { otherEnd = outcome; });
    ASSERT_TRUE(loopUntil([&] { return end && otherEnd; }));
    EXPECT_EQ(end->pageCount, 5);
    EXPECT_EQ(otherEnd->pageCount, 5);
}

TEST_F(PageRenderingTest, TheStreamMayBeClosedWhileItIsDrawn)
{
    start(stream(pages(5)));
    ASSERT_TRUE(loopUntil([this] { return end.has_value(); }));
    EXPECT_EQ(end->pageCount, 5);
}

} // namespace
} // namespace quelm
