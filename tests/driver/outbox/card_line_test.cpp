// Tests of the line of a print stream that carries the number of a credit card.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/card_line.h"

#include "tests/driver/outbox/outbox_support.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

/// A stream passed on in pieces of some size.
struct Cut {
    Cut(const std::string& stream, std::size_t piece)
    {
        CardLineCut cut(kept, card);
        for (std::size_t at = 0; at < stream.size(); at += piece)
            cut.write(std::string_view(stream).substr(at, piece));
        cut.finish();
        position = cut.position();
        size = cut.size();
        lineSize = cut.lineSize();
    }

    StringSink kept;
    StringSink card;
    std::optional<std::uint64_t> position;
    std::uint64_t size = 0;
    std::uint64_t lineSize = 0;
};

TEST(CardLineTest, TheLineOfTheHeaderIsCutWhateverThePieces)
{
    for (const Pdl pdl : {Pdl::dsc, Pdl::pjl}) {
        const std::string stream = streamWithCard(pdl, "4929 1111");
        const std::string line = cardLine(pdl, "4929 1111");
        for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, stream.size()}) {
            const Cut cut(stream, piece);
            EXPECT_EQ(cut.card.text, line);
            ASSERT_TRUE(cut.position);
            std::string whole = cut.kept.text;
            whole.insert(static_cast<std::size_t>(*cut.position), cut.card.text);
            EXPECT_EQ(whole, stream);
            EXPECT_EQ(cut.size, stream.size());
            EXPECT_EQ(cut.lineSize, line.size());
        }
    }
}

TEST(CardLineTest, WhatStandsInTheDocumentIsTheDocuments)
{
    for (const std::string& head : {std::string("%!PS-Adobe-3.0\n%%EndComments\n"),
                                    std::string("\x1B%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n"),
                                    std::string("no header of ours\n"), std::string()}) {
        const std::string stream =
            head + cardLine(Pdl::dsc, "4929") + cardLine(Pdl::pjl, "4929") + "showpage\n";
        // A line that a stream begins with is no attribute of it.
        const Cut cut(stream, 5);
        EXPECT_EQ(cut.kept.text, stream);
        EXPECT_EQ(cut.card.text, "");
        EXPECT_FALSE(cut.position);
    }
}

TEST(CardLineTest, OnlyALinesBeginningCounts)
{
    const std::string stream = "%!PS-Adobe-3.0\n%%Title: " + cardLine(Pdl::dsc, "4929") + "%%EndComments\n";
    EXPECT_EQ(Cut(stream, 3).kept.text, stream);
}

TEST(CardLineTest, LongLinesAndMissingEndsPassAsTheyAre)
{
    const std::string longTitle = "%!PS-Adobe-3.0\n%%Title: " + std::string(100'000, 'x') + "\n";
    const std::string stream = longTitle + cardLine(Pdl::dsc, "4929") + "%%EndComm";
    const Cut cut(stream, 1000);
    EXPECT_EQ(cut.kept.text, longTitle + "%%EndComm");
    EXPECT_EQ(cut.position, longTitle.size());
    EXPECT_EQ(Cut(std::string(100'000, 'x'), 999).kept.text, std::string(100'000, 'x'));
    EXPECT_EQ(Cut("%!PS-Adobe-3.0\n%%OID_ATT_CREDIT_CARD \"49", 1).kept.text,
              "%!PS-Adobe-3.0\n%%OID_ATT_CREDIT_CARD \"49");
}

TEST(CardLineTest, ANumberThatIsNoneMakesNoLine)
{
    for (const std::string number : {"", "12a", "1\"2", "1\r\n2", " "})
        EXPECT_NE(errorLine([&] { (void)cardLine(Pdl::dsc, number); }), "") << number;
    EXPECT_EQ(cardLine(Pdl::dsc, "49-2 9*#"), "%%OID_ATT_CREDIT_CARD \"49-2 9*#\";\r\n");
}

} // namespace
} // namespace quelm::tests
