// Tests of the height of a window with a part that comes and goes.
#include "driver/desktop/main_window/window_height.h"

#include "tests/driver/desktop/main_loop.h"
#include "tests/driver/desktop/toolkit.h"

#include <gtest/gtest.h>
#include <gtkmm/box.h>
#include <gtkmm/drawingarea.h>

namespace quelm {
namespace {

constexpr int bodyHeight = 200;
constexpr int partHeight = 50;

class WindowHeightTest : public testing::Test {
protected:
    WindowHeightTest()
    {
        body_.set_size_request(300, bodyHeight);
        part_.set_size_request(-1, partHeight);
        box_.pack_start(part_, Gtk::PACK_SHRINK);
        box_.pack_start(body_, Gtk::PACK_EXPAND_WIDGET);
        window_.add(box_);
        height_.addPassing(part_);
        body_.show();
        box_.show();
        window_.present();
        EXPECT_TRUE(loopUntil([this] { return window_.get_mapped() && isHigh(bodyHeight); }));
    }

    bool isHigh(int height) const { return window_.get_allocated_height() == height; }

    Toolkit toolkit_;
    Gtk::Window window_;
    Gtk::Box box_{Gtk::ORIENTATION_VERTICAL};
    Gtk::DrawingArea part_;
    Gtk::DrawingArea body_;
    WindowHeight height_{window_};
};

TEST_F(WindowHeightTest, APartTakesTheHeightWithItThatItNeeded)
{
    part_.show();
    ASSERT_TRUE(loopUntil([this] { return isHigh(bodyHeight + partHeight); }));
    EXPECT_EQ(height_.atRest(), bodyHeight);
    part_.hide();
    EXPECT_TRUE(loopUntil([this] { return isHigh(bodyHeight); }));
    EXPECT_EQ(height_.atRest(), bodyHeight);
}

TEST_F(WindowHeightTest, AHeightThatTheUserChoosesMeanwhileStays)
{
    constexpr int chosen = 400;
    part_.show();
    ASSERT_TRUE(loopUntil([this] { return isHigh(bodyHeight + partHeight); }));
    window_.resize(300, chosen);
    ASSERT_TRUE(loopUntil([this] { return isHigh(chosen); }));
    EXPECT_EQ(height_.atRest(), chosen);
    part_.hide();
    // What the window is asked for now comes behind anything that the part's end asked for.
    window_.resize(340, chosen);
    ASSERT_TRUE(loopUntil([this] { return window_.get_allocated_width() == 340; }));
    EXPECT_TRUE(isHigh(chosen));
}

TEST_F(WindowHeightTest, AWindowWithRoomStaysAsItIs)
{
    constexpr int roomy = 400;
    window_.resize(300, roomy);
    ASSERT_TRUE(loopUntil([this] { return isHigh(roomy); }));
    part_.show();
    ASSERT_TRUE(loopUntil([this] { return part_.get_mapped(); }));
    EXPECT_EQ(height_.atRest(), roomy);
    part_.hide();
    window_.resize(340, roomy);
    ASSERT_TRUE(loopUntil([this] { return window_.get_allocated_width() == 340; }));
    EXPECT_TRUE(isHigh(roomy));
}

TEST_F(WindowHeightTest, AMaximizedWindowsHeightIsNotTheUsers)
{
    window_.maximize();
    ASSERT_TRUE(loopUntil([this] { return window_.is_maximized() && window_.get_allocated_height() > 500; }));
    part_.show();
    ASSERT_TRUE(loopUntil([this] { return part_.get_mapped(); }));
    part_.hide();
    loopUntilIdle();
    EXPECT_EQ(height_.atRest(), bodyHeight);
}

} // namespace
} // namespace quelm
