// Translates and cleans texts for the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/shown_text.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/widgets/widget_names.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <string_view>
#include <system_error>

namespace quelm {

namespace {

/// The text that the definition gives a widget, null when it gives none.
const std::string* definedText(const Widget& widget)
{
    return widget.attribute(widget.isWindow() ? "Title" : "Text");
}

bool isDefined(const Widget& widget)
{
    const std::string* defined = definedText(widget);
    return defined != nullptr && *defined == widget.text();
}

/// Fields in which the component tells how the directory is, in words that are the same in every language.
constexpr std::array<std::string_view, 2> stateFields{widget_names::ldapPbStatus, widget_names::searchStatus};
constexpr std::array<const char*, 5> states{
    forTranslation("Unavailable"), forTranslation("Searching..."), forTranslation("No Records Found"),
    forTranslation("1000+ Records Found"), forTranslation("Timeout Exceeded!")};

/// "12 Records Found" in the user's language; empty when the text is no such count.
std::string translatedCount(const std::string& text)
{
    unsigned long count = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, count);
    const std::string_view rest(behind, static_cast<std::size_t>(end - behind));
    const bool isCount = error == std::errc() && (rest == " Record Found" || rest == " Records Found");
    return isCount ? localizedCount("%d Record Found", "%d Records Found", count, count) : std::string();
}

std::string translatedState(const Widget& widget)
{
    const std::string& text = widget.text();
    if (std::find(stateFields.begin(), stateFields.end(), widget.name()) == stateFields.end())
        return text;
    if (std::find(states.begin(), states.end(), text) != states.end())
        return translated(text.c_str());
    const std::string count = translatedCount(text);
    return count.empty() ? text : count;
}

} // namespace

std::string drawable(std::string_view text)
{
    const auto size = static_cast<gssize>(text.size());
    if (g_utf8_validate(text.data(), size, nullptr) != FALSE)
        return std::string(text);
    const std::unique_ptr<char, decltype(&g_free)> valid(g_utf8_make_valid(text.data(), size), g_free);
    return valid.get();
}

std::string shownMessage(std::string_view message)
{
    std::string line = oneLine(drawable(message));
    const char* end = line.c_str();
    while (g_unichar_isalpha(g_utf8_get_char(end)) != FALSE)
        end = g_utf8_next_char(end);
    if (end == line.c_str() || *end != ' ')
        return line;
    std::array<char, 8> capital{};
    const int size = g_unichar_to_utf8(g_unichar_toupper(g_utf8_get_char(line.c_str())), capital.data());
    return std::string(capital.data(), static_cast<std::size_t>(size)) + g_utf8_next_char(line.c_str());
}

std::string withPlainLineEnds(std::string_view text)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index)
        if (text[index] != '\r')
            result += text[index];
        else if (index + 1 == text.size() || text[index + 1] != '\n')
            result += '\n';
    return result;
}

std::string shownText(const Widget& widget)
{
    // A file chooser's title is the component's own text; what it holds is a path.
    if (widget.kind() == WidgetKind::fileSelection) {
        const std::string* title = widget.attribute("Title");
        return title == nullptr ? std::string() : drawable(*title);
    }
    std::string text = isDefined(widget) ? translated(widget.text().c_str()) : translatedState(widget);
    // A combo box's item without a text shows its name.
    if (text.empty() &&
        (widget.kind() == WidgetKind::comboBoxItem || widget.kind() == WidgetKind::radioButtonItem))
        text = translated(widget.name().c_str());
    return withPlainLineEnds(drawable(text));
}

bool hasMnemonics(const Widget& widget) { return isDefined(widget); }

std::string columnTitle(const Widget& list, std::size_t column)
{
    const std::string* title = list.attribute("AddListColumn" + std::to_string(column + 1));
    return title == nullptr ? std::string() : drawable(translated(title->c_str()));
}

} // namespace quelm
