// Tests of rendering a job's pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/pages/page_file.h"

#include "base/disk_room.h"
#include "base/file_io.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <string_view>

namespace quelm::device::tests {
namespace {

using test::failureLine;

constexpr PageDensity standard{.across = 204, .down = 98};
constexpr PageDensity fine{.across = 204, .down = 196};
constexpr PageDensity superfine{.across = 204, .down = 391};

/// Lets each page have a size: "[612 792] sized ... showpage".
constexpr char sized[] = "%!PS\n/sized { << /PageSize 3 -1 roll >> setpagedevice } def\n";

/// Black dots in a part of a page.
std::size_t blackDots(const Page& page, std::uint32_t left, std::uint32_t top, std::uint32_t right,
                      std::uint32_t bottom)
{
    const std::size_t rowSize = (page.width + 7) / 8;
    std::size_t count = 0;
    for (std::uint32_t row = top; row < bottom; ++row)
        for (std::uint32_t column = left; column < right; ++column)
            count += (page.dots.at(row * rowSize + column / 8) >> (7 - column % 8)) & 1U;
    return count;
}

/// The dots that hold all the black ones of a page.
struct Box {
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    std::uint32_t right = 0;
    std::uint32_t bottom = 0;
    std::uint32_t width() const { return right - left; }
    std::uint32_t height() const { return bottom - top; }
};

Box boxOf(const Page& page)
{
    Box box{page.width, page.height, 0, 0};
    const std::size_t rowSize = (page.width + 7) / 8;
    for (std::uint32_t row = 0; row < page.height; ++row)
        for (std::uint32_t column = 0; column < page.width; ++column)
            if (((page.dots.at(row * rowSize + column / 8) >> (7 - column % 8)) & 1U) != 0)
                box = {std::min(box.left, column), std::min(box.top, row), std::max(box.right, column + 1),
                       std::max(box.bottom, row + 1)};
    return box;
}

class PageFileTest : public testing::Test {
protected:
    int render(const std::string& postScript, const PageDensity& density = standard)
    {
        writeFile(folder / "job", postScript);
        return renderPages(folder / "job", 0, postScript.size(), density, tiff, bounds);
    }

    /// The line with which the document is refused; nothing is left of it then.
    std::string refusal(const std::string& postScript)
    {
        const std::string line = failureLine([&] { render(postScript); });
        EXPECT_EQ(folder.names(), std::vector<std::string>{"job"});
        return line;
    }

    /// What Ghostscript draws by itself, with its plain options.
    std::vector<Page> plainPages(const std::string& postScript, const PageDensity& density)
    {
        writeFile(folder / "plain.ps", postScript);
        const std::string command = "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=tiffg4 -r" +
                                    std::to_string(density.across) + "x" + std::to_string(density.down) +
                                    " -sOutputFile='" + (folder / "plain.tif") + "' '" +
                                    (folder / "plain.ps") + "'";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("gs failed");
        return pagesIn(folder / "plain.tif");
    }

    TemporaryFolder folder;
    std::string tiff = folder / "pages.tif";
    PageBounds bounds;
};

TEST_F(PageFileTest, PagesOfLetterAndA4AreDotForDotWhatGhostscriptDraws)
{
    const std::string document =
        std::string(sized) +
        "/page { /Times-Roman findfont 12 scalefont setfont 72 500 moveto (Dear Ms Ann,) show\n"
        "72 72 200 200 rectclip 0 1 50 { dup 60 div setgray 4 mul 72 add 72 moveto 100 200 lineto stroke } "
        "for\n"
        "showpage } def [612 792] sized page [595 842] sized page\n";
    for (const PageDensity& density : {standard, fine, superfine}) {
        EXPECT_EQ(render(document, density), 2);
        const auto pages = pagesIn(tiff);
        EXPECT_EQ(pages, plainPages(document, density));
        EXPECT_EQ(pages.at(0).width, 1728U);
        EXPECT_EQ(pages.at(0).height, static_cast<std::uint32_t>(11 * density.down));
        EXPECT_EQ(pages.at(0).across, 204);
        EXPECT_EQ(pages.at(0).down, density.down);
        EXPECT_EQ(pages.at(1).width, 1728U);
        EXPECT_GT(blackDots(pages.at(1), 0, 0, 1728, pages.at(1).height), 1000U);
    }
}

TEST_F(PageFileTest, OnlyTheGivenPartOfTheFileIsRead)
{
    const std::string before = "@PJL ENTER LANGUAGE=POSTSCRIPT\n";
    const std::string document = "%!PS\nshowpage\n";
    writeFile(folder / "job", before + document + "\x1B%-12345X not PostScript");
    EXPECT_EQ(renderPages(folder / "job", before.size(), before.size() + document.size(), standard, tiff), 1);
    EXPECT_EQ(failureLine([&] { renderPages(folder / "job", 0, 1000, standard, folder / "other"); }),
              folder / "job" + ": is shorter than it was when it was taken");
}

TEST_F(PageFileTest, AnotherFileOfThatNameIsReplaced)
{
    writeFile(tiff, "what a rendering left");
    EXPECT_EQ(render("%!PS\nshowpage\n"), 1);
    EXPECT_EQ(pagesIn(tiff).size(), 1U);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"job", "pages.tif"}));
}

TEST_F(PageFileTest, ANarrowPageHasWhiteAtItsRight)
{
    // A5: 1,190 dots wide, all black.
    render(std::string(sized) + "[420 595] sized clippath fill showpage\n");
    const Page page = pagesIn(tiff).at(0);
    EXPECT_EQ(page.width, 1728U);
    EXPECT_EQ(page.height, 810U);
    EXPECT_EQ(blackDots(page, 0, 0, 1190, 810), 1190U * 810U);
    EXPECT_EQ(blackDots(page, 1190, 0, 1728, 810), 0U);
}

TEST_F(PageFileTest, ALongPageStaysAsLongAsItIs)
{
    render(std::string(sized) + "[612 1008] sized showpage [612 2880] sized showpage\n");
    EXPECT_EQ(pagesIn(tiff).at(0).height, 1372U);
    EXPECT_EQ(pagesIn(tiff).at(1).height, 3920U);
}

TEST_F(PageFileTest, APageInLandscapeIsTurned)
{
    // Black along its left side, which becomes the lower one.
    render(std::string(sized) + "[842 595] sized 0 0 84 595 rectfill showpage\n");
    const Page page = pagesIn(tiff).at(0);
    EXPECT_EQ(page.width, 1728U);
    EXPECT_EQ(page.height, 1146U);
    EXPECT_GT(blackDots(page, 0, 1040, 1728, 1146), 1680U * 100U);
    EXPECT_EQ(blackDots(page, 0, 0, 1728, 1020), 0U);
    EXPECT_EQ(blackDots(page, 1690, 0, 1728, 1146), 0U) << "it is no larger than it was";
}

TEST_F(PageFileTest, NoPageBecomesLargerOrIsTurnedForALittle)
{
    // A field of an inch by two, 20 points from the left and the lower side, as it is on paper.
    const std::string field = " sized 20 20 72 144 rectfill showpage\n";
    struct Case {
        const char* size;
        double scale;
        bool isTurned;
    };
    for (const Case& each :
         {Case{"[650 100]", 610 / 650.0, false}, Case{"[650 600]", 610 / 650.0, false},
          Case{"[700 690]", 610 / 700.0, false}, Case{"[700 3000]", 610 / 700.0, false},
          Case{"[842 595]", 1, true}, Case{"[842 420]", 1, true}, Case{"[1191 842]", 610 / 842.0, true}}) {
        render(sized + std::string(each.size) + field, fine);
        const Page page = pagesIn(tiff).at(0);
        EXPECT_EQ(page.width, 1728U) << each.size;
        const Box box = boxOf(page);
        const double inch = box.width() / 204.0;
        const double twoInches = box.height() / 196.0;
        // [650 100] cuts the field off at its upper side.
        const double high = std::string_view(each.size) == "[650 100]" ? 80 / 72.0 : 2;
        EXPECT_NEAR(inch, each.scale * (each.isTurned ? 2 : 1), 0.02) << each.size;
        EXPECT_NEAR(twoInches, each.scale * (each.isTurned ? 1 : high), 0.02) << each.size;
    }
}

TEST_F(PageFileTest, PagesOfSeveralSizesAreFittedEachForItself)
{
    EXPECT_EQ(render(std::string(sized) +
                     "[842 595] sized showpage [842 1191] sized showpage [842 595] sized "
                     "showpage [612 792] sized showpage\n"),
              4);
    const auto pages = pagesIn(tiff);
    EXPECT_EQ(pages.at(0).height, 1146U);
    EXPECT_EQ(pages.at(1).height, 1174U);
    EXPECT_EQ(pages.at(2).height, 1146U);
    EXPECT_EQ(pages.at(3).height, 1078U);
    std::filesystem::remove(tiff);
    EXPECT_EQ(
        refusal("%!PS\n0 1 9 { << /PageSize 3 -1 roll 10 mul 700 add 1000 2 array astore >> setpagedevice "
                "showpage } for\n"),
        "the document has pages of more than 8 sizes that are wider than a fax");
}

TEST_F(PageFileTest, APageThatIsTooWideIsMadeSmallerAsAWhole)
{
    // A3, with a black field in each of its corners.
    render(std::string(sized) + "[842 1191] sized 0 0 50 50 rectfill 792 0 50 50 rectfill 0 1141 50 50 "
                                "rectfill 792 1141 50 50 rectfill showpage\n");
    const Page page = pagesIn(tiff).at(0);
    EXPECT_EQ(page.width, 1728U);
    EXPECT_EQ(page.height, 1174U);
    for (const std::uint32_t left : {0U, 1528U})
        for (const std::uint32_t top : {0U, 1074U})
            EXPECT_GT(blackDots(page, left, top, left + 200, top + 100), 3000U) << left << ", " << top;
    EXPECT_EQ(blackDots(page, 250, 150, 1500, 1000), 0U);
}

TEST_F(PageFileTest, OnlyThePagesThatAreTooWideAreChanged)
{
    const std::string letter =
        "[612 792] sized 100 100 5 setlinewidth moveto 300 400 lineto stroke showpage\n";
    const std::string document = sized + letter + "[1191 842] sized showpage\n" + letter;
    EXPECT_EQ(render(document, fine), 3);
    const auto pages = pagesIn(tiff);
    const auto plain = plainPages(document, fine);
    EXPECT_EQ(pages.at(0), plain.at(0));
    EXPECT_EQ(plain.at(1).width, 3375U);
    EXPECT_EQ(pages.at(1).width, 1728U);
    EXPECT_EQ(pages.at(2), plain.at(2));
}

TEST_F(PageFileTest, TheDocumentDoesNotChooseTheDensity)
{
    render("%!PS\n<< /HWResolution [600 600] /PageSize [612 792] >> setpagedevice showpage\n");
    EXPECT_EQ(pagesIn(tiff).at(0).height, 1078U);
    EXPECT_EQ(pagesIn(tiff).at(0).down, 98);
}

TEST_F(PageFileTest, APageOfAbsurdSizeIsRefused)
{
    EXPECT_EQ(refusal(std::string(sized) + "[612 792] sized showpage [612 28346] sized showpage\n"),
              "page 2 is too large: 216 x 10000 mm, and no side may be longer than 2000 mm");
    EXPECT_EQ(refusal(std::string(sized) + "[0 0] sized showpage\n"),
              "page 1 cannot be rendered: PostScript error /configurationerror in --setpagedevice--");
    EXPECT_EQ(refusal(std::string(sized) + "[612 792] sized showpage [0.1 0.1] sized showpage\n"),
              "the document as it was rendered: page 2 is damaged");
}

TEST_F(PageFileTest, ADocumentThatTakesTheLookAtItsSizesAwayIsRefusedAllTheSame)
{
    const std::string document =
        "%!PS\n<< /BeginPage { pop } /PageSize [612 6000] >> setpagedevice showpage\n";
    const std::string end = " x 2117 mm, and no side may be longer than 2000 mm";
    EXPECT_EQ(refusal(document), "page 1 is too large: 215" + end);
    EXPECT_EQ(failureLine([&] { printPages(folder / "job", 0, document.size(), tiff); }),
              "page 1 is too large: 216" + end);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"job"});
}

TEST_F(PageFileTest, ADocumentThatShowsOtherPagesWhenItIsDrawnAgainIsRefused)
{
    EXPECT_EQ(refusal(std::string(sized) +
                      "[842 1191] sized matrix currentmatrix 0 get 2.5 lt { showpage } if showpage\n"),
              "the document shows other pages when they are made smaller");
}

TEST_F(PageFileTest, ADocumentThatFailsIsRefusedWithItsPage)
{
    EXPECT_EQ(refusal("%!PS\nshowpage showpage foo showpage\n"),
              "page 3 cannot be rendered: PostScript error /undefined in foo");
    EXPECT_EQ(refusal("%!PS\n(/etc/passwd) (r) file showpage\n"),
              "page 1 cannot be rendered: PostScript error /invalidfileaccess in --file--");
    EXPECT_EQ(refusal("%!PS\nshowpage { 1 2 add"),
              "page 2 cannot be rendered: PostScript error /syntaxerror in /----nostringval----");
    EXPECT_EQ(refusal("Dear Ms Ann,\n"), "page 1 cannot be rendered: PostScript error /undefined in Dear");
}

TEST_F(PageFileTest, ADocumentWithoutPagesIsRefused)
{
    EXPECT_EQ(refusal("%!PS\n72 72 100 100 rectfill\n"), "the document has no page");
    EXPECT_EQ(refusal(""), "the document has no page");
    EXPECT_EQ(refusal("%!PS\nquit showpage\n"), "the document has no page");
}

TEST_F(PageFileTest, ADocumentThatShowsPagesForEverIsRefused)
{
    bounds.mostPages = 10;
    for (const std::string endless :
         {"{ showpage } loop", "{ copypage } loop", "{ { showpage } stopped } loop",
          "{ << /PageSize [612 792] >> setpagedevice showpage } loop"})
        EXPECT_EQ(refusal("%!PS\n" + endless), "the document has more than 10 pages") << endless;
    EXPECT_EQ(render("%!PS\n10 { showpage } repeat\n"), 10);
}

TEST_F(PageFileTest, ADocumentThatTakesTheBoundAwayIsRefusedAllTheSame)
{
    bounds.mostPages = 2;
    EXPECT_EQ(refusal("%!PS\n<< /EndPage { pop pop true } >> setpagedevice 3 { showpage } repeat\n"),
              "the document has more than 2 pages");
}

TEST_F(PageFileTest, ADocumentDoesNotChooseWhyItIsRefused)
{
    EXPECT_EQ(refusal("%!PS\n(\\nquelm: too many pages\\n) print flush foo\n"),
              "page 1 cannot be rendered: PostScript error /undefined in foo");
    const std::string line = refusal("%!PS\ncurrentpagedevice /EndPage get { == } forall showpage\n");
    EXPECT_EQ(line, "page 1 cannot be rendered: PostScript error /invalidaccess in --forall--");
}

TEST_F(PageFileTest, APageThatIsTooLargeIsRefusedAheadOfItsDrawing)
{
    EXPECT_EQ(refusal(std::string(sized) + "[14400 14400] sized { } loop\n"),
              "page 1 is too large: 5080 x 5080 mm, and no side may be longer than 2000 mm");
}

TEST_F(PageFileTest, ADocumentDoesNotChooseHowItsPagesAreCoded)
{
    for (const std::string coding : {"(none)", "(lzw)", "(g3)", "(pack)"}) {
        const std::string field = "9 9 99 99 rectfill showpage\n";
        ASSERT_EQ(render("%!PS\n<< /Compression " + coding + " >> setpagedevice " + field), 1) << coding;
        EXPECT_EQ(pagesIn(tiff), plainPages("%!PS\n" + field, standard)) << coding;
    }
}

TEST_F(PageFileTest, AFullDiskIsNoFaultOfTheDocument)
{
    const std::string noise =
        "%!PS\n1 1 600 { 2 mod setgray 0 1 800 { rand 600 mod exch 1 1 rectfill } for } for showpage\n";
    writeFile(folder / "job", noise);
    const WriteSignalsIgnored ignored;
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{16384, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    const std::string line = failureLine<NoRoom>(
        [&] { (void)renderPages(folder / "job", 0, noise.size(), standard, tiff, bounds); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(line, folder.path().string() +
                        ": cannot be written: the file would exceed the size limit; raise the "
                        "limit and try again");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"job"});
}

TEST_F(PageFileTest, AllRunsOfAJobShareItsTime)
{
    // Each run, the second for the page that is too wide, takes less than that; both take more.
    bounds.ghostscript.timeLimit = std::chrono::seconds(2);
    const std::string line =
        refusal(std::string(sized) +
                "[842 1191] sized realtime 1200 add { dup realtime lt { exit } if } loop showpage\n");
    EXPECT_TRUE(line.starts_with("the document cannot be rendered: the program \"gs\" was ended")) << line;
}

TEST_F(PageFileTest, ADocumentThatNeedsForEverIsEnded)
{
    bounds.ghostscript.timeLimit = std::chrono::milliseconds(300);
    const std::string line = refusal("%!PS\n{ } loop\n");
    EXPECT_TRUE(line.starts_with("the document cannot be rendered: the program \"gs\" was ended")) << line;
}

TEST_F(PageFileTest, ADocumentThatTakesAllMemoryIsEnded)
{
    bounds.ghostscript.memoryLimit = std::uint64_t{200} << 20U;
    EXPECT_EQ(refusal("%!PS\n[ { 65000 string } loop\n"),
              "page 1 cannot be rendered: PostScript error /VMerror in --string--");
}

TEST_F(PageFileTest, PagesThatTakeTooMuchRoomAreRefused)
{
    bounds.ghostscript.fileLimit = std::uint64_t{16} << 10U;
    const std::string noise =
        "%!PS\n1 1 600 { 2 mod setgray 0 1 800 { rand 600 mod exch 1 1 rectfill } for } for showpage\n";
    const std::string line = refusal(noise);
    EXPECT_TRUE(line.starts_with("the document cannot be rendered: the program \"gs\" was ended")) << line;
}

TEST_F(PageFileTest, ADocumentThatIsStoppedLeavesNothing)
{
    std::stop_source stop;
    stop.request_stop();
    bounds.ghostscript.stop = stop.get_token();
    EXPECT_EQ(refusal("%!PS\n{ } loop\n"), "the document cannot be rendered: the program \"gs\" was stopped");
}

TEST_F(PageFileTest, WhatADocumentPrintsIsNoPartOfItsPages)
{
    EXPECT_EQ(
        render("%!PS\n20000 { (some words\\n) print } repeat flush (%stdout) (w) file (MM*) writestring "
               "showpage\n"),
        1);
    EXPECT_EQ(pagesIn(tiff).size(), 1U);
}

TEST_F(PageFileTest, AFolderMayHaveAnyName)
{
    std::filesystem::create_directory(folder / "100%d of 'it'");
    tiff = folder / "100%d of 'it'/pages %%.tif";
    EXPECT_EQ(render("%!PS\nshowpage\n"), 1);
    EXPECT_EQ(pagesIn(tiff).size(), 1U);
}

TEST_F(PageFileTest, APrintedJobKeepsItsSizes)
{
    const std::string document =
        std::string(sized) +
        "[612 792] sized clippath fill showpage [1191 842] sized showpage [420 595] sized showpage "
        "[410 595] sized showpage\n";
    writeFile(folder / "job", document);
    EXPECT_EQ(printPages(folder / "job", 0, document.size(), tiff), 4);
    const auto pages = pagesIn(tiff);
    EXPECT_EQ(pages.at(0).width, 2550U);
    EXPECT_EQ(pages.at(0).height, 3300U);
    EXPECT_EQ(pages.at(0).across, 300);
    EXPECT_EQ(pages.at(0).down, 300);
    EXPECT_EQ(blackDots(pages.at(0), 0, 0, 2550, 3300), 2550U * 3300U);
    EXPECT_EQ(pages.at(1).width, 4963U);
    EXPECT_EQ(pages.at(2).width, 1750U);
    EXPECT_EQ(pages.at(3).width, 1708U) << "not that of a fax, which is near";
}

TEST_F(PageFileTest, APrintedJobIsRefusedAsAFaxIs)
{
    writeFile(folder / "job", "%!PS\nshowpage foo\n");
    EXPECT_EQ(failureLine([&] { printPages(folder / "job", 0, 18, tiff); }),
              "page 2 cannot be rendered: PostScript error /undefined in foo");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"job"});
}

} // namespace
} // namespace quelm::device::tests
