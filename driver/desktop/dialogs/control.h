// What all controls on the screen have in common: the widget that they show, and acting on it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_CONTROL_H
#define DRIVER_DESKTOP_DIALOGS_CONTROL_H

#include "driver/core/driver.h"
#include "driver/core/user_actions.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/pictures.h"
#include "driver/desktop/toolkit/user_turns.h"
#include "driver/widgets/widget.h"

#include <gtkmm/widget.h>

#include <functional>
#include <string>
#include <utility>

namespace quelm {

/// What controls work with; outlives them.
struct DesktopContext {
    Driver& driver;
    UserTurns& turns;
    Pictures& pictures;
};

/// Shows one widget of the tree with one of the toolkit's, which its parent on the screen owns.
class Control : public Refreshable {
public:
    Control(Widget& treeWidget, DesktopContext& desktopContext) : tree(treeWidget), context(desktopContext) {}
    ~Control() override { context.turns.forget(*this); }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// The toolkit's widget; null for a group without items.
    virtual Gtk::Widget* onScreen() = 0;

    void refresh() final;

    /// Takes no more notice of the toolkit, which is about to take the control from the screen.
    void mute() { muted_ = true; }

protected:
    /// Brings the screen up to date. Signals of the toolkit that this sets off are no user's.
    virtual void show() = 0;

    /// Shows whether the widget is visible and sensitive.
    void showState(Gtk::Widget& widget) const;

    /// Queues a user action, unless the screen is only being brought up to date.
    void act(std::function<void(UserActions&)> action);

    bool isUsersDoing() const { return !updating_ && !muted_; }

    Widget& tree;
    DesktopContext& context;

private:
    bool updating_ = false;
    bool muted_ = false;
};

/// Takes over what is still being typed in the window that `widget` stands in: a spin button only does so
/// when it is left, and a press by a key does not leave it.
void commitTyping(Gtk::Widget& widget);

/// A coordinate, size or other number that the definition gives, or `fallback`.
int definedNumber(const Widget& widget, std::string_view key, int fallback = 0);

} // namespace quelm

#endif
