// The menu, typed at.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/menu.h"

#include "tests/driver/phonebook/phonebook_folder.h"

#include <sstream>

namespace quelm {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class MenuTest : public test::PhonebookTest {
protected:
    MenuTest() { fill({{"Ann", "1", "", "", ""}}); }

    /// What the menu says to these lines, behind its greeting.
    std::string typed(const std::string& lines)
    {
        std::istringstream input(lines);
        std::ostringstream output;
        Menu(place, input, output).run();
        const auto text = output.str();
        const auto prompt = text.find("> ");
        greeting = text.substr(0, prompt);
        return text.substr(prompt);
    }

    std::string greeting;
};

TEST_F(MenuTest, GreetsListsAndQuits)
{
    EXPECT_EQ(typed("list\nquit\nlist\n"), "> Ann  1\n> ");
    EXPECT_THAT(greeting, StartsWith("Phonebook " + place.path + ": 1 entry, 0 groups\n"));
    EXPECT_THAT(greeting, HasSubstr("import FILE"));
}

TEST_F(MenuTest, EndsWithTheInput) { EXPECT_EQ(typed(""), "> \n"); }

TEST_F(MenuTest, AddsAnEntryFieldByField)
{
    EXPECT_THAT(typed("add\n Zoë \n+1 555\nAcme\n2\nz@x\nq\n"), HasSubstr("added the entry \"Zoë\""));
    EXPECT_EQ(contents().back(), RecordContent(PhonebookEntry{"Zoë", "+1 555", "Acme", "2", "z@x"}));
}

TEST_F(MenuTest, AskedInTheMiddleAndLeftItSavesNothing)
{
    typed("add\nBob\n2\n");
    typed("add group\nTeam\nAnn\n");
    typed("remove Ann\n");
    EXPECT_EQ(list(), "Ann  1\n");
}

TEST_F(MenuTest, AsksBeforeItReplacesOrRemoves)
{
    EXPECT_THAT(typed("add\nAnn\n9\n\n\n\nn\n"), HasSubstr("Replace it? [y/n] nothing was changed"));
    EXPECT_THAT(typed("remove Ann\nwhat\n"),
                HasSubstr("Remove the entry \"Ann\"? [y/n] nothing was changed"));
    EXPECT_EQ(list(), "Ann  1\n");
    EXPECT_THAT(typed("add\nAnn\n9\n\n\n\ny\n"), HasSubstr("replaced the entry \"Ann\""));
    EXPECT_EQ(list(), "Ann  9\n");
    EXPECT_THAT(typed("remove Ann\nyes\n"), HasSubstr("removed the entry \"Ann\""));
    EXPECT_EQ(list(), "");
}

TEST_F(MenuTest, MarksWhatCannotBeReadAndRepairsIt)
{
    addRecord("uBob", ".susg\r\n0\r\n.eusg\r\n.scmp\r\n \r\n.ecmp\r\n");
    addRecord("uCid", ".snam\r\nCid");
    EXPECT_THAT(typed("list\n"), HasSubstr("Ann  1\nBob  (unreadable: its field \"organization\" is blank)\n"
                                           "Cid  (unreadable: its field \"name\" has no end)\n"));
    EXPECT_THAT(typed("add\nBob\n2\n\n\n\ny\n"), HasSubstr("replaced the entry \"Bob\""));
    EXPECT_THAT(typed("remove Cid\ny\n"), HasSubstr("removed the unreadable record \"Cid\""));
    EXPECT_EQ(list(), "Ann  1\nBob  2\n");
}

TEST_F(MenuTest, AddsAGroupMemberByMember)
{
    EXPECT_THAT(typed("add group\nTeam\nAnn\n\nshow [Team]\n"),
                HasSubstr("added the group \"Team\"\n> group: Team\nmember: Ann\n"));
}

TEST_F(MenuTest, WhatCannotBeDoneIsSaidAndTheMenuGoesOn)
{
    const auto said =
        typed("dance\nshow\nshow Bob\nremove\nremove Bob\nadd\nA@n\n1\n\n\n\nimport\nimport none.csv\n"
              "import -\nexport\nexport x.txt\nshowing\n\nadd group\nTeam\nBob\n\nlist\n");
    for (const auto* line : {"there is no command \"dance\"; help lists what there is", "say show NAME",
                             "no entry or group \"Bob\"", "say remove NAME", "must not contain \"@\"",
                             "say import FILE", "none.csv: cannot be read", "name a file to import",
                             "say export FILE", "x.txt: ends in none of .vcf, .csv and .ldif",
                             "there is no command \"showing\"", "the member \"Bob\" is not in the phonebook"})
        EXPECT_THAT(said, HasSubstr(line));
    EXPECT_THAT(said, EndsWith("> Ann  1\n> \n"));
}

TEST_F(MenuTest, ImportsAndExports)
{
    const auto file = writeFile(folder / "a b.csv", "name,number\nBob,2\n");
    EXPECT_THAT(typed("import " + file + "\nexport " + (folder / "out.vcf") + "\n"),
                testing::AllOf(HasSubstr(": 1 added, 0 merged"), HasSubstr("out.vcf: 2 entries, 0 groups")));
    EXPECT_THAT(contentOf(folder / "out.vcf"), HasSubstr("FN:Bob"));
}

TEST_F(MenuTest, AsksWhetherTheRestOfABadFileIsWanted)
{
    const auto file = writeFile(folder / "in.csv", "name,number\nBob,2\nB@d,3\n");
    EXPECT_THAT(typed("import " + file + "\nn\nn\n"), HasSubstr("in.csv:3: \"B@d\": The Name must not"));
    EXPECT_EQ(list(), "Ann  1\n");
    EXPECT_THAT(typed("import " + file + "\nn\ny\n"), HasSubstr("1 added, 0 merged, 1 refused"));
    EXPECT_EQ(list(), "Ann  1\nBob  2\n");
}

TEST_F(MenuTest, OffersOtherNamesForThoseThatAreNotAllowed)
{
    const auto file = writeFile(folder / "in.csv", "name,number\nBob,2\nB@d,3\nCid,none\n");
    EXPECT_THAT(typed("import " + file + "\ny\nn\n"),
                HasSubstr("under such names? [y/n] " + file + ":4: the fax number: "));
    EXPECT_EQ(list(), "Ann  1\n");
    EXPECT_THAT(
        typed("import " + file + "\ny\ny\n"),
        testing::AllOf(HasSubstr("2 added, 0 merged, 1 refused"), HasSubstr("\"B@d\" becomes \"B d\"")));
    EXPECT_EQ(list(), "Ann  1\nBob  2\nB d  3\n");
    EXPECT_THAT(typed("import " + file + "\n"), EndsWith("under such names? [y/n] > \n"));
}

TEST_F(MenuTest, AnImportTakesTheOptionsOfTheCommand)
{
    const auto file = writeFile(folder / "in.csv", "Name;Fax\nB@d;555\n");
    EXPECT_THAT(typed("import --rename --separator ; --dry-run " + file + "\nimport --rename\n"),
                testing::AllOf(HasSubstr("\"B@d\" becomes \"B d\""), HasSubstr("this was a dry run"),
                               HasSubstr("name a file to import")));
    EXPECT_EQ(list(), "Ann  1\n");
    EXPECT_THAT(typed("import --rename " + file + "\n"), HasSubstr("1 added"));
    EXPECT_EQ(list(), "Ann  1\nB d  555\n");
}

TEST_F(MenuTest, APhonebookThatCannotBeReadIsAnError)
{
    place.path = folder / "none.xdb";
    EXPECT_THAT(test::failureLine([&] { typed(""); }), HasSubstr("no such file"));
}

} // namespace
} // namespace quelm
