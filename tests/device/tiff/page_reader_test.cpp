// Tests of reading fax pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/tiff/page_reader.h"

#include "base/error.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using test::failureLine;

class PageReaderTest : public testing::Test {
protected:
    std::vector<std::uint8_t> rowsOf(const PageReader& reader)
    {
        std::vector<std::uint8_t> rows;
        reader.readRows([&](auto row) { rows.insert(rows.end(), row.begin(), row.end()); });
        return rows;
    }

    TemporaryFolder folder;
    std::string file = folder / "pages.tif";
};

TEST_F(PageReaderTest, ReadsOnePageAfterTheOther)
{
    const std::vector<Page> pages = {samplePage(1), samplePage(2, 196, 300)};
    writePages(file, pages);
    EXPECT_EQ(pagesInFile(file), 2);
    PageReader reader(file);
    ASSERT_EQ(reader.count(), 2);
    EXPECT_EQ(rowsOf(reader), pages[0].dots);
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.facts().width, 1728U);
    EXPECT_EQ(reader.facts().height, 300U);
    EXPECT_EQ(reader.facts().across, 204);
    EXPECT_EQ(reader.facts().down, 196);
    EXPECT_EQ(rowsOf(reader), pages[1].dots);
    EXPECT_FALSE(reader.next());
}

TEST_F(PageReaderTest, TheBitsBehindTheLastDotAreWhite)
{
    Page page = samplePage(1);
    page.width = 1723;
    for (std::uint8_t& byte : page.dots)
        byte = 0xFF;
    writePages(file, {page});
    const auto rows = rowsOf(PageReader(file));
    ASSERT_EQ(rows.size(), page.dots.size());
    EXPECT_EQ(rows[0], 0xFF);
    EXPECT_EQ(rows[215], 0xE0);
}

TEST_F(PageReaderTest, APageThatEndsTooEarlyIsDamaged)
{
    writePages(file, {samplePage(1)});
    std::string content = contentOf(file);
    // The strip stands ahead of the directory: what is taken out of its middle is missed at its end.
    std::fill(content.begin() + 200, content.begin() + 1200, '\0');
    writeFile(file, content);
    const PageReader reader(file, "the letter");
    EXPECT_EQ(failureLine([&] { reader.readRows([](auto) {}); }), "the letter: page 1 is damaged");
}

TEST_F(PageReaderTest, AFileThatBecomesShorterMeanwhileIsDamaged)
{
    writePages(file, {samplePage(1, 391, 5000)});
    constexpr std::uintmax_t whole = 16'384; // pages of memory
    ASSERT_GT(std::filesystem::file_size(file), 2 * whole);
    const PageReader reader(file);
    std::filesystem::resize_file(file, whole);
    EXPECT_EQ(failureLine([&] { reader.readRows([](auto) {}); }), file + ": page 1 is damaged");
}

TEST_F(PageReaderTest, APageOfAnotherKindIsNone)
{
    {
        const TiffHandle tiff = openTiff(file, "w");
        TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, 8);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, 1);
        TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        std::string row(8, 'x');
        TIFFWriteScanline(tiff.get(), row.data(), 0);
    }
    const PageReader reader(file);
    EXPECT_EQ(failureLine([&] { (void)reader.facts(); }), file + ": page 1 is damaged");
}

TEST_F(PageReaderTest, AFileOfAnotherKindHasNoPages)
{
    writeFile(file, "%!PS\nshowpage\n");
    EXPECT_EQ(pagesInFile(file), 0);
    EXPECT_EQ(pagesInFile(folder / "missing"), 0);
    EXPECT_EQ(failureLine([&] { PageReader reader(file); }),
              file + ": the pages cannot be read; they are no TIFF file");
}

} // namespace
} // namespace quelm::device::tests
