// Decodes quoted-printable values and takes the charsets out of properties.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/vcard_property.h"

#include "base/error.h"
#include "base/texts.h"
#include "driver/phonebook/text_charset.h"

#include <glib.h>

#include <algorithm>
#include <array>

namespace quelm {
namespace {

std::string raised(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), g_ascii_toupper);
    return result;
}

/// What stands ahead of the value.
std::string_view headOf(std::string_view property)
{
    constexpr std::size_t longest = 1000; // asked at every line, however long the value becomes
    property = property.substr(0, longest);
    return property.substr(0, findUnquoted(property, ":"));
}

/// The head's parts in which nothing of its encoding is left.
struct Head {
    std::string plain;
    std::string charset;
    bool isQuotedPrintable = false;
    bool isBase64 = false;
};

Head readHead(std::string_view head)
{
    Head result;
    for (bool first = true; first || !head.empty(); first = false) {
        const auto end = findUnquoted(head, ";");
        const auto part = head.substr(0, end);
        head.remove_prefix(std::min(end + 1, head.size()));
        const auto word = raised(trimmed(part));
        if (word == "ENCODING=QUOTED-PRINTABLE" || word == "QUOTED-PRINTABLE") {
            result.isQuotedPrintable = true;
            continue;
        }
        if (word.starts_with("CHARSET=")) {
            constexpr std::size_t size = 8;
            result.charset = trimmed(part).substr(size);
            continue;
        }
        if (word == "ENCODING=8BIT" || word == "8BIT" || word == "ENCODING=7BIT" || word == "7BIT")
            continue;
        result.isBase64 =
            result.isBase64 || word == "ENCODING=BASE64" || word == "ENCODING=B" || word == "BASE64";
        result.plain += (first ? "" : ";") + std::string(part);
    }
    return result;
}

/// The bytes of a quoted-printable value. Separators that were encoded are no separators.
std::string decoded(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int high = at + 2 < text.size() ? g_ascii_xdigit_value(text[at + 1]) : -1;
        const int low = at + 2 < text.size() ? g_ascii_xdigit_value(text[at + 2]) : -1;
        if (text[at] != '=' || high < 0 || low < 0) {
            bytes += text[at];
            continue;
        }
        const auto byte = static_cast<char>(16 * high + low);
        if (byte == ';')
            bytes += '\\';
        bytes += byte;
        at += 2;
    }
    return bytes;
}

std::string inUtf8(const std::string& bytes, const std::string& charset)
{
    const auto declared = raised(charset);
    const bool isDeclared = !declared.empty() && declared != "UTF-8" && isKnownCharset(declared);
    if (!isDeclared && isUtf8(bytes))
        return bytes;
    for (const auto& name :
         {isDeclared ? declared : std::string("WINDOWS-1252"), std::string("ISO-8859-1")}) {
        try {
            return textFromCharset(bytes, name, "");
        } catch (const Error&) {
            continue; // the next one, and at last one that takes every byte
        }
    }
    return bytes;
}

/// Line ends as the vCard library writes them.
std::string onOneLine(const std::string& text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n')
            continue;
        if (text[at] == '\r' || text[at] == '\n')
            result += "\\n";
        else
            result += text[at];
    }
    return result;
}

} // namespace

std::size_t findUnquoted(std::string_view text, std::string_view marks)
{
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] == '"')
            quoted = !quoted;
        else if (!quoted && marks.find(text[at]) != std::string_view::npos)
            return at;
    return text.size();
}

bool isQuotedPrintable(std::string_view property)
{
    return raised(headOf(property)).find("QUOTED-PRINTABLE") != std::string::npos;
}

std::string plainProperty(const std::string& property)
{
    const auto head = headOf(property);
    if (head.size() == property.size())
        return property;
    const auto read = readHead(head);
    if (read.isBase64)
        return property;
    const auto value = property.substr(head.size() + 1);
    if (!read.isQuotedPrintable)
        return read.plain + ":" + value;
    return read.plain + ":" + onOneLine(inUtf8(decoded(value), read.charset));
}

std::string declaredCharset(std::string_view cards)
{
    constexpr std::string_view word = "CHARSET=";
    while (!cards.empty()) {
        const auto end = std::min(cards.find_first_of("\r\n"), cards.size());
        const auto head = headOf(cards.substr(0, end));
        cards.remove_prefix(std::min(end + 1, cards.size()));
        if (head.size() > word.size() && raised(head).find(word) != std::string::npos) {
            auto charset = readHead(head).charset;
            if (raised(charset) != "UTF-8" && isKnownCharset(charset))
                return charset;
        }
    }
    return "";
}

} // namespace quelm
