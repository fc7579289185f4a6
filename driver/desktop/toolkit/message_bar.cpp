// Shows and hides the lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/message_bar.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <gtkmm/box.h>

#include <algorithm>

namespace quelm {
namespace {

constexpr std::size_t mostLines = 10;

}

MessageBar::MessageBar()
{
    set_no_show_all();
    label_.set_xalign(0);
    label_.set_line_wrap();
    label_.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    label_.set_selectable();
    label_.set_can_focus(false);
    label_.show();
    dynamic_cast<Gtk::Box&>(*get_content_area()).pack_start(label_, Gtk::PACK_EXPAND_WIDGET);
    // The toolkit's own button has no name to be read aloud.
    close_.set_image_from_icon_name("window-close-symbolic", Gtk::ICON_SIZE_MENU);
    close_.set_relief(Gtk::RELIEF_NONE);
    close_.set_valign(Gtk::ALIGN_CENTER);
    close_.set_tooltip_text(translated("Close this message"));
    close_.show();
    dynamic_cast<Gtk::Box&>(*get_content_area()).pack_end(close_, Gtk::PACK_SHRINK);
    describe(*this, "Main Message Bar");
    describe(label_, "Main Message");
    describe(close_, "Main Message Close Button", translated("Close this message"));
    close_.signal_clicked().connect([this] { clear(); });
}

void MessageBar::tell(Gtk::MessageType type, const std::string& line)
{
    forget();
    tellBeside(type, line);
}

void MessageBar::tellBeside(Gtk::MessageType type, const std::string& line)
{
    // The toolkit's types are in the order of their weight.
    const auto lighter =
        std::ranges::find_if(lines_, [type](const Line& other) { return other.type < type; });
    lines_.insert(lighter, {type, shownMessage(line)});
    if (lines_.size() > mostLines) {
        ++leftOut_;
        lines_.erase(std::ranges::find(lines_, lines_.back().type, &Line::type));
    }
    std::string text;
    for (const auto& shown : lines_)
        text += (text.empty() ? "" : "\n") + shown.text;
    if (leftOut_ > 0)
        text += "\n" + localizedCount("There was %d more message.", "There were %d more messages.", leftOut_,
                                      leftOut_);
    set_message_type(lines_.front().type);
    label_.set_text(text);
    set_visible();
}

void MessageBar::clear()
{
    forget();
    hide();
}

void MessageBar::forget()
{
    lines_.clear();
    leftOut_ = 0;
}

} // namespace quelm
