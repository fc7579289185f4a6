// First lines of CSV files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_header.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using test::failureLine;
using testing::ElementsAre;
using testing::IsEmpty;

CsvHeader header(const std::vector<std::string>& names) { return readCsvHeader({1, names, ""}, "list.csv"); }

std::vector<CsvField> fields(const std::vector<std::string>& names)
{
    std::vector<CsvField> all;
    for (const auto& column : header(names).columns)
        all.push_back(column.field);
    return all;
}

TEST(CsvHeader, OurOwnNamesAreStrict)
{
    EXPECT_TRUE(header({"number", "name", "type", "members"}).isOurs);
    EXPECT_FALSE(header({"Number", "name"}).isOurs);
    EXPECT_FALSE(header({"name", "number", "Notes"}).isOurs);
}

TEST(CsvHeader, ColumnsOfOthersAreKnownWhateverTheirCapitalsAndMarks)
{
    EXPECT_THAT(fields({"FIRST NAME", "last_name", "Business-Fax", "E-mail Address", "Company"}),
                ElementsAre(CsvField::givenName, CsvField::familyName, CsvField::fax, CsvField::email,
                            CsvField::organization));
    EXPECT_THAT(
        fields({"Prénom", "Nom", "Télécopie (bureau)", "Téléphone (domicile)", "Société", "Catégories"}),
        ElementsAre(CsvField::givenName, CsvField::familyName, CsvField::fax, CsvField::phone,
                    CsvField::organization, CsvField::categories));
    // The accent is a character of its own.
    EXPECT_THAT(fields({"Nom", "Te\u0301le\u0301copie"}), ElementsAre(CsvField::familyName, CsvField::fax));
    EXPECT_EQ(header({"Name", "Fax privat"}).columns[1].use, Use::home);
    EXPECT_EQ(header({"Name", "Fax dienstlich"}).columns[1].use, Use::work);
}

TEST(CsvHeader, NumberedColumnsKnowTheirNumber)
{
    const auto read = header({"Name", "Phone 12 - Label", "Phone 12 - Value", "Phone 12", "Phone x - Value"});
    EXPECT_EQ(read.columns[1].field, CsvField::numberLabel);
    EXPECT_EQ(read.columns[2].field, CsvField::number);
    EXPECT_EQ(read.columns[2].index, 12U);
    EXPECT_THAT(read.leftOut, ElementsAre("Phone 12", "Phone x - Value"));
}

TEST(CsvHeader, TypesMembersAndNumbersOfOthersMeanSomethingElse)
{
    EXPECT_THAT(fields({"Name", "Fax", "Type", "Number"}),
                ElementsAre(CsvField::name, CsvField::fax, CsvField::none, CsvField::none));
    EXPECT_THAT(
        fields({"name", "number", "type", "members", "Notes"}),
        ElementsAre(CsvField::name, CsvField::fax, CsvField::type, CsvField::members, CsvField::none));
}

TEST(CsvHeader, AFirstRowOfPeopleIsRecognised)
{
    const auto list = header({"Ann", "555-1234", "Acme"});
    EXPECT_TRUE(list.isMissing);
    EXPECT_EQ(list.columns[2].field, CsvField::organization);
    EXPECT_TRUE(header({"+49 30 1234"}).isMissing);
    EXPECT_NE(failureLine([] { header({"Ann", "12"}); }), "");
}

TEST(CsvHeader, SaysWhatIsWrong)
{
    EXPECT_EQ(failureLine([] {
                  header({"Name", "Fax", "name"});
              }),
              "list.csv:1: the column name stands twice");
    EXPECT_EQ(failureLine([] {
                  header({"Name", "Phone"});
              }),
              "list.csv:1: the column number is missing; the first line names the columns");
    EXPECT_EQ(failureLine([] { readCsvHeader({3, {}, "is bad"}, "list.csv"); }), "list.csv:3: is bad");
}

TEST(CsvHeader, LabelsTellFaxesAndTheirUse)
{
    for (const auto* label : {"Work Fax", "_$!<HomeFAX>!$_", "Téléfax", "ファックス", "Рабочий факс"})
        EXPECT_TRUE(isFaxLabel(label)) << label;
    EXPECT_FALSE(isFaxLabel("Work"));
    EXPECT_EQ(useByLabel("_$!<HomeFAX>!$_"), Use::home);
    EXPECT_EQ(useByLabel("Fax (geschäftlich)"), Use::work);
    EXPECT_EQ(useByLabel("Fax"), Use::unmarked);
}

} // namespace
} // namespace quelm
