// Shows containers and turns pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/container_controls.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/widgets/widget_label.h"

namespace quelm {

namespace {

/// With accessibility on, the toolkit asks for the label of each tab whose page it has just taken out, and
/// complains that there is none; it does not ask in a set that shows no tabs.
void hideTabsAtItsEnd(Gtk::Notebook& notebook)
{
    const auto hide = +[](GtkNotebook* ending, gpointer) { gtk_notebook_set_show_tabs(ending, FALSE); };
    g_signal_connect(notebook.gobj(), "destroy", G_CALLBACK(hide), nullptr);
}

} // namespace

ContainerControl::ContainerControl(Widget& treeWidget, DesktopContext& desktopContext, Gtk::Widget& container)
    : Control(treeWidget, desktopContext), widget_(container)
{
    describe(widget_, tree.name());
}

NotebookControl::NotebookControl(Widget& treeWidget, DesktopContext& desktopContext)
    : Control(treeWidget, desktopContext), notebook_(*Gtk::make_managed<Gtk::Notebook>())
{
    notebook_.signal_switch_page().connect([this](Gtk::Widget*, guint page) {
        act([&set = tree, page](UserActions& actions) { actions.choose(set, static_cast<int>(page)); });
    });
    describe(notebook_, tree.name());
    hideTabsAtItsEnd(notebook_);
}

void NotebookControl::addPage(Widget& page, Gtk::Widget& content)
{
    auto* tab = Gtk::make_managed<Gtk::Label>();
    describe(*tab, page.name());
    // The set turns to its first visible page as pages come.
    content.set_visible(page.visible());
    notebook_.append_page(content, *tab);
    pages_.push_back({&page, &content, tab});
}

void NotebookControl::show()
{
    for (const Page& page : pages_) {
        const std::string text = shownText(*page.tree);
        page.tab->set_text_with_mnemonic(text);
        page.tab->get_accessible()->set_name(withoutMnemonic(text));
        page.content->get_accessible()->set_name(withoutMnemonic(text));
        page.content->set_visible(page.tree->visible());
        page.content->set_sensitive(page.tree->sensitive());
    }
    notebook_.set_current_page(tree.number());
    showState(notebook_);
}

} // namespace quelm
