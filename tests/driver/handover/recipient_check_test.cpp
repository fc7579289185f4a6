// Tests of what a recipient may hold.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/recipient_check.h"

#include <gmock/gmock.h>

#include <string>

namespace quelm {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

JobRecipient ann()
{
    JobRecipient recipient;
    recipient.type = 1;
    recipient.name = "Ann";
    recipient.number = "555-1234";
    return recipient;
}

/// What is wrong with Ann when a field of hers holds this; empty when nothing is.
std::string problemWith(std::string JobRecipient::*field, const std::string& text)
{
    auto recipient = ann();
    recipient.*field = text;
    return problemWithRecipient(recipient).value_or("");
}

TEST(RecipientCheck, NamesOfRealPeopleInAnyScriptPass)
{
    for (const char* name : {"Ann",
                             "O'Brien",
                             "D\u2019Arcy, Zo\u00eb",
                             "Jean-Luc Picard Sr.",
                             "Smith, Bob",
                             "\u00de\u00f3r\u00f0ur",
                             "Gal\u00b7la Plac\u00eddia",
                             "K\u02bbeali\u02bbi",
                             "Mu\u1e25ammad ibn M\u016bs\u0101",
                             "\u0391\u03bd\u03b1\u03c3\u03c4\u03b1\u03c3\u03af\u03b1",
                             "\u0418\u0432\u0430\u043d\u043e\u0432\u0430",
                             "\u05d2\u05f3\u05d5\u05e8\u05d2\u05f3 \u05d1\u05df\u05be\u05d3\u05d5\u05d3",
                             "\u0639\u0644\u06cc\u200c\u0631\u0636\u0627",
                             "\u738b\u5c0f\u660e",
                             "\u5c71\u7530\u3000\u592a\u90ce",
                             "\u30b8\u30e7\u30f3\u30fb\u30b9\u30df\u30b9",
                             "\u7ea6\u7ff0\u00b7\u53f2\u5bc6\u65af",
                             "\uae40\ubbfc\uc900",
                             "\u0dc1\u0dca\u200d\u0dbb\u0dd3",
                             "\u0f56\u0f66\u0f9f\u0f53\u0f0b\u0f60\u0f5b\u0f72\u0f53",
                             "\u0905\u0928\u093f\u0932 \u0915\u0941\u092e\u093e\u0930",
                             "\u1200\u12ed\u1208\u1361\u1225\u120b\u1234",
                             "Nguy\u1ec5n V\u0103n A",
                             "John Smith 3rd"})
        EXPECT_EQ(problemWith(&JobRecipient::name, name), "") << name;
}

TEST(RecipientCheck, ANameIsThereAndHoldsNothingElse)
{
    for (const char* name : {"", "   ", "\u200d", "Ann\n%%EOF", "Ann\"", "Ann;", "Ann(", "Ann\\", "A\x1b",
                             "\xff", "\xc2\x85", "Ann\u2028", "Ann\u202e", "Ann=555", "<Ann>"})
        EXPECT_NE(problemWith(&JobRecipient::name, name), "") << name;
    EXPECT_EQ(problemWith(&JobRecipient::name, std::string(255, 'x')), "");
    EXPECT_THAT(problemWith(&JobRecipient::name, std::string(256, 'x')),
                HasSubstr("is longer than 255 bytes"));
}

TEST(RecipientCheck, ANumberCanBeDialled)
{
    for (const char* number : {"5", "+1 (555) 123-4567", "0049/30.1234,*#", "(0) 555"})
        EXPECT_EQ(problemWith(&JobRecipient::number, number), "") << number;
    for (const char* number : {"", "()", "+", "- -", "555\";\n%%OID_ATT_FAX_DESTINATION_PHONE\t\"9006",
                               "5\"5", "555;", "5\r5", "five", "\u0665", "5\xc2\x85", "5\xff"})
        EXPECT_NE(problemWith(&JobRecipient::number, number), "") << number;
    EXPECT_EQ(problemWith(&JobRecipient::number, std::string(46, '5')), "");
    EXPECT_THAT(problemWith(&JobRecipient::number, std::string(47, '5')),
                HasSubstr("longer than 46 characters"));
}

TEST(RecipientCheck, AMailboxIsShort)
{
    for (const char* mailbox : {"", "1", "aZ09", "*#"})
        EXPECT_EQ(problemWith(&JobRecipient::mailbox, mailbox), "") << mailbox;
    for (const char* mailbox : {"12345", "\"", ";", "1 2", " ", "\u00e4", "1\n"})
        EXPECT_NE(problemWith(&JobRecipient::mailbox, mailbox), "") << mailbox;
}

TEST(RecipientCheck, TheOtherTextsHoldNoControlCharacters)
{
    for (const auto field : {&JobRecipient::organization, &JobRecipient::phone, &JobRecipient::email}) {
        for (const char* text : {"", "Acme & S\u00f6hne (UK) \"x\"; 50%", "\u682a\u5f0f\u4f1a\u793e"})
            EXPECT_EQ(problemWith(field, text), "") << text;
        for (const char* text :
             {"a\n%%QLMend", "a\r@PJL", "\x04", "\x7f", "\xc2\x9b", "\u2029", "\xff", "\t"})
            EXPECT_NE(problemWith(field, text), "") << text;
        EXPECT_EQ(problemWith(field, std::string(255, 'x')), "");
        EXPECT_NE(problemWith(field, std::string(256, 'x')), "");
    }
}

TEST(RecipientCheck, AGroupIsNoRecipient)
{
    auto group = ann();
    group.type = 2;
    EXPECT_EQ(problemWithRecipient(group),
              "Ann (555-1234) cannot be sent a fax: it is a group; add its members instead");
    EXPECT_TRUE(problemWithRecipient(JobRecipient()));
}

TEST(RecipientCheck, TheSentenceNamesTheRecipientAndIsCleanAndShort)
{
    EXPECT_EQ(
        problemWith(&JobRecipient::mailbox, "\";"),
        "Ann (555-1234) cannot be sent a fax: the mailbox is not one to four of the letters A to Z, digits, "
        "\"*\" and \"#\"");
    EXPECT_EQ(problemWith(&JobRecipient::organization, "a\nb"),
              "Ann (555-1234) cannot be sent a fax: the organization holds a line end or another control "
              "character");
    for (const std::string& text :
         {std::string("a\x1b[2J\n\xe2\x80\xae\xc2\x9b\xff") + std::string(100'000, '\n'),
          std::string(100'000, '5') + "\""})
        for (const auto field : {&JobRecipient::name, &JobRecipient::number}) {
            const auto sentence = problemWith(field, text);
            EXPECT_LT(sentence.size(), 400U);
            EXPECT_THAT(sentence,
                        AllOf(Not(HasSubstr("\n")), Not(HasSubstr("\x1b")), Not(HasSubstr("\xc2\x9b")),
                              Not(HasSubstr("\xe2\x80\xae")), Not(HasSubstr("\xff"))));
        }
}

TEST(RecipientCheck, BytesThatAreNoTextAreNoneWithoutTheMarksBetweenThem)
{
    auto recipient = ann();
    recipient.name = "J\xc2\xe2\x80\x90\xaao";
    EXPECT_TRUE(problemWithRecipient(recipient));
}

TEST(TrunkZero, IsNamedWithBothReadings)
{
    auto recipient = ann();
    recipient.number = "+44 (0)20 7946-0000";
    EXPECT_EQ(trunkZeroWarning(recipient),
              "Ann (+44 (0)20 7946-0000): this dials +4402079460000, with the 0 in parentheses; write "
              "+442079460000 to leave it out");
    recipient.number = "0049(0)30 1";
    EXPECT_TRUE(trunkZeroWarning(recipient));
    for (const char* number : {"+44.(0)20 1", "+44/(0)20 1"}) {
        recipient.number = number;
        EXPECT_TRUE(trunkZeroWarning(recipient)) << number;
    }
    recipient.number = "0049(0)30 1";
    EXPECT_THAT(trunkZeroWarnings({ann(), recipient}), ElementsAre(HasSubstr("this dials 0049030")));
}

TEST(TrunkZero, OfOtherNumbersNothingIsSaid)
{
    for (const char* number :
         {"(0) 555-1234", "555(0)1", "+(0)1", "00(0)1", "+44 (020) 1", "+44 20 1", "+4#4(0)1"}) {
        auto recipient = ann();
        recipient.number = number;
        EXPECT_FALSE(trunkZeroWarning(recipient)) << number;
    }
}

} // namespace
} // namespace quelm
