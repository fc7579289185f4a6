// Translations out of a message catalogue, and the bounded copies around them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/translation.h"

#include "base/bounded_text.h"
#include "base/process.h"
#include "driver/store/name_checks.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr char untouched = '#';

/// A catalogue in the language "de" in a locale folder of the test's own.
class Translation : public testing::Test {
protected:
    Translation()
    {
        for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
            unsetenv(variable);
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("LANGUAGE", "de", 1);
        out.fill(untouched);
    }
    ~Translation() override
    {
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        std::setlocale(LC_ALL, "C");
    }

    /// Compiles the entries ("msgid", "msgstr", as they stand in a catalogue) and uses them.
    void useCatalogue(const std::string& entries)
    {
        const std::string target = folder / "de/LC_MESSAGES";
        std::filesystem::create_directories(target);
        const std::string source =
            writeFile(folder / "de.po", "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n"
                                        "\"Plural-Forms: nplurals=2; plural=(n != 1);\\n\"\n\n" +
                                            entries);
        quelm::ProcessRequest request;
        request.arguments = {"msgfmt", "-o", target + "/" + quelm::textDomain + ".mo", source};
        const quelm::ProcessResult result = quelm::runProcess(request);
        ASSERT_EQ(result.exitStatus, 0) << result.errors;
        quelm::useTranslations(folder.path());
    }

    bool translate(const char* text) { return quelm::translate(text, out.data()); }

    TemporaryFolder folder;
    std::array<char, quelm::boundedTextSize + 1> out{};
};

} // namespace

TEST_F(Translation, IsWrittenWhenThereIsOne)
{
    useCatalogue("msgid \"Fax Recipient\"\nmsgstr \"Empfänger\"\n");
    EXPECT_TRUE(translate("Fax Recipient"));
    EXPECT_STREQ(out.data(), "Empfänger");
    EXPECT_EQ(quelm::translated("Fax Recipient"), "Empfänger");
}

TEST_F(Translation, TextWithoutOneIsCopied)
{
    useCatalogue("msgid \"Fax Recipient\"\nmsgstr \"Empfänger\"\n");
    EXPECT_FALSE(translate("Fax recipient"));
    EXPECT_STREQ(out.data(), "Fax recipient");
    EXPECT_EQ(quelm::translated("Fax recipient"), "Fax recipient");
}

TEST_F(Translation, EmptyTextIsNotTheCatalogueHeader)
{
    useCatalogue("");
    EXPECT_FALSE(translate(""));
    EXPECT_STREQ(out.data(), "");
    EXPECT_EQ(quelm::translated(""), "");
}

TEST_F(Translation, OneThatEqualsTheTextCounts)
{
    useCatalogue("msgid \"Name\"\nmsgstr \"Name\"\n");
    EXPECT_TRUE(translate("Name"));
}

TEST_F(Translation, LineBreaksOfDialogTextsAreLookedUpAsTheyStand)
{
    useCatalogue("msgid \"A&#10;B\"\nmsgstr \"X&#10;Y\"\n");
    EXPECT_TRUE(translate("A&#10;B"));
    EXPECT_STREQ(out.data(), "X&#10;Y");
}

TEST_F(Translation, LongOnesAreCutAtACharacter)
{
    std::string longText;
    for (int i = 0; i < 3000; ++i)
        longText += "ü";
    useCatalogue("msgid \"long\"\nmsgstr \"" + longText + "\"\n");
    EXPECT_TRUE(translate("long"));
    EXPECT_EQ(std::string(out.data()), longText.substr(0, 4094));
    EXPECT_EQ(out.back(), untouched) << "nothing is written behind the 4,096 bytes";
    EXPECT_EQ(quelm::translated("long"), longText);
}

TEST_F(Translation, LongTextsWithoutOneAreCutToo)
{
    const std::string longText(5000, 'x');
    EXPECT_FALSE(translate(longText.c_str()));
    EXPECT_EQ(std::string(out.data()), std::string(4095, 'x'));
    EXPECT_EQ(out.back(), untouched);
}

TEST_F(Translation, MayBeWrittenOverItsText)
{
    useCatalogue("msgid \"Fax\"\nmsgstr \"Telefax\"\n");
    std::strcpy(out.data(), "Fax");
    EXPECT_TRUE(translate(out.data()));
    EXPECT_STREQ(out.data(), "Telefax");
    EXPECT_FALSE(translate(out.data()));
    EXPECT_STREQ(out.data(), "Telefax");
}

TEST_F(Translation, LeavesNumbersAndDatesInTheirPrintStreamForm)
{
    useCatalogue("");
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    EXPECT_STREQ(std::setlocale(LC_TIME, nullptr), "C");
}

TEST_F(Translation, ToleratesNoTextAndNoBuffer)
{
    EXPECT_FALSE(translate(nullptr));
    EXPECT_STREQ(out.data(), "");
    EXPECT_FALSE(quelm::translate("x", nullptr));
    EXPECT_EQ(quelm::translated(nullptr), "");
}

TEST_F(Translation, ReachesTheMessagesOfTheTextChecks)
{
    useCatalogue("msgid \"The Name must not contain %s. Possible are letters, digits and %s\"\n"
                 "msgstr \"%s: unzulässig. Möglich: %s\"\n\n"
                 "msgid \"blank\"\nmsgstr \"Leerzeichen\"\n");
    EXPECT_EQ(quelm::problemWithName("a@b", " "), "\"@\": unzulässig. Möglich: \"'\" Leerzeichen");
}

TEST(CopyBounded, CutsAheadOfTheCharacterThatDoesNotFit)
{
    std::array<char, 16> out{};
    EXPECT_EQ(quelm::copyBounded("aü", out.data(), 3), 1U);
    EXPECT_STREQ(out.data(), "a");
    EXPECT_EQ(quelm::copyBounded("aü", out.data(), 4), 3U);
    EXPECT_STREQ(out.data(), "aü");
    EXPECT_EQ(quelm::copyBounded("\U0001F4E0\U0001F4E0", out.data(), 8), 4U);
    EXPECT_EQ(quelm::copyBounded("\U0001F4E0\U0001F4E0", out.data(), 9), 8U);
}

TEST(CopyBounded, CutsBytesThatAreNoUtf8WhereTheLimitFalls)
{
    std::array<char, 16> out{};
    EXPECT_EQ(quelm::copyBounded("\x80\x80\x80\x80\x80\x80\x80\x80", out.data(), 6), 5U);
}

TEST(CopyBounded, StopsAtANulAndTerminatesAlways)
{
    std::array<char, 4> out{'#', '#', '#', '#'};
    EXPECT_EQ(quelm::copyBounded(std::string_view("a\0b", 3), out.data(), out.size()), 1U);
    EXPECT_STREQ(out.data(), "a");
    EXPECT_EQ(quelm::copyBounded("abc", out.data(), 1), 0U);
    EXPECT_STREQ(out.data(), "");
    EXPECT_EQ(quelm::copyBounded("abc", nullptr, 0), 0U);
}

TEST_F(Translation, FillsThePlacesOfATextInItsLanguagesOrder)
{
    useCatalogue("msgid \"%s has %d rows\"\nmsgstr \"%2$d Zeilen in %1$s, 100%%\"\n");
    const std::string list = "Liste";
    EXPECT_EQ(quelm::localized("%s has %d rows", list, std::size_t{3}), "3 Zeilen in Liste, 100%");
    EXPECT_EQ(quelm::localized("%s of %d", "one", -2), "one of -2");
    EXPECT_EQ(quelm::localized("100%%"), "100%");
}

TEST_F(Translation, ThatDoesNotFitTheArgumentsGivesWayToTheEnglishText)
{
    useCatalogue("msgid \"%s has %d rows\"\nmsgstr \"%s hat %d Zeilen und %s\"\n");
    EXPECT_EQ(quelm::localized("%s has %d rows", "List", 3), "List has 3 rows");
}

TEST_F(Translation, TakesTheFormForTheCount)
{
    useCatalogue("msgid \"%d recipient\"\nmsgid_plural \"%d recipients\"\n"
                 "msgstr[0] \"%d Empfänger\"\nmsgstr[1] \"%d Empfängern\"\n");
    EXPECT_EQ(quelm::localizedCount("%d recipient", "%d recipients", 1, 1), "1 Empfänger");
    EXPECT_EQ(quelm::localizedCount("%d recipient", "%d recipients", 5, 5), "5 Empfängern");
    EXPECT_EQ(quelm::localizedCount("%d row", "%d rows", 1, 1), "1 row");
    EXPECT_EQ(quelm::localizedCount("%d row", "%d rows", 0, 0), "0 rows");
}
