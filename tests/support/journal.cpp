// Journal lines: quoting, joining, counting.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/journal.h"

#include <cstdio>
#include <utility>

namespace fake {

std::string quoted(std::string_view text)
{
    std::string result = "\"";
    for (char c : text) {
        switch (c) {
        case '\r':
            result += "\\r";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char code[8];
                std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(c));
                result += code;
            } else {
                result += c;
            }
        }
    }
    return result + '"';
}

std::string quoted(const char* text) { return text != nullptr ? quoted(std::string_view(text)) : "null"; }

std::string lines(std::initializer_list<std::string> entries)
{
    std::string result;
    for (const std::string& entry : entries)
        result += entry + '\n';
    return result;
}

void Journal::add(Kind kind, std::string entry) { entries_.push_back({kind, std::move(entry)}); }

std::string Journal::upTo(Kind last) const
{
    std::string result;
    for (const Entry& entry : entries_)
        if (entry.kind <= last)
            result += entry.text + '\n';
    return result;
}

std::string Journal::effects() const { return upTo(Kind::effect); }
std::string Journal::calls() const { return upTo(Kind::read); }
std::string Journal::all() const { return upTo(Kind::lookup); }

int Journal::count(std::string_view beginning) const
{
    int n = 0;
    for (const Entry& entry : entries_)
        if (std::string_view(entry.text).substr(0, beginning.size()) == beginning)
            ++n;
    return n;
}

} // namespace fake
