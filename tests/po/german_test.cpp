// Counts and answers in German, through the code that words them.
#include "driver/core/texts.h"
#include "driver/core/translation.h"
#include "driver/core/yes_no.h"
#include "driver/phonebook/import.h"
#include "driver/phonebook/listing.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace {

class German : public testing::Test {
protected:
    German()
    {
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("LANGUAGE", "de", 1);
        quelm::useTranslations(LOCALE_DIR);
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

TEST_F(German, AnImportCountsItsCards)
{
    EXPECT_EQ(summary(0, 0), "in.vcf: 0 hinzugefügt, 0 ersetzt, 0 abgelehnt\n");
    EXPECT_EQ(summary(1, 0), summary(0, 0) + "1 Karte ohne Faxnummer wurde übergangen\n");
    EXPECT_EQ(summary(2, 0), summary(0, 0) + "2 Karten ohne Faxnummer wurden übergangen\n");
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
