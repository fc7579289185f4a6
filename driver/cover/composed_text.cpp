// Composes letters and marks, by GLib.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/composed_text.h"

#include <glib.h>

#include <memory>

namespace quelm {
namespace {

/// Whether a character belongs to the one ahead of it.
bool continues(gunichar character)
{
    const bool isPartOfSyllable = character >= 0x1160 && character <= 0x11FF; // Korean vowels and endings
    return isPartOfSyllable || g_unichar_ismark(character) != FALSE;
}

} // namespace

std::string composedText(std::string_view text)
{
    const std::string whole(text);
    std::string result;
    for (const char* at = whole.c_str(); *at != '\0';) {
        const char* const letter = at;
        at = g_utf8_next_char(at);
        const char* const behindLetter = at;
        while (*at != '\0' && continues(g_utf8_get_char(at)))
            at = g_utf8_next_char(at);
        if (at == behindLetter) {
            result.append(letter, at);
            continue;
        }
        const std::unique_ptr<char, decltype(&g_free)> composed(
            g_utf8_normalize(letter, at - letter, G_NORMALIZE_NFC), &g_free);
        result += composed ? std::string(composed.get()) : std::string(letter, at);
    }
    return result;
}

} // namespace quelm
