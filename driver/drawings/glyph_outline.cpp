// Takes the outline of a glyph out of its font, in paths that a device has room for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/glyph_outline.h"

#include "driver/drawings/glyph_font.h"
#include "driver/drawings/glyph_picture.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>
#include <utility>

namespace quelm {
namespace {

/// How many points a path has at most: older devices have room for 1,500.
constexpr std::size_t longestPath = 1400;

/// One closed line of an outline.
struct Contour {
    std::vector<Statement> statements;
    std::size_t points = 0;
    long left = std::numeric_limits<long>::max();
    long right = std::numeric_limits<long>::min();
    long bottom = std::numeric_limits<long>::max();
    long top = std::numeric_limits<long>::min();

    [[nodiscard]] bool touches(const Contour& other) const
    {
        return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
    }

    /// Adds a step to the points given, by the procedure `name`. Cairo counts from the top, PostScript from
    /// the bottom.
    void addStep(std::span<const cairo_path_data_t> step, const char* name)
    {
        std::string text;
        for (const auto& data : step) {
            const long x = std::lround(data.point.x);
            const long y = std::lround(-data.point.y);
            left = std::min(left, x);
            right = std::max(right, x);
            bottom = std::min(bottom, y);
            top = std::max(top, y);
            text += numberText(x) + ' ' + numberText(y) + ' ';
        }
        statements.push_back(plainStatement(text + name));
        points += step.size();
    }

    void close() { statements.push_back({"h", 1}); }

    /// Takes over the contours of another; both are filled as one.
    void join(Contour&& other)
    {
        std::move(other.statements.begin(), other.statements.end(), std::back_inserter(statements));
        points += other.points;
        left = std::min(left, other.left);
        right = std::max(right, other.right);
        bottom = std::min(bottom, other.bottom);
        top = std::max(top, other.top);
    }
};

std::vector<Contour> contoursOf(const cairo_path_t& path)
{
    std::vector<Contour> contours;
    const std::span data(path.data, static_cast<std::size_t>(path.num_data));
    for (std::size_t i = 0; i < data.size(); i += static_cast<std::size_t>(data[i].header.length)) {
        const auto points = data.subspan(i + 1, static_cast<std::size_t>(data[i].header.length) - 1);
        switch (data[i].header.type) {
        case CAIRO_PATH_MOVE_TO:
            contours.emplace_back();
            contours.back().addStep(points, "m");
            break;
        case CAIRO_PATH_LINE_TO:
            contours.back().addStep(points, "l");
            break;
        case CAIRO_PATH_CURVE_TO:
            contours.back().addStep(points, "c");
            break;
        case CAIRO_PATH_CLOSE_PATH:
            contours.back().close();
            break;
        }
    }
    // Cairo begins anew behind each closed line, the last one too.
    std::erase_if(contours, [](const Contour& contour) { return contour.statements.size() < 2; });
    return contours;
}

/// The contours in groups that do not overlap: whether a point is inside one does not depend on the others.
std::vector<Contour> apart(std::vector<Contour> contours)
{
    std::vector<Contour> groups;
    for (auto& contour : contours) {
        // A group that took over another is larger, and may touch more of them.
        bool grown = true;
        while (grown) {
            const auto touched = std::find_if(groups.begin(), groups.end(),
                                              [&](const Contour& group) { return group.touches(contour); });
            grown = touched != groups.end();
            if (grown) {
                touched->join(std::move(contour));
                contour = std::move(*touched);
                groups.erase(touched);
            }
        }
        groups.push_back(std::move(contour));
    }
    return groups;
}

CairoPathHandle pathOf(PangoFont* font, PangoGlyph glyph)
{
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const CairoHandle cairo(cairo_create(surface.get()));
    cairo_set_scaled_font(cairo.get(), fontOfSize(font, outlineUnitsPerEm).get());
    const auto placed = glyphAt(glyph, 0, 0);
    cairo_glyph_path(cairo.get(), &placed, 1);
    requireSuccess(cairo_status(cairo.get()));
    CairoPathHandle path(cairo_copy_path(cairo.get()));
    requireSuccess(path->status);
    return path;
}

} // namespace

std::vector<Statement> outlineOf(PangoFont* font, PangoGlyph glyph)
{
    auto contours = contoursOf(*pathOf(font, glyph));
    std::size_t points = 0;
    for (const auto& contour : contours)
        points += contour.points;
    if (points > longestPath)
        contours = apart(std::move(contours));
    if (std::any_of(contours.begin(), contours.end(),
                    [](const Contour& contour) { return contour.points > longestPath; }))
        return stencilOf(font, glyph);

    // Fewer, longer paths print faster.
    std::vector<Statement> statements;
    std::size_t pathPoints = 0;
    for (auto& contour : contours) {
        if (pathPoints != 0 && pathPoints + contour.points > longestPath) {
            statements.push_back({"f", 1});
            pathPoints = 0;
        }
        pathPoints += contour.points;
        std::move(contour.statements.begin(), contour.statements.end(), std::back_inserter(statements));
    }
    if (!statements.empty())
        statements.push_back({"f", 1});
    return statements;
}

} // namespace quelm
