// Tests of the files at both ends of a call.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/page_files.h"

#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using test::failureLine;

class PageFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string file = folder / "pages.tif";
    std::vector<Page> pages = {samplePage(1), samplePage(2), samplePage(3)};
};

TEST_F(PageFilesTest, SentPagesAreCountedAndStayReadable)
{
    writePages(file, pages);
    const SentPages sent(file);
    EXPECT_EQ(sent.count(), 3);
    EXPECT_EQ(sent.bytes(), std::filesystem::file_size(file));
    std::filesystem::remove(file);
    EXPECT_EQ(pagesIn(sent.shortName()), pages);
}

TEST_F(PageFilesTest, TheFirstPagesAreKept)
{
    for (int kept = 0; kept <= 3; ++kept) {
        ReceivedPages received(file);
        writePages(received.shortName(), pages);
        EXPECT_EQ(received.keep(kept), kept);
        if (kept > 0)
            EXPECT_EQ(pagesIn(file), std::vector<Page>(pages.begin(), pages.begin() + kept));
        else
            EXPECT_FALSE(std::filesystem::exists(file));
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"pages.tif"});
}

TEST_F(PageFilesTest, NothingStaysOfPagesThatWereNotKept)
{
    {
        const ReceivedPages received(file);
        writePages(received.shortName(), pages);
        EXPECT_EQ(folder.names().size(), 1U);
    }
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(PageFilesTest, PagesThatWereReceivedAndAreNotThereAreAnError)
{
    const std::string line = file + ": the pages that were received cannot be kept";
    ReceivedPages received(file);
    EXPECT_EQ(received.keep(0), 0);
    EXPECT_EQ(failureLine([&] { received.keep(1); }), line) << "an empty file";
    writeFile(received.shortName(), "no page");
    EXPECT_EQ(failureLine([&] { received.keep(1); }), line);
    ReceivedPages fewer(file);
    writePages(fewer.shortName(), pages);
    EXPECT_EQ(failureLine([&] { fewer.keep(4); }), line);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(PageFilesTest, AFolderThatIsNotThereIsNamed)
{
    const std::string nowhere = folder / "none/kept.tif";
    EXPECT_EQ(failureLine([&] { ReceivedPages received(nowhere); }),
              nowhere + ": cannot be written: No such file or directory");
}

} // namespace
} // namespace quelm::device::tests
