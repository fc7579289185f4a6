// Tests of the confirmation sheet as text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/columns.h"
#include "base/texts.h"
#include "device/report/confirmation_sheet.h"
#include "tests/device/display/page_support.h"
#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quelm::tests {
namespace {

using namespace device;

class ConfirmationTextTest : public ::testing::Test {
protected:
    ConfirmationTextTest() { setenv("TZ", "UTC0", 1); }

    std::string text() const { return confirmationText(job, calls); }

    /// Every line is UTF-8 of at most 79 columns.
    void expectFits() const
    {
        std::istringstream lines(text());
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(widthOf(line), 79U) << line;
            EXPECT_TRUE(isPlainText(line)) << line;
            EXPECT_FALSE(line.ends_with(' ')) << line;
        }
    }

    KeptVariable zone{"TZ"};
    JobRecord job = sampleJob();
    std::vector<CallRecord> calls = sampleCalls();
};

TEST_F(ConfirmationTextTest, AWholeSheet)
{
    EXPECT_EQ(text(), R"(Fax confirmation
===============================================================================

Sample letter
sent to 2 of 3 recipients

Job:          12
Received:     2026-11-22 21:43:10
From:         127.0.0.1:40112
Pages:        3
Cover sheet:  yes
Resolution:   fine (204 x 196 dots per inch)
Speed:        the fastest (Super G3)
Calls:        4
Line time:    2:00

No.  Number              Last call            Duration   Pages  Calls
-------------------------------------------------------------------------------
  1  555-010-4477        2026-11-22 21:44:10      0:45  3 of 3      2
     sent
     14400 bit/s, error correction
     the other machine is +1 555 010 4477
  2  9,1 (555) 010-4478  2026-11-22 21:45:10      0:46  3 of 3      1
     sent
     mailbox 42
     14400 bit/s, error correction
  3  +30 21 0555 0123    2026-11-22 21:46:10      0:47  1 of 3      1
     the other machine hung up (The call dropped prematurely, code 17)
     4800 bit/s, no error correction
)");
    expectFits();
}

TEST_F(ConfirmationTextTest, ANoteStandsAtTheEnd)
{
    calls[1].fellBack = true;
    expectFits();
    EXPECT_TRUE(text().ends_with("no error correction\n\nSuper G3 (V.34) was asked for. The device has no "
                                 "modem for it: the calls were\nmade at 14400 bit/s or less.\n"))
        << text();
}

TEST_F(ConfirmationTextTest, ACreditCardIsNoPartOfIt) { EXPECT_EQ(text().find("4123"), std::string::npos); }

TEST_F(ConfirmationTextTest, ALongTitleEndsWithItsThirdLine)
{
    job.reading.title.clear();
    for (int i = 0; i < 200; ++i)
        job.reading.title += "\u9577\u3044";
    expectFits();
    std::string line;
    for (int i = 0; i < 39; ++i)
        line += i % 2 == 0 ? "\u9577" : "\u3044";
    EXPECT_NE(text().find("\n\n" + line + "\n"), std::string::npos) << text();
    std::istringstream lines(text());
    std::vector<std::string> all;
    for (std::string each; std::getline(lines, each);)
        all.push_back(each);
    EXPECT_TRUE(all[5].ends_with("\u9577...") || all[5].ends_with("\u3044...")) << all[5];
    EXPECT_EQ(all[6], "sent to 2 of 3 recipients");

    job.reading.title = std::string(3 * 79, 'w');
    EXPECT_NE(text().find("\n" + std::string(79, 'w') + "\nsent to"), std::string::npos) << "all of it fits";
    job.reading.title += "w";
    EXPECT_NE(text().find("\n" + std::string(76, 'w') + "...\nsent to"), std::string::npos) << text();
    expectFits();
}

TEST_F(ConfirmationTextTest, LongTextsAreBrokenAtBlanksAndNothingIsLost)
{
    job.reading.title.clear();
    for (int i = 0; i < 30; ++i)
        job.reading.title += "word" + std::to_string(i) + " ";
    job.recipients[2].result = std::string(300, 'x');
    expectFits();
    const std::string sheet = text();
    for (int i = 0; i < 30; ++i)
        EXPECT_NE(sheet.find("word" + std::to_string(i)), std::string::npos);
    EXPECT_EQ(std::ranges::count(sheet, 'x'), 300 + 3); // and those of "Fax", "204 x 196" and "mailbox"
}

TEST_F(ConfirmationTextTest, ALongNumberHasALineOfItsOwn)
{
    job.recipients[0].number = std::string(200, '7');
    expectFits();
    const std::string sheet = text();
    EXPECT_NE(sheet.find("\n  1  " + std::string(74, '7') + "\n     " + std::string(74, '7') + "\n     " +
                         std::string(52, '7') + "\n"),
              std::string::npos)
        << sheet;
    // The other columns stay in line.
    EXPECT_NE(sheet.find("2026-11-22 21:44:10      0:45  3 of 3      2\n"), std::string::npos);
}

TEST_F(ConfirmationTextTest, WideCharactersTakeTwoColumns)
{
    job.reading.title = "\u4f20\u771f\u6d4b\u8bd5 \u05e4\u05e7\u05e1 \u03a6\u03b1\u03be ";
    for (int i = 0; i < 5; ++i)
        job.reading.title += job.reading.title;
    expectFits();
    EXPECT_NE(text().find("\u4f20\u771f\u6d4b\u8bd5"), std::string::npos);
}

TEST_F(ConfirmationTextTest, WhatSendersWriteAddsNoLines)
{
    job.reading.title = "a title\nNo.  Number\x1B[2J \xC2\x85 \xFF";
    job.recipients[1].mailbox = "4\r2";
    calls[3].identity = "+1\n555";
    expectFits();
    EXPECT_EQ(text().find("\nNo.  Number\x1B"), std::string::npos);
    EXPECT_NE(text().find("a title No.  Number [2J"), std::string::npos);
    EXPECT_NE(text().find("mailbox 4 2\n"), std::string::npos);
    EXPECT_NE(text().find("is +1 555\n"), std::string::npos);
}

TEST_F(ConfirmationTextTest, AThousandPagesAndFiveHundredRecipientsStayInLine)
{
    job.pages = 1000;
    job.recipients.resize(500, job.recipients[0]);
    for (int i = 0; i < 500; ++i)
        job.recipients[static_cast<std::size_t>(i)].position = i + 1;
    job.recipients[499].pagesSent = 1000;
    expectFits();
    EXPECT_NE(text().find("\n500  555-010-4477"), std::string::npos);
    EXPECT_NE(text().find("1000 of 1000"), std::string::npos);
}

} // namespace
} // namespace quelm::tests
