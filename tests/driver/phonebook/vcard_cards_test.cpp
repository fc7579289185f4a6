// Finding the cards in a text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/vcard_cards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// The problem of the only card in a text.
std::string problem(const std::string& text)
{
    const auto cards = findCards(text);
    EXPECT_THAT(cards, SizeIs(1));
    return cards.empty() ? "" : cards[0].problem;
}

std::string card(const std::string& lines) { return "BEGIN:VCARD\n" + lines + "\nEND:VCARD\n"; }

TEST(FindCards, FindsEachWithItsLine)
{
    const auto cards =
        findCards("\xef\xbb\xbf\nBEGIN:VCARD\r\nFN:A\r\nEND:VCARD\r\n\r\nbegin:vcard \nFN:B\nend:vcard");
    ASSERT_THAT(cards, SizeIs(2));
    EXPECT_EQ(cards[0].line, 2U);
    EXPECT_EQ(cards[0].text, "BEGIN:VCARD\r\nFN:A\r\nEND:VCARD\r\n");
    EXPECT_EQ(cards[1].line, 6U);
    EXPECT_EQ(cards[1].text, "BEGIN:VCARD\r\nFN:B\r\nEND:VCARD\r\n");
    EXPECT_EQ(cards[1].problem, "");
}

TEST(FindCards, AnEmptyTextHasNone)
{
    EXPECT_THAT(findCards(""), IsEmpty());
    EXPECT_THAT(findCards("\n \n"), IsEmpty());
}

TEST(FindCards, ACardNeedsItsEnd)
{
    EXPECT_EQ(problem("BEGIN:VCARD\nFN:A\n"), "has no END:VCARD");
    const auto cards = findCards("BEGIN:VCARD\nFN:A\n" + card("FN:B"));
    ASSERT_THAT(cards, SizeIs(2));
    EXPECT_EQ(cards[0].problem, "has no END:VCARD");
    EXPECT_EQ(cards[1].problem, "");
    EXPECT_EQ(cards[1].line, 3U);
}

TEST(FindCards, TextBetweenCardsIsNotedOnce)
{
    const auto cards = findCards(card("FN:A") + "FN:B\nTEL:1\n\n" + card("FN:C") + "END:VCARD\n");
    ASSERT_THAT(cards, SizeIs(4));
    EXPECT_EQ(cards[1].line, 4U);
    EXPECT_EQ(cards[1].problem, "stands outside of any card; a card begins with BEGIN:VCARD");
    EXPECT_EQ(cards[3].line, 10U);
}

TEST(FindCards, LinesThatTheLibraryWouldDropAreNoted)
{
    EXPECT_EQ(problem(card("FN:A\nbogus")), "its line 3 has no \":\" behind the property's name");
    for (const auto* line : {"TEL=1;X:2", ":1", ";X:1", "\xc3\xab:1", "a.:1", ".b:1", "a.b.c:1"})
        EXPECT_EQ(problem(card(line)), "its line 2 does not begin with a property's name");
    EXPECT_EQ(problem(card("item1.X-ABC_d2;A=b:1")), "");
    EXPECT_EQ(problem(card("FN:A\rB:C")),
              "its line 2 holds a carriage return that ends no line; save the cards with plain line ends");
    EXPECT_EQ(problem(card("FN:A\xff")), "its line 2 is not UTF-8; save the cards as UTF-8 text");
    EXPECT_EQ(problem(card(std::string("FN:A\0", 5))),
              "its line 2 holds a NUL byte; save the cards as UTF-8 text");
}

TEST(FindCards, FoldedLinesAreUnfoldedWhereverTheyAreFolded)
{
    const auto text = [](const std::string& lines) {
        const auto cards = findCards(card(lines));
        EXPECT_EQ(cards.at(0).problem, "");
        return cards.at(0).text;
    };
    const auto whole = [](const std::string& line) { return "BEGIN:VCARD\r\n" + line + "\r\nEND:VCARD\r\n"; };
    EXPECT_EQ(text("TEL;LABEL=\"a:b;\r\n c\";TYPE=\n\twork:d"), whole("TEL;LABEL=\"a:b;c\";TYPE=work:d"));
    EXPECT_EQ(text("FN:Zo\xc3\n \xab"), whole("FN:Zo\xc3\xab"));
    EXPECT_EQ(text("FN;ENCODING=QUOTED-PRINTABLE:a=\nb=\n c"), whole("FN:ab c"));
    EXPECT_EQ(text("\nFN:A\n\n"), whole("FN:A"));
}

TEST(FindCards, PropertiesWithoutUseForAPhonebookAreLeftOut)
{
    const auto cards =
        findCards(card("FN:A\nPHOTO;ENCODING=b:" + std::string(5000, 'x') + "\nADR:a\nitem1.tel:1\nNOTE:\n " +
                       std::string(5000, ',') + "\nx.org:b"));
    ASSERT_THAT(cards, SizeIs(1));
    EXPECT_EQ(cards[0].problem, "");
    EXPECT_EQ(cards[0].text, "BEGIN:VCARD\r\nFN:A\r\nitem1.tel:1\r\nx.org:b\r\nEND:VCARD\r\n");
}

TEST(FindCards, AnAbsurdPropertyIsNoted)
{
    const std::string absurd = " is longer than a name, number or address; mend the card";
    for (const std::string name : {"N:", "ORG:", "TEL;TYPE=a"})
        for (const std::string part : {",b", ";b=c"}) {
            std::string line = name;
            for (int i = 0; i < 100000; ++i)
                line += part;
            EXPECT_EQ(problem(card("FN:A\n" + line + ":")), "its line 3" + absurd) << name << part;
        }
    EXPECT_EQ(problem(card("FN:" + std::string(5000, 'x'))), "its line 2" + absurd);
    EXPECT_EQ(problem(card("N:Lee;Ann;B.,C.,D.;Dr.;" + std::string(3000, 'x'))), "");
}

TEST(FindCards, ManyFoldedLinesAreReadInOneGo)
{
    // Each could be the soft end of a quoted-printable line, if the property were one.
    std::string lines = "NOTE:";
    for (int i = 0; i < 300000; ++i)
        lines += "\n x=";
    EXPECT_EQ(problem(card(lines)), "");
}

TEST(FindCards, ALineThatContinuesNothingIsNoted)
{
    EXPECT_EQ(problem(card("FN;ENCODING=QUOTED-PRINTABLE:a=\nb\nc")),
              "its line 4 has no \":\" behind the property's name");
    EXPECT_EQ(problem(card("FN:a=\nb")), "its line 3 has no \":\" behind the property's name");
    EXPECT_EQ(problem(card("TEL;=x:1")), "its line 2 has a parameter without a name");
    EXPECT_EQ(problem(card("TEL;TY%E=x:1")), "its line 2 has a parameter without a name");
    EXPECT_EQ(problem(card("TEL;TYPE=\"x:1")), "its line 2 has no \":\" behind the property's name");
    EXPECT_EQ(problem(card("TEL;FAX;WORK:1")), "");
}

TEST(FindCards, ALineOfANoteOrPictureThatWasBrokenIsPassedOver)
{
    EXPECT_EQ(findCards(card("FN:Ann\nNOTE:a\nb c\nPHOTO;ENCODING=BASE64:/9j/\n4AAQ==\n\nTEL:1")).at(0).text,
              "BEGIN:VCARD\r\nFN:Ann\r\nTEL:1\r\nEND:VCARD\r\n");
}

TEST(FindCards, TheCardOfAnAgentIsNotTheCards)
{
    const auto cards = findCards(card(
        "FN:Ann\nAGENT:\nBEGIN:VCARD\nFN:Bob\nAGENT:\nBEGIN:VCARD\nFN:Cid\nEND:VCARD\nEND:VCARD\nTEL:1"));
    ASSERT_THAT(cards, testing::SizeIs(1));
    EXPECT_EQ(cards[0].text, "BEGIN:VCARD\r\nFN:Ann\r\nTEL:1\r\nEND:VCARD\r\n");
    EXPECT_EQ(findCards("BEGIN:VCARD\nAGENT:\nBEGIN:VCARD\nFN:Bob\nEND:VCARD\n").at(0).problem,
              "has no END:VCARD");
}

TEST(FindCards, LinesOfOldSystemsEndInCarriageReturns)
{
    EXPECT_EQ(findCards("BEGIN:VCARD\rFN:Ann\rEND:VCARD\r").at(0).text,
              "BEGIN:VCARD\r\nFN:Ann\r\nEND:VCARD\r\n");
}

} // namespace
} // namespace quelm
