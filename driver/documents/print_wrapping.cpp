// Finds the PostScript inside what printer drivers put around it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/print_wrapping.h"

#include <algorithm>
#include <cctype>

namespace quelm {
namespace {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
constexpr std::string_view printerReset = "\x1b"
                                          "E";
constexpr std::string_view pjlPrefix = "@PJL";
constexpr std::string_view blanks{" \t\r\n\f\0", 6};

bool skip(std::string_view& text, std::string_view prefix)
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::string_view takeLine(std::string_view& text)
{
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

std::string upperCase(std::string_view text)
{
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(),
                           [](unsigned char byte) { return static_cast<char>(std::toupper(byte)); });
    return upper;
}

/// "POSTSCRIPT" of "@PJL ENTER LANGUAGE = POSTSCRIPT"; empty for other lines.
std::string enteredLanguage(std::string_view line)
{
    std::string words = upperCase(line);
    std::erase_if(words, [](unsigned char byte) { return std::isspace(byte) != 0; });
    constexpr std::string_view command = "@PJLENTERLANGUAGE=";
    return words.starts_with(command) ? words.substr(command.size()) : std::string();
}

/// True when nothing but UELs, PJL lines, resets, Ctrl-Ds and blanks is in `text`.
bool isWrappingOnly(std::string_view text)
{
    bool pjl = false;
    while (!text.empty())
        if (skip(text, uel))
            pjl = true;
        else if (pjl && text.starts_with(pjlPrefix))
            takeLine(text);
        else if (blanks.find(text.front()) != std::string_view::npos || text.front() == endOfTransmission)
            text.remove_prefix(1);
        else if (!skip(text, printerReset))
            return false;
    return true;
}

std::uint64_t littleEndian(std::string_view bytes)
{
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        number = number << 8U | static_cast<unsigned char>(bytes[i]);
    return number;
}

} // namespace

Prologue measurePrologue(std::string_view head)
{
    Prologue prologue;
    std::string_view rest = head;
    bool pjl = true; // a file may begin behind the UEL that a device has eaten already
    while (!rest.empty()) {
        if (skip(rest, uel)) {
            pjl = true;
        } else if (pjl && rest.starts_with(pjlPrefix)) {
            const std::string language = enteredLanguage(takeLine(rest));
            if (!language.empty()) {
                prologue.language = language;
                pjl = false;
            }
        } else if (blanks.find(rest.front()) != std::string_view::npos || rest.front() == endOfTransmission) {
            rest.remove_prefix(1);
        } else if (!skip(rest, printerReset) && !skip(rest, byteOrderMark)) {
            break;
        }
    }
    prologue.size = head.size() - rest.size();
    return prologue;
}

std::size_t findEpilogue(std::string_view tail)
{
    for (auto start = tail.find_first_of("\x1b\x04"); start != std::string_view::npos;
         start = tail.find_first_of("\x1b\x04", start + 1))
        if (isWrappingOnly(tail.substr(start)))
            return start;
    return tail.size();
}

std::optional<PostScriptSection> readPreviewHeader(std::string_view head)
{
    constexpr std::string_view magic = "\xc5\xd0\xd3\xc6";
    constexpr std::size_t headerSize = 30;
    if (!head.starts_with(magic) || head.size() < headerSize)
        return std::nullopt;
    return PostScriptSection{littleEndian(head.substr(4, 4)), littleEndian(head.substr(8, 4))};
}

bool UelSearch::operator()(std::string_view bytes)
{
    std::size_t position = 0;
    while (position < bytes.size()) {
        if (matched_ == 0) {
            position = bytes.find(uel.front(), position);
            if (position == std::string_view::npos)
                return false;
        }
        // ESC occurs in a UEL as its first byte only: a mismatch never hides another start but itself.
        if (bytes[position] == uel[matched_]) {
            ++position;
            if (++matched_ == uel.size()) {
                matched_ = 0;
                return true;
            }
        } else {
            matched_ = 0;
        }
    }
    return false;
}

} // namespace quelm
