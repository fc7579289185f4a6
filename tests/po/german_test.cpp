// Counts and answers in German, through the code that words them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/yes_no.h"
#include "base/translation.h"
#include "driver/phonebook/entry_check.h"
#include "driver/phonebook/import.h"
#include "driver/phonebook/listing.h"
#include "driver/store/name_checks.h"
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>

namespace {

class German : public testing::Test {
protected:
    German()
    {
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("LANGUAGE", "de", 1);
        quelm::useTranslations(build_paths::inStage("locale"));
    }
    ~German() override
    {
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        std::setlocale(LC_ALL, "C");
    }

    static quelm::ImportReport report()
    {
        quelm::ImportReport made;
        made.file = "in.vcf";
        return made;
    }

    static std::string summary(std::size_t withoutNumber, std::size_t mailboxes)
    {
        auto made = report();
        made.withoutNumber = withoutNumber;
        made.mailboxes = mailboxes;
        return importSummary(made);
    }

    static quelm::ImportReport refusing(std::size_t rows)
    {
        auto made = report();
        made.refused.resize(rows, {7, "?"});
        return made;
    }

    static std::string counted(std::size_t entries, std::size_t groups)
    {
        std::vector<quelm::Phonebook::Item> items(entries, {"uAnn", quelm::PhonebookEntry{}});
        items.insert(items.end(), groups, {"gTeam", quelm::PhonebookGroup{}});
        return countText(items);
    }
};

/// The letters that Alt takes in the main window, the destination's field labelled `field`.
std::string mainWindowMnemonics(const char* field)
{
    std::string letters;
    for (const char* text : {"_File", "F_ax", "_Help", "_Open...", "Fax Set_up...", "Send _to:", field,
                             "Fo_rmat:", "H_elp", "Pre_view Job", "_Send"}) {
        const std::string shown = quelm::translated(text);
        const auto mark = shown.find('_');
        EXPECT_NE(mark, std::string::npos) << shown;
        // The bytes of one character, in lower case where it is ASCII.
        const auto first = static_cast<unsigned char>(shown[mark + 1]);
        letters +=
            first < 0x80 ? std::string(1, static_cast<char>(std::tolower(first))) : shown.substr(mark + 1, 2);
        letters += ' ';
    }
    return letters;
}

/// Each letter of a list once.
bool isDistinct(const std::string& letters)
{
    std::istringstream list(letters);
    std::set<std::string> seen;
    for (std::string letter; list >> letter;)
        if (!seen.insert(letter).second)
            return false;
    return true;
}

TEST_F(German, EveryLetterOfTheMainWindowHasOneMeaning)
{
    for (const char* field : {"Fi_le:", "_Device:", "_Queue:"})
        EXPECT_PRED1(isDistinct, mainWindowMnemonics(field));
}

TEST(English, EveryLetterOfTheMainWindowHasOneMeaning)
{
    for (const char* field : {"Fi_le:", "_Device:", "_Queue:"})
        EXPECT_PRED1(isDistinct, mainWindowMnemonics(field));
}

TEST_F(German, AnImportCountsItsPeople)
{
    EXPECT_EQ(summary(0, 0), "in.vcf: 0 hinzugefügt, 0 ersetzt, 0 abgelehnt\n");
    EXPECT_EQ(summary(1, 0), summary(0, 0) + "1 Person ohne Faxnummer wurde übergangen\n");
    EXPECT_EQ(summary(2, 0), summary(0, 0) + "2 Personen ohne Faxnummer wurden übergangen\n");
}

TEST_F(German, AnImportCountsTheMailboxes)
{
    EXPECT_EQ(summary(0, 1), summary(0, 0) + "1 Mailbox wurde weggelassen; Telefonbücher führen keine\n");
    EXPECT_EQ(summary(0, 2), summary(0, 0) + "2 Mailboxen wurden weggelassen; Telefonbücher führen keine\n");
}

TEST_F(German, AnImportCountsWhatItRefuses)
{
    EXPECT_EQ(
        importFailure(refusing(1)),
        "in.vcf: es wurde nichts importiert, denn 1 Zeile oder Karte ist abgelehnt; bessern Sie die Datei "
        "aus, oder lassen Sie sie mit --skip-bad weg");
    EXPECT_EQ(importFailure(refusing(2)),
              "in.vcf: es wurde nichts importiert, denn 2 Zeilen oder Karten sind abgelehnt; bessern Sie die "
              "Datei aus, oder lassen Sie sie mit --skip-bad weg");
    EXPECT_EQ(refusalLines(refusing(101)).back(), "in.vcf: 1 weitere wird abgelehnt");
    EXPECT_EQ(refusalLines(refusing(102)).back(), "in.vcf: 2 weitere werden abgelehnt");
}

TEST_F(German, APhonebookCountsItsContent)
{
    EXPECT_EQ(counted(0, 0), "0 Einträge, 0 Gruppen");
    EXPECT_EQ(counted(1, 1), "1 Eintrag, 1 Gruppe");
    EXPECT_EQ(counted(2, 2), "2 Einträge, 2 Gruppen");
}

TEST_F(German, AFieldIsTheSubjectOfItsSentence)
{
    EXPECT_EQ(problemWith(quelm::PhonebookEntry{"Ann", "", "", "", ""}), "die Faxnummer fehlt");
    EXPECT_EQ(problemWith(quelm::PhonebookEntry{std::string(32, 'a'), "1", "", "", ""}),
              "der Name hat 32 Zeichen; möglich sind 31");
}

TEST_F(German, AQuestionMayBeAnsweredInGermanOrEnglish)
{
    for (const char* answer : {"j", "ja", "y", "yes"})
        EXPECT_TRUE(quelm::isYes(answer)) << answer;
    for (const char* answer : {"n", "nein", "no"})
        EXPECT_TRUE(quelm::isNo(answer)) << answer;
    EXPECT_FALSE(quelm::isYes("n"));
    EXPECT_FALSE(quelm::isNo("j"));
}

TEST_F(German, AMessageShowsTheCharacterThatIsNotAllowed)
{
    EXPECT_EQ(
        quelm::problemWithName("a@b", "- "),
        "Der Name darf \"@\" nicht enthalten. Möglich sind Buchstaben, Ziffern und \"'\" \"-\" Leerzeichen");
}

} // namespace
