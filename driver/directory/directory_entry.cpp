// Makes values fit to be shown, and finds them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_entry.h"

#include "base/texts.h"

#include <glib.h>

#include <numeric>

namespace quelm {

namespace {

bool breaksLine(gunichar character)
{
    if (character >= 0x20 && character < 0x7F)
        return false; // by far the most
    const GUnicodeType type = g_unichar_type(character);
    return type == G_UNICODE_CONTROL || type == G_UNICODE_LINE_SEPARATOR ||
           type == G_UNICODE_PARAGRAPH_SEPARATOR;
}

} // namespace

bool sameAttribute(std::string_view left, std::string_view right)
{
    return left.size() == right.size() && g_ascii_strncasecmp(left.data(), right.data(), left.size()) == 0;
}

std::string directoryText(std::string_view bytes)
{
    // First the control characters: a NUL would end the text for the functions that follow.
    const std::string line = fieldText(bytes);
    char* const valid = g_utf8_make_valid(line.data(), static_cast<gssize>(line.size()));
    std::string text;
    const char* begin = valid; // of what was not appended yet
    const char* at = valid;
    while (*at != '\0') {
        const char* const next = g_utf8_next_char(at);
        if (breaksLine(g_utf8_get_char(at))) {
            text.append(begin, at).append(" ");
            begin = next;
        }
        at = next;
    }
    text.append(begin, at);
    g_free(valid);
    return text;
}

void DirectoryEntry::add(std::string_view name, std::string_view value)
{
    attributes_.emplace_back(name, directoryText(value));
}

std::size_t DirectoryEntry::size() const
{
    return std::accumulate(attributes_.begin(), attributes_.end(), std::size_t{0},
                           [](std::size_t sum, const auto& attribute) {
                               return sum + attribute.first.size() + attribute.second.size();
                           });
}

const std::string* DirectoryEntry::find(std::string_view name) const
{
    const std::string* withOptions = nullptr;
    for (const auto& [attribute, value] : attributes_) {
        const std::string_view own = attribute;
        if (sameAttribute(own, name))
            return &value;
        if (withOptions == nullptr && sameAttribute(own.substr(0, own.find(';')), name))
            withOptions = &value;
    }
    return withOptions;
}

} // namespace quelm
