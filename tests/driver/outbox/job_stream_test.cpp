// Tests of print streams that are put together from a job's files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/job_stream.h"

#include "tests/driver/outbox/outbox_support.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class JobStreamTest : public OutboxTest {
protected:
    /// How the handing over of a job ends to whose file something was done.
    std::string troubleAfter(const std::function<void(const std::string& folder)>& action)
    {
        fs::remove_all(outboxFolder);
        Outbox outbox = open();
        const int number =
            put(outbox, draftFor(FileTarget{path("fax.ps")}), streamWithCard(Pdl::dsc, "4929 1111"));
        action(outboxFolder + "/jobs/1/");
        const HandoverEnd end = outbox.handOver(number, noon);
        EXPECT_EQ(end.state, OutboxState::failed);
        EXPECT_FALSE(fs::exists(path("fax.ps")));
        EXPECT_EQ(outbox.job(number).state, OutboxState::failed);
        return end.trouble;
    }
};

TEST_F(JobStreamTest, AStreamThatIsShorterOrLongerGoesNowhere)
{
    for (const std::string name : {"stream", "card"}) {
        const std::string line =
            "/jobs/1/" + name + ": it has not the size that it had; send the document anew";
        EXPECT_THAT(troubleAfter([&](const std::string& folder) {
                        fs::resize_file(folder + name, fs::file_size(folder + name) - 1);
                    }),
                    HasSubstr(line));
        EXPECT_THAT(troubleAfter([&](const std::string& folder) {
                        std::ofstream(folder + name, std::ios::app) << "x";
                    }),
                    HasSubstr(line));
    }
}

TEST_F(JobStreamTest, AStreamThatIsMissingGoesNowhere)
{
    for (const std::string name : {"stream", "card"})
        EXPECT_THAT(troubleAfter([&](const std::string& folder) { fs::remove(folder + name); }),
                    HasSubstr("/jobs/1/" + name));
}

TEST_F(JobStreamTest, TheNameBesideTheDestinationIsNobodysElse)
{
    LogRow row;
    row.token = "0123456789abcdef";
    EXPECT_EQ(preparedName(row), ".quelm-outbox-0123456789abcdef");
}

} // namespace
} // namespace quelm::tests
