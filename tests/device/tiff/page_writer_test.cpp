// Tests of writing fax pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/tiff/page_writer.h"

#include "base/disk_room.h"
#include "base/error.h"
#include "base/file_io.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace quelm::device::tests {
namespace {

using test::failureLine;

class PageWriterTest : public testing::Test {
protected:
    PageWriterTest() { writePages(source, pages); }

    TemporaryFolder folder;
    std::string source = folder / "source.tif";
    std::string file = folder / "file.tif";
    std::vector<Page> pages = {samplePage(1), samplePage(2, 98, 300)};
};

TEST_F(PageWriterTest, CopiesPagesDotForDot)
{
    PageReader reader(source);
    PageWriter writer(file, 2);
    writer.copy(reader);
    ASSERT_TRUE(reader.next());
    writer.copy(reader);
    writer.finish();
    EXPECT_EQ(pagesIn(file), pages);
}

TEST_F(PageWriterTest, APageStaysAsItIsWhicheverOfItsBitsAreBlack)
{
    {
        const TiffHandle tiff = openTiff(source, "r+");
        TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        ASSERT_EQ(TIFFRewriteDirectory(tiff.get()), 1);
    }
    const auto inverted = pagesIn(source);
    ASSERT_NE(inverted.at(0), pages[0]);
    const PageReader reader(source);
    {
        PageWriter writer(file, 2);
        writer.copy(reader);
        writer.widen(reader, pages[0].width);
        writer.finish();
    }
    EXPECT_EQ(pagesIn(file), (std::vector<Page>{inverted.at(0), inverted.at(0)}));
}

TEST_F(PageWriterTest, EachPageSaysThatItIsOneOfSoMany)
{
    PageReader reader(source);
    PageWriter writer(file, 2);
    writer.copy(reader);
    writer.copy(reader);
    writer.finish();
    const TiffHandle tiff = openTiff(file, "r");
    for (int page = 0; page < 2; ++page) {
        std::uint32_t kind = 0;
        std::uint16_t number = 99;
        std::uint16_t count = 99;
        EXPECT_EQ(TIFFGetField(tiff.get(), TIFFTAG_SUBFILETYPE, &kind), 1);
        EXPECT_EQ(TIFFGetField(tiff.get(), TIFFTAG_PAGENUMBER, &number, &count), 1);
        EXPECT_EQ(kind, unsigned{FILETYPE_PAGE});
        EXPECT_EQ(number, page);
        EXPECT_EQ(count, 2);
        TIFFReadDirectory(tiff.get());
    }
}

TEST_F(PageWriterTest, ANarrowPageGetsWhiteAtItsRight)
{
    Page narrow = pages[0];
    narrow.width = 1725;
    narrow.dots.back() = 0xF8;
    writePages(source, {narrow});
    {
        const PageReader reader(source);
        PageWriter writer(file, 1);
        writer.widen(reader, 1800);
        writer.finish();
    }
    const auto written = pagesIn(file);
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written[0].width, 1800U);
    ASSERT_EQ(written[0].height, narrow.height);
    for (std::uint32_t row = 0; row < narrow.height; ++row) {
        std::vector<std::uint8_t> expected(narrow.dots.begin() + row * 216,
                                           narrow.dots.begin() + (row + 1) * 216);
        expected.resize(225);
        const std::vector<std::uint8_t> found(written[0].dots.begin() + row * 225,
                                              written[0].dots.begin() + (row + 1) * 225);
        ASSERT_EQ(found, expected) << "row " << row;
    }
}

TEST_F(PageWriterTest, TheFileIsNotThereBeforeItIsWhole)
{
    {
        const PageReader reader(source);
        PageWriter writer(file, 2);
        writer.copy(reader);
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"source.tif"});
}

TEST_F(PageWriterTest, ADamagedPageIsNotCopied)
{
    std::string content = contentOf(source);
    std::fill(content.begin() + 200, content.begin() + 1200, '\0');
    writeFile(source, content);
    EXPECT_EQ(failureLine([&] {
                  const PageReader reader(source);
                  PageWriter writer(file, 1);
                  writer.copy(reader);
              }),
              source + ": page 1 is damaged");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"source.tif"});
}

TEST_F(PageWriterTest, AFileThatMayNotGrowIsGivenUp)
{
    const WriteSignalsIgnored ignored;
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    for (const rlim_t most : {0U, 1500U}) {
        const rlimit full{most, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
        const std::string line = failureLine<NoRoom>([&] {
            PageReader reader(source);
            PageWriter writer(file, 2);
            writer.copy(reader);
            reader.next();
            writer.copy(reader);
            writer.finish();
        });
        ::setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_TRUE(line.starts_with(file + ": cannot be written: ")) << line;
        EXPECT_EQ(folder.names(), std::vector<std::string>{"source.tif"}) << most;
    }
}

TEST_F(PageWriterTest, AFolderThatIsNotThereIsNamed)
{
    EXPECT_EQ(failureLine([&] { PageWriter writer(folder / "none/file.tif", 1); }),
              folder / "none/file.tif" + ": cannot be written: " + "No such file or directory");
}

} // namespace
} // namespace quelm::device::tests
