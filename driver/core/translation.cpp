// Looks texts up in the gettext catalogues of the driver's text domain.
#include "driver/core/translation.h"

#include <clocale>
#include <cstring>
#include <libintl.h>

#include "driver/core/bounded_text.h"

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

} // namespace quelm
