// Tests of the confirmation sheet as PDF, read back by Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/ghostscript/ghostscript.h"
#include "device/report/confirmation_sheet.h"
#include "tests/device/display/page_support.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace quelm::tests {
namespace {

using namespace device;

class ConfirmationPdfTest : public ::testing::Test {
protected:
    ConfirmationPdfTest() { setenv("TZ", "UTC0", 1); }

    /// The texts of the sheet's pages, lines as they stand beside each other, blanks as one.
    std::vector<std::string> pages(const std::string& picture = {})
    {
        const std::string pdf = folder / "sheet.pdf";
        writeConfirmationPdf(pdf, job, calls, picture);
        const auto result = runGhostscript({},
                                           {"-q", "-sDEVICE=txtwrite", "-sOutputFile=" + (folder / "%d.txt"),
                                            "--permit-file-read=" + pdf, pdf},
                                           {});
        EXPECT_EQ(result.exitStatus, 0) << result.errors;

        std::vector<std::string> texts;
        for (int page = 1;; ++page) {
            const std::string file = folder / (std::to_string(page) + ".txt");
            std::string text = contentOf(file);
            if (!std::filesystem::remove(file))
                return texts;
            const auto twoBlanks = [](char a, char b) { return a == ' ' && b == ' '; };
            text.erase(std::unique(text.begin(), text.end(), twoBlanks), text.end());
            texts.push_back(text);
        }
    }

    TemporaryFolder folder;
    KeptVariable zone{"TZ"};
    JobRecord job = sampleJob();
    std::vector<CallRecord> calls = sampleCalls();
};

bool holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(ConfirmationPdfTest, SaysWhatTheTextSays)
{
    const auto sheet = pages();
    ASSERT_EQ(sheet.size(), 1U);
    for (const char* part : {"Fax confirmation", "Sample letter", "sent to 2 of 3 recipients",
                             "2026-11-22 21:43:10", "127.0.0.1:40112", "fine (204 x 196 dots per inch)",
                             "555-010-4477", "2026-11-22 21:44:10 0:45", "3 of 3 2 sent", "mailbox 42",
                             "14400 bit/s, error correction", "the other machine is +1 555 010 4477",
                             "9,1 (555) 010-4478", "1 of 3 1 the other machine", "code", "page 1 of 1"})
        EXPECT_TRUE(holds(sheet[0], part)) << part << "\n" << sheet[0];
    EXPECT_FALSE(holds(sheet[0], "4123"));
    EXPECT_FALSE(holds(sheet[0], "first page"));
}

TEST_F(ConfirmationPdfTest, FiveHundredRecipientsHaveTheTablesHeadOnEachPage)
{
    const RecipientRecord one = job.recipients[1];
    job.recipients.assign(500, one);
    for (int i = 0; i < 500; ++i)
        job.recipients[static_cast<std::size_t>(i)].number = "555-01-" + std::to_string(10000 + i);
    const auto sheet = pages();
    ASSERT_GT(sheet.size(), 10U);
    int next = 0;
    for (std::size_t page = 0; page < sheet.size(); ++page) {
        EXPECT_TRUE(holds(sheet[page], "Last call")) << page;
        EXPECT_TRUE(
            holds(sheet[page], "page " + std::to_string(page + 1) + " of " + std::to_string(sheet.size())));
        while (next < 500 && holds(sheet[page], "555-01-" + std::to_string(10000 + next)))
            ++next;
    }
    EXPECT_EQ(next, 500);
}

TEST_F(ConfirmationPdfTest, ANoteStandsBehindTheLastRecipient)
{
    calls[1].fellBack = true;
    const RecipientRecord one = job.recipients[1];
    for (const std::size_t recipients : {1U, 16U, 17U}) {
        job.recipients.assign(recipients, one);
        const auto sheet = pages();
        EXPECT_TRUE(holds(sheet.back(), "Super G3 (V.34) was asked for.")) << recipients;
    }
}

TEST_F(ConfirmationPdfTest, WhatIsHigherThanItsNumberTakesItsRoom)
{
    const auto pageCount = [this] {
        writeConfirmationPdf(folder / "sheet.pdf", job, calls);
        const std::string pdf = contentOf(folder / "sheet.pdf");
        return std::stoi(pdf.substr(pdf.find("/Count ") + 7));
    };
    const RecipientRecord one = job.recipients[2];
    calls.clear();
    job.recipients.assign(20, one);
    for (auto& recipient : job.recipients)
        recipient.result = "no";
    EXPECT_EQ(pageCount(), 1);
    for (auto& recipient : job.recipients)
        recipient.result = std::string(200, 'r');
    EXPECT_GE(pageCount(), 2) << "results do not stand on those below them";

    // A note that has no room behind the last row stands on a page of its own.
    job.recipients.clear();
    int pushed = 0;
    for (int recipients = 1; recipients <= 30; ++recipients) {
        job.recipients.push_back(one);
        job.recipients.back().result = "no";
        const int before = pageCount();
        calls = {sampleCalls().front()};
        calls[0].fellBack = true;
        calls[0].position = 99;
        pushed += pageCount() - before;
        calls.clear();
    }
    EXPECT_GE(pushed, 1);
}

TEST_F(ConfirmationPdfTest, TextsInEveryScriptStandOnIt)
{
    job.reading.title = "\u039a\u03b1\u03bb\u03b7\u03bc\u03ad\u03c1\u03b1 \u4f20\u771f";
    const auto sheet = pages();
    EXPECT_TRUE(holds(sheet[0], "\u039a\u03b1\u03bb\u03b7\u03bc\u03ad\u03c1\u03b1")) << sheet[0];
    EXPECT_TRUE(holds(sheet[0], "\u4f20\u771f")) << sheet[0];
}

TEST_F(ConfirmationPdfTest, TheLongestNumberThatIsDialledIsWhole)
{
    const auto sevens = [this](const std::string& number) {
        job.recipients[0].number = number;
        const std::string sheet = pages().at(0);
        EXPECT_FALSE(holds(sheet, "\u2026")) << sheet;
        return std::ranges::count(sheet, '7');
    };
    EXPECT_EQ(sevens(std::string(100, '7')), sevens("") + 100);
}

TEST_F(ConfirmationPdfTest, WhateverItsTextsHoldTheSheetIsWritten)
{
    job.reading.title = std::string(500'000, 'W') + "\n\x1B \xFF";
    job.from.clear();
    for (auto& recipient : job.recipients) {
        recipient.number = std::string(5000, '7');
        recipient.mailbox = std::string(5000, 'm');
        recipient.result = std::string(5000, 'r') + "\xF0";
    }
    const auto sheet = pages();
    ASSERT_EQ(sheet.size(), 2U) << "each row has a bound";
    EXPECT_TRUE(holds(sheet[1], "page 2 of 2"));
    job.recipients.clear();
    EXPECT_EQ(pages().size(), 1U);
}

TEST_F(ConfirmationPdfTest, TheFirstPageIsShownWhenItCanBeRead)
{
    const std::string tiff = writePages(folder / "pages.tif", {{.blackLines = 300}});
    EXPECT_TRUE(holds(pages(tiff)[0], "first page"));
    const auto withPicture = std::filesystem::file_size(folder / "sheet.pdf");
    writeFile(tiff, "II*");
    EXPECT_FALSE(holds(pages(tiff)[0], "first page"));
    EXPECT_GT(withPicture, std::filesystem::file_size(folder / "sheet.pdf"));
}

TEST_F(ConfirmationPdfTest, TheFileIsItsOwnersAloneAndWholeOrNotThere)
{
    writeConfirmationPdf(folder / "sheet.pdf", job, calls);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder / "sheet.pdf").permissions(),
              perms::owner_read | perms::owner_write);
    EXPECT_THROW(writeConfirmationPdf(folder / "missing/sheet.pdf", job, calls), Error);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"sheet.pdf"});
}

TEST_F(ConfirmationPdfTest, SeveralThreadsMayWriteAtOnce)
{
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(
            [&, i] { writeConfirmationPdf(folder / (std::to_string(i) + ".pdf"), job, calls); });
    threads.clear();
    for (const auto& name : folder.names())
        EXPECT_TRUE(contentOf(folder / name).ends_with("%%EOF\n"));
    EXPECT_EQ(folder.names().size(), 4U);
}

} // namespace
} // namespace quelm::tests
