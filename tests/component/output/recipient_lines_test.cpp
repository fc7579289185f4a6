// A recipient's lines in the print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/calls.h"
#include "tests/support/component_test.h"

class RecipientLinesTest : public ComponentTest {
protected:
    RecipientLinesTest()
    {
        recipient.setRecipientData("RecipientName", "Ann");
        recipient.setRecipientData("RecipientFaxNumber", "555-1234");
    }

    std::string assemble(const char* dialingPrefix, const char* linePrefix)
    {
        return recipient.assembleFaxRcptPDLString(host::in(dialingPrefix), host::in(linePrefix));
    }

    Tarvik40FaxRecipient recipient;
};

TEST_F(RecipientLinesTest, ThePlainDestinationIsOneLine)
{
    EXPECT_EQ(assemble(nullptr, "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n");
}

TEST_F(RecipientLinesTest, ADialingPrefixIsDialledFirstWithAPause)
{
    EXPECT_EQ(assemble("9", "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n");
}

TEST_F(RecipientLinesTest, OnlyANullPrefixLeavesThePauseOut)
{
    EXPECT_EQ(assemble("", "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \",5551234\";\r\n");
}

TEST_F(RecipientLinesTest, AMailboxIsASecondLineWithThePrefixOfTheFirst)
{
    recipient.setRecipientData("RecipientMailbox", "12");
    EXPECT_EQ(assemble("9", "@PJL COMMENT "), "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n"
                                              "@PJL COMMENT OID_ATT_FAX_MAILBOX \"12\";\r\n");
}

TEST_F(RecipientLinesTest, AnEmptyNumberIsWrittenEmpty)
{
    recipient.setRecipientData("RecipientFaxNumber", "");
    EXPECT_EQ(assemble(nullptr, "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \"\";\r\n");
}

TEST_F(RecipientLinesTest, NothingInsideTheQuotesIsEscaped)
{
    recipient.setRecipientData("RecipientFaxNumber", "1\"2\\3");
    recipient.setRecipientData("RecipientMailbox", "\"");
    EXPECT_EQ(assemble("\"", "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \"\",1\"2\\3\";\r\n"
                                    "%%OID_ATT_FAX_MAILBOX \"\"\";\r\n");
}

TEST_F(RecipientLinesTest, EveryCallStartsAfresh)
{
    recipient.setRecipientData("RecipientMailbox", "12");
    assemble("9", "%%");
    recipient.setRecipientData("RecipientMailbox", "");
    recipient.setRecipientData("RecipientFaxNumber", "7");
    EXPECT_EQ(assemble(nullptr, "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \"7\";\r\n");
}

TEST_F(RecipientLinesTest, TheTextStaysValidUntilTheNextCallOnThatRecipient)
{
    Tarvik40FaxRecipient other;
    other.setRecipientData("RecipientFaxNumber", "8");
    const char* kept = recipient.assembleFaxRcptPDLString(nullptr, host::in("%%"));
    other.assembleFaxRcptPDLString(nullptr, host::in("%%"));
    recipient.setRecipientData("RecipientMailbox", "12");
    EXPECT_STREQ(kept, "%%OID_ATT_FAX_DESTINATION_PHONE \"5551234\";\r\n");
}

TEST_F(RecipientLinesTest, LongTextsAreWrittenWhole)
{
    recipient.setRecipientData("RecipientFaxNumber", longText(9000).c_str());
    EXPECT_EQ(assemble(nullptr, "%%"), "%%OID_ATT_FAX_DESTINATION_PHONE \"" + longText(9000) + "\";\r\n");
}
