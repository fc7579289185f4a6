// Looks texts up in the gettext catalogues of the driver's text domain.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/translation.h"

#include "base/bounded_text.h"

#include <fmt/args.h>
#include <fmt/printf.h>
#include <libintl.h>

#include <clocale>
#include <cstring>

namespace quelm {

namespace {

/// The translation, or null. The catalogue's header is stored under the empty text and is no
/// translation of anything.
const char* lookUp(const char* text)
{
    if (text == nullptr || *text == '\0')
        return nullptr;
    const char* found = dgettext(textDomain, text);
    return found == text ? nullptr : found;
}

/// `format` with its places filled; throws fmt::format_error when they do not fit the arguments.
std::string filled(const char* format, std::initializer_list<TextArgument> arguments)
{
    fmt::dynamic_format_arg_store<fmt::printf_context> store;
    for (const TextArgument& argument : arguments)
        std::visit([&store](const auto& value) { store.push_back(value); }, argument.value());
    return fmt::vsprintf(fmt::string_view(format), fmt::basic_format_args<fmt::printf_context>(store));
}

/// A translation that does not fit gives way to the English text.
std::string filledEither(const char* translation, const char* english,
                         std::initializer_list<TextArgument> arguments)
{
    try {
        return filled(translation, arguments);
    } catch (const fmt::format_error&) {
        return filled(english, arguments);
    }
}

} // namespace

void useTranslations(const std::string& localeFolder)
{
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_MESSAGES, "");
    bindtextdomain(textDomain, localeFolder.c_str());
    // Whatever character set the terminal uses: the boundary speaks UTF-8.
    bind_textdomain_codeset(textDomain, "UTF-8");
}

bool translate(const char* text, char* out)
{
    if (out == nullptr)
        return false;
    const char* found = lookUp(text);
    const char* source = found != nullptr ? found : text;
    copyBounded(source != nullptr ? source : "", out, boundedTextSize);
    return found != nullptr;
}

std::string translated(const char* text)
{
    const char* found = lookUp(text);
    if (found != nullptr)
        return found;
    return text != nullptr ? text : "";
}

std::string fillIn(const char* english, std::initializer_list<TextArgument> arguments)
{
    const char* found = lookUp(english);
    return filledEither(found != nullptr ? found : english, english, arguments);
}

std::string fillInCount(const char* singular, const char* plural, unsigned long count,
                        std::initializer_list<TextArgument> arguments)
{
    const char* english = count == 1 ? singular : plural;
    return filledEither(dngettext(textDomain, singular, plural, count), english, arguments);
}

} // namespace quelm
