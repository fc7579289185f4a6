// Guesses charsets with uchardet, and converts with GLib.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/text_charset.h"

#include "base/error.h"
#include "base/module.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/charset_guesser.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quelm {
namespace {

constexpr const char* westernEuropean = "WINDOWS-1252";

bool isHigh(char byte) { return static_cast<unsigned char>(byte) >= 0x80U; }

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// UTF-16 without a mark shows by its zero bytes, of which text in bytes has none.
const char* utf16ByZeroBytes(std::string_view bytes)
{
    constexpr std::size_t looked = 4096;
    const auto head = bytes.substr(0, looked);
    std::size_t atEven = 0;
    std::size_t atOdd = 0;
    for (std::size_t at = 0; at < head.size(); ++at)
        if (head[at] == '\0')
            ++(at % 2 == 0 ? atEven : atOdd);
    // Digits, separators and line ends alone make some in a hundred.
    constexpr std::size_t enough = 20;
    constexpr std::size_t fewest = 4;
    if (atOdd + atEven < fewest)
        return nullptr;
    if (atOdd > 10 * atEven && atOdd * enough > head.size())
        return "UTF-16LE";
    if (atEven > 10 * atOdd && atEven * enough > head.size())
        return "UTF-16BE";
    return nullptr;
}

/// How often bytes beyond ASCII stand in a text, and how.
struct HighBytes {
    std::size_t single = 0;   ///< alone between ASCII, as in Latin scripts
    std::size_t runs = 0;     ///< several in a row
    std::size_t wellMade = 0; ///< whole characters of UTF-8
    std::size_t others = 0;   ///< bytes that are none
};

HighBytes countHighBytes(std::string_view bytes)
{
    HighBytes count;
    for (std::size_t at = 0; at < bytes.size();) {
        if (!isHigh(bytes[at])) {
            ++at;
            continue;
        }
        auto end = at;
        while (end < bytes.size() && isHigh(bytes[end]))
            ++end;
        ++(end - at == 1 ? count.single : count.runs);
        while (at < end) {
            auto next = at + 1;
            while (next < end && isContinuation(bytes[next]))
                ++next;
            ++(isUtf8(bytes.substr(at, next - at)) ? count.wellMade : count.others);
            at = next;
        }
    }
    return count;
}

std::string librarysGuess(std::string_view bytes)
{
    constexpr std::size_t looked = std::size_t{1024} * 1024;
    return part<CharsetGuesser>().guess(bytes.substr(0, looked));
}

template <std::size_t size>
bool isOneOf(std::string_view name, const std::array<std::string_view, size>& names)
{
    return std::ranges::find(names, name) != names.end();
}

/// What the words of a text look like, or nothing. Of short lists of names the library takes Western
/// European ones for anything Latin, so that only its other guesses count.
std::string charsetByLook(std::string_view bytes, const HighBytes& count)
{
    constexpr std::array<std::string_view, 9> ofSeveralBytes{
        "SHIFT_JIS", "BIG5", "GB18030", "EUC-JP", "EUC-KR", "EUC-TW", "UHC", "ISO-2022-JP", "ISO-2022-KR"};
    constexpr std::array<std::string_view, 6> easternLatin{"ISO-8859-2",   "WINDOWS-1250", "ISO-8859-9",
                                                           "WINDOWS-1254", "ISO-8859-4",   "WINDOWS-1257"};
    constexpr std::array<std::string_view, 12> otherScripts{
        "WINDOWS-1251", "KOI8-R",       "ISO-8859-5", "IBM855",       "IBM866",     "MAC-CYRILLIC",
        "ISO-8859-7",   "WINDOWS-1253", "ISO-8859-8", "WINDOWS-1255", "ISO-8859-6", "WINDOWS-1256"};
    auto guess = librarysGuess(bytes);
    if (isOneOf(guess, ofSeveralBytes))
        return guess;
    if (count.single >= count.runs)
        return isOneOf(guess, easternLatin) ? guess : westernEuropean;
    if (isOneOf(guess, otherScripts) || guess == "TIS-620")
        return guess;
    return "";
}

/// The name as people know it: windows-1252, not WINDOWS-1252.
std::string shownCharset(std::string name)
{
    constexpr std::string_view windows = "WINDOWS";
    if (name.starts_with(windows))
        name.replace(0, windows.size(), "windows");
    return name;
}

/// Whether a conversion failed for what it was given, not for want of the charset.
bool isAboutTheText(const GError* error)
{
    return g_error_matches(error, G_CONVERT_ERROR, G_CONVERT_ERROR_ILLEGAL_SEQUENCE) != FALSE ||
           g_error_matches(error, G_CONVERT_ERROR, G_CONVERT_ERROR_PARTIAL_INPUT) != FALSE;
}

DecodedText decoded(std::string_view bytes, const std::string& charset, bool guessed, const std::string& file)
{
    return {textFromCharset(bytes, charset, file), shownCharset(charset), guessed};
}

} // namespace

bool isKnownCharset(const std::string& name)
{
    if (name.empty() || !std::ranges::all_of(name, isPrintableAscii) || name.find('/') != std::string::npos)
        return false;
    GError* error = nullptr;
    char* const converted = g_convert("a", 1, "UTF-8", name.c_str(), nullptr, nullptr, &error);
    g_free(converted);
    const bool isKnown = converted != nullptr || isAboutTheText(error);
    g_clear_error(&error);
    return isKnown;
}

std::string textFromCharset(std::string_view text, const std::string& charset, const std::string& file)
{
    gsize read = 0;
    gsize written = 0;
    GError* error = nullptr;
    auto* const converted = g_convert(text.data(), static_cast<gssize>(text.size()), "UTF-8", charset.c_str(),
                                      &read, &written, &error);
    if (converted != nullptr) {
        std::string result(converted, written);
        g_free(converted);
        return result;
    }
    const bool unknown = !isAboutTheText(error);
    g_error_free(error);
    if (unknown)
        throw Error(localized("%s: this system cannot read the charset %s; save the file as UTF-8", file,
                              shownCharset(charset)));
    const auto line = 1 + std::ranges::count(text.substr(0, read), '\n');
    // Translators: a file, the number of a line, a charset such as windows-1252.
    throw Error(
        localized("%s:%d: is not %s; say how the file is written", file, line, shownCharset(charset)));
}

DecodedText decodeText(std::string bytes, const std::string& charset, const std::string& file)
{
    constexpr std::string_view utf8Mark = "\xef\xbb\xbf";
    const std::string_view view = bytes;
    using namespace std::string_view_literals;
    for (const auto& [mark, marked] : {std::pair{"\xff\xfe\0\0"sv, "UTF-32LE"},
                                       {"\0\0\xfe\xff"sv, "UTF-32BE"},
                                       {"\xff\xfe"sv, "UTF-16LE"},
                                       {"\xfe\xff"sv, "UTF-16BE"}})
        if (charset.empty() && view.starts_with(mark))
            return decoded(view.substr(mark.size()), marked, false, file);
    if (view.starts_with(utf8Mark) &&
        (charset.empty() || isOneOf(charset, std::array{"UTF-8"sv, "utf-8"sv, "UTF8"sv, "utf8"sv}))) {
        bytes.erase(0, utf8Mark.size());
        return {std::move(bytes), "UTF-8", false};
    }
    if (!charset.empty()) {
        auto result = decoded(view, charset, false, file);
        if (result.text.starts_with(utf8Mark)) // the mark of what was UTF-16
            result.text.erase(0, utf8Mark.size());
        return result;
    }
    if (const char* wide = utf16ByZeroBytes(view))
        return decoded(view, wide, true, file);
    if (isUtf8(view) || view.find('\0') != std::string_view::npos)
        return {std::move(bytes), "UTF-8", false};
    const auto count = countHighBytes(view);
    if (count.wellMade > count.others)
        return {std::move(bytes), "UTF-8", false};
    const auto guess = charsetByLook(view, count);
    if (guess.empty())
        throw Error(localized("%s: is not UTF-8, and how it is written cannot be guessed; say its "
                              "charset, such as GB18030",
                              file));
    if (guess != westernEuropean)
        return decoded(view, guess, true, file);
    try {
        return decoded(view, guess, true, file);
    } catch (const Error&) {
        // A byte that this charset leaves open; every text is one of ISO-8859-1.
        return decoded(view, "ISO-8859-1", true, file);
    }
}

std::string guessedCharsetNote(const std::string& charset, const char* option)
{
    // Translators: a charset such as windows-1252, and an option.
    return localized("read as %s; say %s when names look wrong", charset, option);
}

} // namespace quelm
