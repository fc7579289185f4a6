// Follows the widget tree: makes, shows and hides windows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/dialog_windows.h"

#include "base/log.h"
#include "driver/desktop/dialogs/dialog_window.h"
#include "driver/desktop/dialogs/file_chooser_window.h"
#include "driver/desktop/dialogs/question_dialogs.h"
#include "driver/desktop/toolkit/style.h"
#include "driver/widgets/widget_tree.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quelm {

class DialogWindows::Parts : public WidgetObserver, public Refreshable {
public:
    Parts(Driver& driverOfDialogs, Gtk::Window& windowBehind)
        : driver_(driverOfDialogs), mainWindow_(windowBehind),
          pictures_(driver_.home()), context_{driver_, turns, pictures_},
          questions_(context_, [this]() -> Gtk::Window& { return topWindow(); })
    {
        useProgramIcon(pictures_);
        driver_.widgets().addObserver(*this);
        for (const auto& window : driver_.widgets().windows())
            if (window->isWindow() && window->visible())
                wanted_.push_back(window.get());
        turns.touch(*this);
        turns.setTrouble([this](const std::string& message) { showTrouble(message); });
        turns.setSettled([this] {
            // A message stays until something was done that succeeded.
            if (!std::exchange(troubled_, false) && !shown_.empty())
                shown_.back().window->clearTrouble();
            if (settled)
                settled();
        });
    }

    ~Parts() override
    {
        driver_.widgets().removeObserver(*this);
        turns.forget(*this);
    }

    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    // --- The tree changes ------------------------------------------------------------------------

    void changed(Widget& widget, WidgetChange what) override
    {
        if (widget.isWindow() && what == WidgetChange::visibility) {
            std::erase(wanted_, &widget);
            if (widget.visible())
                wanted_.push_back(&widget);
            turns.touch(*this);
        } else if (Control* control = controlOf(widget)) {
            turns.touch(*control);
        }
    }

    void rowsChanged(Widget& list) override
    {
        if (auto* control = dynamic_cast<ListControl*>(controlOf(list))) {
            control->noteRows();
            turns.touch(*control);
        }
    }

    void windowRemoved(Widget& window) override
    {
        std::erase(wanted_, &window);
        std::erase_if(shown_, [&window](const Shown& entry) { return entry.tree == &window; });
        windows_.erase(&window);
    }

    // --- The screen follows ----------------------------------------------------------------------

    void refresh() override
    {
        const auto isWanted = [this](const Shown& entry) {
            return std::find(wanted_.begin(), wanted_.end(), entry.tree) != wanted_.end();
        };
        for (const Shown& entry : shown_)
            if (!isWanted(entry))
                entry.window->withdraw();
        std::erase_if(shown_, [&](const Shown& entry) { return !isWanted(entry); });
        for (Widget* tree : wanted_) {
            const bool isShown = std::any_of(shown_.begin(), shown_.end(),
                                             [tree](const Shown& entry) { return entry.tree == tree; });
            if (!isShown) {
                TopLevel& window = windowFor(*tree);
                Gtk::Window& over = topWindow();
                shown_.push_back({tree, &window});
                window.present(over);
            }
        }
    }

    Gtk::Window& topWindow() { return shown_.empty() ? mainWindow_ : *shown_.back().window->onScreen(); }

    Gtk::Widget* onScreen(const Widget& widget)
    {
        const auto window = windows_.find(&widget);
        if (window != windows_.end())
            return window->second->onScreen();
        const bool isItem = widget.kind() == WidgetKind::comboBoxItem;
        Control* control = isItem ? nullptr : controlOf(widget);
        return control == nullptr ? nullptr : control->onScreen();
    }

    Control* controlOf(const Widget& widget)
    {
        const Widget* top = &widget;
        while (top->parent() != nullptr)
            top = top->parent();
        const auto window = windows_.find(top);
        if (window == windows_.end())
            return nullptr; // never shown: it is built from the tree as it is then
        if (top == &widget)
            return window->second.get();
        const auto* dialog = dynamic_cast<const DialogWindow*>(window->second.get());
        return dialog == nullptr ? nullptr : dialog->controlOf(widget);
    }

    void act(std::function<void()> action) { turns.act(std::move(action)); }

    std::function<void()> settled;
    std::function<void(const std::string&)> trouble;
    UserTurns turns;

private:
    struct Shown {
        Widget* tree;
        TopLevel* window;
    };

    TopLevel& windowFor(Widget& tree)
    {
        std::unique_ptr<TopLevel>& window = windows_[&tree];
        if (!window) {
            if (tree.kind() == WidgetKind::fileSelection)
                window = std::make_unique<FileChooserWindow>(tree, context_);
            else
                window = std::make_unique<DialogWindow>(tree, context_);
        }
        return *window;
    }

    void showTrouble(const std::string& message)
    {
        troubled_ = true;
        if (!shown_.empty())
            shown_.back().window->showTrouble(message);
        else if (trouble)
            trouble(message);
        else
            log(Severity::warning, message);
    }

    bool troubled_ = false;
    Driver& driver_;
    Gtk::Window& mainWindow_;
    Pictures pictures_;
    DesktopContext context_;
    std::unordered_map<const Widget*, std::unique_ptr<TopLevel>> windows_;
    std::vector<Widget*> wanted_; // visible windows of the tree, the one shown last behind
    std::vector<Shown> shown_;    // those on the screen, the one on top behind
    QuestionDialogs questions_;
};

DialogWindows::DialogWindows(Driver& driver, Gtk::Window& mainWindow)
{
    useDriverStyle();
    parts_ = std::make_unique<Parts>(driver, mainWindow);
}

DialogWindows::~DialogWindows() = default;

void DialogWindows::act(std::function<void()> action) { parts_->act(std::move(action)); }

void DialogWindows::setSettled(std::function<void()> settled) { parts_->settled = std::move(settled); }

void DialogWindows::setTrouble(std::function<void(const std::string&)> show)
{
    parts_->trouble = std::move(show);
}

Gtk::Window& DialogWindows::topWindow() { return parts_->topWindow(); }

Gtk::Widget* DialogWindows::onScreen(const Widget& widget) { return parts_->onScreen(widget); }

} // namespace quelm
