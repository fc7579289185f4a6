// What becomes of a directory's values, and how they are found.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_entry.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using quelm::DirectoryEntry;
using quelm::directoryText;
using namespace std::string_literals;

TEST(DirectoryTextTest, TextInAnyScriptStaysAsItIs)
{
    for (const std::string text : {"M\u00FCller", "\u05DB\u05D4\u05DF", "\U0001F4E0", ""})
        EXPECT_EQ(directoryText(text), text);
}

TEST(DirectoryTextTest, BytesThatAreNoUtf8BecomeTheReplacementCharacter)
{
    EXPECT_EQ(directoryText("M\xFCller"), "M\uFFFDller");
    EXPECT_EQ(directoryText("cut \xE2\x82"), "cut \uFFFD\uFFFD");
}

TEST(DirectoryTextTest, NothingInAValueEndsALineOrTheText)
{
    EXPECT_EQ(directoryText("a\r\nb\tc\x7F"), "a  b c ");
    EXPECT_EQ(directoryText("a\0b"s), "a b");
    EXPECT_EQ(directoryText("a\u0085b\u2028c\u2029d"), "a b c d");
}

class DirectoryEntryTest : public testing::Test {
protected:
    std::string valueOf(const char* name)
    {
        const std::string* value = entry.find(name);
        return value != nullptr ? *value : "(none)";
    }

    DirectoryEntry entry;
};

TEST_F(DirectoryEntryTest, NamesMatchWithoutRegardToCase)
{
    entry.add("telephonenumber", "12");
    EXPECT_EQ(valueOf("telephoneNumber"), "12");
    EXPECT_EQ(valueOf("TELEPHONENUMBER"), "12");
    EXPECT_EQ(valueOf("telephone"), "(none)");
    EXPECT_EQ(valueOf(""), "(none)");
}

TEST_F(DirectoryEntryTest, AnAttributeWithOptionsAnswersToItsBareName)
{
    entry.add("sn;lang-de", "M\u00FCller");
    EXPECT_EQ(valueOf("sn"), "M\u00FCller");
    EXPECT_EQ(valueOf("SN;LANG-DE"), "M\u00FCller");
    EXPECT_EQ(valueOf("sn;lang-fr"), "(none)");
}

TEST_F(DirectoryEntryTest, TheBareAttributeComesBeforeTheOneWithOptions)
{
    entry.add("sn;lang-de", "M\u00FCller");
    entry.add("sn", "Miller");
    EXPECT_EQ(valueOf("sn"), "Miller");
}

TEST_F(DirectoryEntryTest, AnEmptyValueIsAValue)
{
    entry.add("sn", "");
    EXPECT_EQ(valueOf("sn"), "");
}

TEST_F(DirectoryEntryTest, ValuesAreKeptAsTextsFitToBeShown)
{
    entry.add("jpegPhoto", "\xFF\xD8\n");
    EXPECT_EQ(valueOf("jpegPhoto"), "\uFFFD\uFFFD ");
}

} // namespace
