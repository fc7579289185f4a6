// Lays a help page out in a text view.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/help/help_window.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/widgets/widget.h"

#include <glib.h>
#include <glibmm/main.h>
#include <gtkmm/label.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace quelm {
namespace {

constexpr int width = 680;
constexpr int height = 520;
constexpr int sectionsWidth = 190;
constexpr int space = 8;
constexpr double edge = 0.03; // how far from the upper edge a section begins, as a part of the height
constexpr std::size_t largestPage = std::size_t{1} << 20U;

std::vector<std::string> userLanguages()
{
    std::vector<std::string> languages;
    for (const gchar* const* name = g_get_language_names(); *name != nullptr; ++name)
        languages.emplace_back(*name);
    return languages;
}

bool isPlainName(const std::string& name)
{
    return !name.empty() && name.front() != '.' && name.find('/') == std::string::npos;
}

/// Where a list's items stand.
constexpr int itemIndent = 18;

} // namespace

std::string helpFile(const std::string& folder, const std::string& topic,
                     const std::vector<std::string>& languages)
{
    if (!isPlainName(topic))
        return {};
    std::vector<std::filesystem::path> folders;
    for (const auto& language : languages) {
        // The pages in the folder itself are the English ones.
        if (language == "C" || language == "en" || language.starts_with("en_"))
            break;
        if (isPlainName(language))
            folders.emplace_back(std::filesystem::path(folder) / language);
    }
    folders.emplace_back(folder);
    for (const auto& candidate : folders) {
        std::error_code failure;
        const auto file = candidate / (topic + ".md");
        if (std::filesystem::is_regular_file(file, failure))
            return file.string();
    }
    return {};
}

std::vector<std::string> placesAround(const Widget* helpButton)
{
    std::vector<std::string> places;
    for (const Widget* widget = helpButton; widget != nullptr; widget = widget->parent())
        places.push_back(widget->name());
    return places;
}

HelpWindow::HelpWindow(Gtk::Window& parent, std::string folder)
    : folder_(std::move(folder)), group_(Gtk::WindowGroup::create()), close_(translated("_Close"), true)
{
    group_->add_window(*this);
    set_transient_for(parent);
    set_title(translated("Help"));
    set_default_size(width, height);
    set_border_width(space);

    text_.set_editable(false);
    text_.set_cursor_visible(false);
    text_.set_wrap_mode(Gtk::WRAP_WORD_CHAR);
    text_.set_left_margin(2 * space);
    text_.set_right_margin(2 * space);
    text_.set_top_margin(space);
    text_.set_bottom_margin(2 * space);
    makeTags();
    textScroll_.set_shadow_type(Gtk::SHADOW_IN);
    textScroll_.set_policy(Gtk::POLICY_NEVER, Gtk::POLICY_AUTOMATIC);
    textScroll_.add(text_);
    sectionsScroll_.set_shadow_type(Gtk::SHADOW_IN);
    sectionsScroll_.set_policy(Gtk::POLICY_NEVER, Gtk::POLICY_AUTOMATIC);
    sectionsScroll_.set_size_request(sectionsWidth, -1);
    sectionsScroll_.add(sections_);
    columns_.set_spacing(space);
    columns_.pack_start(sectionsScroll_, Gtk::PACK_SHRINK);
    columns_.pack_start(textScroll_, Gtk::PACK_EXPAND_WIDGET);
    bar_.pack_end(close_, Gtk::PACK_SHRINK);
    box_.set_spacing(space);
    box_.pack_start(columns_, Gtk::PACK_EXPAND_WIDGET);
    box_.pack_start(bar_, Gtk::PACK_SHRINK);
    add(box_);
    box_.show_all();

    describe(*this, "Help Window");
    describe(sections_, "Help Sections", translated("Sections"));
    describe(text_, "Help Text", translated("Help"));
    describe(close_, "Help Close Button");
    close_.signal_clicked().connect([this] { hide(); });
    sections_.signal_row_activated().connect([this](Gtk::ListBoxRow* row) {
        // The rows are the headings in their order.
        int heading = -1;
        for (std::size_t block = 0; block < page_.size(); ++block)
            if (page_[block].kind == HelpBlock::Kind::heading && ++heading == row->get_index())
                goTo(block);
    });
}

HelpWindow::~HelpWindow() { scrolling_.disconnect(); }

void HelpWindow::makeTags()
{
    const auto tags = text_.get_buffer()->get_tag_table();
    const auto add = [&tags](const char* name) {
        auto tag = Gtk::TextTag::create(name);
        tags->add(tag);
        return tag;
    };
    const auto title = add("title");
    title->property_scale() = 1.5;
    title->property_weight() = Pango::WEIGHT_BOLD;
    title->property_pixels_below_lines() = space;
    const auto heading = add("heading");
    heading->property_scale() = 1.15;
    heading->property_weight() = Pango::WEIGHT_BOLD;
    heading->property_pixels_above_lines() = 2 * space;
    heading->property_pixels_below_lines() = space / 2;
    const auto paragraph = add("paragraph");
    paragraph->property_pixels_above_lines() = space / 2;
    paragraph->property_pixels_below_lines() = space / 2;
    paragraph->property_pixels_inside_wrap() = 2;
    const auto item = add("item");
    item->property_left_margin() = 2 * space + itemIndent;
    item->property_indent() = -itemIndent;
    item->property_pixels_below_lines() = space / 2;
    item->property_pixels_inside_wrap() = 2;
    Pango::TabArray tabs(1, true);
    tabs.set_tab(0, Pango::TAB_LEFT, itemIndent);
    item->property_tabs() = tabs;
    add("strong")->property_weight() = Pango::WEIGHT_BOLD;
}

void HelpWindow::showTopic(const std::string& topic, const std::vector<std::string>& places)
{
    if (topic != topic_)
        load(topic);
    text_.grab_focus();
    present();
    goTo(blockAbout(page_, places));
}

void HelpWindow::load(const std::string& topic)
{
    topic_ = topic;
    page_.clear();
    const std::string file = helpFile(folder_, topic, userLanguages());
    try {
        if (file.empty())
            throw Error(localized("there is no help on \"%s\"", topic));
        page_ = parseHelpPage(readTextFile(file, largestPage));
    } catch (const Error& error) {
        page_ = {{HelpBlock::Kind::paragraph, {{oneLine(error.what()), false}}, {}, {}}};
    }
    fill();
}

void HelpWindow::fill()
{
    text_.get_buffer()->set_text("");
    scrolling_.disconnect();
    marks_.clear();
    for (auto* row : sections_.get_children())
        delete row;
    for (const auto& block : page_) {
        addBlock(block);
        if (block.kind == HelpBlock::Kind::title)
            set_title(plainText(block));
        if (block.kind != HelpBlock::Kind::heading)
            continue;
        auto* label = Gtk::make_managed<Gtk::Label>(plainText(block));
        label->set_xalign(0);
        label->set_line_wrap();
        label->set_max_width_chars(1);
        label->property_margin() = space / 2;
        auto* row = Gtk::make_managed<Gtk::ListBoxRow>();
        row->add(*label);
        row->get_accessible()->set_name(plainText(block));
        sections_.append(*row);
    }
    sections_.show_all();
}

void HelpWindow::addBlock(const HelpBlock& block)
{
    const auto buffer = text_.get_buffer();
    marks_.push_back(buffer->create_mark(buffer->end(), true));
    const char* tag = "paragraph";
    std::string lead;
    switch (block.kind) {
    case HelpBlock::Kind::title:
        tag = "title";
        break;
    case HelpBlock::Kind::heading:
        tag = "heading";
        break;
    case HelpBlock::Kind::bullet:
        tag = "item";
        lead = "\u2022\t";
        break;
    case HelpBlock::Kind::step:
        tag = "item";
        lead = block.number + "\t";
        break;
    case HelpBlock::Kind::paragraph:
        break;
    }
    buffer->insert_with_tag(buffer->end(), lead, tag);
    for (const auto& span : block.spans) {
        std::vector<Glib::ustring> tags = {tag};
        if (span.strong)
            tags.emplace_back("strong");
        buffer->insert_with_tags_by_name(buffer->end(), span.text, tags);
    }
    buffer->insert_with_tag(buffer->end(), "\n", tag);
}

void HelpWindow::goTo(std::size_t block)
{
    if (block >= marks_.size())
        return;
    current_ = block;
    // Lines have no place yet when the page is new; the view gives them theirs ahead of idle work.
    scrolling_.disconnect();
    scrolling_ = Glib::signal_idle().connect(
        [this, block] {
            text_.scroll_to(marks_[block], edge, 0, 0);
            return false;
        },
        Glib::PRIORITY_LOW);
    int heading = -1;
    for (std::size_t i = 0; i <= block; ++i)
        heading += page_[i].kind == HelpBlock::Kind::heading ? 1 : 0;
    if (auto* row = heading < 0 ? nullptr : sections_.get_row_at_index(heading))
        sections_.select_row(*row);
    else
        sections_.unselect_all();
}

std::string HelpWindow::currentSection() const
{
    return current_ < page_.size() ? plainText(page_[current_]) : std::string();
}

bool HelpWindow::on_key_press_event(GdkEventKey* event)
{
    if (event->keyval == GDK_KEY_Escape) {
        hide();
        return true;
    }
    return Gtk::Window::on_key_press_event(event);
}

} // namespace quelm
