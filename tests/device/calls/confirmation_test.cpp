// Tests of keeping confirmation sheets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/confirmation.h"

#include "base/disk_room.h"
#include "tests/device/jobs/state_support.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class ConfirmationTest : public StateTest {
protected:
    ConfirmationTest()
    {
        open();
        ReceivedJob reading = faxFor({"5550104477"});
        reading.confirmationSheet = true;
        addRendered(reading);
        writePages(folder->pagesFile(1), {samplePage(1)});
        endSent(begin());
    }

    /// What writing the sheet throws.
    std::unique_ptr<Error> failure()
    {
        try {
            writeConfirmation(*folder, *log, 1);
        } catch (const NoRoom& error) {
            return std::make_unique<NoRoom>(error);
        } catch (const Error& error) {
            return std::make_unique<Error>(error);
        }
        return nullptr;
    }
};

TEST_F(ConfirmationTest, ASheetIsTextAndPdfForItsOwnerAlone)
{
    writeConfirmation(*folder, *log, 1);
    EXPECT_THAT(contentOf(folder->reportText(1)), HasSubstr("5550104477"));
    EXPECT_THAT(contentOf(folder->reportPdf(1)), StartsWith("%PDF-"));
    for (const auto& file : {folder->reportText(1), folder->reportPdf(1)})
        EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600)) << file;
    EXPECT_THAT(log->missingReports(), ElementsAre(1)) << "it is the caller who enters it";
}

TEST_F(ConfirmationTest, AFullDiskIsToldFromOtherFailures)
{
    fs::remove(path / "reports");
    EXPECT_EQ(dynamic_cast<const NoRoom*>(failure().get()), nullptr);
    const KeptVariable kept("TMPDIR");
    ::setenv("TMPDIR", "/proc", 1); // never has room
    EXPECT_NE(dynamic_cast<const NoRoom*>(failure().get()), nullptr);
}

TEST_F(ConfirmationTest, ASheetThatCannotBeWrittenIsStillMissing)
{
    fs::remove(path / "reports");
    EXPECT_THAT(failureLine([&] { writeConfirmation(*folder, *log, 1); }), HasSubstr("job-1"));
    EXPECT_THAT(log->missingReports(), ElementsAre(1));
    open();
    writeConfirmation(*folder, *log, 1);
    EXPECT_TRUE(fs::exists(folder->reportPdf(1)));
}

} // namespace
} // namespace quelm::device::tests
