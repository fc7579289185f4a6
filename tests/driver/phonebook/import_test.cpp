// Imports: all or nothing, counted, and told line by line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/import.h"

#include "tests/driver/phonebook/phonebook_folder.h"

#include <csignal>

namespace quelm {
namespace {

using test::failureLine;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

class ImportTest : public test::PhonebookTest {
protected:
    ImportReport import(const std::string& text, bool skipBad = false)
    {
        ImportOptions options;
        options.skipBad = skipBad;
        return importFile(place, writeFile(folder / "in", text), options);
    }
};

TEST_F(ImportTest, MakesThePhonebookAndCounts)
{
    const auto report = import("name,number\nAnn,1\nBob,2\n");
    EXPECT_TRUE(report.accepted);
    EXPECT_EQ(list(), "Ann  1\nBob  2\n");
    EXPECT_EQ(importSummary(report), folder / "in" + ": 2 added, 0 merged, 0 refused\n");
}

TEST_F(ImportTest, AKnownNameIsReplacedInItsPlace)
{
    fill({{"Ann", "1", "Acme", "", ""}, {"Bob", "2", "", "", ""}});
    const auto report = import("name,number\nCid,3\nAnn,9\n");
    EXPECT_EQ(report.added, 1U);
    EXPECT_EQ(report.merged, 1U);
    EXPECT_EQ(list(), "Ann  9\nBob  2\nCid  3\n");
}

TEST_F(ImportTest, AnythingRefusedMeansNothingIsWritten)
{
    fill({{"Ann", "1", "", "", ""}});
    const auto before = contentOf(place.path);
    const auto report = import("name,number\nAnn,2\nB@b,3\nCid\nDee,4\n");
    EXPECT_FALSE(report.accepted);
    EXPECT_EQ(contentOf(place.path), before);
    EXPECT_THAT(refusalLines(report),
                ElementsAre(testing::StartsWith(folder / "in" + ":3: \"B@b\": The Name must not contain"),
                            folder / "in" + ":4: has 1 fields where the first line names 2"));
    EXPECT_EQ(importFailure(report), folder / "in" +
                                         ": nothing was imported, with 2 refused; --rename takes 1 of "
                                         "them under other names, --skip-bad leaves out what is refused");
    EXPECT_EQ(importFailure(import("name,number\nCid\nDee\n")),
              folder / "in" + ": nothing was imported, for 2 rows or cards are refused; mend "
                              "the file or leave them out with --skip-bad");
}

TEST_F(ImportTest, ALineBreakInAnyFieldIsRefusedWithItsLine)
{
    const std::string refused = ": the organization holds a line break or control character";
    const std::string good = "BEGIN:VCARD\nVERSION:3.0\nFN:Ann\nTEL;TYPE=fax:1\nEND:VCARD\n";
    const auto cards =
        import(good + "BEGIN:VCARD\nVERSION:3.0\nFN:Bob\nTEL;TYPE=fax:2\nORG:Acme\\n%%EOF\nEND:VCARD\n");
    EXPECT_FALSE(cards.accepted);
    EXPECT_THAT(refusalLines(cards), ElementsAre(folder / "in" + ":6" + refused));
    const auto rows = import("name,number,organization\nAnn,1,Acme\nBob,2,\"Acme\n@PJL\"\n");
    EXPECT_FALSE(rows.accepted);
    EXPECT_THAT(refusalLines(rows), ElementsAre(folder / "in" + ":3" + refused));
}

TEST_F(ImportTest, NoPhonebookIsMadeWhenNothingIsWritten)
{
    import("name,number\nA@n,1\n");
    import("BEGIN:VCARD\nVERSION:3.0\nFN:A\nEND:VCARD\n");
    EXPECT_FALSE(exists());
}

TEST_F(ImportTest, SkippingTheBadImportsTheRest)
{
    const auto report = import("name,number\nAnn,2\nB@b,3\nCid,4\n", true);
    EXPECT_TRUE(report.accepted);
    EXPECT_THAT(report.refused, SizeIs(1));
    EXPECT_EQ(list(), "Ann  2\nCid  4\n");
    EXPECT_THAT(importSummary(report), EndsWith(": 2 added, 0 merged, 1 refused\n"));
}

TEST_F(ImportTest, ANameThatStandsTwiceWithTwoNumbersIsRefusedTheSecondTime)
{
    const auto report = import("name,number,type,members\nAnn,1,,\nAnn,1,,\nAnn,2,,\nAnn,,group,Ann\n"
                               "Ann,,group,Bob\n",
                               true);
    EXPECT_THAT(
        refusalLines(report),
        ElementsAre(folder / "in" + ":4: \"Ann\" stands on line 2 with another number already; give one of "
                                    "them another name",
                    folder / "in" + ":6: \"Ann\" stands on line 5 with other members already; give one of "
                                    "them another name"));
    EXPECT_EQ(report.added, 2U);
    EXPECT_EQ(report.merged, 1U);
}

TEST_F(ImportTest, FormatsAreToldApartByContent)
{
    EXPECT_EQ(import("BEGIN:VCARD\nVERSION:4.0\nFN:Ann\nTEL;TYPE=fax:1\nEND:VCARD\n").added, 1U);
    EXPECT_EQ(import("name,number\nBob,2\n").added, 1U);
    for (const auto* text : {"", " \n"})
        EXPECT_THAT(failureLine([&] { import(text); }),
                    HasSubstr("is empty; give a CSV, vCard or LDIF file"));
    EXPECT_THAT(failureLine([&] { import("%PDF-1.4\n"); }), HasSubstr(":1: unknown column \"%PDF-1.4\""));
    EXPECT_THAT(failureLine([&] { importFile(place, folder / "none", {}); }),
                HasSubstr("none: cannot be read"));
    EXPECT_THAT(failureLine([&] { importFile(place, folder.path().string(), {}); }),
                HasSubstr("cannot be read"));
}

TEST_F(ImportTest, TellsWhatIsLeftOut)
{
    const auto mailboxes = import("name,number,mailbox\nAnn,1,7\n");
    EXPECT_THAT(importSummary(mailboxes), EndsWith("\n1 mailbox was left out; phonebooks keep none\n"));
    const auto cards =
        import("BEGIN:VCARD\nVERSION:3.0\nFN:A\nEND:VCARD\nBEGIN:VCARD\nVERSION:3.0\nFN:B\nEND:VCARD\n");
    EXPECT_THAT(importSummary(cards),
                EndsWith("0 refused\n2 people without a fax number were passed over\n"));
}

TEST_F(ImportTest, WarnsOfMembersThatNoEntryStandsFor)
{
    fill({{"Ann", "1", "", "", ""}});
    const auto report = import("name,number,type,members\nTeam,,group,\"Ann,Bob,Gone\"\nBob,2,,\n");
    EXPECT_TRUE(report.accepted);
    EXPECT_THAT(report.strayMembers,
                ElementsAre("the group \"Team\" has the member \"Gone\", which is not in the phonebook"));
}

TEST_F(ImportTest, AHundredSuchMembersAreToldAndTheRestCounted)
{
    std::string members;
    for (int i = 0; i < 103; ++i)
        members += "Gone " + std::to_string(i) + ",";
    const auto report = import("name,number,type,members\nTeam,,group,\"" + members + "\"\n");
    ASSERT_THAT(report.strayMembers, SizeIs(101));
    EXPECT_EQ(report.strayMembers.back(), "3 more members are not in the phonebook");
}

TEST_F(ImportTest, AHundredRefusalsAreToldAndTheRestCounted)
{
    std::string text = "name,number\n";
    for (int i = 0; i < 103; ++i)
        text += "Ann\n";
    const auto lines = refusalLines(import(text));
    ASSERT_THAT(lines, SizeIs(101));
    EXPECT_EQ(lines.back(), folder / "in" + ": 3 more are refused");
}

TEST_F(ImportTest, AnInterruptedImportLeavesThePhonebookAsItWas)
{
    fill({{"Ann", "1", "", "", ""}});
    const auto before = contentOf(place.path);
    std::string text = "name,number\n";
    for (int i = 0; i < 5000; ++i)
        text += "Person " + std::to_string(i) + "," + std::to_string(i) + "\n";
    writeFile(folder / "in", text);
    for (const std::size_t when : {1U, 4999U, 5000U}) {
        EXPECT_EQ(inProcess([&] {
                      ImportOptions options;
                      options.progress = [when](std::size_t done, std::size_t) {
                          if (done == when)
                              std::raise(SIGINT);
                      };
                      importFile(place, folder / "in", options);
                      return 0;
                  }),
                  128 + SIGINT);
        EXPECT_EQ(contentOf(place.path), before);
        EXPECT_THAT(folder.names(), ElementsAre("book.xdb", "in"));
    }
}

TEST_F(ImportTest, AFailingPhonebookIsNamed)
{
    writeFile(place.path, "no phonebook");
    EXPECT_THAT(failureLine([&] { import("name,number\nAnn,1\n"); }),
                HasSubstr("book.xdb\" cannot be opened"));
    EXPECT_EQ(contentOf(place.path), "no phonebook");
    place.path = folder / "none/book.xdb";
    EXPECT_THAT(failureLine([&] { import("name,number\nAnn,1\n"); }), HasSubstr("book.xdb"));
}

TEST_F(ImportTest, ProgressCountsToTheEnd)
{
    std::vector<std::size_t> steps;
    ImportOptions options;
    options.progress = [&](std::size_t done, std::size_t total) {
        steps.push_back(done);
        EXPECT_EQ(total, 2U);
    };
    importFile(place, writeFile(folder / "in", "name,number\nAnn,1\nBob,2\n"), options);
    EXPECT_THAT(steps, ElementsAre(1U, 2U));
}

} // namespace
} // namespace quelm
