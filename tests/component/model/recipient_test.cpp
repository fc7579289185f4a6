// One recipient: its keyed texts, the number to dial, its XML fragment.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/recipient.h"

#include "tests/support/component_test.h"

namespace {

struct KeyedField {
    const char* key;
    int token;
};

// The fields by the position of their keys in the list that the host's token lookup gets.
constexpr KeyedField keyedFields[] = {
    {"RecipientName", 1},
    {"RecipientOrganization", 2},
    {"RecipientPhone", 3},
    {"RecipientFaxNumber", 4},
    {"RecipientEmail", 5},
    {"RecipientMailbox", 6},
    {"GroupMemberList", 7},
    {"SenderName", 8},
    {"SenderOrganization", 9},
    {"SenderPhone", 10},
    {"SenderFaxNumber", 11},
    {"SenderEmail", 12},
    {"CoverNote", 13},
    {"Year", 14},
    {"Month", 15},
    {"MonthDay", 16},
    {"Hour", 17},
    {"Minute", 18},
};

constexpr const char* keyList =
    ",RecipientName,RecipientOrganization,RecipientPhone,RecipientFaxNumber,RecipientEmail,"
    "RecipientMailbox,GroupMemberList,SenderName,SenderOrganization,SenderPhone,SenderFaxNumber,"
    "SenderEmail,CoverNote,Year,Month,MonthDay,Hour,Minute,Key,";

} // namespace

class RecipientTest : public ComponentTest {
protected:
    Tarvik40FaxRecipient recipient;
};

class RecipientFieldTest : public RecipientTest, public testing::WithParamInterface<KeyedField> {};

TEST_P(RecipientFieldTest, IsNullAtFirstAndHoldsWhatWasSet)
{
    EXPECT_EQ(recipient.getRecipientData(GetParam().key), nullptr);
    EXPECT_TRUE(recipient.setRecipientData(GetParam().key, "some text"));
    EXPECT_STREQ(recipient.getRecipientData(GetParam().key), "some text");
}

TEST_P(RecipientFieldTest, HoldsWhatWasSetFromAString)
{
    std::string value = "some text";
    EXPECT_TRUE(recipient.setRecipientData(GetParam().key, value));
    value = "changed";
    EXPECT_STREQ(recipient.getRecipientData(GetParam().key), "some text");
}

TEST_P(RecipientFieldTest, SharesNothingWithTheOtherFields)
{
    recipient.setRecipientData(GetParam().key, "some text");
    for (const KeyedField& other : keyedFields)
        EXPECT_EQ(recipient.getRecipientData(other.key) == nullptr, other.token != GetParam().token)
            << other.key;
}

TEST_P(RecipientFieldTest, ReadsNullAgainOnceEmptied)
{
    recipient.setRecipientData(GetParam().key, "some text");
    EXPECT_TRUE(recipient.setRecipientData(GetParam().key, ""));
    EXPECT_EQ(recipient.getRecipientData(GetParam().key), nullptr);
}

TEST_P(RecipientFieldTest, IsFoundThroughTheHostsTokenList)
{
    const std::string entry = "token " + fake::quoted(GetParam().key) + " in " + fake::quoted(keyList) +
                              " flag false -> " + std::to_string(GetParam().token);
    recipient.getRecipientData(GetParam().key);
    recipient.setRecipientData(GetParam().key, "x");
    EXPECT_EQ(host.journal.all(), lines({entry, entry}));
}

INSTANTIATE_TEST_SUITE_P(Every, RecipientFieldTest, testing::ValuesIn(keyedFields),
                         [](const auto& test) { return test.param.key; });

TEST_F(RecipientTest, HasNoTypeUntilItsCreatorSetsOne)
{
    EXPECT_EQ(recipient.getRecipientType(), 0);
    recipient.setRecipientType(2);
    EXPECT_EQ(recipient.getRecipientType(), 2);
    recipient.setRecipientType(1);
    EXPECT_EQ(recipient.getRecipientType(), 1);
}

TEST_F(RecipientTest, AnEmptyEmailIsNullAndNotAnEmptyText)
{
    EXPECT_EQ(recipient.getRecipientData("RecipientEmail"), nullptr);
}

TEST_F(RecipientTest, TheWordKeyIsKnownAndRefusedAllTheSame)
{
    recipient.setRecipientData("RecipientName", "Ann");
    host.journal.clear();

    EXPECT_EQ(recipient.getRecipientData("Key"), nullptr);
    EXPECT_FALSE(recipient.setRecipientData("Key", "x"));
    std::string value = "x";
    EXPECT_FALSE(recipient.setRecipientData("Key", value));

    EXPECT_EQ(host.journal.count("token \"Key\""), 3);
    EXPECT_STREQ(recipient.getRecipientData("RecipientName"), "Ann");
}

TEST_F(RecipientTest, UnknownKeysChangeNothing)
{
    for (const char* key : {"Bogus", "", "recipientname", "RecipientName ", "Recipient"}) {
        EXPECT_EQ(recipient.getRecipientData(key), nullptr) << key;
        EXPECT_FALSE(recipient.setRecipientData(key, "x")) << key;
    }
    for (const KeyedField& known : keyedFields)
        EXPECT_EQ(recipient.getRecipientData(known.key), nullptr) << known.key;
}

TEST_F(RecipientTest, ANullKeyIsRefused)
{
    EXPECT_EQ(recipient.getRecipientData(nullptr), nullptr);
    EXPECT_FALSE(recipient.setRecipientData(nullptr, "x"));
    std::string value = "x";
    EXPECT_FALSE(recipient.setRecipientData(nullptr, value));
}

TEST_F(RecipientTest, ANullValueIsRefusedAndKeepsTheField)
{
    recipient.setRecipientData("RecipientName", "Ann");
    EXPECT_FALSE(recipient.setRecipientData("RecipientName", static_cast<const char*>(nullptr)));
    EXPECT_STREQ(recipient.getRecipientData("RecipientName"), "Ann");
}

TEST_F(RecipientTest, TakesOverItsOwnText)
{
    recipient.setRecipientData("RecipientName", "Ann");
    EXPECT_TRUE(recipient.setRecipientData("RecipientName", recipient.getRecipientData("RecipientName")));
    EXPECT_STREQ(recipient.getRecipientData("RecipientName"), "Ann");
}

TEST_F(RecipientTest, HoldsTextsOfAnyLength)
{
    recipient.setRecipientData("CoverNote", longText(10000).c_str());
    EXPECT_EQ(recipient.getRecipientData("CoverNote"), longText(10000));
}

struct FaxNumber {
    const char* typed;
    const char* dialled;
};

class CleansedNumberTest : public RecipientTest, public testing::WithParamInterface<FaxNumber> {};

TEST_P(CleansedNumberTest, DropsBracketsBlanksAndHyphensAndKeepsTheTypedText)
{
    recipient.setRecipientData("RecipientFaxNumber", GetParam().typed);
    EXPECT_STREQ(recipient.getRecipientData("RecipientFaxNumber"), GetParam().typed);
    EXPECT_EQ(dialledNumber(&recipient), GetParam().dialled);
}

TEST_P(CleansedNumberTest, IsTheSameAfterCleansingAgain)
{
    recipient.setRecipientData("RecipientFaxNumber", GetParam().typed);
    recipient.cleanseFaxNumber();
    recipient.cleanseFaxNumber();
    EXPECT_EQ(dialledNumber(&recipient), GetParam().dialled);
}

TEST_P(CleansedNumberTest, IsWorkedOutFromAStringToo)
{
    std::string typed = GetParam().typed;
    recipient.setRecipientData("RecipientFaxNumber", typed);
    EXPECT_EQ(dialledNumber(&recipient), GetParam().dialled);
}

INSTANTIATE_TEST_SUITE_P(Every, CleansedNumberTest,
                         testing::Values(FaxNumber{"(0) 12-34", "01234"},
                                         FaxNumber{"(555) 123-4567", "5551234567"},
                                         FaxNumber{"+1.555/123", "+1.555/123"}, FaxNumber{"((--  1))", "1"},
                                         FaxNumber{"1 - 2 - (3)", "123"}, FaxNumber{"A-B,C*#", "AB,C*#"},
                                         FaxNumber{"\t12", "\t12"}));

TEST_F(RecipientTest, ANewNumberReplacesTheDialledOne)
{
    recipient.setRecipientData("RecipientFaxNumber", "1-2");
    recipient.setRecipientData("RecipientFaxNumber", "3-4");
    EXPECT_EQ(dialledNumber(&recipient), "34");
}

TEST_F(RecipientTest, OnlyTheFaxNumberIsDialled)
{
    recipient.setRecipientData("RecipientFaxNumber", "1-2");
    recipient.setRecipientData("RecipientPhone", "9-9");
    recipient.setRecipientData("SenderFaxNumber", "8-8");
    EXPECT_EQ(dialledNumber(&recipient), "12");
}

TEST_F(RecipientTest, TheXmlFragmentHoldsTheKeyAndSixFieldsInAFixedOrder)
{
    recipient.setRecipientData("RecipientName", "Ann");
    recipient.setRecipientData("RecipientOrganization", "Acme");
    recipient.setRecipientData("RecipientPhone", "555-99");
    recipient.setRecipientData("RecipientFaxNumber", "555-1234");
    recipient.setRecipientData("RecipientEmail", "ann@acme.example");
    recipient.setRecipientData("RecipientMailbox", "12");
    std::string out = "what was there before";

    EXPECT_TRUE(recipient.assembleXMLRecipientData(&out));

    EXPECT_EQ(out, "      <Recipient Key=\"Ann555-1234\">\r\n"
                   "         <Name>Ann</Name>\r\n"
                   "         <Organization>Acme</Organization>\r\n"
                   "         <FaxNumber>555-1234</FaxNumber>\r\n"
                   "         <Phone>555-99</Phone>\r\n"
                   "         <Email>ann@acme.example</Email>\r\n"
                   "         <Mailbox>12</Mailbox>\r\n"
                   "      </Recipient>\r\n");
}

TEST_F(RecipientTest, TheXmlFragmentOfAnEmptyRecipientHasEmptyElements)
{
    std::string out;
    EXPECT_TRUE(recipient.assembleXMLRecipientData(&out));
    EXPECT_EQ(out, "      <Recipient Key=\"\">\r\n"
                   "         <Name></Name>\r\n"
                   "         <Organization></Organization>\r\n"
                   "         <FaxNumber></FaxNumber>\r\n"
                   "         <Phone></Phone>\r\n"
                   "         <Email></Email>\r\n"
                   "         <Mailbox></Mailbox>\r\n"
                   "      </Recipient>\r\n");
}

TEST_F(RecipientTest, TheXmlFragmentKeepsMarkupInTheTextsUnescaped)
{
    recipient.setRecipientData("RecipientName", "A<b> & \"c\"");
    std::string out;
    recipient.assembleXMLRecipientData(&out);
    EXPECT_NE(out.find("<Recipient Key=\"A<b> & \"c\"\">\r\n"), std::string::npos);
    EXPECT_NE(out.find("<Name>A<b> & \"c\"</Name>\r\n"), std::string::npos);
}
