// Tests of the height of a window with a part that comes and goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
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
        body.set_size_request(300, bodyHeight);
        part.set_size_request(-1, partHeight);
        box.pack_start(part, Gtk::PACK_SHRINK);
        box.pack_start(body, Gtk::PACK_EXPAND_WIDGET);
        window.add(box);
        height.addPassing(part);
        body.show();
        box.show();
        window.present();
        EXPECT_TRUE(loopUntil([this] { return window.get_mapped() && isHigh(bodyHeight); }));
    }

    bool isHigh(int pixels) const { return window.get_allocated_height() == pixels; }

    Toolkit toolkit;
    Gtk::Window window;
    Gtk::Box box{Gtk::ORIENTATION_VERTICAL};
    Gtk::DrawingArea part;
    Gtk::DrawingArea body;
    WindowHeight height{window};
};

TEST_F(WindowHeightTest, APartTakesTheHeightWithItThatItNeeded)
{
    part.show();
    ASSERT_TRUE(loopUntil([this] { return isHigh(bodyHeight + partHeight); }));
    EXPECT_EQ(height.atRest(), bodyHeight);
    part.hide();
    EXPECT_TRUE(loopUntil([this] { return isHigh(bodyHeight); }));
    EXPECT_EQ(height.atRest(), bodyHeight);
}

TEST_F(WindowHeightTest, AHeightThatTheUserChoosesMeanwhileStays)
{
    constexpr int chosen = 400;
    part.show();
    ASSERT_TRUE(loopUntil([this] { return isHigh(bodyHeight + partHeight); }));
    window.resize(300, chosen);
    ASSERT_TRUE(loopUntil([this] { return isHigh(chosen); }));
    EXPECT_EQ(height.atRest(), chosen);
    part.hide();
    // What the window is asked for now comes behind anything that the part's end asked for.
    window.resize(340, chosen);
    ASSERT_TRUE(loopUntil([this] { return window.get_allocated_width() == 340; }));
    EXPECT_TRUE(isHigh(chosen));
}

TEST_F(WindowHeightTest, AWindowWithRoomStaysAsItIs)
{
    constexpr int roomy = 400;
    window.resize(300, roomy);
    ASSERT_TRUE(loopUntil([this] { return isHigh(roomy); }));
    part.show();
    ASSERT_TRUE(loopUntil([this] { return part.get_mapped(); }));
    EXPECT_EQ(height.atRest(), roomy);
    part.hide();
    window.resize(340, roomy);
    ASSERT_TRUE(loopUntil([this] { return window.get_allocated_width() == 340; }));
    EXPECT_TRUE(isHigh(roomy));
}

TEST_F(WindowHeightTest, AMaximizedWindowsHeightIsNotTheUsers)
{
    window.maximize();
    ASSERT_TRUE(loopUntil([this] { return window.is_maximized() && window.get_allocated_height() > 500; }));
    part.show();
    ASSERT_TRUE(loopUntil([this] { return part.get_mapped(); }));
    part.hide();
    loopUntilIdle();
    EXPECT_EQ(height.atRest(), bodyHeight);
}

} // namespace
} // namespace quelm
