// What host/texts.h declares: messages about what a user typed, token lists, formatted copies.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/texts.h"

#include "driver/store/name_checks.h"

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quelm {

namespace {

/// `format` with its first "%s" replaced by the argument and "%%" reduced; anything else, a further "%s"
/// included, stands as it is. Never a printf: a format may say what it likes.
std::string substitute(std::string_view format, std::string_view argument)
{
    std::string result;
    bool replaced = false;
    for (std::size_t at = 0; at < format.size(); ++at) {
        const std::string_view pair = format.substr(at, 2);
        if (pair == "%s" && !std::exchange(replaced, true))
            result += argument;
        else if (pair == "%%")
            result += '%';
        else {
            result += format[at];
            continue;
        }
        ++at;
    }
    return result;
}

char* newText(std::string_view text)
{
    auto copy = std::make_unique<char[]>(text.size() + 1);
    text.copy(copy.get(), text.size());
    return copy.release();
}

std::string_view viewOf(const char* text) { return text != nullptr ? text : std::string_view(); }

using Problem = std::optional<std::string> (*)(std::string_view, std::string_view);

char* newMessage(Problem problemWith, const char* text, const char* allowed)
{
    const auto problem = problemWith(viewOf(text), viewOf(allowed));
    return problem ? newText(*problem) : nullptr;
}

} // namespace

} // namespace quelm

namespace {

char emptyText[] = "";

} // namespace

char* pEmptyString = emptyText;

char* ValidateName(char* text, char* allowed)
{
    return quelm::newMessage(quelm::problemWithName, text, allowed);
}

char* ValidatePhoneNumber(char* text, char* allowed)
{
    return quelm::newMessage(quelm::problemWithPhoneNumber, text, allowed);
}

char* SaveString(char* format, void* argument)
{
    return quelm::newText(
        quelm::substitute(quelm::viewOf(format), quelm::viewOf(static_cast<const char*>(argument))));
}

int GetTokenNum(char* list, char* token, char delimiter, bool /*flag*/)
{
    std::string_view rest = quelm::viewOf(list);
    const std::string_view wanted = quelm::viewOf(token);
    if (wanted.empty())
        return 0;
    if (!rest.empty() && rest.front() == delimiter)
        rest.remove_prefix(1);
    for (int position = 1; !rest.empty(); ++position) {
        const std::size_t end = rest.find(delimiter);
        if (rest.substr(0, end) == wanted)
            return position;
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return 0;
}

char* itoa(int number)
{
    static std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%d", number);
    return text.data();
}
