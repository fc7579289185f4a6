// Messages that wait, and the one that becomes an error.
#include "base/held_log.h"

#include "base/error.h"
#include "tests/support/log_capture.h"

#include <gtest/gtest.h>

namespace {

TEST(HeldLog, LogsInOrderWhenItEnds)
{
    LogCapture capture;
    {
        const quelm::HeldLog held;
        quelm::log(quelm::Severity::warning, "first");
        quelm::log(quelm::Severity::error, "second");
        EXPECT_TRUE(capture.messages.empty());
    }
    EXPECT_EQ(capture.messages, (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(capture.severities, (std::vector{quelm::Severity::warning, quelm::Severity::error}));
}

TEST(HeldLog, LeavesOutTheTroubleThatIsThrown)
{
    LogCapture capture;
    EXPECT_THROW(quelm::tellTroubleOnce([] {
                     quelm::log(quelm::Severity::warning, "the server is gone");
                     quelm::log(quelm::Severity::warning, "another thing");
                     throw quelm::Error("--directory Smi: the server is gone");
                 }),
                 quelm::Error);
    EXPECT_EQ(capture.messages, (std::vector<std::string>{"another thing"}));
}

TEST(HeldLog, LogsEverythingWhenNothingIsThrown)
{
    LogCapture capture;
    quelm::tellTroubleOnce([] { quelm::log(quelm::Severity::warning, "the server is gone"); });
    EXPECT_EQ(capture.messages, (std::vector<std::string>{"the server is gone"}));
}

} // namespace
