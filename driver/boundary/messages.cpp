// What host/messages.h declares: questions, and plain text out of marked-up text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/messages.h"

#include "driver/boundary/host_state.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace {

/// The elements that a text for the user may be marked up with. Anything else between angle
/// brackets is meant to be read.
constexpr std::array<std::string_view, 11> knownElements{
    {"markup", "span", "b", "big", "i", "s", "small", "sub", "sup", "tt", "u"}};

void onElement(GMarkupParseContext* /*context*/, const gchar* element, const gchar** /*names*/,
               const gchar** /*values*/, gpointer /*data*/, GError** error)
{
    if (std::find(knownElements.begin(), knownElements.end(), element) == knownElements.end())
        g_set_error(error, G_MARKUP_ERROR, G_MARKUP_ERROR_UNKNOWN_ELEMENT, "unknown element %s", element);
}

void onText(GMarkupParseContext* /*context*/, const gchar* text, gsize length, gpointer data,
            GError** /*error*/)
{
    static_cast<std::string*>(data)->append(text, length);
}

/// The plain text of a marked-up one; false when it is no valid markup.
bool parseMarkup(std::string_view text, std::string& plain)
{
    constexpr std::string_view opening = "<markup>";
    constexpr std::string_view closing = "</markup>";
    GMarkupParser parser{};
    parser.start_element = onElement;
    parser.text = onText;
    constexpr auto defaultFlags = static_cast<GMarkupParseFlags>(0); // has a name since GLib 2.74
    GMarkupParseContext* context = g_markup_parse_context_new(&parser, defaultFlags, &plain, nullptr);
    const auto feed = [context](std::string_view part) {
        return g_markup_parse_context_parse(context, part.data(), static_cast<gssize>(part.size()),
                                            nullptr) != FALSE;
    };
    const bool valid = feed(opening) && (text.empty() || feed(text)) && feed(closing) &&
                       g_markup_parse_context_end_parse(context, nullptr) != FALSE;
    g_markup_parse_context_free(context);
    return valid;
}

} // namespace

void PopupMessageDialog(int kind, void (*response)(_GtkWidget*, void*), char* text)
{
    quelm::atBoundary(false, [&] {
        if (quelm::HostState* state = quelm::HostState::current()) {
            // The boundary declares the callback with another type than the one that it has.
            const auto callback =
                reinterpret_cast<host::ResponseCallback>(reinterpret_cast<void (*)()>(response));
            state->questions.ask(kind, callback, text == nullptr ? "" : text);
        }
        return true;
    });
}

void CloseCurrentPopupDialog()
{
    if (quelm::HostState* state = quelm::HostState::current())
        state->questions.closeCurrent();
}

void ParsePangoMarkupString(char* text, int length, std::string& out)
{
    quelm::atBoundary(false, [&] {
        const std::size_t limit = text == nullptr || length < 0 ? 0 : static_cast<std::size_t>(length);
        const std::string_view marked =
            limit == 0 ? std::string_view() : std::string_view(text, strnlen(text, limit));
        std::string plain;
        out = parseMarkup(marked, plain) ? plain : std::string(marked);
        return true;
    });
}
