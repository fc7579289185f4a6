// The driver's log.
#include "base/log.h"

#include "tests/support/log_capture.h"

#include <gtest/gtest.h>

namespace {

using quelm::Severity;

TEST(LogTest, AMessageIsOneLine)
{
    const LogCapture log;
    quelm::log(Severity::warning, "two\r\nlines\tand \x1b[31mcolour");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "two  lines and  [31mcolour");
}

TEST(LogTest, StandardErrorGetsWarningsAndErrorsUnderTheProgramsName)
{
    testing::internal::CaptureStderr();
    quelm::log(Severity::information, "not shown");
    quelm::log(Severity::warning, "careful");
    quelm::log(Severity::error, "broken");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "quelm-driver: warning: careful\nquelm-driver: broken\n");
}

TEST(LogTest, TheSinkBeforeIsHandedBack)
{
    int first = 0;
    quelm::LogSink before = quelm::setLogSink([&first](Severity, const std::string&) { ++first; });
    quelm::LogSink mine = quelm::setLogSink(std::move(before));
    ASSERT_TRUE(mine);
    mine(Severity::error, "message");
    EXPECT_EQ(first, 1);
}

} // namespace
