// Tests of the way from the log to the window and to standard error.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/window_log.h"

#include "tests/driver/desktop/main_loop.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowLogTest : public testing::Test {
protected:
    void open()
    {
        windowLog->showWith([this](Severity, const std::string& line) { waited.push_back(line); },
                            [this](Severity, const std::string& line) { later.push_back(line); });
    }

    static std::string errorsOf(const std::function<void()>& work)
    {
        testing::internal::CaptureStderr();
        work();
        return testing::internal::GetCapturedStderr();
    }

    LogCapture before;
    std::optional<WindowLog> windowLog{std::in_place};
    std::vector<std::string> waited;
    std::vector<std::string> later;
};

TEST_F(WindowLogTest, MessagesWaitForTheWindow)
{
    EXPECT_EQ(errorsOf([] {
                  log(Severity::warning, "first");
                  log(Severity::information, "nothing to worry about");
                  log(Severity::error, "second");
              }),
              "warning: first\nsecond\n");
    open();
    EXPECT_THAT(waited, ElementsAre("first", "second"));
    loopUntilIdle();
    EXPECT_THAT(later, IsEmpty());
}

TEST_F(WindowLogTest, WhileThereIsAWindowMessagesComeFromTheMainLoop)
{
    open();
    EXPECT_EQ(errorsOf([] { std::thread([] { log(Severity::error, "from afar"); }).join(); }), "from afar\n");
    EXPECT_THAT(later, IsEmpty());
    loopUntilIdle();
    EXPECT_THAT(later, ElementsAre("from afar"));
    EXPECT_THAT(waited, IsEmpty());
}

TEST_F(WindowLogTest, BehindItsEndNothingIsShown)
{
    open();
    errorsOf([] { log(Severity::error, "too late"); });
    windowLog.reset();
    log(Severity::error, "elsewhere");
    loopUntilIdle();
    EXPECT_THAT(later, IsEmpty());
    EXPECT_THAT(before.messages, ElementsAre("elsewhere"));
}

} // namespace
} // namespace quelm
