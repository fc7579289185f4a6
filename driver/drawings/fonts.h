// The fonts that texts are drawn with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_FONTS_H
#define DRIVER_DRAWINGS_FONTS_H

#include "driver/drawings/handles.h"

#include <memory>
#include <mutex>
#include <string>

namespace quelm {

/// Which fonts a text may be drawn with.
enum class FontChoice {
    outlines, ///< those whose characters are outlines in one colour
    all,      ///< those whose characters are coloured pictures, too
};

/// Gives a font map back, and with it the configuration, which Pango alone would keep.
struct FontMapRelease {
    void operator()(PangoFontMap* map) const;
};

using FontMapHandle = std::unique_ptr<PangoFontMap, FontMapRelease>;

/// The fonts that fontconfig finds, and the user's and the machine's rules for choosing among them. Any
/// number of threads may use one object.
class Fonts {
public:
    /// The fonts of this machine. They are looked for once in a process, and again when some were installed
    /// or removed since. May be called by any thread. Throws quelm::Error when there is none.
    [[nodiscard]] static std::shared_ptr<const Fonts> ofThisMachine();

    /// The fonts of a configuration file of fontconfig. Throws quelm::Error when it cannot be read or leads
    /// to no font with outlines.
    explicit Fonts(const std::string& configurationFile);

    /// A font map of the caller's own, which holds what it needs of this object. Font maps belong to one
    /// thread at a time.
    [[nodiscard]] FontMapHandle newFontMap(FontChoice choice) const;

private:
    using Loader = FontConfigurationHandle (*)(const char* file);

    Fonts(Loader load, std::string file);

    [[nodiscard]] bool upToDate() const;

    Loader load_;
    std::string file_;
    FontConfigurationHandle outlines_;
    mutable std::once_flag allLoaded_;
    mutable FontConfigurationHandle all_; // loaded when a text needs it
};

} // namespace quelm

#endif
