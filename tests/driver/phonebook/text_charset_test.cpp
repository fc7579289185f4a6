// Charsets that are told, guessed and named.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/text_charset.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using test::failureLine;

DecodedText decoded(const std::string& bytes, const std::string& charset = "")
{
    return decodeText(bytes, charset, "list.csv");
}

/// The charset as which bytes are read, with "?" behind it when it was guessed, and the text.
std::string readAs(const std::string& bytes)
{
    const auto read = decoded(bytes);
    return read.charset + (read.guessed ? "? " : " ") + read.text;
}

TEST(TextCharset, TheMarkOfAFileTellsIts)
{
    EXPECT_EQ(readAs("\xef\xbb\xbf"
                     "a\u00e9"),
              "UTF-8 a\u00e9");
    EXPECT_EQ(readAs(std::string("\xff\xfe"
                                 "a\0\xe9\0",
                                 6)),
              "UTF-16LE a\u00e9");
    EXPECT_EQ(readAs(std::string("\xfe\xff\0a\0\xe9", 6)), "UTF-16BE a\u00e9");
    EXPECT_EQ(readAs(std::string("\xff\xfe\0\0a\0\0\0", 8)), "UTF-32LE a");
    EXPECT_EQ(readAs("a\u00e9"), "UTF-8 a\u00e9");
    EXPECT_EQ(readAs(""), "UTF-8 ");
}

TEST(TextCharset, Utf16ShowsWithoutAMark)
{
    std::string little;
    std::string big;
    for (const char character : std::string("name,number\n")) {
        little += {character, '\0'};
        big += {'\0', character};
    }
    EXPECT_EQ(readAs(little), "UTF-16LE? name,number\n");
    EXPECT_EQ(readAs(big), "UTF-16BE? name,number\n");
    EXPECT_FALSE(decoded(std::string("a\0nn,1\n", 7)).guessed);
}

TEST(TextCharset, WhatIsLatinIsReadAsWesternEuropean)
{
    EXPECT_EQ(readAs("Zo\xeb,1\n"), "windows-1252? Zo\u00eb,1\n");
    EXPECT_EQ(readAs("M\xfcller\nWei\xdf \x80\n"), "windows-1252? M\u00fcller\nWei\u00df \u20ac\n");
    EXPECT_EQ(readAs("M\xfcller \x81\n"), "ISO-8859-1? M\u00fcller \u0081\n");
}

TEST(TextCharset, OtherScriptsAreGuessedByTheirWords)
{
    EXPECT_EQ(readAs("name,number\n\xc8\xe2\xe0\xed \xcf\xe5\xf2\xf0\xee\xe2,1\n\xcc\xe0\xf0\xe8\xff "
                     "\xd1\xe8\xe4\xee\xf0\xee\xe2\xe0,2\n"),
              "windows-1251? name,number\n\u0418\u0432\u0430\u043d \u041f\u0435\u0442\u0440\u043e\u0432,1\n"
              "\u041c\u0430\u0440\u0438\u044f \u0421\u0438\u0434\u043e\u0440\u043e\u0432\u0430,2\n");
    EXPECT_EQ(readAs("name,number\n\x93\x63\x92\x86\x91\xbe\x98\x59,1\n\x97\xe9\x96\xd8\x88\xea\x98\x59,2\n"),
              "SHIFT_JIS? name,number\n\u7530\u4e2d\u592a\u90ce,1\n\u9234\u6728\u4e00\u90ce,2\n");
}

TEST(TextCharset, WhatLooksLikeNothingHasToBeNamed)
{
    // Korean, too short to be told from Chinese.
    const std::string korean = "name,number\n\xb1\xe8\xc3\xb6\xbc\xf6,1\n\xc0\xcc\xbf\xb5\xc8\xf1,2";
    EXPECT_EQ(
        failureLine([&] { decoded(korean); }),
        "list.csv: is not UTF-8, and how it is written cannot be guessed; say its charset, such as GB18030");
    EXPECT_EQ(decoded(korean, "EUC-KR").text, "name,number\n\uae40\ucca0\uc218,1\n\uc774\uc601\ud76c,2");
}

TEST(TextCharset, DamagedUtf8IsNotTakenForAnotherCharset)
{
    const std::string text = "Zo\u00eb\n\u7530\u4e2d\nM\xfcller\n";
    EXPECT_EQ(readAs(text), "UTF-8 " + text);
}

TEST(TextCharset, ANamedCharsetHoldsForAllOfTheText)
{
    EXPECT_EQ(decoded("Zo\xeb", "ISO-8859-15").text, "Zo\u00eb");
    EXPECT_EQ(decoded("\xef\xbb\xbf"
                      "a",
                      "utf-8")
                  .text,
              "a");
    EXPECT_EQ(failureLine([] { decoded("a\nb\nZo\xeb\nc", "UTF-8"); }),
              "list.csv:3: is not UTF-8; say how the file is written");
    EXPECT_TRUE(isKnownCharset("cp1252"));
    for (const auto* name : {"", "klingon", "UTF-8//TRANSLIT", "a\nb"})
        EXPECT_FALSE(isKnownCharset(name)) << name;
}

} // namespace
} // namespace quelm
