// The phonebook command: what it prints, what it keeps, how it fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace journeys {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class PhonebookJourney : public Journey {
protected:
    Result phonebook(Arguments arguments, const std::string& input = {}) const
    {
        arguments.insert(arguments.begin(), "phonebook");
        return driver(arguments, input);
    }

    /// The output of a command that must succeed in silence.
    std::string output(const Arguments& arguments, const std::string& input = {}) const
    {
        const auto result = phonebook(arguments, input);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    std::string list() const { return output({"list"}); }
};

TEST_F(PhonebookJourney, EntriesAndGroupsAreAddedShownAndRemoved)
{
    EXPECT_EQ(list(), "");
    EXPECT_THAT(std::filesystem::exists(home / "db"), false);
    EXPECT_EQ(output({"add", "Anne Miller", "+1 555", "--organization", "Acme, Inc.", "--phone", "2",
                      "--email", "a@b"}),
              "added the entry \"Anne Miller\"\n");
    output({"add", "Zoë", "7"});
    EXPECT_EQ(output({"add-group", "Team", "Anne Miller", "Zoë"}), "added the group \"Team\"\n");
    EXPECT_EQ(list(), "Anne Miller  +1 555\nZoë          7\n[Team]       Anne Miller, Zoë\n");
    EXPECT_EQ(output({"show", "Anne Miller"}),
              "name: Anne Miller\nnumber: +1 555\norganization: Acme, Inc.\nphone: 2\nemail: a@b\n");
    EXPECT_EQ(output({"show", "[Team]"}), "group: Team\nmember: Anne Miller\nmember: Zoë\n");
    EXPECT_EQ(output({"list", "--format", "csv"}), "name,number,organization,phone,email,type,members\n"
                                                   "Anne Miller,+1 555,\"Acme, Inc.\",2,a@b,entry,\n"
                                                   "Zoë,7,,,,entry,\nTeam,,,,,group,\"Anne Miller,Zoë\"\n");
    EXPECT_EQ(output({"add", "Zoë", "8", "--replace"}), "replaced the entry \"Zoë\"\n");
    const auto removal = phonebook({"remove", "Zoë"});
    EXPECT_EQ(removal.output, "removed the entry \"Zoë\"\n");
    EXPECT_EQ(removal.errors, "quelm-driver: warning: the group \"Team\" still has the member \"Zoë\"\n");
    output({"remove", "[Team]"});
    EXPECT_EQ(list(), "Anne Miller  +1 555\n");
}

TEST_F(PhonebookJourney, WhatCannotBeDoneIsOneLine)
{
    output({"add", "Ann", "1"});
    const std::string longName(32, 'x');
    const auto expect = [this](int status, Arguments arguments, const std::string& words) {
        arguments.insert(arguments.begin(), "phonebook");
        expectFailure(driver(arguments), status, words);
    };
    // Texts that stand on the command line and cannot be what they stand for.
    expect(2, {"add", "A@n", "1"}, "\"@\"");
    expect(2, {"add", longName, "1"}, "31 are possible");
    expect(2, {"add", "Ann", "call me"}, "must not contain \"c\"");
    expect(2, {"add", "Bob", "2", "--phone", "none"}, "the phone number");
    expect(2, {"add", "Bob", "2", "--email", "a\nb"}, "e-mail address");
    expect(2, {"add", "Bob", "2", "--organization", "a\nb"}, "organization");
    expect(2, {"add", "Dr.enamel", "2"}, "mark of the record format");
    expect(2, {"add-group", "A@n", "Ann"}, "\"@\"");
    // What the phonebook and the files hold.
    expect(1, {"add", "Ann", "2"}, "already");
    expect(1, {"add-group", "Team", "Bob"}, "\"Bob\" is not in the phonebook");
    expect(1, {"show", "Bob"}, "no entry or group \"Bob\"");
    expect(1, {"remove", "Bob"}, "no entry or group \"Bob\"");
    expect(1, {"list", "--file", path("none.xdb")}, "no such file");
    expect(1, {"import", path("none.csv")}, "none.csv: cannot be read");
    EXPECT_EQ(list(), "Ann  1\n");
}

TEST_F(PhonebookJourney, WrongUsageIsStatusTwo)
{
    for (const auto& arguments : {Arguments{"phonebook"},
                                  {"phonebook", "dance"},
                                  {"phonebook", "add", "Ann"},
                                  {"phonebook", "add-group", "T"},
                                  {"phonebook", "list", "--format", "xml"},
                                  {"phonebook", "export", "a.txt"},
                                  {"phonebook", "export", "-"},
                                  {"phonebook", "list", "--shared", "a", "--file", "b"},
                                  {"phonebook", "add", "Ann", "1", "--shared", "b"},
                                  {"phonebook", "add", "Ann", "1", "--mailbox", "7"}})
        EXPECT_EQ(driver(arguments).status, 2) << arguments.back();
    EXPECT_THAT(files(), IsEmpty());
    for (const auto* action : {"list", "show", "add", "add-group", "remove", "import", "export"})
        EXPECT_THAT(output({action, "--help"}), HasSubstr("--file PHONEBOOK"));
}

TEST_F(PhonebookJourney, OtherPhonebooksAreNamed)
{
    const auto book = path("b c.xdb");
    output({"add", "Ann", "1", "--file", book});
    EXPECT_EQ(list(), "");
    EXPECT_EQ(output({"list", "--file", book}), "Ann  1\n");
    EXPECT_EQ(output({"list", "--shared", book}), "Ann  1\n");
    EXPECT_EQ(output({"show", "Ann", "--shared", book}), "name: Ann\nnumber: 1\n");
}

TEST_F(PhonebookJourney, WhatIsExportedIsImportedAsItWas)
{
    output({"add", "Zoë", "1", "--organization", "a, \"b\"; c\\n"});
    output({"add", "Zoë - home", "2", "--organization", "a, \"b\"; c\\n"});
    output({"add-group", "Team", "Zoë - home"});
    const auto before = output({"list", "--format", "csv"});
    for (const auto& format : {Arguments{"x.vcf", "vcard3"}, {"x.vcf", "vcard4"}, {"x.csv", "csv"}}) {
        const auto file = path(format[0]);
        EXPECT_EQ(output({"export", file, "--format", format[1]}), file + ": 2 entries, 1 group\n");
        EXPECT_EQ(output({"export", "-", "--format", format[1]}), content(format[0]));
        const auto book = path(format[1] + ".xdb");
        EXPECT_EQ(output({"import", file, "--file", book}), file + ": 3 added, 0 merged, 0 refused\n");
        EXPECT_EQ(output({"list", "--format", "csv", "--file", book}), before);
        EXPECT_EQ(output({"import", "-", "--file", book}, content(format[0])),
                  "standard input: 0 added, 3 merged, 0 refused\n");
    }
}

TEST_F(PhonebookJourney, ABadFileImportsNothingAndNamesItsLines)
{
    output({"add", "Ann", "1"});
    const auto file = this->file("in.csv", "name,number\nAnn,2\nB@b,3\nCid\n");
    const auto result = phonebook({"import", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                AllOf(StartsWith("quelm-driver: " + file + ":3: \"B@b\": The Name must not contain \"@\""),
                      HasSubstr("\nquelm-driver: " + file + ":4: has 1 fields"),
                      HasSubstr("\nquelm-driver: " + file + ": nothing was imported")));
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 3);
    EXPECT_EQ(list(), "Ann  1\n");
    const auto skipped = phonebook({"import", file, "--skip-bad"});
    EXPECT_EQ(skipped.status, 0);
    EXPECT_EQ(skipped.output, file + ": 0 added, 1 merged, 2 refused\n");
    EXPECT_EQ(list(), "Ann  2\n");
}

TEST_F(PhonebookJourney, AHundredThousandEntriesAreImported)
{
    std::string text = "name,number,organization\n";
    for (int i = 0; i < 100000; ++i)
        text += "Person " + std::to_string(i) + ",555-" + std::to_string(i) + ",Acme\n";
    const auto file = this->file("many.csv", text);
    EXPECT_EQ(output({"import", file}), file + ": 100000 added, 0 merged, 0 refused\n");
    Request request;
    request.arguments = {"phonebook", "list"};
    request.outputFile = path("list.txt");
    EXPECT_EQ(driver(request).status, 0);
    EXPECT_THAT(content("list.txt"), EndsWith("\nPerson 99999  555-99999\n"));
}

TEST_F(PhonebookJourney, TheDialogListsWhatTheCommandAdds)
{
    output({"add", "Zoë", "1", "--organization", "Acme"});
    output({"add-group", "Team", "Zoë"});
    const auto answers =
        script({"call T40InvokeFaxDialog", "press AddPBFaxRcpt", "rows \"Fax PB List\"",
                "select \"Fax PB List\" 1", "press \"Add Button\"", "rows \"Fax Cur Recipient List\""});
    EXPECT_THAT(answers,
                ElementsAre("ok", "ok", "rows \"Fax PB List\" 2", "row 0 \"Zoë\" \"1\" \"\" \"\" \"\" \"\"",
                            "row 1 \"[Team]\" \"\" \"\" \"\" \"\" \"\"", "ok", "ok",
                            "rows \"Fax Cur Recipient List\" 1",
                            "row 0 \"Zoë\" \"1\" \"Acme\" \"\" \"\" \"\""));
}

TEST_F(PhonebookJourney, TheCommandListsWhatTheDialogSaves)
{
    script({"call T40InvokeFaxDialog", "press AddFaxRcpt", "type RecipientName \"Zoë\"",
            "type RecipientNumber \"(555) 1\"", "type RecipientOrganization \"Acme, \\\"East\\\"\"",
            "type RecipientTelNumber \"2\"", "type RecipientEmailAddr \"z@x\"", "tick AddtoPersonalPB on",
            "press \"LanFaxAddRcpt OK Button\"", "press \"LanFax Save Group Button\"",
            "type \"LanFaxAddGroup Group Name\" \"Team\"", "press \"LanFaxAddGroup Ok Button\""});
    EXPECT_EQ(output({"list", "--format", "csv"}), "name,number,organization,phone,email,type,members\n"
                                                   "Zoë,(555) 1,\"Acme, \"\"East\"\"\",2,z@x,entry,\n"
                                                   "Team,,,,,group,Zoë\n");
}

} // namespace
} // namespace journeys
