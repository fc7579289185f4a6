// Tests of the way from the log to the window and to standard error.
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
        log_->showWith([this](Severity, const std::string& line) { waited_.push_back(line); },
                       [this](Severity, const std::string& line) { later_.push_back(line); });
    }

    static std::string errorsOf(const std::function<void()>& work)
    {
        testing::internal::CaptureStderr();
        work();
        return testing::internal::GetCapturedStderr();
    }

    LogCapture before_;
    std::optional<WindowLog> log_{std::in_place};
    std::vector<std::string> waited_;
    std::vector<std::string> later_;
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
    EXPECT_THAT(waited_, ElementsAre("first", "second"));
    loopUntilIdle();
    EXPECT_THAT(later_, IsEmpty());
}

TEST_F(WindowLogTest, WhileThereIsAWindowMessagesComeFromTheMainLoop)
{
    open();
    EXPECT_EQ(errorsOf([] { std::thread([] { log(Severity::error, "from afar"); }).join(); }), "from afar\n");
    EXPECT_THAT(later_, IsEmpty());
    loopUntilIdle();
    EXPECT_THAT(later_, ElementsAre("from afar"));
    EXPECT_THAT(waited_, IsEmpty());
}

TEST_F(WindowLogTest, BehindItsEndNothingIsShown)
{
    open();
    errorsOf([] { log(Severity::error, "too late"); });
    log_.reset();
    log(Severity::error, "elsewhere");
    loopUntilIdle();
    EXPECT_THAT(later_, IsEmpty());
    EXPECT_THAT(before_.messages, ElementsAre("elsewhere"));
}

} // namespace
} // namespace quelm
