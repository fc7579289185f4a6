// Tests of opening TIFF files quietly.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/tiff/tiff_handle.h"

#include "tests/device/tiff/page_support.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quelm::device::tests {
namespace {

class TiffHandleTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(TiffHandleTest, WhatTheLibrarySaysIsCountedAndNotPrinted)
{
    const std::string file = writeFile(folder / "no.tif", "II this is none");
    int messages = 0;
    testing::internal::CaptureStderr();
    EXPECT_EQ(openTiff(file, "r", &messages), nullptr);
    EXPECT_EQ(openTiff(folder / "missing", "r"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(messages, 1);
}

TEST_F(TiffHandleTest, TheLibraryIsSilentForOthersToo)
{
    const std::string file = writeFile(folder / "no.tif", "II this is none");
    silenceTiffLibrary();
    silenceTiffLibrary();
    testing::internal::CaptureStderr();
    EXPECT_EQ(TIFFOpen(file.c_str(), "r"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(TiffHandleTest, AFileThatBecomesShorterMeanwhileIsAnError)
{
    const std::string file = folder / "pages.tif";
    writePages(file, {samplePage(1, 391, 5000)});
    constexpr std::uintmax_t whole = 16'384; // pages of memory
    ASSERT_GT(std::filesystem::file_size(file), 2 * whole);
    const TiffHandle tiff = openForeignTiff(file);
    ASSERT_NE(tiff, nullptr);
    std::filesystem::resize_file(file, whole);
    std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())));
    EXPECT_NE(TIFFReadScanline(tiff.get(), row.data(), 0), 1);
}

TEST_F(TiffHandleTest, WhatIsNoPlainFileIsNotOpenedAndHoldsNobodyUp)
{
    const std::string file = writeFile(folder / "pages.tif", "II*");
    EXPECT_EQ(openForeignTiff(file), nullptr);
    EXPECT_EQ(openForeignTiff(folder / "missing"), nullptr);
    EXPECT_EQ(openForeignTiff(folder.path()), nullptr);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(openForeignTiff(folder / "pipe"), nullptr);

    {
        const TiffHandle made = openTiff(file, "w");
        TIFFSetField(made.get(), TIFFTAG_IMAGEWIDTH, 8);
        TIFFSetField(made.get(), TIFFTAG_IMAGELENGTH, 1);
        std::uint8_t row = 0;
        ASSERT_EQ(TIFFWriteScanline(made.get(), &row, 0), 1);
    }
    EXPECT_NE(openForeignTiff(file), nullptr);
    std::filesystem::create_symlink(file, folder / "link");
    EXPECT_EQ(openForeignTiff(folder / "link"), nullptr);
}

} // namespace
} // namespace quelm::device::tests
