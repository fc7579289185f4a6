// Runs PostScript programs in Ghostscript and reads what came out: words printed, texts and ink on pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_COMPONENT_OUTPUT_GHOSTSCRIPT_H
#define TESTS_COMPONENT_OUTPUT_GHOSTSCRIPT_H

#include <string>
#include <vector>

namespace rendering {

/// A piece of text that one operator showed: where its base line begins, in points from the lower left
/// corner of the page, and in which font (as the interpreter names it) and size.
struct Text {
    double x;
    double y;
    std::string font;
    double size;
    std::string text;
};

using Page = std::vector<Text>;

/// A stretch of ink along a line of the page, in points.
struct Ink {
    double center;
    double thickness;
};

/// One page as ink and paper, letter size.
class Picture {
public:
    explicit Picture(const std::string& pgm);

    std::vector<Ink> alongVertical(double x) const;
    std::vector<Ink> alongHorizontal(double y) const;

    bool operator==(const Picture&) const = default;

private:
    bool isInk(int column, int row) const;

    int width_ = 0;
    int height_ = 0;
    std::string pixels_;
};

/// Each throws std::runtime_error with Ghostscript's words when the program does not run to its end.

/// What the program writes with "=" and "==".
std::string output(const std::string& program);
/// The texts of every page, in the order in which they were shown.
std::vector<Page> texts(const std::string& program);
/// Every page's ink.
std::vector<Picture> pictures(const std::string& program);

} // namespace rendering

#endif
