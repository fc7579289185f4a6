// People of CSV files of others.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_people.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

CsvPeople read(const std::string& text, std::optional<char> separator = std::nullopt)
{
    return readCsvPeople(text, "list.csv", separator);
}

const Person& personAt(const CsvPeople& people, std::size_t at)
{
    return std::get<CsvPerson>(people.rows.at(at)).person;
}

std::string nameIn(const std::string& text) { return personAt(read(text), 0).name; }

TEST(CsvPeople, ANameIsTheShownOneOrTheSpokenOneOrTheCompanys)
{
    EXPECT_EQ(nameIn("Display Name,First Name,Last Name,Fax\nAnn Lee,Ann,Lee,1\n"), "Ann Lee");
    EXPECT_EQ(nameIn("Last Name,First Name,Middle Name,Fax\nLee,Ann,B.,1\n"), "Ann B. Lee");
    EXPECT_EQ(nameIn("Vorname,Name,Fax\nAnn,Lee,1\n"), "Ann Lee");
    EXPECT_EQ(nameIn("Vorname,Name,Fax\nAnn,Ann Lee,1\n"), "Ann Lee");
    EXPECT_EQ(nameIn("Vorname,Nachname,Firma,Fax\n,,Acme,1\n"), "Acme");
    EXPECT_EQ(nameIn("Fax\n1\n"), "");
}

TEST(CsvPeople, RowsOfOthersMayLackTheirLastFieldsAndBlankOnesDoNotCount)
{
    const auto people = read("Name,Fax,Notes\nAnn,1\n,,\nBob,2,x,,\nCid,3,x,y\n");
    EXPECT_THAT(people.rows, SizeIs(2));
    EXPECT_THAT(people.refused, ElementsAre(Refusal{5, "has 4 fields where the first line names 3", false}));
    EXPECT_THAT(people.notes, ElementsAre("1 column is not used: Notes"));
}

TEST(CsvPeople, CategoriesArePartedAsTheirProgramDoes)
{
    EXPECT_THAT(personAt(read("Name,Fax,Categories\nAnn,1,\"A; B,C\"\n"), 0).categories,
                ElementsAre("A", "B", "C"));
    EXPECT_THAT(personAt(read("Name,Fax,Labels\nAnn,1,\"* myContacts ::: A, B ::: C\"\n"), 0).categories,
                ElementsAre("A, B", "C"));
}

TEST(CsvPeople, OurOwnTextsAreTakenAsTheyStand)
{
    const auto people = read("name,number,email\nAnn,1,a ::: b\n");
    EXPECT_THAT(personAt(people, 0).emails, SizeIs(1));
    EXPECT_THAT(personAt(read("Name,Fax,E-Mail\nAnn,1,a ::: b\n"), 0).emails, SizeIs(2));
}

TEST(CsvPeople, ASeparatorThatIsNamedCounts)
{
    EXPECT_EQ(personAt(read("name|number|x,y\nAnn|1|2,3\n", '|'), 0).name, "Ann");
    EXPECT_THAT(test::failureLine([] { read("name;number\n", ','); }), testing::HasSubstr("unknown column"));
}

TEST(CsvPeople, AListWithoutAFirstLineIsTold)
{
    const auto people = read("Ann,555-1\nBob,555-2\n");
    EXPECT_THAT(people.rows, SizeIs(2));
    EXPECT_THAT(people.notes, ElementsAre("the first line names no columns; they are read as name, number, "
                                          "organization, phone, email"));
    EXPECT_THAT(read("5551\n5552\n").notes,
                ElementsAre("the first line names no columns; all is read as fax numbers"));
}

} // namespace
} // namespace quelm
