// What becomes of cards.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/contacts.h"
#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using test::settled;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Content = std::variant<PhonebookEntry, PhonebookGroup>;

std::string card(const std::string& lines, const std::string& version = "3.0")
{
    return "BEGIN:VCARD\r\nVERSION:" + version + "\r\n" + lines + "END:VCARD\r\n";
}

std::vector<Content> read(const std::string& text)
{
    const auto all = settled(readVcards(text));
    EXPECT_THAT(all.refused, IsEmpty()) << all.refused.at(0).reason;
    std::vector<Content> contents;
    for (const auto& contact : all.contacts)
        contents.push_back(contact.content);
    return contents;
}

/// Why the only card of a text is refused.
std::string refusal(const std::string& text)
{
    const auto all = settled(readVcards(text));
    EXPECT_THAT(all.contacts, IsEmpty());
    EXPECT_THAT(all.refused, SizeIs(1));
    return all.refused.empty() ? "" : all.refused[0].reason;
}

Content entry(const std::string& name, const std::string& number, const std::string& organization = "",
              const std::string& phone = "", const std::string& email = "")
{
    return PhonebookEntry{name, number, organization, phone, email};
}

TEST(Vcards, ReadsACardOfEitherVersion)
{
    const std::string fields = "FN:Ann Lee\r\nORG:Acme\\, Inc.;Sales\r\nTEL;TYPE=fax,work:+1 555\r\n"
                               "TEL;TYPE=voice:+1 556\r\nEMAIL:ann@acme.example\r\n";
    for (const auto* version : {"3.0", "4.0"})
        EXPECT_THAT(read(card(fields, version)), ElementsAre(entry("Ann Lee", "+1 555", "Acme, Inc., Sales",
                                                                   "+1 556", "ann@acme.example")));
}

TEST(Vcards, KeepsWorkAndHomeFaxNumbersApart)
{
    EXPECT_THAT(read(card("FN:Anne Miller\r\nTEL;TYPE=home,fax:2\r\nTEL;TYPE=work,fax:1\r\n")),
                ElementsAre(entry("Anne Miller", "1"), entry("Anne Miller - home", "2")));
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;TYPE=home;TYPE=fax:2\r\n")), ElementsAre(entry("Ann - home", "2")));
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;TYPE=fax:1\r\n")), ElementsAre(entry("Ann", "1")));
}

TEST(Vcards, NumbersFurtherFaxNumbersAndPassesOverRepeatedOnes)
{
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;TYPE=fax:1\r\nTEL;TYPE=work,fax:2\r\nTEL;TYPE=fax:1\r\n"
                          "TEL;TYPE=home,fax:3\r\nTEL;TYPE=home,fax:4\r\n")),
                ElementsAre(entry("Ann", "1"), entry("Ann - 2", "2"), entry("Ann - home", "3"),
                            entry("Ann - home 2", "4")));
}

TEST(Vcards, ThePreferredNumberComesFirst)
{
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;TYPE=fax:1\r\nTEL;TYPE=fax,pref:2\r\n")),
                ElementsAre(entry("Ann", "2"), entry("Ann - 2", "1")));
    EXPECT_THAT(
        read(card("FN:Ann\r\nTEL;TYPE=fax;PREF=9:1\r\nTEL;TYPE=fax;PREF=2:2\r\nTEL;TYPE=fax:3\r\n", "4.0")),
        ElementsAre(entry("Ann", "2"), entry("Ann - 2", "1"), entry("Ann - 3", "3")));
}

TEST(Vcards, EachEntryGetsThePhoneAndAddressOfItsUse)
{
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;TYPE=fax,work:1\r\nTEL;TYPE=fax,home:2\r\nTEL;TYPE=home:3\r\n"
                          "TEL;TYPE=work,voice:4\r\nEMAIL;TYPE=home:h@x\r\nEMAIL;TYPE=work:w@x\r\n")),
                ElementsAre(entry("Ann", "1", "", "4", "w@x"), entry("Ann - home", "2", "", "3", "h@x")));
    EXPECT_THAT(
        read(
            card("FN:Ann\r\nTEL;TYPE=fax,work:1\r\nTEL;TYPE=fax,home:2\r\nTEL:3\r\nEMAIL;TYPE=home:h@x\r\n")),
        ElementsAre(entry("Ann", "1", "", "3", ""), entry("Ann - home", "2", "", "3", "h@x")));
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;TYPE=fax,work:1\r\nTEL;TYPE=pager:2\r\nTEL;TYPE=home:3\r\nEMAIL;"
                          "TYPE=home:h@x\r\n")),
                ElementsAre(entry("Ann", "1", "", "3", "h@x")));
}

TEST(Vcards, ReadsTelephoneUris)
{
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;VALUE=uri;TYPE=\"work,fax\":tel:+1-555-12;phone-context=x\r\n"
                          "TEL;VALUE=uri:TEL:%2B1%20556\r\n",
                          "4.0")),
                ElementsAre(entry("Ann", "+1-555-12", "", "+1 556")));
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;VALUE=uri;TYPE=fax:tel:+1-555;EXT=12\r\n", "4.0")),
                ElementsAre(entry("Ann", "+1-555,12")));
}

TEST(Vcards, ReadsFoldedEscapedAndEncodedText)
{
    EXPECT_THAT(read(card("fn:Zo\xc3\xab M\r\n \xc3\xbcller\r\nitem1.tel;type=WORK;type=FAX:1\r\n"
                          "ORG:a\\;b\\,c\\\\d\r\n")),
                ElementsAre(entry("Zo\xc3\xab M\xc3\xbcller", "1", "a;b,c\\d")));
    EXPECT_THAT(
        read(card("FN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:Zo=EB=\r\n=20M\r\nTEL;FAX;WORK:1\r\n")),
        ElementsAre(entry("Zo\xc3\xab M", "1")));
}

TEST(Vcards, RefusesControlCharactersInEveryField)
{
    const std::string good = "FN:Ann\r\nTEL;TYPE=fax:1\r\n";
    EXPECT_EQ(refusal(card(good + "ORG:Acme\\n%%EOF\r\n")),
              "the organization holds a line break or control character");
    for (const std::string bad : {"\\n", "\x1b", "\u0085", "\u2028", "\u009b"}) {
        for (const auto& line :
             {"ORG:a;b" + bad + "c", "EMAIL:a@b" + bad + "c", "TEL;TYPE=voice:1" + bad + "2"})
            EXPECT_NE(refusal(card(good + line + "\r\n")), "") << line;
        EXPECT_NE(refusal(card("FN:A" + bad + "nn\r\nTEL;TYPE=fax:1\r\n")), "");
        EXPECT_NE(refusal(card("FN:Ann\r\nTEL;TYPE=fax:1" + bad + "2\r\n")), "");
        EXPECT_EQ(refusal(card("KIND:group\r\nFN:Team\r\nX-QUELM-MEMBER:A" + bad + "nn\r\n", "4.0")),
                  "the name of a member holds a line break or control character");
    }
}

TEST(Vcards, RefusesACardWithAnAbsurdNumberOfNumbers)
{
    std::string lines = "FN:Ann\r\n";
    for (int i = 0; i < 100; ++i)
        lines += "TEL;TYPE=fax:" + std::to_string(i) + "\r\n";
    EXPECT_THAT(read(card(lines)), SizeIs(100));
    for (int i = 100; i < 20000; ++i)
        lines += "TEL;TYPE=fax:" + std::to_string(i) + "\r\n";
    EXPECT_EQ(refusal(card(lines)), "has more than 100 fax numbers of a kind; mend the card");
}

TEST(Vcards, TakesTheNameFromNWithoutFn)
{
    EXPECT_THAT(read(card("N:Lee;Ann;B.;Dr.;\r\nTEL;TYPE=fax:1\r\n")), ElementsAre(entry("Ann B. Lee", "1")));
    EXPECT_THAT(read(card("FN:\r\nN:Lee\r\nTEL;TYPE=fax:1\r\n")), ElementsAre(entry("Lee", "1")));
    EXPECT_EQ(refusal(card("TEL;TYPE=fax:1\r\n")), "the name is missing");
}

TEST(Vcards, PassesOverCardsWithoutAFaxNumber)
{
    const auto all = readVcards(card("FN:Ann, @\r\nTEL:1\r\n") + card("FN:Bob\r\nTEL;TYPE=fax:\r\n"));
    EXPECT_THAT(all.contacts, IsEmpty());
    EXPECT_THAT(all.refused, IsEmpty());
    EXPECT_EQ(all.withoutNumber, 2U);
}

TEST(Vcards, RefusesACardAsAWholeWithItsLine)
{
    const auto all = settled(readVcards(card("FN:Ann\r\nTEL;TYPE=fax:1\r\nTEL;TYPE=home,fax:none\r\n") +
                                        card("FN:Bob\r\nTEL;TYPE=fax:2\r\n") + "\r\n" +
                                        card("FN:A@n\r\nTEL;TYPE=fax:1\r\n")));
    ASSERT_THAT(all.contacts, SizeIs(1));
    EXPECT_EQ(all.contacts[0].line, 7U);
    ASSERT_THAT(all.refused, SizeIs(2));
    EXPECT_EQ(all.refused[0].line, 1U);
    EXPECT_EQ(all.refused[1].line, 13U);
}

TEST(Vcards, RefusesOtherVersions)
{
    EXPECT_THAT(read(card("FN:Ann\r\nTEL;FAX:1\r\n", "2.1")), ElementsAre(entry("Ann", "1")));
    EXPECT_EQ(refusal(card("FN:Ann\r\nTEL;FAX:1\r\n", "5.0")),
              "is of version 5.0; save it as vCard 2.1, 3.0 or 4.0");
    EXPECT_EQ(refusal("BEGIN:VCARD\nFN:Ann\nTEL;TYPE=fax:1\nEND:VCARD\n"),
              "names no VERSION; save it as vCard 2.1, 3.0 or 4.0");
}

TEST(Vcards, AHomeNameTooLongIsRefused)
{
    const std::string name(25, 'x');
    EXPECT_EQ(refusal(card("FN:" + name + "\r\nTEL;TYPE=fax,home:1\r\n")),
              "\"" + name + " - home\": the name has 32 characters; 31 are possible");
}

TEST(Vcards, AGroupsMembersAreTheFirstEntriesOfItsCards)
{
    const auto group =
        card("KIND:group\r\nFN:Team\r\nMEMBER:urn:uuid:ABC\r\nMEMBER:2\r\nMEMBER:3\r\n", "4.0");
    const auto members = card("FN:Ann\r\nUID:urn:uuid:abc\r\nTEL;TYPE=fax,home:1\r\nTEL;TYPE=fax:2\r\n") +
                         card("FN:Bob\r\nUID:2\r\nTEL;TYPE=fax,home:3\r\n") + card("FN:No Fax\r\nUID:3\r\n");
    EXPECT_THAT(read(group + members),
                ElementsAre(Content(PhonebookGroup{"Team", {"Ann", "Bob - home"}}), entry("Ann", "2"),
                            entry("Ann - home", "1"), entry("Bob - home", "3")));
    EXPECT_THAT(read(members + group).back(), Content(PhonebookGroup{"Team", {"Ann", "Bob - home"}}));
    const auto old =
        card("N:Team\r\nX-ADDRESSBOOKSERVER-KIND:group\r\nX-ADDRESSBOOKSERVER-MEMBER:urn:uuid:2\r\n");
    EXPECT_THAT(read(members + old).back(), Content(PhonebookGroup{"Team", {"Bob - home"}}));
}

TEST(Vcards, AGroupMayNameItsMembers)
{
    EXPECT_THAT(
        read(card("KIND:group\r\nFN:Team\r\nMEMBER:unknown\r\nX-QUELM-MEMBER:Ann\r\nX-QUELM-MEMBER:B\r\n",
                  "4.0")),
        ElementsAre(Content(PhonebookGroup{"Team", {"Ann", "B"}})));
}

TEST(Vcards, RefusesAGroupWhoseMembersCannotBeFound)
{
    EXPECT_EQ(refusal(card("KIND:group\r\nFN:T\r\nMEMBER:mailto:a@b\r\n", "4.0")),
              "its member mailto:a@b is no card of this file");
    EXPECT_EQ(refusal(card("KIND:group\r\nFN:T\r\n", "4.0")), "the group has no member");
    EXPECT_EQ(refusal(card("FN:A\r\nUID:1\r\n") + card("KIND:group\r\nFN:T\r\nMEMBER:1\r\n", "4.0")),
              "the group has no member");
    const auto all = settled(readVcards(card("KIND:group\r\nFN:T\r\nMEMBER:1\r\n", "4.0") +
                                        card("FN:@\r\nUID:1\r\nTEL;TYPE=fax:1\r\n")));
    EXPECT_THAT(all.refused, ElementsAre(testing::Field(&Refusal::reason, "its member on line 7 is refused"),
                                         testing::Field(&Refusal::line, 7U)));
}

TEST(Vcards, SurviveTextsThatEndAnywhere)
{
    const auto whole = card("FN:Zo\xc3\xab\r\nitem1.TEL;VALUE=uri;TYPE=\"work,fax\";PREF=x:tel:+1;ext=\r\n"
                            "N;ENCODING=b:%%%\r\nORG;ENCODING=QUOTED-PRINTABLE:=4=\r\n",
                            "4.0") +
                       card("KIND:group\r\nFN:T\r\nMEMBER:1\r\n");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        readVcards(whole.substr(0, size));
        readVcards(whole.substr(0, size) + "\r\nEND:VCARD\r\n");
        auto cut = whole;
        cut.erase(size, 1);
        readVcards(cut);
    }
}

TEST(Vcards, AreKnownByTheirBeginning)
{
    EXPECT_TRUE(isVcardText("\xef\xbb\xbf\r\n begin:vCard\n"));
    for (const auto* text : {"", "name,number\n", "BEGIN:VCAL", "x\nBEGIN:VCARD"})
        EXPECT_FALSE(isVcardText(text)) << text;
}

} // namespace
} // namespace quelm
