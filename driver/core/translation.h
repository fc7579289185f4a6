// Translates the texts of the component and of the driver through the message catalogues.
#ifndef DRIVER_CORE_TRANSLATION_H
#define DRIVER_CORE_TRANSLATION_H

#include <string>

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

} // namespace quelm

#endif
