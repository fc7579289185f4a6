// Which fonts texts are drawn with, and what happens without any.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "driver/drawings/fonts.h"
#include "driver/drawings/glyph_outline.h"
#include "driver/drawings/glyph_picture.h"
#include "driver/drawings/text_layout.h"
#include "tests/driver/drawings/drawings_support.h"
#include "tests/support/two_users.h"

#include <cstdlib>
#include <iostream>

#if defined(__has_feature)
#    if __has_feature(address_sanitizer)
// As in programs: fontconfig reaches what it keeps by offsets, which the search for leaks does not follow:
// the default configuration, which Pango loads for the process, and what a thread of Pango's holds that the
// end of the process finds at work.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#    endif
#endif

namespace quelm::tests {
namespace {

class DrawingsFontsTest : public DrawingsTest {
protected:
    /// A configuration with the fonts of a folder, and some rules.
    std::string configuration(const std::string& fonts, const std::string& rules = {}) const
    {
        return writeFile(folder / "fonts.conf", "<?xml version=\"1.0\"?><fontconfig><dir>" + fonts +
                                                    "</dir><cachedir>" + folder / "cache" + "</cachedir>" +
                                                    rules + "</fontconfig>");
    }

    std::string programWith(const std::string& file, const std::string& text)
    {
        PangoDrawings drawings(std::make_shared<const Fonts>(file));
        static_cast<void>(drawings.add(text, Typeface::sans, 14, 60));
        missing = drawings.missing();
        return drawings.postScript("Texts");
    }

    /// The line of the error that the fonts of a configuration end with.
    static std::string errorOf(const std::string& file)
    {
        try {
            const Fonts fonts(file);
        } catch (const Error& error) {
            return error.what();
        }
        return "";
    }

    const std::string dejaVu = "/usr/share/fonts/truetype/dejavu";
    std::string missing;
};

constexpr const char* noFont =
    "the cover page cannot be drawn: no font is installed on this machine; install one, "
    "such as DejaVu Sans";

TEST_F(DrawingsFontsTest, AMachineWithoutFontsIsToldSo)
{
    EXPECT_EQ(errorOf(configuration(folder / "none")), noFont);
}

TEST_F(DrawingsFontsTest, AFileThatIsNoFontIsNone)
{
    std::filesystem::create_directory(folder / "broken");
    writeFile(folder / "broken/broken.ttf", "no font");
    EXPECT_EQ(errorOf(configuration(folder / "broken")), noFont);
}

using DrawingsFontsDeathTest = DrawingsFontsTest;

TEST_F(DrawingsFontsDeathTest, TheEnvironmentSaysWhichFontsThereAreAndOneInstalledMeanwhileIsUsed)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, which has no fonts yet
    const std::string file = configuration(folder / "fonts");
    std::filesystem::create_directory(folder / "fonts");
    const auto draw = [&] {
        ::setenv("FONTCONFIG_FILE", file.c_str(), 1);
        PangoDrawings drawings;
        std::cerr << drawings.postScript("Texts").size() << ": fonts are not needed yet\n";
        try {
            static_cast<void>(drawings.add("Москва", Typeface::sans, 14));
        } catch (const Error& error) {
            std::cerr << error.what() << '\n';
            std::filesystem::copy_file(dejaVu + "/DejaVuSans.ttf", folder / "fonts/copy.ttf");
            static_cast<void>(drawings.add("Москва", Typeface::sans, 14));
            std::exit(drawings.missing().empty() ? 3 : 4);
        }
        std::exit(0);
    };
    EXPECT_EXIT(draw(), testing::ExitedWithCode(3), std::string("not needed yet\n") + noFont);
}

TEST_F(DrawingsFontsTest, AConfigurationThatCannotBeReadIsReported)
{
    EXPECT_EQ(errorOf(folder / "absent.conf"), "the cover page cannot be drawn: the machine's font "
                                               "configuration (fontconfig) cannot be read; look at "
                                               "what \"fc-list\" says about it");
}

TEST_F(DrawingsFontsTest, WhatTheOnlyFontHasNotIsMissing)
{
    EXPECT_NE(programWith(configuration(dejaVu), "α 中 β 文"), "");
    EXPECT_EQ(missing, "中文");
}

TEST_F(DrawingsFontsTest, SignsThatFormatATextAndHaveInkAreMissingWhereNoFontHasThem)
{
    // The end of a verse, a number sign, an abbreviation mark.
    for (const std::string sign : {"\u06dd", "\u0600", "\u070f"}) {
        programWith(configuration(dejaVu), "a" + sign + "b\u200d\u2060\ufeffc");
        EXPECT_EQ(missing, sign);
    }
}

TEST_F(DrawingsFontsTest, SettingsOfScreensChangeNothing)
{
    const std::string text = "Съешь же ещё этих мягких французских булок";
    const std::string plain = programWith(configuration(dejaVu), text);
    const std::string rules =
        R"(<match target="pattern"><edit name="dpi" mode="assign"><double>300</double></edit>
        </match><match target="font"><edit name="hinting" mode="assign"><bool>true</bool></edit>
        <edit name="autohint" mode="assign"><bool>true</bool></edit>
        <edit name="antialias" mode="assign"><bool>false</bool></edit>
        <edit name="hintstyle" mode="assign"><const>hintfull</const></edit></match>)";
    EXPECT_EQ(programWith(configuration(dejaVu, rules), text), plain);
}

TEST_F(DrawingsFontsTest, WhatOnlyAFontThatIsGoneHadIsMissing)
{
    std::filesystem::create_directory(folder / "fonts");
    const std::string copy = folder / "fonts/copy.ttf";
    std::filesystem::copy_file(dejaVu + "/DejaVuSans.ttf", copy);
    const auto fonts = std::make_shared<const Fonts>(configuration(folder / "fonts"));
    std::filesystem::remove(copy);
    PangoDrawings drawings(fonts);
    testing::internal::CaptureStderr();
    static_cast<void>(drawings.add("Съешь", Typeface::sans, 14));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "what Pango says is not for users";
    EXPECT_EQ(drawings.missing(), "Съешь");
}

TEST_F(DrawingsFontsTest, WhatARuleScalesAndSlantsStaysSo)
{
    const std::string rules = R"(<match target="font"><edit name="matrix" mode="assign"><matrix>
        <double>0.5</double><double>0.2</double><double>0</double><double>0.5</double></matrix></edit></match>)";
    PangoDrawings drawings(std::make_shared<const Fonts>(configuration(dejaVu, rules)));
    const auto line = drawings.add("ПППППП", Typeface::sans, 40).at(0);
    PangoDrawings plain(std::make_shared<const Fonts>(configuration(dejaVu)));
    const auto plainLine = plain.add("ПППППП", Typeface::sans, 40).at(0);
    EXPECT_NEAR(line.width, plainLine.width / 2, 0.1);
    const auto ink = print(drawings, show(line)).ink;
    const auto plainInk = print(plain, show(plainLine)).ink;
    EXPECT_NEAR(ink.top - baseLine, (plainInk.top - baseLine) / 2, 1);
    EXPECT_NEAR(ink.width(), plainInk.width() / 2 + 0.4 * (ink.top - baseLine), 1);
}

TEST_F(DrawingsFontsTest, WhatOnlyAColouredFontHasIsAPictureInGrays)
{
    const std::string rules = R"(<dir>/usr/share/fonts/truetype/ancient-scripts</dir>
        <match target="scan"><test name="family"><string>Symbola</string></test>
        <edit name="color" mode="assign"><bool>true</bool></edit></match>)";
    const std::string file = configuration(dejaVu, rules);
    EXPECT_EQ(count(programWith(file, "Москва ☎"), "imag"), 0U) << "outlines, where a font has them";
    EXPECT_EQ(count(programWith(file, "Москва 🎂"), "imag"), 1U);
    EXPECT_EQ(missing, "");

    PangoDrawings drawings(std::make_shared<const Fonts>(file));
    const auto line = drawings.add("🎂", Typeface::sans, 40).at(0);
    const auto ink = print(drawings, show(line)).ink;
    EXPECT_GT(ink.width(), 20);
    EXPECT_GE(ink.left, left);
    EXPECT_LE(ink.right, left + line.width + 1);
    EXPECT_LT(ink.darkest, 40);
    static_cast<void>(drawings.add("🎂\U0010FFFD", Typeface::sans, 40));
    EXPECT_EQ(drawings.missing(), "\U0010FFFD");
}

TEST_F(DrawingsFontsTest, APictureOfAGlyphStandsWhereItsOutlineDoes)
{
    const Fonts fonts(configuration(dejaVu));
    const auto map = fonts.newFontMap(FontChoice::all);
    const TextLayout layout(map.get(), "DejaVu Sans", "Б", 100);
    const auto& glyph = layout.lines().at(0).glyphs.at(0);
    const auto inkOf = [&](std::vector<Statement> drawing) {
        return printProgram(
                   "/m /moveto load def /l /lineto load def /c /curveto load def /h /closepath load def\n"
                   "/f /fill load def 100 400 translate 0.1 dup scale\n" +
                   inLines(procedureOf(std::move(drawing)) + " exec"))
            .ink;
    };
    const Ink outline = inkOf(outlineOf(glyph.font, glyph.glyph));
    ASSERT_FALSE(outline.isEmpty());
    for (const Ink& picture :
         {inkOf(pictureOf(glyph.font, glyph.glyph)), inkOf(stencilOf(glyph.font, glyph.glyph))}) {
        const double pixel = 0.1 * 2048 / 128;
        EXPECT_NEAR(picture.left, outline.left, pixel);
        EXPECT_NEAR(picture.right, outline.right, pixel);
        EXPECT_NEAR(picture.bottom, outline.bottom, pixel);
        EXPECT_NEAR(picture.top, outline.top, pixel);
        EXPECT_EQ(picture.darkest, 0);
    }
}

class FontsOfOthers : public TwoUsers {};

TEST_F(FontsOfOthers, AreLeftOutWhereTheUserMayNotReadThem)
{
    const std::string fonts = folder / "fonts";
    std::filesystem::create_directory(fonts);
    for (const char* name : {"DejaVuSans.ttf", "DejaVuSerif.ttf"})
        std::filesystem::copy_file(std::string("/usr/share/fonts/truetype/dejavu/") + name,
                                   fonts + "/" + name);
    const std::string file = writeFile(
        folder / "fonts.conf", "<?xml version=\"1.0\"?><fontconfig><dir>" + fonts + "</dir><cachedir>" +
                                   folder / "cache" + "</cachedir></fontconfig>");
    const auto draws = [&] {
        PangoDrawings drawings(std::make_shared<const Fonts>(file));
        static_cast<void>(drawings.add("\u03c9", Typeface::sans, 14));
        return drawings.missing().empty() ? 0 : 1;
    };
    // The cache knows both.
    ASSERT_EQ(inProcess(draws), 0);
    for (const auto& cached : std::filesystem::recursive_directory_iterator(folder / "cache"))
        std::filesystem::permissions(cached, std::filesystem::perms::others_read,
                                     std::filesystem::perm_options::add);
    std::filesystem::permissions(fonts + "/DejaVuSans.ttf", std::filesystem::perms::none);
    EXPECT_EQ(asUser(victim, draws), 0) << "the other font has the letter";
}

} // namespace
} // namespace quelm::tests
