// Tests of which attribute lines the driver lets through.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/attribute_lines.h"

#include "tests/driver/jobs/job_support.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using testing::HasSubstr;

JobRecipient someone(const std::string& number, const std::string& mailbox = {})
{
    JobRecipient recipient;
    recipient.type = 1;
    recipient.number = number;
    recipient.mailbox = mailbox;
    return recipient;
}

/// The lines of a job in parts, which tests change one by one.
struct Parts {
    std::string cover = "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n";
    std::string jobType = "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n";
    std::string confirmation = "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n";
    std::string resolution = "%%OID_ATT_FAX_RESOLUTION 0;\r\n";
    std::string speed = "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n";
    std::string destinations = "%%OID_ATT_FAX_DESTINATION_PHONE \"05551234\";\r\n"
                               "%%OID_ATT_FAX_DESTINATION_PHONE \"+49.30/7*#,\";\r\n"
                               "%%OID_ATT_FAX_MAILBOX \"aZ*#\";\r\n";
    std::string begin = "%%QLMbegin\r\n";
    std::string card;
    std::string end = "%%QLMend\r\n";

    std::string whole() const
    {
        return cover + jobType + confirmation + resolution + speed + destinations + begin + card + end;
    }
};

class AttributeLinesTest : public testing::Test {
protected:
    std::string problem(const std::string& lines) const
    {
        return errorLine([&] { checkAttributeLines(lines, expected); });
    }
    std::string problem() const { return problem(parts.whole()); }

    /// What the check says of the lines when `part` holds this.
    std::string with(std::string Parts::*part, const std::string& text)
    {
        Parts changed = parts;
        changed.*part = text;
        return problem(changed.whole());
    }

    Parts parts;
    ExpectedLines expected{Pdl::dsc, "", "", {someone("(0) 555-1234"), someone("+49.30/7*#,", "aZ*#")}};
};

TEST_F(AttributeLinesTest, EveryShapeThatTheComponentWritesPasses)
{
    EXPECT_EQ(problem(), "");
    EXPECT_EQ(with(&Parts::cover, "%%OID_ATT_FAX_COVER_SHEET TRUE;\r\n"), "");
    EXPECT_EQ(with(&Parts::confirmation, "%%OID_ATT_FAX_CONFIRMATION_SHEET FALSE;\r\n"), "");
    EXPECT_EQ(with(&Parts::confirmation, parts.jobType), "") << "the repeated line";
    for (const char* code : {"0", "1", "2"})
        EXPECT_EQ(with(&Parts::resolution, "%%OID_ATT_FAX_RESOLUTION " + std::string(code) + ";\r\n"), "");
    for (const char* speed : {"FORCED_4800", "14400", "AUTO"})
        EXPECT_EQ(
            with(&Parts::speed, "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_" + std::string(speed) + ";\r\n"),
            "");
    EXPECT_EQ(with(&Parts::resolution, ""), "") << "an option of an unknown value has no line";
    EXPECT_EQ(with(&Parts::speed, ""), "");
    expected.creditCard = "4111 1111-1111*#,1";
    EXPECT_EQ(with(&Parts::card, "%%OID_ATT_CREDIT_CARD \"4111 1111-1111*#,1\";\r\n"), "");
}

TEST_F(AttributeLinesTest, TheJobsCreditCardIsChargedAndNoOther)
{
    const std::string card = "%%OID_ATT_CREDIT_CARD \"4111\";\r\n";
    EXPECT_NE(with(&Parts::card, card), "") << "the job has none";
    expected.creditCard = "4111";
    EXPECT_EQ(with(&Parts::card, card), "");
    EXPECT_THAT(problem(), HasSubstr("do not charge the job's credit card"));
    for (const char* other : {"4112", "411", "41111", "4111 ", "4 111", ""}) {
        expected.creditCard = other;
        EXPECT_NE(with(&Parts::card, card), "") << other;
    }
}

TEST_F(AttributeLinesTest, PjlLinesPassInPjlModeAlone)
{
    const std::string lines = FakeFaxSession::attributeLines(Pdl::pjl);
    const ExpectedLines job{Pdl::pjl, "9", "4929", {someone("555-1234", "12")}};
    EXPECT_NO_THROW(checkAttributeLines(lines, job));
    EXPECT_NE(errorLine([&] { checkAttributeLines(lines, {Pdl::dsc, "9", "4929", job.recipients}); }), "");
    EXPECT_NE(errorLine([&] { checkAttributeLines(lines + "%%QLMbegin\r\n%%QLMend\r\n", job); }), "");
}

TEST_F(AttributeLinesTest, EveryLineHasItsPlace)
{
    EXPECT_THAT(problem(parts.jobType + parts.whole()), HasSubstr("\"%%OID_ATT_JOB_TYPE"));
    EXPECT_THAT(with(&Parts::cover, ""), HasSubstr("\"%%OID_ATT_JOB_TYPE"));
    EXPECT_THAT(with(&Parts::jobType, ""), HasSubstr("\"%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\""));
    EXPECT_THAT(with(&Parts::confirmation, ""), HasSubstr("\"%%OID_ATT_FAX_RESOLUTION"));
    EXPECT_THAT(with(&Parts::resolution, parts.speed), HasSubstr("\"%%OID_ATT_FAX_TYPE"));
    EXPECT_THAT(with(&Parts::begin, ""), HasSubstr("\"%%QLMend"));
    EXPECT_THAT(with(&Parts::end, ""), HasSubstr("end too early"));
    EXPECT_THAT(problem(parts.whole() + "%%OID_ATT_JOB_FAX_AFTER \"20240305210000\";\r\n"),
                HasSubstr("\"%%OID_ATT_JOB_FAX_AFTER"));
    EXPECT_THAT(problem(parts.whole() + " "), HasSubstr("\" \""));
}

TEST_F(AttributeLinesTest, EveryLineHasItsLineEnd)
{
    std::string lines = parts.whole();
    EXPECT_NE(with(&Parts::jobType, "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\r\n"), "");
    EXPECT_NE(with(&Parts::cover, "%%OID_ATT_FAX_COVER_SHEET FALSE;\n"), "");
    EXPECT_NE(with(&Parts::cover, "%%OID_ATT_FAX_COVER_SHEET FALSE;\r"), "");
    for (std::size_t size = 0; size < lines.size(); ++size)
        ASSERT_NE(problem(lines.substr(0, size)), "") << size;
}

TEST_F(AttributeLinesTest, NoByteCanBeChangedUnseen)
{
    const std::string lines = parts.whole();
    for (std::size_t at = 0; at < lines.size(); ++at) {
        for (const char byte : {'\0', '\n', '"', '9', 'x'}) {
            std::string changed = lines;
            if (changed[at] == byte)
                continue;
            changed[at] = byte;
            ASSERT_NE(problem(changed), "") << at;
        }
    }
}

TEST_F(AttributeLinesTest, ThereAreAsManyDestinationsAsRecipients)
{
    auto first = expected.recipients.front();
    expected.recipients.pop_back();
    EXPECT_THAT(problem(), HasSubstr("it has 1 recipient,"));
    expected.recipients = {first, expected.recipients.front(), first};
    EXPECT_NE(problem(), "");
    expected.recipients.clear();
    EXPECT_THAT(problem(), HasSubstr("it has 0 recipients,"));
}

TEST_F(AttributeLinesTest, DestinationsAreTheRecipientsOwnInTheirOrder)
{
    std::swap(expected.recipients[0], expected.recipients[1]);
    EXPECT_THAT(problem(), HasSubstr("\"%%OID_ATT_FAX_DESTINATION_PHONE \"05551234\""));
    std::swap(expected.recipients[0], expected.recipients[1]);
    expected.recipients[1].mailbox.clear();
    EXPECT_THAT(problem(), HasSubstr("\"%%OID_ATT_FAX_MAILBOX"));
    expected.recipients[1].mailbox = "aZ*#";
    expected.recipients[0].mailbox = "1";
    EXPECT_NE(problem(), "");
}

TEST_F(AttributeLinesTest, ThePrefixStandsAheadOfEveryNumber)
{
    expected.dialingPrefix = "0,*#";
    EXPECT_NE(problem(), "");
    parts.destinations = "%%OID_ATT_FAX_DESTINATION_PHONE \"0,*#,05551234\";\r\n";
    expected.recipients.pop_back();
    EXPECT_EQ(problem(), "");
    parts.destinations = "%%OID_ATT_FAX_DESTINATION_PHONE \"0900,05551234\";\r\n";
    expected.dialingPrefix = "0900";
    EXPECT_EQ(problem(), "");
    expected.dialingPrefix = "";
    EXPECT_NE(problem(), "");
}

TEST_F(AttributeLinesTest, ARecipientsTextThatAddsALineIsSeen)
{
    // What is written is what the recipient holds: equal texts are not enough.
    for (const std::string& number :
         {std::string("555\";\n%%OID_ATT_FAX_DESTINATION_PHONE\t\"9006"),
          std::string("555\";\r\n%%OID_ATT_FAX_DESTINATION_PHONE\t\"9006"), std::string("5\"5"),
          std::string("5\xc2\x85"
                      "5"),
          std::string("+"), std::string()}) {
        expected.recipients = {someone(number)};
        parts.destinations = "%%OID_ATT_FAX_DESTINATION_PHONE \"" + dialledNumber(number) + "\";\r\n";
        EXPECT_NE(problem(), "") << number;
    }
    for (const auto& mailbox : std::vector<std::string>{"1\"", "1;", "12345", "\xc3\xa4", "1\r\n2", " "}) {
        expected.recipients = {someone("5", mailbox)};
        parts.destinations =
            "%%OID_ATT_FAX_DESTINATION_PHONE \"5\";\r\n%%OID_ATT_FAX_MAILBOX \"" + mailbox + "\";\r\n";
        EXPECT_NE(problem(), "") << mailbox;
    }
    parts.destinations = "%%OID_ATT_FAX_DESTINATION_PHONE \"\r\n,5\";\r\n";
    expected = {Pdl::dsc, "\r\n", "", {someone("5")}};
    EXPECT_NE(problem(), "");
}

TEST_F(AttributeLinesTest, ALineThatIsNamedIsOneShortCleanLine)
{
    const std::string line = with(&Parts::speed, "\x1b\xff\xe2\x80\xae" + std::string(5000, 'x') + "\r\n");
    EXPECT_THAT(line, HasSubstr("\" \xef\xbf\xbd\\u{202e}x"));
    EXPECT_LT(line.size(), 250U);
}

TEST_F(AttributeLinesTest, TheNumberOfACreditCardIsNeverNamed)
{
    expected.creditCard = "4111";
    for (const char* card : {"%%OID_ATT_CREDIT_CARD \"4111x\";\r\n", "%%OID_ATT_CREDIT_CARD \"4111\";\n",
                             "%%OID_ATT_CREDIT_CARD \"4111", "%%OID_ATT_CREDIT_CARD \"\";\r\n",
                             "@PJL COMMENT OID_ATT_CREDIT_CARD \"4111\";\r\n"}) {
        const std::string line = with(&Parts::card, card);
        EXPECT_NE(line, "");
        EXPECT_THAT(line, testing::Not(HasSubstr("4111")));
    }
}

TEST_F(AttributeLinesTest, LinesWithACreditCardAreKnown)
{
    EXPECT_FALSE(holdCreditCard(parts.whole()));
    EXPECT_TRUE(holdCreditCard(FakeFaxSession::attributeLines(Pdl::dsc)));
    EXPECT_TRUE(holdCreditCard(FakeFaxSession::attributeLines(Pdl::pjl)));
}

TEST_F(AttributeLinesTest, TenThousandDestinationsTakeNoTime)
{
    expected.recipients.assign(10'000, someone("1", "2"));
    parts.destinations.clear();
    for (int i = 0; i < 10'000; ++i)
        parts.destinations += "%%OID_ATT_FAX_DESTINATION_PHONE \"1\";\r\n%%OID_ATT_FAX_MAILBOX \"2\";\r\n";
    EXPECT_EQ(problem(), "");
}

TEST(DialText, DialsSomething)
{
    for (const char* text : {"9", "4111 2222-3333", "*", "#31#,"})
        EXPECT_TRUE(isDialText(text)) << text;
    for (const char* text : {"", " ", "-", ",", "9\"", "9;", "9\n", "x"})
        EXPECT_FALSE(isDialText(text)) << text;
}

} // namespace
} // namespace quelm::tests
