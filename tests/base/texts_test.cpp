// What programs ask of texts, and do to them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/texts.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quelm {
namespace {

TEST(Trimmed, LeavesOutTheWhiteSpaceAroundAText)
{
    EXPECT_EQ(trimmed("  fax.example:9100\r\n"), "fax.example:9100");
    EXPECT_EQ(trimmed("\f\va \t b\v\f"), "a \t b");
    EXPECT_EQ(trimmed("a b"), "a b");
    EXPECT_EQ(trimmed(" \t\n"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(OneLine, PutsBlanksInPlaceOfControlCharacters)
{
    EXPECT_EQ(oneLine("two\r\nlines\tand \x1b[31mcolour\x7f"), "two  lines and  [31mcolour ");
    EXPECT_EQ(oneLine("Zo\u00eb"), "Zo\u00eb");
}

TEST(OneLine, LeavesNothingThatATerminalObeys)
{
    EXPECT_EQ(oneLine("a\u009b31mb\u0085c\u2028d\u2029e"), "a 31mb c d e");
    EXPECT_EQ(oneLine("\u202etxt.exe\u202c \u2067x\u2069"), "\\u{202e}txt.exe\\u{202c} \\u{2067}x\\u{2069}");
    EXPECT_EQ(oneLine("\x9b[2J caf\xe9"), "\uFFFD[2J caf\uFFFD");
    EXPECT_EQ(oneLine(std::string("a\0b", 3)), "a b");
}

TEST(OneLine, LeavesTextsOfEveryScriptAsTheyAre)
{
    for (const auto* text : {"שלום עולם", "مرحبا بالعالم 123", "\u200fאבג\u200e ABC", "می\u200cخواهم",
                             "田中さん", "Ωmega", "👩\u200d👧"})
        EXPECT_EQ(oneLine(text), text);
}

TEST(FieldText, ChangesNothingButControlCharacters)
{
    EXPECT_EQ(fieldText("a\nb\u009bc\u2028d"), "a b c d");
    EXPECT_EQ(fieldText("\u202ax\u202c caf\xe9"), "\u202ax\u202c caf\xe9");
}

TEST(TerminalText, KeepsLinesAndShowsWhatATerminalWouldObey)
{
    EXPECT_EQ(terminalText("a\tb\r\nשלום\n"), "a\tb\r\nשלום\n");
    EXPECT_EQ(terminalText("\x1b]0;x\x07\u009b1m\u202ea\rb\x7f"),
              "\\u{1b}]0;x\\u{7}\\u{9b}1m\\u{202e}a\\u{d}b\\u{7f}");
    EXPECT_EQ(terminalText("\x9b"), "\uFFFD");
}

TEST(BoundedLine, KeepsTheBeginningAndTheEndOfALongLine)
{
    std::string line = "start ";
    for (int i = 0; i < 5000; ++i)
        line += "é";
    line += " end";
    const auto shown = messageLine(line);
    EXPECT_EQ(shown.substr(0, 6), "start ");
    EXPECT_TRUE(shown.ends_with("é end"));
    EXPECT_NE(shown.find("é…é"), std::string::npos);
    EXPECT_TRUE(isUtf8(shown));
    EXPECT_EQ(g_utf8_strlen(shown.c_str(), -1), static_cast<glong>(longestLogLine));
}

TEST(BoundedLine, LeavesALineThatIsNotTooLong)
{
    const std::string line(longestLogLine, 'x');
    EXPECT_EQ(messageLine(line), line);
    EXPECT_NE(messageLine(line + "x"), line + "x");
    EXPECT_EQ(messageLine(""), "");
}

TEST(IsUtf8, TakesWholeCharactersAndNoNul)
{
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("Zoë 田中"));
    EXPECT_FALSE(isUtf8("Zo\xeb"));
    EXPECT_FALSE(isUtf8("\xc3"));
    EXPECT_FALSE(isUtf8("\xc0\xaf"));
    EXPECT_FALSE(isUtf8("\xed\xa0\x80"));
    EXPECT_FALSE(isUtf8(std::string_view("a\0b", 3)));
}

TEST(ControlCharacters, AreFoundAnywhereInAText)
{
    EXPECT_FALSE(hasControlCharacter("Zoë, 12 (x)"));
    EXPECT_FALSE(hasControlCharacter("\u200fשלום\u00a0caf\xe9"));
    for (const auto* text :
         {"a\nb", "a\tb", "\x1b[0m", "\x7f", "\u0080", "\u009b1m", "\u009f", "a\u2028b", "\u2029"})
        EXPECT_TRUE(hasControlCharacter(text));
}

TEST(PrintableAscii, IsWhatShowsAsSomethingAndTheBlank)
{
    for (const char character : {' ', '!', 'a', '~'})
        EXPECT_TRUE(isPrintableAscii(character)) << character;
    for (const char character : {'\0', '\x1f', '\n', '\x7f', '\x80', '\xff'})
        EXPECT_FALSE(isPrintableAscii(character)) << int{character};
}

TEST(PlainText, IsOfAnyScriptWithoutLineEnds)
{
    for (const char* text :
         {"", "Ann", "\xce\x9d\xce\xaf\xce\xba\xce\xbf\xcf\x82 \xe7\x8e\x8b \xf0\x9f\x93\xa0"})
        EXPECT_TRUE(isPlainText(text)) << text;
    for (const std::string& text :
         {std::string("a\nb"), std::string("\r"), std::string("\t"), std::string("\x1b"), std::string("\x7f"),
          std::string("a\0b", 3), std::string("\xc2\x80"), std::string("\xc2\x85"), std::string("\xc2\x9f"),
          std::string("\xe2\x80\xa8"), std::string("\xe2\x80\xa9"), std::string("\xff"), std::string("\xc3")})
        EXPECT_FALSE(isPlainText(text)) << text;
    EXPECT_TRUE(isPlainText("\xc2\xa0")) << "the first behind the controls of ISO Latin 1";
}

TEST(ShownText, IsOneCleanLine)
{
    EXPECT_EQ(shownText("Z\xc3\xb6\xc3\xab \xe7\x8e\x8b"), "Z\xc3\xb6\xc3\xab \xe7\x8e\x8b");
    EXPECT_EQ(shownText("a\r\nb\x1b[2J"), "a  b [2J");
    EXPECT_EQ(shownText("\xff"), "\xef\xbf\xbd");
    EXPECT_EQ(shownText(""), "");
}

TEST(ShownText, IsCutBetweenCharacters)
{
    EXPECT_EQ(shownText("\xc3\xbc\xc3\xbc\xc3\xbc", 3), "\xc3\xbc\xc3\xbc\xc3\xbc");
    EXPECT_EQ(shownText("\xc3\xbc\xc3\xbc\xc3\xbc", 2), "\xc3\xbc\xc3\xbc...");
    EXPECT_EQ(shownText(std::string(100'000, '\xff')).size(), 60U * 3 + 3);
}

} // namespace
} // namespace quelm
