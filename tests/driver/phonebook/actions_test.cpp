// Actions on phonebooks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/actions.h"

#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using test::failureLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const PhonebookEntry ann{"Ann", "1", "", "", ""};

class ActionsTest : public test::PhonebookTest {};

TEST_F(ActionsTest, AddMakesThePhonebookAndTidies)
{
    EXPECT_EQ(addEntry(place, {" Ann ", " 1", "", "", ""}, false).done, "added the entry \"Ann\"\n");
    EXPECT_THAT(contents(), ElementsAre(RecordContent(ann)));
}

TEST_F(ActionsTest, AddRefusesAKnownNameUnlessItReplaces)
{
    fill({ann, {"Bob", "2", "", "", ""}});
    const PhonebookEntry moved{"Ann", "9", "", "", ""};
    EXPECT_EQ(failureLine([&] { addEntry(place, moved, false); }),
              "the entry \"Ann\" is in the phonebook already; remove it first, or say --replace");
    EXPECT_EQ(addEntry(place, moved, true).done, "replaced the entry \"Ann\"\n");
    EXPECT_EQ(list(), "Ann  9\nBob  2\n");
}

TEST_F(ActionsTest, AnUnacceptableEntryMakesNoPhonebook)
{
    EXPECT_THAT(failureLine([&] {
                    addEntry(place, {"A@n", "1", "", "", ""}, false);
                }),
                HasSubstr("must not contain \"@\""));
    EXPECT_THAT(failureLine([&] {
                    addEntry(place, {"Ann", "", "", "", ""}, false);
                }),
                HasSubstr("fax number is missing"));
    EXPECT_THAT(failureLine([&] { addGroup(place, {"Team", {"Ann"}}, false); }), HasSubstr("no such file"));
    EXPECT_FALSE(exists());
}

TEST_F(ActionsTest, AGroupsMembersHaveToBeThere)
{
    fill({ann});
    EXPECT_EQ(addGroup(place, {"Team", {"Ann"}}, false).done, "added the group \"Team\"\n");
    EXPECT_EQ(failureLine([&] {
                  addGroup(place, {"Team", {"Ann", "Bob"}}, true);
              }),
              "\"Team\": the member \"Bob\" is not in the phonebook; add it first");
    EXPECT_THAT(failureLine([&] { addGroup(place, {"Team", {"Ann"}}, false); }), HasSubstr("already"));
    EXPECT_THAT(failureLine([&] { addGroup(place, {"Team", {" "}}, false); }), HasSubstr("no member"));
    EXPECT_EQ(list(), "Ann     1\n[Team]  Ann\n");
}

TEST_F(ActionsTest, RemoveTakesWhatIsNamedAndWarnsOfItsGroups)
{
    fill({ann}, {{"Ann", {"Ann"}}, {"Team", {"Ann"}}});
    EXPECT_EQ(removeItem(place, "[Ann]").done, "removed the group \"Ann\"\n");
    const auto outcome = removeItem(place, "Ann");
    EXPECT_EQ(outcome.done, "removed the entry \"Ann\"\n");
    EXPECT_THAT(outcome.warnings, ElementsAre("the group \"Team\" still has the member \"Ann\""));
    EXPECT_EQ(list(), "[Team]  Ann\n");
    EXPECT_THAT(failureLine([&] { removeItem(place, "Ann"); }),
                HasSubstr("there is no entry or group \"Ann\""));
}

TEST_F(ActionsTest, AnUnreadableRecordIsMarkedAndCanBeRemoved)
{
    fill({ann});
    addRecord("uBad", ".snam\r\n\r\n.enam\r\n");
    const auto listed = listPhonebook(place, false);
    EXPECT_EQ(listed.done, "Ann  1\nBad  (unreadable: its field \"name\" is blank)\n");
    EXPECT_THAT(listed.warnings, IsEmpty());
    EXPECT_THAT(listPhonebook(place, true).warnings, ElementsAre(HasSubstr("\"Bad\" is left out")));
    EXPECT_EQ(removeItem(place, "Bad").done, "removed the unreadable record \"Bad\"\n");
    EXPECT_THAT(listPhonebook(place, true).warnings, IsEmpty());
}

TEST_F(ActionsTest, AMemberWhoseRecordCannotBeReadIsNone)
{
    addRecord("uBad", ".susg\r\n0\r\n.eusg\r\n.snam\r\n \r\n.enam\r\n");
    EXPECT_THAT(failureLine([&] {
                    addGroup(place, {"Team", {"Bad"}}, false);
                }),
                HasSubstr("the member \"Bad\" is not in the phonebook"));
}

TEST_F(ActionsTest, AnUnreadableRecordCanBeReplacedByAGoodOne)
{
    addRecord("uBad", ".susg\r\n0\r\n.eusg\r\n.snam\r\nBad\r\n.enam\r\n.scmp\r\n \r\n.ecmp\r\n");
    fill({ann});
    const PhonebookEntry good{"Bad", "7", "", "", ""};
    EXPECT_THAT(failureLine([&] { addEntry(place, good, false); }), HasSubstr("is in the phonebook already"));
    addEntry(place, good, true);
    EXPECT_EQ(list(), "Bad  7\nAnn  1\n");
}

TEST_F(ActionsTest, ShowsAndListsAsCsv)
{
    fill({ann});
    EXPECT_EQ(showItem(place, "Ann").done, "name: Ann\nnumber: 1\n");
    EXPECT_EQ(listPhonebook(place, true).done,
              "name,number,organization,phone,email,type,members\nAnn,1,,,,entry,\n");
    EXPECT_THAT(failureLine([&] { showItem(place, "Bob"); }), HasSubstr("no entry or group \"Bob\""));
}

TEST_F(ActionsTest, ExportsWholeFilesAndCounts)
{
    fill({ann, {"Bob", "2", "", "", ""}}, {{"Team", {"Ann"}}});
    EXPECT_EQ(exportFile(place, folder / "o.csv", FileFormat::csv).done,
              folder / "o.csv" + ": 2 entries, 1 group\n");
    EXPECT_EQ(contentOf(folder / "o.csv"), exportText(place, FileFormat::csv).done);
    EXPECT_THAT(exportText(place, FileFormat::vcard3).done, HasSubstr("VERSION:3.0\r\n"));
    EXPECT_THAT(exportText(place, FileFormat::vcard4).done, HasSubstr("VERSION:4.0\r\n"));
    EXPECT_THAT(failureLine([&] { exportFile(place, folder / "none/o", FileFormat::csv); }),
                HasSubstr("none/o"));
    EXPECT_THAT(folder.names(), ElementsAre("book.xdb", "o.csv"));
}

TEST_F(ActionsTest, ThePhonebookIsNotExportedOntoItself)
{
    fill({ann});
    const auto before = contentOf(place.path);
    std::filesystem::create_symlink(place.path, folder / "link.csv");
    for (const auto& file : {place.path, folder / "link.csv"})
        EXPECT_THAT(failureLine([&] { exportFile(place, file, FileFormat::csv); }),
                    HasSubstr("is the phonebook itself"));
    EXPECT_EQ(contentOf(place.path), before);
}

TEST_F(ActionsTest, ReadingNeedsNoRightToWrite)
{
    fill({ann});
    giveToOrdinaryUser(place.path);
    std::filesystem::permissions(place.path, std::filesystem::perms::owner_read);
    EXPECT_EQ(inProcess([this] {
                  becomeOrdinaryUser();
                  return list() == "Ann  1\n" ? 7 : 1;
              }),
              7);
    EXPECT_EQ(inProcess([this] {
                  becomeOrdinaryUser();
                  try {
                      removeItem(place, "Ann");
                  } catch (const Error& error) {
                      return std::string(error.what()).find("may not be written") != std::string::npos ? 7
                                                                                                       : 2;
                  }
                  return 1;
              }),
              7);
}

TEST(FormatByName, GoesByTheEnding)
{
    EXPECT_EQ(formatByName("a.csv"), FileFormat::csv);
    EXPECT_EQ(formatByName("/x.y/A.VCF"), FileFormat::vcard4);
    for (const auto* file : {"csv", "a.txt", "a.csv/b", "", ".vcf"})
        EXPECT_EQ(formatByName(file), std::nullopt) << file;
}

} // namespace
} // namespace quelm
