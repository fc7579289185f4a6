// Tests of what sheets are drawn on: heights of texts, shapes, and the document.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/report/sheet_canvas.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

using namespace device;

TEST(SheetCanvas, ATextIsAsHighAsItsLinesUpToTheMost)
{
    SheetCanvas canvas("heights");
    const TextStyle one{.size = 10};
    const TextStyle three{.size = 10, .mostLines = 3};
    const double line = canvas.heightOf("word", 500, one);
    EXPECT_GE(line, 10);
    EXPECT_LT(line, 20);
    EXPECT_DOUBLE_EQ(canvas.heightOf(std::string(900, 'x'), 100, one), line);
    EXPECT_GT(canvas.heightOf(std::string(900, 'x'), 100, three), 3 * line);
    EXPECT_LT(canvas.heightOf(std::string(900, 'x'), 100, three), 4 * line);
    EXPECT_NEAR(canvas.heightOf("first\nsecond", 500, three), line, 0.5);
    EXPECT_DOUBLE_EQ(canvas.drawText("word", 54, 54, 500, one), line);
}

TEST(SheetCanvas, AVeryLongTextIsCutBeforeItIsLaidOut)
{
    SheetCanvas canvas("long");
    const TextStyle style{.size = 10, .mostLines = 1000};
    const std::string most = std::string(1000, 'x');
    EXPECT_NEAR(canvas.heightOf(std::string(3'000'000, 'x'), 100, style), canvas.heightOf(most, 100, style),
                15);
}

TEST(SheetCanvas, EachEndedPageIsOneOfTheDocument)
{
    SheetCanvas canvas("pages");
    canvas.fill({10, 10, 100, 100}, {1, 0, 0}, 4);
    canvas.endPage();
    canvas.drawPicture(blankPage(16), {100, 100, 50, 70});
    canvas.endPage();
    const std::string pdf = canvas.finish();
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("/Count 2"), std::string::npos);
}

TEST(SheetCanvas, AHostileTitleOfTheDocumentDoesNoHarm)
{
    SheetCanvas canvas("a\nb \xFF\xFE ) >> endobj");
    canvas.endPage();
    EXPECT_TRUE(canvas.finish().starts_with("%PDF-"));
}

} // namespace
} // namespace quelm::tests
