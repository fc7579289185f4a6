// The programs in German, with the catalogue that lies beside them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class GermanJourney : public Journey {
protected:
    GermanJourney() { language = "de"; }

    /// What a command says that succeeds.
    std::string said(const Arguments& arguments) const
    {
        const auto result = driver(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    /// A job with all texts that a user can put into it, written while the programs speak `spoken`.
    std::string job(const std::string& spoken)
    {
        language = spoken;
        const auto letter = document("letter.ps", "Letter");
        const auto output = path("job-" + spoken);
        EXPECT_EQ(driver({"fax",
                          letter,
                          "--now",
                          "2026-03-09T14:05",
                          "--to",
                          "Zoë=0351 4",
                          "--to",
                          "Bob=2",
                          "--cover",
                          "--note",
                          "Guten Tag",
                          "--show-recipients",
                          "--show-sender",
                          "--sender-name",
                          "Ann",
                          "--prefix",
                          "0",
                          "--credit-card",
                          "12",
                          "--output",
                          output})
                      .status,
                  0);
        return content("job-" + spoken);
    }
};

TEST_F(GermanJourney, AWrongValueIsRefusedBeforeAnInstallationIsKnown)
{
    expectFailure(driver({"phonebook", "list", "--format", "xml"}), 2,
                  "--format: „xml“ ist keines von text|csv");
    expectFailure(driver({"attributes", "--to", "Ann"}), 2,
                  "--to „Ann“: schreiben Sie NAME=NUMMER oder NUMMER, ");
}

TEST_F(GermanJourney, TheReasonWhyACommandLineIsRefusedIsGerman)
{
    expectFailure(driver(Arguments{"fax"}), 2, "DOCUMENT fehlt; siehe quelm-driver fax --help");
    expectFailure(driver({"attributes", "--note"}), 2, "--note braucht einen Wert: TEXT");
    expectFailure(driver({"attributes", "--bogus"}), 2, "hier gibt es keine Option --bogus");
}

TEST_F(GermanJourney, ADocumentThatIsNotThereIsNamed)
{
    expectFailure(driver({"fax", path("nothing.ps"), "--to", "Ann=1", "--output", path("job")}), 1,
                  path("nothing.ps") + ": ein solches Dokument gibt es nicht\n");
}

TEST_F(GermanJourney, TheComponentRefusesAnEntryInTheSameLanguage)
{
    expectFailure(driver({"attributes", "--to", "A@B=1"}), 2,
                  "--to A@B=1: Der Name darf \"@\" nicht enthalten. Möglich sind Buchstaben, Ziffern und ");
}

TEST_F(GermanJourney, AScriptShowsTheQuestionAndKeepsItsFixedForm)
{
    const std::vector<std::string> adding{"press \"AddFaxRcpt\"", "type \"RecipientName\" \"Anne\"",
                                          "type \"RecipientNumber\" \"1\"",
                                          "press \"LanFaxAddRcpt OK Button\""};
    std::vector<std::string> lines{"call T40InvokeFaxDialog"};
    for (int times = 0; times < 2; ++times)
        lines.insert(lines.end(), adding.begin(), adding.end());
    lines.emplace_back("answer no");
    lines.emplace_back("show \"AddtoPersonalPB\"");
    const auto answers = script(lines);
    ASSERT_EQ(answers.size(), 12U);
    EXPECT_EQ(answers[8], "ok");
    EXPECT_EQ(answers[9],
              "question \"Name:   Anne\\r\\nFaxnummer:   1\\r\\n\\nDieser Empfänger steht bereits in "
              "der Empfängerliste.\\r\\nSoll er noch einmal hinzugefügt werden?\"");
    EXPECT_EQ(answers[10], "ok");
    EXPECT_THAT(answers[11],
                StartsWith("widget \"AddtoPersonalPB\" kind CheckBox visible yes sensitive yes "));
}

TEST_F(GermanJourney, ARefusedStepNamesTheWidgetWhoseTurnItIsNot)
{
    expectFailure(driver({"script", "-"}, "press \"LanFax OK Button\"\n"), 1,
                  "Standardeingabe:1: Button „LanFax OK Button“ ist nicht sichtbar: DialogWindow „Lan Fax "
                  "Window“ ist verborgen");
}

TEST_F(GermanJourney, APersonAtTheTerminalAnswersInGermanOrEnglish)
{
    Request request;
    request.arguments = {"attributes", "--to", "Ann=1", "--to", "Ann=1"};
    request.inputIsTerminal = true;
    for (const auto& [typed, destinations] :
         {std::pair{"j\nn\n", 2U}, {"ja\nn\n", 2U}, {"y\nn\n", 2U}, {"nein\ny\n", 1U}, {"was?\nn\n", 1U}}) {
        request.input = typed;
        const auto result = driver(request);
        EXPECT_EQ(result.status, 0) << typed;
        EXPECT_EQ(result.writes.size(), destinations + 5) << typed;
        EXPECT_THAT(result.errors, EndsWith("Soll er noch einmal hinzugefügt werden? [j/n] ")) << typed;
    }
}

TEST_F(GermanJourney, ThePhonebookCommandsSpeakGerman)
{
    EXPECT_EQ(said({"phonebook", "add", "Ann", "1", "--email", "ann@example"}),
              "der Eintrag „Ann“ wurde hinzugefügt\n");
    EXPECT_EQ(said({"phonebook", "add-group", "Team", "Ann"}), "die Gruppe „Team“ wurde hinzugefügt\n");
    EXPECT_EQ(said({"phonebook", "show", "Ann"}), "Name: Ann\nNummer: 1\nE-Mail: ann@example\n");
    EXPECT_EQ(said({"phonebook", "show", "Team"}), "Gruppe: Team\nMitglied: Ann\n");
    EXPECT_EQ(said({"phonebook", "list"}), "Ann     1\n[Team]  Ann\n");
    EXPECT_EQ(said({"phonebook", "export", path("all.vcf")}), path("all.vcf") + ": 1 Eintrag, 1 Gruppe\n");
    EXPECT_THAT(said({"phonebook", "add", "--help"}), HasSubstr("E-Mail-Adresse\n"));
}

TEST_F(GermanJourney, WhatIsWrittenForOtherProgramsIsInNoLanguage)
{
    said({"phonebook", "add", "Ann", "1"});
    EXPECT_EQ(said({"phonebook", "list", "--format", "csv"}),
              "name,number,organization,phone,email,type,members\nAnn,1,,,,entry,\n");
    const auto cards = said({"phonebook", "export", "-", "--format", "vcard4"});
    language = "";
    EXPECT_EQ(said({"phonebook", "export", "-", "--format", "vcard4"}), cards);
}

TEST_F(GermanJourney, AJobHasTheSameBytesAsInEnglish)
{
    const auto english = job("");
    EXPECT_THAT(english, HasSubstr("OID_ATT_"));
    EXPECT_THAT(english, HasSubstr("Guten Tag"));
    EXPECT_EQ(job("de"), english);
}

TEST_F(GermanJourney, ADocumentFromStandardInputHasTheSameTitleAsInEnglish)
{
    const Arguments fax{"fax", "-", "--now", "2026-03-09T14:05", "--to", "Ann=1", "--output", "-"};
    const std::string letter = "%!PS\nshowpage\n";
    const auto german = driver(fax, letter);
    language = "";
    const auto english = driver(fax, letter);
    EXPECT_THAT(english.output, HasSubstr("%%Title: (Standard input)"));
    EXPECT_EQ(german.output, english.output);
}

TEST_F(GermanJourney, ThePhonebookProgramSpeaksGerman)
{
    said({"phonebook", "add", "Ann", "1", "--file", path("book.xdb")});
    Request request;
    request.environment = {"LC_ALL=C.UTF-8", "LANGUAGE=de"};
    request.arguments = {build_paths::inStage("fennodial")};
    const auto refused = runProgram(request);
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.errors,
              "fennodial: geben Sie an, welches Telefonbuch geöffnet werden soll: fennodial -FP DATEI\n");
    request.arguments.emplace_back("--help");
    EXPECT_THAT(runProgram(request).output,
                StartsWith("Aufruf: fennodial -FP FILE\n\nÖffnet ein Telefonbuch der LAN-Fax-Komponente.\n"));
}

TEST_F(GermanJourney, AnInstallationBringsItsOwnCatalogues)
{
    // An empty folder of catalogues: the driver then speaks English, also when the program beside others
    // could speak German.
    std::filesystem::create_directory(home / "locale");
    EXPECT_THAT(driver({"script", "-"}, "press \"LanFax OK Button\"\n").errors,
                HasSubstr(":1: Button \"LanFax OK Button\" is not visible"));
}

TEST_F(GermanJourney, TheCLocaleIsEnglish)
{
    Request request;
    request.environment = {"LC_ALL=C", "LANGUAGE=de"};
    request.arguments = {build_paths::inStage("fennodial")};
    EXPECT_EQ(runProgram(request).errors, "fennodial: say which phonebook to open: fennodial -FP FILE\n");
}

} // namespace
} // namespace journeys
