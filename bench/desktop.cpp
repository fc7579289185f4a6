// Starts the toolkit and drivers, and waits for the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/desktop.h"

#include "bench/comparison.h"
#include "bench/host.h"
#include "host/record_database.h"
#include "tests/driver/desktop/main_loop.h"

#include <gtkmm/application.h>
#include <gtkmm/settings.h>

#include <filesystem>
#include <utility>

namespace bench {

namespace {

/// The toolkit, for as long as the benchmarks run.
struct Toolkit {
    Glib::RefPtr<Gtk::Application> application =
        Gtk::Application::create("org.example.desktop_bench", Gio::APPLICATION_NON_UNIQUE);

    Toolkit()
    {
        // A fading colour is drawn again and again, behind the turn that it belongs to.
        Gtk::Settings::get_default()->property_gtk_enable_animations() = false;
    }
};

template <class Condition>
void waitFor(Condition condition, const char* otherwise)
{
    require(loopUntil(condition), otherwise);
}

void writePhonebook(const std::filesystem::path& file, const Desktop::Fill& fill)
{
    std::filesystem::create_directories(file.parent_path());
    QuelmLegacyDatabase phonebook;
    std::string path = file;
    require(phonebook.createDatabase(path.data(), 0), "the phonebook was not created");
    fill(phonebook);
    require(phonebook.serializeDatabase() && phonebook.closeDatabase(), "the phonebook was not written");
}

} // namespace

std::shared_ptr<void> startHost() { return std::make_shared<Toolkit>(); }

Desktop::Desktop(const Fill& fill)
{
    const std::filesystem::path home = folder_ / "home";
    std::filesystem::create_directory(home);
    std::filesystem::create_directory_symlink(BENCH_ICON_FOLDER, home / "icon");
    // A copy is another library to the loader: the component starts afresh, also when one was loaded before.
    std::filesystem::copy_file(BENCH_COMPONENT, home / "libBramblecorLanFax.so");
    if (fill)
        writePhonebook(home / "db/phonebook/user/ann.xdb", fill);
    quelm::DriverOptions options;
    options.home = home;
    options.user = "ann";
    options.configDirectory = folder_ / "config";
    running_ = std::make_unique<quelm::Driver>(options);
    behind_.present();
    waitUntilFocused(behind_);
}

Desktop::~Desktop()
{
    windows_.reset();
    loopUntilIdle();
}

quelm::Widget& Desktop::tree(const std::string& name)
{
    if (quelm::Widget* found = running_->widgets().find(name))
        return *found;
    throw std::runtime_error("the tree lacks " + name);
}

void Desktop::showWindows() { windows_ = std::make_unique<quelm::DialogWindows>(*running_, behind_); }

void Desktop::removeWindows()
{
    windows_.reset();
    waitUntilFocused(behind_);
}

Gtk::Widget& Desktop::screen(const std::string& name)
{
    if (Gtk::Widget* widget = windows_->onScreen(tree(name)))
        return *widget;
    throw std::runtime_error(name + " is not on the screen");
}

void Desktop::waitUntilDrawn(const std::string& window)
{
    const quelm::Widget& wanted = tree(window);
    waitFor([&] { return windows_->onScreen(wanted) != nullptr; }, "a window was not built");
    bench::waitUntilDrawn(screen(window));
}

void Desktop::waitUntilHidden(const std::string& window)
{
    waitFor([&] { return !screen(window).get_mapped(); }, "a window did not go");
    waitUntilFocused(behind_);
}

void waitUntilDrawn(Gtk::Widget& widget)
{
    const auto& window = dynamic_cast<const Gtk::Window&>(*widget.get_toplevel());
    bool drawn = false;
    sigc::connection drawing = widget.signal_draw().connect([&](const Cairo::RefPtr<Cairo::Context>&) {
        drawn = window.is_active();
        return false;
    });
    const bool done = loopUntil([&drawn] { return drawn; });
    drawing.disconnect();
    require(done, "a widget was not drawn");
    loopUntilIdle();
}

void waitUntilFocused(Gtk::Window& window)
{
    waitFor([&window] { return window.is_active(); }, "a window did not get the focus");
    loopUntilIdle();
}

} // namespace bench
