// The driver's style sheet.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/style.h"

#include <gdkmm/screen.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

namespace quelm {

namespace {

// Points, not pixels: on a desktop with larger letters the dialogs grow with them. 9 points are 12 pixels
// on a common screen.
constexpr const char* styleSheet = R"css(
window, dialog, messagedialog, menu, tooltip, popover { font-size: 9pt; }

button { min-height: 0; min-width: 0; padding: 1px 8px; }
entry { min-height: 0; min-width: 0; padding: 1px 5px; }
spinbutton { min-height: 0; min-width: 0; }
spinbutton entry { min-height: 0; min-width: 0; padding: 1px 4px; }
spinbutton button { min-height: 0; min-width: 0; padding: 1px 3px; }
combobox button, combobox button.combo { min-height: 0; min-width: 0; padding: 1px 6px; }
checkbutton, radiobutton { min-height: 0; min-width: 0; padding: 0; }
checkbutton check, radiobutton radio { min-height: 13px; min-width: 13px; margin: 1px 5px 1px 0; }
notebook > header > tabs > tab { min-height: 0; min-width: 0; padding: 4px 12px; }
treeview header button { padding: 2px 4px; font-weight: normal; }
treeview.view { -GtkTreeView-vertical-separator: 2; }

.toolbar-item { padding: 4px 12px; }
.read-only { background-image: none; background-color: alpha(currentColor, 0.05); }
.question button { padding: 5px 16px; }
.trouble { padding: 2px 6px; }
)css";

} // namespace

void useDriverStyle()
{
    static const Glib::RefPtr<Gtk::CssProvider> provider = [] {
        auto sheet = Gtk::CssProvider::create();
        sheet->load_from_data(styleSheet);
        Gtk::StyleContext::add_provider_for_screen(Gdk::Screen::get_default(), sheet,
                                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
        return sheet;
    }();
}

} // namespace quelm
