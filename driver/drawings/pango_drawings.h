// Drawings that Pango lays out and Cairo outlines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_PANGO_DRAWINGS_H
#define DRIVER_DRAWINGS_PANGO_DRAWINGS_H

#include "driver/cover/drawings.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

class Fonts;

class PangoDrawings final : public Drawings {
public:
    /// Draws with the fonts of this machine, which are looked for with the first text.
    PangoDrawings();

    /// Draws with other fonts; null stands for those of this machine.
    explicit PangoDrawings(std::shared_ptr<const Fonts> fonts);

    ~PangoDrawings() override;

    [[nodiscard]] const std::string& missing() const override { return missing_; }
    [[nodiscard]] std::string postScript(std::string_view name) const override;

private:
    struct Parts;

    std::vector<Line> draw(std::string_view text, Typeface typeface, double size, double widest,
                           const LineRoom& room) override;

    std::unique_ptr<Parts> parts_;
    std::string missing_;
};

class PangoLibrary final : public DrawingLibrary {
public:
    [[nodiscard]] std::unique_ptr<Drawings> start() const override
    {
        return std::make_unique<PangoDrawings>();
    }
};

} // namespace quelm

#endif
