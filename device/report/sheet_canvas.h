// A PDF document of Letter pages, on which texts in every script and simple shapes are drawn.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_REPORT_SHEET_CANVAS_H
#define DEVICE_REPORT_SHEET_CANVAS_H

#include "base/released_by.h"
#include "device/display/page_picture.h"

#include <cairo.h>
#include <pango/pango.h>

#include <memory>
#include <string>

namespace quelm::device {

/// Red, green and blue from 0 to 1.
struct Ink {
    double red = 0;
    double green = 0;
    double blue = 0;
};

struct TextStyle {
    double size = 9; ///< of the letters, in points
    bool bold = false;
    PangoAlignment alignment = PANGO_ALIGN_LEFT;
    int mostLines = 1; ///< what does not fit ends in an ellipsis
    Ink ink{};
};

/// A rectangle in points, from the upper left corner of the page.
struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// Lengths are in points (1/72 inch), places counted from the upper left corner of the page.
class SheetCanvas {
public:
    static constexpr double pageWidth = 612;
    static constexpr double pageHeight = 792;

    /// `title` is the document's. Throws quelm::Error when the machine has no font.
    explicit SheetCanvas(const std::string& title);

    /// How high a text of one paragraph is, within `width`.
    [[nodiscard]] double heightOf(const std::string& text, double width, const TextStyle& style);
    /// Draws it and returns its height.
    double drawText(const std::string& text, double x, double y, double width, const TextStyle& style);
    void fill(const Box& box, const Ink& ink, double radius = 0);
    void drawPicture(const PagePicture& picture, const Box& box);
    void endPage();

    /// The document as PDF. Throws quelm::Error when it could not be drawn. Called once, last.
    [[nodiscard]] std::string finish();

private:
    void layOut(const std::string& text, double width, const TextStyle& style);
    void use(const Ink& ink);

    std::string pdf_;
    std::unique_ptr<cairo_surface_t, ReleasedBy<cairo_surface_destroy>> surface_;
    std::unique_ptr<cairo_t, ReleasedBy<cairo_destroy>> cairo_;
    std::unique_ptr<PangoFontMap, ReleasedBy<g_object_unref>> fonts_;
    std::unique_ptr<PangoContext, ReleasedBy<g_object_unref>> context_;
    std::unique_ptr<PangoLayout, ReleasedBy<g_object_unref>> layout_;
};

} // namespace quelm::device

#endif
