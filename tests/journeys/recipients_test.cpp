// Recipients from the command line and from CSV files, good and bad.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RecipientsJourney : public Journey {
protected:
    /// A job with this list must fail and write nothing.
    void expectRefusal(const std::string& text, const std::string& words) const
    {
        const auto list = file("list.csv", text);
        expectFailure(driver({"attributes", "--recipients", list}), 1, list + words);
        const auto letter = document("letter.ps", "Hello");
        expectFailure(driver({"fax", letter, "--recipients", list, "--output", path("out")}), 1,
                      list + words);
        EXPECT_THAT(files(), ElementsAre("letter.ps", "list.csv"));
    }
};

TEST_F(RecipientsJourney, AJobWithoutRecipientsIsRefused)
{
    expectFailure(driver({"attributes"}), 1, "no recipients");
    expectFailure(driver({"fax", document("letter.ps", "Hello"), "--output", path("out")}), 1,
                  "no recipients");
    EXPECT_FALSE(exists("out"));
}

TEST_F(RecipientsJourney, FiveThousandRecipientsGoIntoOneJob)
{
    std::ostringstream rows;
    rows << "name,number,organization,phone,email,mailbox\r\n";
    for (int i = 0; i < 5000; ++i)
        rows << "Person " << i << ",555-" << i << ",Acme,555-" << i << ",p" << i << "@acme.example,"
             << i % 1000 << "\r\n";
    const auto writes = attributes({"--recipients", file("list.csv", rows.str())});
    ASSERT_EQ(writes.size(), 5005U);
    for (int i = 0; i < 5000; ++i)
        EXPECT_EQ(writes[static_cast<std::size_t>(i) + 3],
                  "%%OID_ATT_FAX_DESTINATION_PHONE \"555" + std::to_string(i) +
                      "\";\r\n%%OID_ATT_FAX_MAILBOX \"" + std::to_string(i % 1000) + "\";\r\n");
}

TEST_F(RecipientsJourney, AListOfAnySpreadsheetIsTaken)
{
    const auto list =
        file("list.csv",
             "\xef\xbb\xbfmailbox,\"name\", number\r\n7,\"Zo\xc3\xab O'Neil-Smith Jr.\", (555) 1-2\r\n");
    EXPECT_THAT(attributeText({"--recipients", list}),
                HasSubstr("PHONE \"55512\";\r\n%%OID_ATT_FAX_MAILBOX \"7\";\r\n"));
}

TEST_F(RecipientsJourney, AListCanComeFromAPipe)
{
    const auto result = driver({"attributes", "--recipients", "-"}, "name,number\nAnn,12\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("PHONE \"12\""));
}

TEST_F(RecipientsJourney, ABadRowWritesNothingAndIsNamed)
{
    expectRefusal("name,number\nAnn,1\nBob\n", ":3: has 1 fields");
    expectRefusal("size,colour\nAnn,1\n", ":1: unknown column \"size\"");
    expectRefusal("name\nAnn\n", ":1: the column number is missing");
    expectRefusal("name,number\nAnn,\n", ":2: the fax number is missing");
    expectRefusal("name,number\n\"Ann,1\n", ":2: a quoted field is not closed");
    expectRefusal(std::string("name,number\nA\0,1\n", 17), ":2: holds a NUL byte");
    expectRefusal("name,number\nZo\u00eb,1\nAnn\xff,2\n\u7530\u4e2d,3\n", ":3: is not UTF-8");
    expectRefusal("", ":1: the first line must name the columns");
}

TEST_F(RecipientsJourney, ATextTooLongForTheDevicesFieldIsNamed)
{
    const std::string digits(47, '1');
    expectRefusal("name,number\nAnn,1\n" + std::string(32, 'x') + ",1\n", ":3: ");
    expectRefusal("name,number\nAnn," + digits + "\n", ":2: ");
    expectRefusal("name,number,organization\nAnn,1," + std::string(60, 'x') + "\n", ":2: ");
    expectRefusal("name,number,phone\nAnn,1," + digits + "\n", ":2: ");
    expectRefusal("name,number,email\nAnn,1," + std::string(60, 'x') + "\n", ":2: ");
    expectRefusal("name,number,mailbox\nAnn,1,12345\n", ":2: ");
}

TEST_F(RecipientsJourney, TextsAsLongAsTheDevicesFieldsAreTaken)
{
    std::string name;
    for (int i = 0; i < 31; ++i)
        name += "\xc3\xab";
    const auto list = file("list.csv", "name,number,organization,phone,email,mailbox\n" + name + "," +
                                           std::string(46, '1') + "," + std::string(59, 'o') + "," +
                                           std::string(46, '2') + "," + std::string(59, 'e') + ",1234\n");
    EXPECT_THAT(attributeText({"--recipients", list}), HasSubstr("PHONE \"" + std::string(46, '1') + "\""));
}

TEST_F(RecipientsJourney, WhatTheComponentRefusesIsTheErrorLine)
{
    expectRefusal("name,number\nAnn,1\nA@n,2\n", ":3: ");
    expectRefusal("name,number\nAnn,call me\n", ":2: ");
    expectFailure(driver({"attributes", "--to", "A@n=1"}), 2, "--to A@n=1: ");
    expectFailure(driver({"attributes", "--to", "Ann=none"}), 2, "--to Ann=none: ");
}

TEST_F(RecipientsJourney, APhoneNumberThatTheComponentWouldDropIsNamed)
{
    expectRefusal("name,number,phone\nAnn,1,home\n", ":2: the phone number \"home\" is not accepted");
}

TEST_F(RecipientsJourney, RecipientsGetIntoNoPhonebook)
{
    attributes({"--to", "Ann=1"});
    const auto answers = script({"call T40InvokeFaxDialog", "press AddPBFaxRcpt", "rows \"Fax PB List\""});
    EXPECT_EQ(answers.back(), "rows \"Fax PB List\" 0");
}

} // namespace
} // namespace journeys
