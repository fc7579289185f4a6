// The driver's log.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/log.h"

#include "base/texts.h"
#include "tests/support/log_capture.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

using quelm::Severity;

/// The program has a name as long as this lives.
class ProgramName {
public:
    explicit ProgramName(const std::string& name) { quelm::setProgramName(name); }
    ~ProgramName() { quelm::setProgramName({}); }
    ProgramName(const ProgramName&) = delete;
    ProgramName& operator=(const ProgramName&) = delete;
};

std::string errorsOf(const std::function<void()>& work)
{
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

TEST(LogTest, AMessageIsOneLine)
{
    const LogCapture log;
    quelm::log(Severity::warning, "two\r\nlines\tand \x1b[31mcolour");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "two  lines and  [31mcolour");
}

TEST(LogTest, AMessageIsHarmlessAndBounded)
{
    const LogCapture log;
    quelm::log(Severity::warning, "\u202e\u009b" + std::string(100000, 'x') + "; what to do");
    ASSERT_EQ(log.messages.size(), 1U);
    const std::string& line = log.messages[0];
    EXPECT_EQ(line.substr(0, 10), "\\u{202e} x");
    EXPECT_TRUE(line.ends_with("x; what to do"));
    EXPECT_EQ(line.size(), quelm::longestLogLine + std::string("…").size() - 1);
}

TEST(LogTest, ALineOnStandardErrorIsBounded)
{
    const ProgramName name("prog");
    const auto line = errorsOf([] { quelm::writeUnderProgramName(std::string(100000, 'x') + "end"); });
    EXPECT_EQ(line.size(), std::string("prog: …\n").size() + quelm::longestLogLine - 1);
    EXPECT_TRUE(line.ends_with("xend\n"));
}

TEST(LogTest, AQuietProgramSaysOnlyWhatFails)
{
    const auto said = [](bool quiet) {
        return errorsOf([quiet] {
            quelm::setQuiet(quiet);
            quelm::log(Severity::warning, "a warning");
            quelm::writeRemark("a remark");
            quelm::log(Severity::error, "an error");
            quelm::writeUnderProgramName("a failure");
            quelm::setQuiet(false);
        });
    };
    EXPECT_EQ(said(true), "an error\na failure\n");
    EXPECT_EQ(said(false), "warning: a warning\na remark\nan error\na failure\n");
}

TEST(LogTest, StandardErrorGetsWarningsAndErrorsUnderTheProgramsName)
{
    const ProgramName name("prog");
    EXPECT_EQ(errorsOf([] {
                  quelm::log(Severity::information, "not shown");
                  quelm::log(Severity::warning, "careful");
                  quelm::log(Severity::error, "broken");
              }),
              "prog: warning: careful\nprog: broken\n");
}

TEST(LogTest, AProgramWithoutANameWritesTheBareLines)
{
    const ProgramName name("");
    EXPECT_EQ(errorsOf([] { quelm::log(Severity::error, "broken"); }), "broken\n");
}

TEST(LogTest, ASinkMayWriteToStandardErrorAsTheLogDoes)
{
    const ProgramName name("prog");
    const auto line = errorsOf([] { quelm::log(Severity::warning, "careful"); });
    const LogCapture log;
    EXPECT_EQ(errorsOf([] { quelm::log(Severity::warning, "careful"); }), "");
    EXPECT_EQ(errorsOf([] { quelm::logToStandardError(Severity::warning, "careful"); }), line);
    EXPECT_EQ(errorsOf([] { quelm::logToStandardError(Severity::information, "careful"); }), "");
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
