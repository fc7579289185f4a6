// Recipients from phonebooks: --entry, --group, --shared.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/journeys/phonebook_record.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class PhonebookRecipients : public Journey {
protected:
    PhonebookRecipients() { fill({}); }

    /// Puts Ann, Bob, Cid, Team (Bob, Ann) and All into a phonebook.
    void fill(const Arguments& where) const
    {
        phonebook({"import", "-"}, where,
                  "name,number,type,members\nAnn,1,,\nBob,2,,\nTeam,,group,\"Bob,Ann\"\nCid,3,,\n"
                  "Broken,,group,\"Ann,Gone\"\n");
    }

    void phonebook(Arguments arguments, const Arguments& more, const std::string& input = {}) const
    {
        arguments.insert(arguments.begin(), "phonebook");
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(driver(arguments, input).status, 0);
    }

    /// Puts a record that no dialog would write into the user's phonebook.
    void addRecord(const std::string& key, const std::string& data) const
    {
        journeys::addRecord(home / "db/phonebook/user/ann.xdb", key, data);
    }

    /// The numbers that a job with these options goes to.
    std::vector<std::string> numbers(const Arguments& options) const
    {
        std::vector<std::string> all;
        for (const auto& write : attributes(options)) {
            const std::string mark = "FAX_DESTINATION_PHONE \"";
            if (const auto at = write.find(mark); at != std::string::npos)
                all.push_back(
                    write.substr(at + mark.size(), write.find('"', at + mark.size()) - at - mark.size()));
        }
        return all;
    }

    void expectRefusal(Arguments options, int status, const std::string& words) const
    {
        options.insert(options.begin(), "attributes");
        expectFailure(driver(options), status, words);
    }
};

TEST_F(PhonebookRecipients, EntriesAndGroupsGoIntoTheJob)
{
    EXPECT_THAT(numbers({"--entry", "Cid"}), ElementsAre("3"));
    EXPECT_THAT(numbers({"--group", "Team"}), ElementsAre("2", "1"));
    EXPECT_THAT(numbers({"--group", "Team", "--entry", "Cid", "--to", "Zoë=9"}),
                ElementsAre("9", "3", "2", "1"));
    EXPECT_THAT(numbers({"--entry", "Cid", "--entry", "Ann"}), ElementsAre("3", "1"));
}

TEST_F(PhonebookRecipients, ANameOfAPhonebookCanBeTypedToo)
{
    for (const std::string name :
         {"Gal\u00b7la Plac\u00eddia",
          "\u05d2\u05f3\u05d5\u05e8\u05d2\u05f3 \u05d1\u05df\u05be\u05d3\u05d5\u05d3",
          "\u0639\u0644\u06cc\u200c\u0631\u0636\u0627", "\u5c71\u7530\u3000\u592a\u90ce",
          "\u30b8\u30e7\u30f3\u30fb\u30b9\u30df\u30b9", "Jean\u2011Luc", "O`Brien"}) {
        phonebook({"add", name, "55"}, {});
        EXPECT_THAT(numbers({"--entry", name}), ElementsAre("55")) << name;
        EXPECT_THAT(numbers({"--to", name + "=56"}), ElementsAre("56")) << name;
    }
}

TEST_F(PhonebookRecipients, AFaxGoesToAGroup)
{
    const auto result =
        driver({"fax", document("letter.ps", "Hello"), "--group", "Team", "--output", path("out")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("for 2 recipients"));
    EXPECT_THAT(content("out"), HasSubstr("PHONE \"2\""));
}

TEST_F(PhonebookRecipients, ASharedPhonebookIsNamed)
{
    const auto book = path("of others.xdb");
    phonebook({"add", "Dee", "4"}, {"--file", book});
    const auto before = content("of others.xdb");
    EXPECT_THAT(numbers({"--shared", book, "--entry", "Dee"}), ElementsAre("4"));
    EXPECT_EQ(content("of others.xdb"), before);
    expectRefusal({"--shared", book, "--entry", "Ann"}, 1, "--entry Ann: is no entry of the phonebook");
    expectRefusal({"--shared", path("none.xdb"), "--entry", "Ann"}, 1, "none.xdb\" cannot be opened");
    expectRefusal({"--shared", file("text", "no phonebook"), "--entry", "Ann"}, 1, "no phonebook");
    expectRefusal({"--shared", book}, 2, "--shared needs --entry or --group");
}

TEST_F(PhonebookRecipients, WhatIsNotThereIsNamedAndNothingIsWritten)
{
    const auto letter = document("letter.ps", "Hello");
    for (const auto& [options, words] :
         {std::pair<Arguments, std::string>{{"--entry", "Zed"}, "--entry Zed: is no entry of the phonebook"},
          {{"--entry", "Team"}, "--entry Team: is no entry"},
          {{"--group", "Ann"}, "--group Ann: is no group"},
          {{"--entry", "Ann", "--group", "Broken"},
           "--group Broken: its member \"Gone\" is not in the phonebook"}}) {
        expectRefusal(options, 1, words);
        Arguments all{"fax", letter, "--output", path("out")};
        all.insert(all.end(), options.begin(), options.end());
        expectFailure(driver(all), 1, words);
    }
    EXPECT_FALSE(exists("out"));
}

TEST_F(PhonebookRecipients, AGroupThatCutsANameIsRefusedWhoeverElseHasWhatIsLeftOfIt)
{
    const auto letter = document("letter.ps", "Hello");
    addRecord("gCrew", ".sgen\r\n,uAnn, Mary,uBob\r\n.egen\r\n");
    addRecord("gGuests", ".sgen\r\n,uZed, Mary,uBob\r\n.egen\r\n");
    for (const auto& [group, name] :
         {std::pair<std::string, std::string>{"Crew", "Ann"}, {"Guests", "Zed"}}) {
        const auto words =
            "--group " + group + ": the name of a member ends at its comma and is cut to \"" + name + "\"";
        expectRefusal({"--group", group}, 1, words);
        expectFailure(driver({"fax", letter, "--group", group, "--dry-run"}), 1, words);
        expectFailure(driver({"fax", letter, "--group", group, "--output", path("out")}), 1, words);
    }
    EXPECT_FALSE(exists("out"));
    const auto picked = driver({"script", file("pick", "call T40InvokeFaxDialog\n"
                                                       "press \"AddPBFaxRcpt\"\n"
                                                       "rows \"Fax PB List\"\n"
                                                       "select \"Fax PB List\" 5\n"
                                                       "press \"Add Button\"\n"
                                                       "rows \"Fax Cur Recipient List\"\n")});
    EXPECT_EQ(picked.status, 0);
    EXPECT_THAT(picked.output, HasSubstr("rows \"Fax Cur Recipient List\" 2\nrow 0 \"Ann\" \"1\""));
    EXPECT_THAT(
        picked.errors,
        HasSubstr("the group \"Crew\" does not reach a member: the name ends at its comma and is cut to "
                  "\"Ann\"; the fax goes to the entry \"Ann\" instead"));
}

TEST_F(PhonebookRecipients, DuplicatesFollowThePolicy)
{
    const Arguments twice{"--to", "Ann=1", "--entry", "Ann", "--group", "Team"};
    const auto with = [&](const std::string& policy) {
        auto all = twice;
        all.insert(all.end(), {"--duplicates", policy});
        return all;
    };
    EXPECT_THAT(numbers(with("skip")), ElementsAre("1", "2"));
    EXPECT_THAT(numbers(with("add")), ElementsAre("1", "1", "2", "1"));
    expectRefusal(with("ask"), 1, "--entry Ann: this recipient is in the job already");
    Request request;
    request.arguments = twice;
    request.arguments.insert(request.arguments.begin(), "attributes");
    request.inputIsTerminal = true;
    request.input = "n\ny\n";
    const auto result = driver(request);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.writes.size(), 8U);
    EXPECT_THAT(result.errors, HasSubstr("[y/n]"));
}

TEST_F(PhonebookRecipients, ARecordWithoutARowMakesNobodyElseTheRecipient)
{
    addRecord("uNoEnd", ".snam\r\nNoEnd\r\n");
    phonebook({"add", "Dee", "4"}, {});
    phonebook({"add", "Eve", "5"}, {});
    const auto result = driver({"attributes", "--entry", "Dee", "--entry", "Eve"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(HasSubstr("PHONE \"4\""), HasSubstr("PHONE \"5\"")));
    EXPECT_THAT(driver({"phonebook", "list"}).output,
                HasSubstr("\nNoEnd     (unreadable: its field \"name\" has no end)\n"));
    const auto removal = driver({"phonebook", "remove", "NoEnd"});
    EXPECT_EQ(removal.output, "removed the unreadable record \"NoEnd\"\n");
    EXPECT_THAT(numbers({"--entry", "Dee", "--entry", "Eve"}), ElementsAre("4", "5"));
}

TEST_F(PhonebookRecipients, ARecordAtWhichTheDialogGivesUpIsNamed)
{
    // The component would list nothing; it is not shown that record.
    addRecord("uBlank", ".snam\r\n\r\n.enam\r\n");
    const auto result = driver({"attributes", "--entry", "Ann"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("PHONE \"1\""));
    EXPECT_EQ(
        result.errors,
        "quelm-driver: warning: the phonebook \"" + (home / "db/phonebook/user/ann.xdb").string() +
            "\" has 1 record that cannot be read and is left out, \"Blank\": its field \"name\" is blank; "
            "replace or remove it with quelm-driver phonebook\n");
}

} // namespace
} // namespace journeys
