// Tests of the pictures of pages: their size, shades, and files that are none.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/display/page_picture.h"

#include "tests/device/display/page_support.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quelm::tests {
namespace {

using namespace device;

class PagePictureTest : public ::testing::Test {
protected:
    std::string pages(const std::vector<DrawnPage>& drawn) const
    {
        return writePages(folder / "pages.tif", drawn);
    }
    std::string file(const std::string& content) const { return writeFile(folder / "file.tif", content); }

    TemporaryFolder folder;
};

/// The bytes at the beginning of a PNG file: signature, then the header with width and height.
std::uint32_t numberAt(const std::string& png, std::size_t at)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8U | static_cast<unsigned char>(png.at(at + i));
    return number;
}

TEST_F(PagePictureTest, APageIsAsHighAsOnPaperWhateverTheShapeOfItsDots)
{
    for (const auto& [down, density] : {std::pair{1078U, 98.0F}, {2156U, 196.0F}, {4301U, 391.0F}}) {
        const auto picture = pictureOf(pages({{.down = down, .dotsDown = density}}), 1, 160);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->width, 160);
        EXPECT_NEAR(picture->height, 160 * 11.0 / (1728 / 204.0), 1) << density;
    }
}

TEST_F(PagePictureTest, EachPixelIsTheMeanOfItsDots)
{
    // Ten lines of dots for each line of the picture, of which the first fifteen are black.
    const auto picture =
        pictureOf(pages({{.across = 1000, .down = 100, .blackLines = 15, .dotsDown = 204}}), 1, 100);
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->height, 10);
    ASSERT_EQ(picture->shades.size(), 1000U);
    EXPECT_EQ(picture->shades[0], 0);
    EXPECT_EQ(picture->shades[99], 0);
    EXPECT_NEAR(picture->shades[100], 127, 1);
    EXPECT_EQ(picture->shades[200], 255);
    EXPECT_EQ(picture->shades.back(), 255);
}

TEST_F(PagePictureTest, DotsThatAreHigherThanPixelsFillThemAll)
{
    const auto picture = pictureOf(pages({{.across = 200, .down = 50, .blackLines = 25}}), 1, 200);
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->height, 104);
    EXPECT_EQ(std::ranges::count(picture->shades, 0), 52 * 200);
    EXPECT_EQ(std::ranges::count(picture->shades, 255), 52 * 200);
}

TEST_F(PagePictureTest, AWiderPictureThanThePageRepeatsItsDots)
{
    const auto picture =
        pictureOf(pages({{.across = 10, .down = 10, .blackLines = 5, .dotsDown = 204}}), 1, 100);
    ASSERT_TRUE(picture);
    EXPECT_EQ(std::ranges::count(picture->shades, 0), 5000);
}

TEST_F(PagePictureTest, PagesAreCountedAndToldApart)
{
    const std::string path = pages({{}, {.blackLines = 1078}, {}});
    EXPECT_EQ(pagesIn(path), 3);
    EXPECT_EQ(pictureOf(path, 1, 50)->shades.front(), 255);
    EXPECT_EQ(pictureOf(path, 2, 50)->shades.front(), 0);
    EXPECT_EQ(pictureOf(path, 3, 50)->shades.front(), 255);
    EXPECT_FALSE(pictureOf(path, 4, 50));
    EXPECT_FALSE(pictureOf(path, 0, 50));
    EXPECT_FALSE(pictureOf(path, -1, 50));
}

TEST_F(PagePictureTest, WhatIsNoPageHasNoPicture)
{
    for (const std::string& path : {file(""), file("%!PS"), file(std::string("II*\0", 4)),
                                    std::string(folder / "missing.tif"), folder.path().string()}) {
        EXPECT_EQ(pagesIn(path), 0) << path;
        EXPECT_FALSE(pictureOf(path, 1, 160)) << path;
    }
    // Nor is a file followed elsewhere.
    const std::string real = pages({{}});
    std::filesystem::create_symlink(real, folder / "link.tif");
    EXPECT_FALSE(pictureOf(folder / "link.tif", 1, 160));
}

TEST_F(PagePictureTest, ADamagedFileEndsWithinBounds)
{
    const std::string whole = contentOf(pages(
        {{.across = 200, .down = 100, .blackLines = 50}, {.across = 200, .down = 100, .blackLines = 20}}));
    int shown = 0;
    for (std::size_t size = 0; size < whole.size(); ++size)
        shown += pictureOf(file(whole.substr(0, size)), 1, 40).has_value() ? 1 : 0;
    EXPECT_LT(shown, static_cast<int>(whole.size()));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 0xFF);
        const auto picture = pictureOf(file(changed), 1, 40);
        EXPECT_LE(picture ? picture->shades.size() : 0, 40U * 20'000);
        EXPECT_LE(pagesIn(file(changed)), 100'000);
    }
}

TEST_F(PagePictureTest, APageOfAnUnlikelySizeHasNoPicture)
{
    EXPECT_FALSE(pictureOf(pages({{.across = 10'001, .down = 8}}), 1, 160));
    EXPECT_TRUE(pictureOf(pages({{.across = 10'000, .down = 8}}), 1, 160));
}

TEST_F(PagePictureTest, APngHasThePicturesSizeAndShadesOfGrey)
{
    const std::string png = pngOf(*pictureOf(pages({{.blackLines = 100}}), 1, 161));
    ASSERT_GT(png.size(), 33U);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(numberAt(png, 16), 161U);
    EXPECT_EQ(numberAt(png, 20), 209U);
    EXPECT_EQ(png.at(24), 8); // bits
    EXPECT_EQ(png.at(25), 0); // grey
    EXPECT_EQ(numberAt(pngOf(blankPage(160)), 16), 160U);
}

} // namespace
} // namespace quelm::tests
