// Tests of the window that says why the desktop could not be started.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/application.h"
#include "tests/driver/desktop/on_screen.h"
#include "tests/driver/desktop/toolkit.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <string>

namespace quelm {
namespace {

/// The label of the window, null while it cannot be seen.
GtkWidget* label()
{
    GtkWidget* window = onScreen("Start Failure");
    GtkWidget* found = nullptr;
    forEachWidget([&](GtkWidget* widget) {
        if (GTK_IS_LABEL(widget) && gtk_widget_get_mapped(widget) != FALSE && window != nullptr &&
            gtk_widget_get_toplevel(widget) == window &&
            gtk_widget_get_ancestor(widget, GTK_TYPE_BUTTON) == nullptr)
            found = widget;
    });
    return found;
}

class StartFailureTest : public testing::Test {
protected:
    ~StartFailureTest() override
    {
        if (timer_ != 0)
            g_source_remove(timer_);
    }

    /// Tells a failure. `look` is called once the window is there, and has to close it.
    void tell(const std::string& line, std::function<void()> look)
    {
        look_ = std::move(look);
        timer_ = g_timeout_add(20, &StartFailureTest::lookIfThere, this);
        tellStartFailure(line);
        EXPECT_EQ(timer_, 0U) << "the window closed by itself";
        EXPECT_EQ(onScreen("Start Failure"), nullptr);
    }

private:
    static gboolean lookIfThere(gpointer self)
    {
        auto& test = *static_cast<StartFailureTest*>(self);
        if (label() == nullptr)
            return G_SOURCE_CONTINUE;
        test.timer_ = 0;
        test.look_();
        return G_SOURCE_REMOVE;
    }

    Toolkit toolkit_;
    std::function<void()> look_;
    guint timer_ = 0;
};

TEST_F(StartFailureTest, TheLineIsShownUntilTheWindowIsClosed)
{
    std::string shown;
    tell("<office>.conf: no & such group", [&] {
        shown = gtk_label_get_text(GTK_LABEL(label()));
        pressButton("Start Failure Close");
    });
    EXPECT_EQ(shown, "<office>.conf: no & such group");
}

TEST_F(StartFailureTest, AnyBytesAreOneLine)
{
    std::string shown;
    tell("a\nb \xff", [&] {
        shown = gtk_label_get_text(GTK_LABEL(label()));
        pressButton("Start Failure Close");
    });
    EXPECT_EQ(shown, "a b \uFFFD");
}

TEST_F(StartFailureTest, ALongPathStaysOnTheScreen)
{
    int width = 0;
    tell("/" + std::string(2000, 'x') + ": is not there", [&] {
        width = gtk_widget_get_allocated_width(onScreen("Start Failure"));
        pressButton("Start Failure Close");
    });
    EXPECT_GT(width, 100);
    EXPECT_LT(width, 800);
}

TEST_F(StartFailureTest, LettersAreOfTheSizeOfTheOtherWindows)
{
    double points = 0;
    tell("a line", [&] {
        const PangoFontDescription* font =
            pango_context_get_font_description(gtk_widget_get_pango_context(label()));
        points = static_cast<double>(pango_font_description_get_size(font)) / PANGO_SCALE;
        pressButton("Start Failure Close");
    });
    EXPECT_NEAR(points, 9, 0.01);
}

TEST_F(StartFailureTest, ASignalClosesTheWindow)
{
    tell("a line", [] { ASSERT_EQ(raise(SIGTERM), 0); });
}

} // namespace
} // namespace quelm
