// Escapes texts for roff, and breaks its input into short lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/roff.h"

#include <cstddef>
#include <sstream>
#include <string_view>

namespace quelm::roff {
namespace {

/// mandoc asks for lines of input within 80 bytes.
constexpr std::size_t longestLine = 78;

/// How long a line is once other characters than those of ASCII are written as "\\[u00E4]".
std::size_t inputSize(std::string_view line)
{
    constexpr std::size_t written = 9;
    std::size_t size = 0;
    for (const char byte : line) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 0x80)
            ++size;
        else if (value >= 0xC0)
            size += written;
    }
    return size;
}

/// What would be a request at the beginning of a line.
bool beginsLikeRequest(std::string_view line) { return line.starts_with('.') || line.starts_with('\''); }

} // namespace

std::string escaped(const std::string& text)
{
    std::string out;
    for (const char character : text) {
        switch (character) {
        case '\\':
            out += "\\e";
            break;
        case '-': // as it is typed, rather than as a hyphen of prose
            out += "\\-";
            break;
        case '\'':
            out += "\\(aq";
            break;
        case '`':
            out += "\\(ga";
            break;
        case '^':
            out += "\\(ha";
            break;
        case '~':
            out += "\\(ti";
            break;
        case '\n':
            out += ' ';
            break;
        default:
            out += character;
        }
    }
    return out;
}

std::string bold(const std::string& text) { return "\\fB" + escaped(text) + "\\fR"; }

std::string italic(const std::string& text) { return "\\fI" + escaped(text) + "\\fR"; }

std::string filled(const std::string& marked)
{
    std::string out;
    std::string line;
    std::istringstream words(marked);
    for (std::string word; words >> word;) {
        if (!line.empty() && inputSize(line) + 1 + inputSize(word) > longestLine) {
            out += line + "\n";
            line.clear();
        }
        if (line.empty())
            line = beginsLikeRequest(word) ? "\\&" + word : word;
        else
            line += " " + word;
    }
    return line.empty() ? out : out + line + "\n";
}

std::string literal(const std::string& text)
{
    std::string rest = (beginsLikeRequest(text) ? "\\&" : "") + escaped(text);
    std::string out;
    // A backslash at the end of a line of input joins the next one to it.
    while (rest.size() > longestLine) {
        const auto blank = rest.rfind(' ', longestLine);
        if (blank == std::string::npos || blank == 0)
            break;
        out += rest.substr(0, blank) + "\\\n";
        rest.erase(0, blank);
    }
    return out + rest + "\n";
}

std::string request(const std::string& name, const std::initializer_list<std::string>& arguments)
{
    std::string line = "." + name;
    for (const auto& argument : arguments) {
        line += " \"";
        for (const char character : escaped(argument))
            line += character == '"' ? std::string("\\(dq") : std::string(1, character);
        line += "\"";
    }
    return line + "\n";
}

} // namespace quelm::roff
