// Translates and cleans texts for the screen.
#include "driver/desktop/shown_text.h"

#include "driver/core/translation.h"

#include <memory>

#include <glib.h>

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

} // namespace

std::string drawable(std::string_view text)
{
    const auto size = static_cast<gssize>(text.size());
    if (g_utf8_validate(text.data(), size, nullptr) != FALSE) {
        return std::string(text);
    }
    const std::unique_ptr<char, decltype(&g_free)> valid(g_utf8_make_valid(text.data(), size), g_free);
    return valid.get();
}

std::string withPlainLineEnds(std::string_view text)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '\r') {
            result += text[index];
        } else if (index + 1 == text.size() || text[index + 1] != '\n') {
            result += '\n';
        }
    }
    return result;
}

std::string withoutMnemonic(std::string_view text)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '_' && index + 1 < text.size()) {
            ++index;
        }
        result += text[index];
    }
    return result;
}

std::string shownText(const Widget& widget)
{
    // A file chooser's title is the component's own text; what it holds is a path.
    if (widget.kind() == WidgetKind::fileSelection) {
        const std::string* title = widget.attribute("Title");
        return title == nullptr ? std::string() : drawable(*title);
    }
    std::string text = isDefined(widget) ? translated(widget.text().c_str()) : widget.text();
    // A combo box's item without a text shows its name.
    if (text.empty() &&
        (widget.kind() == WidgetKind::comboBoxItem || widget.kind() == WidgetKind::radioButtonItem)) {
        text = translated(widget.name().c_str());
    }
    return withPlainLineEnds(drawable(text));
}

bool hasMnemonics(const Widget& widget) { return isDefined(widget); }

std::string columnTitle(const Widget& list, std::size_t column)
{
    const std::string* title = list.attribute("AddListColumn" + std::to_string(column + 1));
    return title == nullptr ? std::string() : drawable(translated(title->c_str()));
}

} // namespace quelm
