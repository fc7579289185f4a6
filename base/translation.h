// Translates the texts of the component and of the driver through the message catalogues.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TRANSLATION_H
#define BASE_TRANSLATION_H

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace quelm {

/// The text domain: catalogues are LOCALE/LC_MESSAGES/quelm-driver.mo below a locale folder.
inline constexpr const char* textDomain = "quelm-driver";

/// Takes the user's language from the environment (LANGUAGE, LC_ALL, LC_MESSAGES, LANG) and looks
/// for catalogues below `localeFolder`. Only the language and the character set of the process
/// change: numbers and dates keep the form that print streams need. May be called again.
void useTranslations(const std::string& localeFolder);

/// Looks up `text` byte for byte and writes its translation (UTF-8) to `out`, which holds 4,096
/// bytes; a longer one is cut at a character boundary. True when a translation was written. When
/// there is none, the text itself is copied and the answer is false; so is it for the empty text.
/// `text` may be `out`. A null text counts as the empty one; with a null `out` nothing is written.
bool translate(const char* text, char* out);

/// The translation of `text`, or the text itself, in full length.
std::string translated(const char* text);

/// What fills a place of a text: a number for %d, anything for %s.
class TextArgument {
public:
    template <std::integral Number>
    TextArgument(Number number) // NOLINT(google-explicit-constructor): arguments are passed as they are
    {
        if constexpr (std::is_signed_v<Number>)
            value_ = static_cast<long long>(number);
        else
            value_ = static_cast<unsigned long long>(number);
    }
    TextArgument(std::string_view text) : value_(text) {}   // NOLINT(google-explicit-constructor)
    TextArgument(const std::string& text) : value_(text) {} // NOLINT(google-explicit-constructor)
    TextArgument(const char* text) : value_(text) {}        // NOLINT(google-explicit-constructor)

    const std::variant<long long, unsigned long long, std::string_view>& value() const { return value_; }

private:
    std::variant<long long, unsigned long long, std::string_view> value_; // a text stays the caller's
};

/// The translation of `english` with its places filled: "%s" and "%d" in order, or "%2$s" for the
/// second argument; "%%" is a percent sign. The English text stands in for a translation that does not
/// fit the arguments.
std::string fillIn(const char* english, std::initializer_list<TextArgument> arguments);

/// The same for a text about a number of things, in the form that the language uses for `count`.
std::string fillInCount(const char* singular, const char* plural, unsigned long count,
                        std::initializer_list<TextArgument> arguments);

/// The text for the user; the catalogues' template is made of the literals in these calls.
template <class... Arguments>
std::string localized(const char* english, const Arguments&... arguments)
{
    return fillIn(english, {TextArgument(arguments)...});
}

/// The text for the user about `count` things.
template <class... Arguments>
std::string localizedCount(const char* singular, const char* plural, unsigned long count,
                           const Arguments&... arguments)
{
    return fillInCount(singular, plural, count, {TextArgument(arguments)...});
}

/// Marks a text of a table, which is translated where it is shown.
constexpr const char* forTranslation(const char* text) { return text; }

} // namespace quelm

#endif
