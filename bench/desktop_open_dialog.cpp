// Opening the fax dialog, beside a window with the same controls and nothing behind them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/desktop.h"
#include "bench/desktop_plain_window.h"

namespace bench {

namespace {

const std::string dialog = "Lan Fax Window";

std::size_t widgetsIn(Gtk::Widget& widget)
{
    std::size_t count = 1;
    if (auto* container = dynamic_cast<Gtk::Container*>(&widget))
        for (Gtk::Widget* child : container->get_children())
            count += widgetsIn(*child);
    return count;
}

class Openings {
public:
    double openDialog()
    {
        return secondsOf([this] {
            desktop.act([this] { desktop.driver().call("T40InvokeFaxDialog"); });
            desktop.waitUntilDrawn(dialog);
        });
    }

    void closeDialog()
    {
        desktop.act([this] { desktop.driver().press("LanFax Cancel Button"); });
        desktop.waitUntilHidden(dialog);
    }

    /// Builds the window when there is none.
    double openPlain()
    {
        return secondsOf([this] {
            if (!plain_)
                plain_ = std::make_unique<PlainWindow>(desktop.tree(dialog), desktop.driver().home() + '/');
            plain_->present(desktop.mainWindow());
            waitUntilDrawn(plain_->onScreen());
        });
    }

    std::size_t widgetsOfDialog() { return widgetsIn(desktop.screen(dialog)); }
    std::size_t widgetsOfPlain() { return widgetsIn(plain_->onScreen()); }

    void closePlain()
    {
        plain_->onScreen().hide();
        waitUntilFocused(desktop.mainWindow());
    }

    void forgetPlain() { plain_.reset(); }

    Desktop desktop;

private:
    std::unique_ptr<PlainWindow> plain_;
};

/// New windows each time: what the first opening in a session takes.
void openFirst(benchmark::State& state)
{
    Openings openings;
    std::size_t widgets = 0;
    std::size_t plainWidgets = 0;
    compareMeasured(
        state, 1,
        [&] {
            openings.desktop.showWindows();
            const double seconds = openings.openDialog();
            widgets = openings.widgetsOfDialog();
            openings.closeDialog();
            openings.desktop.removeWindows();
            return seconds;
        },
        [&] {
            const double seconds = openings.openPlain();
            plainWidgets = openings.widgetsOfPlain();
            openings.closePlain();
            openings.forgetPlain();
            return seconds;
        });
    // Boxes around pages and the like may be more on one side; the controls are not.
    require(plainWidgets * 10 > widgets * 9 && plainWidgets * 9 < widgets * 10,
            "the plain window has other controls");
    state.counters["widgets"] = static_cast<double>(widgets);
}

void openAgain(benchmark::State& state)
{
    Openings openings;
    openings.desktop.showWindows();
    openings.openDialog();
    openings.closeDialog();
    openings.openPlain();
    openings.closePlain();
    compareMeasured(
        state, 1,
        [&] {
            const double seconds = openings.openDialog();
            openings.closeDialog();
            return seconds;
        },
        [&] {
            const double seconds = openings.openPlain();
            openings.closePlain();
            return seconds;
        });
}

BENCHMARK(openFirst)->Name("open_fax_dialog")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openAgain)->Name("open_fax_dialog_again")->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
