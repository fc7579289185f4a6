// Texts as drawings: where their ink is, how they are broken into lines, and what is missing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/pango_drawings.h"

#include "base/error.h"
#include "tests/driver/drawings/drawings_support.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace quelm::tests {
namespace {

constexpr double size = 14;

struct Script {
    const char* name;
    const char* text;
};

class DrawingsOfScriptsTest : public DrawingsTest, public testing::WithParamInterface<Script> {};

INSTANTIATE_TEST_SUITE_P(
    Scripts, DrawingsOfScriptsTest,
    testing::Values(Script{"Latin", "Office in Łódź – 5 €"}, Script{"Greek", "Ελληνικά: Αθήνα"},
                    Script{"Cyrillic", "Съешь ещё этих мягких"}, Script{"Hebrew", "שלום עולם (סוגריים) 123"},
                    Script{"Arabic", "السلام عليكم"}, Script{"Devanagari", "विद्यार्थी क्षत्रिय"},
                    Script{"Chinese", "你好，世界 繁體"}, Script{"Emoji", "😀 ☎ 👍"},
                    Script{"Mixed", "English עברית abc عربي 12 end"}),
    [](const testing::TestParamInfo<Script>& script) { return std::string(script.param.name); });

TEST_P(DrawingsOfScriptsTest, TheInkIsWhereTheWidthSays)
{
    PangoDrawings drawings;
    for (const auto typeface : {Typeface::sans, Typeface::serif}) {
        const auto lines = drawings.add(GetParam().text, typeface, size);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(drawings.missing(), "");
        const auto ink = print(drawings, show(lines[0])).ink;
        EXPECT_EQ(ink.darkest, 0);
        EXPECT_NEAR(ink.left, left, 2);
        EXPECT_NEAR(ink.right, left + lines[0].width, 2);
        EXPECT_GT(ink.bottom, baseLine - 0.4 * size);
        EXPECT_LT(ink.top, baseLine + 1.1 * size);
        EXPECT_GT(ink.top, baseLine + 0.4 * size);
    }
}

TEST_F(DrawingsTest, LettersAreJoinedAndReorderedAsTheirScriptHasIt)
{
    PangoDrawings drawings;
    const auto glyphs = [&](const char* text) {
        return glyphsOf(drawings, drawings.add(text, Typeface::sans, size));
    };
    EXPECT_EQ(glyphs("لا").size(), 1U) << "a ligature";
    EXPECT_NE(glyphs("ع"), glyphs("عع")) << "letters that are joined have another form";
    EXPECT_EQ(glyphs("क्ष").size(), 1U) << "a conjunct";
    EXPECT_EQ(glyphs("कि").at(1), glyphs("क").at(0)) << "the vowel sign stands ahead of its consonant";
    const auto hebrew = glyphs("אב");
    EXPECT_EQ(hebrew.at(1), glyphs("א").at(0)) << "the first letter is on the right";
}

TEST_F(DrawingsTest, AGlyphIsDefinedOnceInWhateverTextsAndSizesItOccurs)
{
    PangoDrawings drawings;
    const auto definitions = [&] { return count(drawings.postScript("Texts"), "\n/g"); };
    const auto first = drawings.add("Ωμέγα", Typeface::sans, size).at(0);
    EXPECT_EQ(definitions(), 5U);
    const auto second = drawings.add("Ωμέγα", Typeface::sans, size).at(0);
    const auto larger = drawings.add("αγέμΩ", Typeface::sans, 24).at(0);
    EXPECT_EQ(definitions(), 5U);
    EXPECT_EQ(glyphsOf(drawings, {first}), glyphsOf(drawings, {second}));
    EXPECT_EQ(glyphsOf(drawings, {first}).size(), glyphsOf(drawings, {larger}).size());
    EXPECT_NE(first.drawing, second.drawing);
}

TEST_F(DrawingsTest, TheWidthGrowsWithTheSizeAndNothingElse)
{
    PangoDrawings drawings;
    const double single = drawings.add("Ελληνικά", Typeface::sans, 7).at(0).width;
    const double tenfold = drawings.add("Ελληνικά", Typeface::sans, 70).at(0).width;
    EXPECT_NEAR(tenfold, 10 * single, 0.01);
}

TEST_F(DrawingsTest, ALineThatIsReadFromTheRightEndsAtTheWidest)
{
    PangoDrawings drawings;
    const auto alone = drawings.add("שלום עולם", Typeface::sans, size).at(0);
    const auto within = drawings.add("שלום עולם", Typeface::sans, size, 300).at(0);
    EXPECT_EQ(within.width, 300);
    EXPECT_LT(alone.width, 100);
    const auto ink = print(drawings, show(within)).ink;
    EXPECT_NEAR(ink.right, left + 300, 2);
    EXPECT_NEAR(ink.left, left + 300 - alone.width, 2);
    EXPECT_NEAR(print(drawings, show(alone)).ink.left, left, 2);

    const auto lines = drawings.add("שלום עולם שלום עולם שלום", Typeface::sans, size, 100);
    ASSERT_GT(lines.size(), 1U);
    EXPECT_NEAR(print(drawings, show(lines.front())).ink.right, left + 100, 2);
    EXPECT_NEAR(print(drawings, show(lines.back())).ink.right, left + 100, 2);
}

TEST_F(DrawingsTest, LatinAmongOthersStartsOnTheLeftWhereItsTextDoes)
{
    PangoDrawings drawings;
    const auto line = drawings.add("Dear שלום", Typeface::sans, size, 300).at(0);
    EXPECT_LT(line.width, 100);
    EXPECT_NEAR(print(drawings, show(line)).ink.left, left, 2);
}

TEST_F(DrawingsTest, WhatClipsThePageClipsTheDrawing)
{
    PangoDrawings drawings;
    const auto line = drawings.add("Москва Москва", Typeface::sans, size).at(0);
    ASSERT_GT(line.width, 80);
    const auto ink = print(drawings, "gsave 120 390 40 15 rectclip " + show(line) + "grestore").ink;
    EXPECT_NEAR(ink.left, 120, 3);
    EXPECT_NEAR(ink.right, 160, 3);
    EXPECT_LE(ink.right, 160.1);
    EXPECT_GE(ink.left, 119.9);
    EXPECT_LE(ink.top, 405.1);
}

TEST_F(DrawingsTest, TheCurrentColourIsTheDrawings)
{
    PangoDrawings drawings;
    const auto line = drawings.add("Москва", Typeface::sans, size).at(0);
    EXPECT_NEAR(print(drawings, "0.5 setgray " + show(line)).ink.darkest, 128, 2);
}

TEST_F(DrawingsTest, AfterwardsTheCurrentPointIsAtTheEndAndAllElseAsBefore)
{
    PangoDrawings drawings;
    const auto line = drawings.add("Москва", Typeface::sans, size).at(0);
    const auto indented = drawings.add("שלום", Typeface::sans, size, 200).at(0);
    const std::string state = " count = countdictstack = matrix currentmatrix == currentgray = "
                              "gsave clippath pathbbox 4 array astore == grestore currentlinewidth = ";
    const auto printed = print(drawings, "0.25 setgray 2 setlinewidth 10 20 550 560 rectclip newpath" +
                                             state + show(line) + "currentpoint exch = =" + state +
                                             show(indented) + "currentpoint exch = =" + state);
    ASSERT_EQ(printed.messages.size(), 22U);
    const std::vector<std::string> before(printed.messages.begin(), printed.messages.begin() + 6);
    const std::vector<std::string> after(printed.messages.begin() + 8, printed.messages.begin() + 14);
    const std::vector<std::string> afterBoth(printed.messages.begin() + 16, printed.messages.end());
    EXPECT_EQ(after, before);
    EXPECT_EQ(afterBoth, before);
    EXPECT_NEAR(std::stod(printed.messages[6]), left + line.width, 0.01);
    EXPECT_NEAR(std::stod(printed.messages[7]), baseLine, 0.01);
    EXPECT_NEAR(std::stod(printed.messages[14]), left + 200, 0.01);
    EXPECT_NEAR(std::stod(printed.messages[15]), baseLine, 0.01);
}

TEST_F(DrawingsTest, NamesOfThePageAreNotInTheWay)
{
    PangoDrawings drawings;
    const auto line = drawings.add("Москва", Typeface::sans, size).at(0);
    const std::string page =
        "9 dict begin [/m /l /c /h /f /g0 /g1 /TextsGlyphs] {{(taken) =} def} forall Texts 0 get "
        "/Drawing exch def /Texts 0 def 100 400 moveto Drawing end";
    const auto printed = print(drawings, page);
    EXPECT_TRUE(printed.messages.empty()) << printed.messages.at(0);
    EXPECT_EQ(printed.pixels, print(drawings, show(line)).pixels);
}

TEST_F(DrawingsTest, WrappingLosesNothingAndAddsNothing)
{
    PangoDrawings drawings;
    for (const std::string text :
         {"Съешь же ещё этих мягких французских булок, да выпей чаю",
          "你好，世界你好，世界你好，世界你好，世界", "Donaudampfschifffahrtsgesellschaftskapitän",
          "नमस्ते विद्यार्थी नमस्ते विद्यार्थी"}) {
        const auto whole = drawings.add(text, Typeface::serif, size);
        const auto lines = drawings.add(text, Typeface::serif, size, 60);
        ASSERT_GT(lines.size(), 2U) << text;
        for (const auto& line : lines) {
            EXPECT_LE(line.width, 60) << text;
            EXPECT_GT(line.width, 0) << text;
        }
        EXPECT_EQ(glyphsOf(drawings, lines), glyphsOf(drawings, whole)) << text;
        const auto ink = print(drawings, show(lines[1])).ink;
        EXPECT_LE(ink.right, left + lines[1].width + 1) << text;
        EXPECT_GT(ink.right, left + lines[1].width - size) << text;
    }
}

TEST_F(DrawingsTest, LinesAreBrokenBetweenWords)
{
    PangoDrawings drawings;
    const double word = drawings.add("Москва", Typeface::sans, size).at(0).width;
    const auto lines = drawings.add("Москва Москва Москва", Typeface::sans, size, word * 1.5);
    ASSERT_EQ(lines.size(), 3U);
    for (const auto& line : lines)
        EXPECT_EQ(glyphsOf(drawings, {line}).size(), 6U);
    EXPECT_NEAR(lines[0].width, word, 0.01) << "the blank at a break counts for nothing";
}

TEST_F(DrawingsTest, ACharacterThatIsTooWideIsALineOfItsOwn)
{
    PangoDrawings drawings;
    for (const double widest : {1.0, 0.0, -5.0, -HUGE_VAL})
        EXPECT_EQ(drawings.add("世界和平", Typeface::sans, size, widest).size(), 4U) << widest;
}

TEST_F(DrawingsTest, ALongTextIsBrokenLikeAShortOne)
{
    PangoDrawings drawings;
    std::string text;
    for (int i = 0; i < 1500; ++i)
        text += i % 7 == 0 ? "длинноеслово " : "да ";
    const auto whole = drawings.add(text, Typeface::sans, size);
    const auto lines = drawings.add(text, Typeface::sans, size, 300);
    for (const auto& line : lines) {
        const bool isLast = line.drawing == lines.back().drawing;
        EXPECT_LE(line.width, 300);
        EXPECT_GT(line.width, isLast ? 0 : 300 - 110) << "another word would have been too long";
    }
    EXPECT_EQ(glyphsOf(drawings, lines), glyphsOf(drawings, whole));
}

TEST_F(DrawingsTest, ALongTextKeepsItsDirection)
{
    PangoDrawings drawings;
    std::string text = "שלום ";
    for (int i = 0; i < 1000; ++i)
        text += "English ";
    for (const auto& line : drawings.add(text, Typeface::sans, size, 300))
        EXPECT_NEAR(line.width, 300, 0.01);
}

TEST_F(DrawingsTest, TheEmptyTextIsAnEmptyLine)
{
    PangoDrawings drawings;
    for (const double widest : {100.0, HUGE_VAL}) {
        const auto lines = drawings.add("", Typeface::sans, size, widest);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].width, 0);
        EXPECT_TRUE(print(drawings, show(lines[0])).ink.isEmpty());
    }
}

TEST_F(DrawingsTest, SeparatorsAndControlCharactersAreBlanks)
{
    PangoDrawings drawings;
    const auto blank = drawings.add("α β", Typeface::sans, size).at(0);
    for (const std::string_view text :
         {std::string_view("α\u2028β"), std::string_view("α\u2029β"), std::string_view("α\nβ"),
          std::string_view("α\tβ"), std::string_view("α\u0085β"), std::string_view("α\x1b\u03b2")}) {
        const auto lines = drawings.add(text, Typeface::sans, size);
        ASSERT_EQ(lines.size(), 1U) << text;
        EXPECT_EQ(lines[0].width, blank.width) << text;
    }
    EXPECT_EQ(drawings.missing(), "");
}

TEST_F(DrawingsTest, WhatNoFontHasIsNamedOnceInTheOrderOfTheTexts)
{
    PangoDrawings drawings;
    static_cast<void>(drawings.add("a\U0010FFFDb\U000EFFFDc\U0010FFFD", Typeface::sans, size));
    static_cast<void>(drawings.add("\U000EFFFD α\u0378", Typeface::serif, size, 100));
    EXPECT_EQ(drawings.missing(), "\U0010FFFD\U000EFFFD\u0378");
}

TEST_F(DrawingsTest, WhatIsMissingIsLeftOut)
{
    PangoDrawings drawings;
    const auto line = drawings.add("\U0010FFFD", Typeface::sans, size).at(0);
    EXPECT_TRUE(print(drawings, show(line)).ink.isEmpty());
}

TEST_F(DrawingsTest, WhatShowsAsNothingIsNotMissing)
{
    PangoDrawings drawings;
    const double bare = drawings.add("中文", Typeface::sans, size).at(0).width;
    const auto line =
        drawings.add("中\uFE0F\u200D\u200B\u2060\u061C\u180E\uFE00\U000E0041\U000E0100\uFEFF\u00AD文",
                     Typeface::sans, size);
    EXPECT_EQ(drawings.missing(), "");
    EXPECT_NEAR(line.at(0).width, bare, 0.01);
    EXPECT_EQ(glyphsOf(drawings, line).size(), 2U);
    static_cast<void>(drawings.add("\u200D", Typeface::sans, size));
    EXPECT_EQ(drawings.missing(), "");
}

TEST_F(DrawingsTest, HostileTextsEnd)
{
    const auto repeated = [](const std::string& text, int times) {
        std::string all;
        for (int i = 0; i < times; ++i)
            all += text;
        return all;
    };
    PangoDrawings drawings;
    for (const double widest : {HUGE_VAL, 480.0}) {
        static_cast<void>(drawings.add("a" + repeated("\u0301", 10000), Typeface::sans, size, widest));
        static_cast<void>(
            drawings.add(repeated("\u202E\u2067\u2066", 5000) + "a א", Typeface::sans, size, widest));
        static_cast<void>(drawings.add(repeated("\uFDFD", 5000), Typeface::sans, size, widest));
        static_cast<void>(drawings.add(repeated("क्", 5000), Typeface::sans, size, widest));
        static_cast<void>(drawings.add(repeated("\U0001F468\u200D", 10000), Typeface::sans, size, widest));
        static_cast<void>(
            drawings.add("\xff\xc3(\xf0\x9f" + std::string(3, '\0'), Typeface::sans, size, widest));
    }
    const auto ink = print(drawings, show({0, 0})).ink;
    EXPECT_FALSE(ink.isEmpty());
}

TEST_F(DrawingsTest, LongTextsTakeNoLongerThanTheirLength)
{
    const auto time = [](std::size_t length) {
        PangoDrawings drawings;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(drawings.add(std::string(length, 'a'), Typeface::sans, size, 100).empty());
        return std::chrono::steady_clock::now() - start;
    };
    static_cast<void>(time(1000)); // finds the fonts
    EXPECT_LT(time(64000),
              20 * std::max<std::chrono::nanoseconds>(time(16000), std::chrono::milliseconds(20)));
}

TEST_F(DrawingsTest, ATextThatIsTooLongIsRefusedAndAddsNothing)
{
    PangoDrawings drawings;
    try {
        static_cast<void>(drawings.add(std::string(200000, 'a'), Typeface::sans, size));
        ADD_FAILURE() << "not refused";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(),
                     "the cover page cannot be drawn: one of its texts is longer than 128 KB; shorten it");
    }
    EXPECT_NE(drawings.postScript("Texts").find("/Texts 0 array def"), std::string::npos);
}

TEST_F(DrawingsTest, ThreadsMayDrawAtOnce)
{
    std::vector<std::string> programs(4);
    {
        std::vector<std::jthread> threads;
        for (auto& program : programs)
            threads.emplace_back([&program] {
                PangoDrawings drawings;
                static_cast<void>(drawings.add("Съешь עברית 你好 नमस्ते \U0010FFFD", Typeface::sans, size, 60));
                program = drawings.postScript("Texts");
            });
    }
    for (const auto& program : programs)
        EXPECT_EQ(program, programs[0]);
    EXPECT_GT(count(programs[0], "\n/g"), 10U);
}

} // namespace
} // namespace quelm::tests
