// Looks for the fonts that texts are drawn with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/fonts.h"

#include "base/error.h"
#include "base/translation.h"

#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <utility>

namespace quelm {
namespace {

/// Fonts of pixels, which look coarse on paper and have no outlines.
constexpr const char* withoutPixels = R"(<fontconfig><selectfont><rejectfont>
<pattern><patelt name="scalable"><bool>false</bool></patelt></pattern>
</rejectfont></selectfont></fontconfig>)";

constexpr const char* withoutColours = R"(<fontconfig><selectfont><rejectfont>
<pattern><patelt name="color"><bool>true</bool></patelt></pattern>
</rejectfont></selectfont></fontconfig>)";

[[noreturn]] void reportBrokenConfiguration()
{
    throw Error(
        localized("the cover page cannot be drawn: the machine's font configuration (fontconfig) cannot be "
                  "read; look at what \"fc-list\" says about it"));
}

/// Takes out the fonts that this user cannot read: fontconfig knows them from a cache that others made.
void removeUnreadable(FcFontSet& fonts)
{
    const auto isUnreadable = [](const FcPattern* font) {
        FcChar8* file = nullptr;
        return FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch ||
               ::access(reinterpret_cast<const char*>(file), R_OK) != 0;
    };
    FcPattern** const end = fonts.fonts + fonts.nfont;
    FcPattern** const unreadable = std::partition(fonts.fonts, end, std::not_fn(isUnreadable));
    std::for_each(unreadable, end, FcPatternDestroy);
    fonts.nfont = static_cast<int>(unreadable - fonts.fonts);
}

FontConfigurationHandle loadDefault(const char*) { return FontConfigurationHandle(FcInitLoadConfig()); }

FontConfigurationHandle loadFile(const char* file)
{
    FontConfigurationHandle configuration(FcConfigCreate());
    if (configuration != nullptr &&
        FcConfigParseAndLoad(configuration.get(), reinterpret_cast<const FcChar8*>(file), FcTrue) == FcFalse)
        configuration.reset();
    return configuration;
}

/// The configuration that `load` reads from `file`, with further rules, and its fonts.
FontConfigurationHandle loaded(FontConfigurationHandle (*load)(const char*), const std::string& file,
                               std::initializer_list<const char*> rules)
{
    auto configuration = load(file.c_str());
    if (configuration == nullptr)
        reportBrokenConfiguration();
    for (const char* const rule : rules)
        if (FcConfigParseAndLoadFromMemory(configuration.get(), reinterpret_cast<const FcChar8*>(rule),
                                           FcFalse) == FcFalse)
            reportBrokenConfiguration();
    if (FcConfigBuildFonts(configuration.get()) == FcFalse)
        reportBrokenConfiguration();
    if (FcFontSet* const fonts = FcConfigGetFonts(configuration.get(), FcSetSystem))
        removeUnreadable(*fonts);
    return configuration;
}

} // namespace

void FontMapRelease::operator()(PangoFontMap* map) const
{
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map), nullptr);
    g_object_unref(map);
}

Fonts::Fonts(const std::string& configurationFile) : Fonts(loadFile, configurationFile) {}

Fonts::Fonts(Loader load, std::string file) : load_(load), file_(std::move(file))
{
    outlines_ = loaded(load_, file_, {withoutPixels, withoutColours});

    // Pango ends the program when it finds no font.
    const FcFontSet* found = FcConfigGetFonts(outlines_.get(), FcSetSystem);
    if (found == nullptr || found->nfont == 0)
        throw Error(
            localized("the cover page cannot be drawn: no font is installed on this machine; install one, "
                      "such as DejaVu Sans"));
}

bool Fonts::upToDate() const { return FcConfigUptoDate(outlines_.get()) == FcTrue; }

std::shared_ptr<const Fonts> Fonts::ofThisMachine()
{
    static std::mutex alone;
    static std::shared_ptr<const Fonts> fonts;
    const std::scoped_lock lock(alone);
    if (fonts == nullptr || !fonts->upToDate())
        fonts = std::shared_ptr<const Fonts>(new Fonts(loadDefault, ""));
    return fonts;
}

FontMapHandle Fonts::newFontMap(FontChoice choice) const
{
    FontMapHandle map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
    if (map == nullptr)
        reportBrokenConfiguration();
    if (choice == FontChoice::all)
        std::call_once(allLoaded_, [this] { all_ = loaded(load_, file_, {withoutPixels}); });
    FcConfig* const configuration = choice == FontChoice::outlines ? outlines_.get() : all_.get();
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map.get()), configuration);
    return map;
}

} // namespace quelm
