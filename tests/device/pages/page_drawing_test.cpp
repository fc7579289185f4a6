// Tests of drawing pages with Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/pages/page_drawing.h"

#include "base/file_io.h"
#include "base/temporary_file.h"
#include "device/tiff/page_reader.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using test::failureLine;

class PageDrawingTest : public testing::Test {
protected:
    FileHandle document(const std::string& postScript) const
    {
        return copyOfPart(writeFile(folder / "job", postScript), 0, postScript.size());
    }

    TemporaryFolder folder;
    std::string target = folder / "pages.tif";
    PageBounds bounds;
};

TEST_F(PageDrawingTest, CopiesAPartOfAFile)
{
    const std::string file = writeFile(folder / "job", "0123456789");
    const FileHandle copy = copyOfPart(file, 3, 7);
    std::string bytes(10, '\0');
    bytes.resize(readFully(copy.get(), bytes.data(), bytes.size(), 0, "the copy"));
    EXPECT_EQ(bytes, "3456");
    EXPECT_EQ(failureLine([&] { (void)copyOfPart(file, 3, 11); }),
              file + ": is shorter than it was when it was taken");
    EXPECT_EQ(failureLine([&] { (void)copyOfPart(folder / "none", 0, 1); }),
              folder / "none" + ": cannot be read: No such file or directory");
}

TEST_F(PageDrawingTest, TheDrawnFileGoesWithItsObject)
{
    {
        const DrawnPages drawn(document("%!PS\nshowpage showpage\n"), {"-r50x50"}, target, bounds);
        EXPECT_EQ(pagesInFile(drawn.file()), 2);
        EXPECT_EQ(folder.names().size(), 2U);
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"job"});
}

TEST_F(PageDrawingTest, WhatAKilledRenderingLeftIsRemoved)
{
    const std::string left = temporaryName();
    writeFile(folder / left, "half a page");
    const FileHandle opened(::open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::string running = temporaryName();
    const FileHandle otherThreads = makeTemporaryFile(opened.get(), running);
    const DrawnPages drawn(document("%!PS\nshowpage\n"), {"-r50x50"}, target, bounds);
    const auto names = folder.names();
    EXPECT_EQ(std::count(names.begin(), names.end(), left), 0);
    EXPECT_EQ(std::count(names.begin(), names.end(), running), 1);
}

TEST_F(PageDrawingTest, AFolderThatIsNotThereIsNamed)
{
    const std::string nowhere = folder / "none/pages.tif";
    EXPECT_EQ(failureLine([&] { DrawnPages(document("%!PS\n"), {}, nowhere, bounds); }),
              nowhere + ": cannot be written: No such file or directory");
}

} // namespace
} // namespace quelm::device::tests
