// Draws texts, prints them with Ghostscript, and looks at the ink.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DRAWINGS_DRAWINGS_SUPPORT_H
#define TESTS_DRIVER_DRAWINGS_DRAWINGS_SUPPORT_H

#include "base/ghostscript/ghostscript.h"
#include "driver/drawings/pango_drawings.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace quelm::tests {

/// Where ink is, in points from the lower left corner of the page. Empty when `right` is less than `left`.
struct Ink {
    double left = 1000;
    double right = -1000;
    double bottom = 1000;
    double top = -1000;
    int darkest = 255; ///< 0 is black

    [[nodiscard]] bool isEmpty() const { return right < left; }
    [[nodiscard]] double width() const { return right - left; }
};

/// A page as it is printed, and what its program wrote.
struct Printed {
    Ink ink;
    std::string pixels;
    std::vector<std::string> messages; ///< the lines that it wrote
};

class DrawingsTest : public testing::Test {
protected:
    static constexpr double left = 100;
    static constexpr double baseLine = 400;

    /// A page of 600 points, in pixels of half a point, that runs `program` with the drawings in "Texts".
    Printed print(const Drawings& drawings, const std::string& program) const
    {
        return printProgram("20 dict begin\n" + drawings.postScript("Texts") + program + "\nend\n");
    }

    Printed printProgram(const std::string& program) const
    {
        constexpr std::size_t pixels = 1200;
        constexpr double pixelsPerPoint = 2;
        writeFile(folder / "page.ps", "%!PS\n" + program + "showpage\n");
        std::string picture;
        const auto result =
            runGhostscript({}, {"-q", "-sDEVICE=pgmraw", "-r144", "-g1200x1200", "-sOutputFile=-", "-"},
                           {folder / "page.ps", [&](std::string_view bytes) { picture += bytes; }});
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        EXPECT_GT(picture.size(), pixels * pixels) << result.errors;

        Printed printed;
        std::istringstream lines(result.errors);
        for (std::string line; std::getline(lines, line);)
            printed.messages.push_back(line);
        if (picture.size() <= pixels * pixels)
            return printed;
        printed.pixels = picture.substr(picture.size() - pixels * pixels);
        for (std::size_t i = 0; i < printed.pixels.size(); ++i) {
            const int gray = static_cast<unsigned char>(printed.pixels[i]);
            if (gray == 255)
                continue;
            const std::size_t row = i / pixels;
            const double x = static_cast<double>(i % pixels) / pixelsPerPoint;
            const double y = static_cast<double>(pixels - 1 - row) / pixelsPerPoint;
            Ink& ink = printed.ink;
            ink = {std::min(ink.left, x), std::max(ink.right, x), std::min(ink.bottom, y),
                   std::max(ink.top, y), std::min(ink.darkest, gray)};
        }
        return printed;
    }

    /// Runs the drawing with its line beginning at (`left`, `y`).
    static std::string show(const Drawings::Line& line, double y = baseLine)
    {
        return "100 " + std::to_string(y) + " moveto Texts " + std::to_string(line.drawing) + " get exec ";
    }

    /// The names of the glyphs that lines show, in their order.
    static std::vector<std::string> glyphsOf(const Drawings& drawings,
                                             const std::vector<Drawings::Line>& lines)
    {
        std::string program = drawings.postScript("Texts");
        std::replace(program.begin(), program.end(), '\n', ' ');
        std::vector<std::string> glyphs;
        for (const auto& line : lines) {
            const auto begin = program.find(" Texts " + std::to_string(line.drawing) + " {");
            std::istringstream tokens(program.substr(begin, program.find("} bind put", begin) - begin));
            for (std::string token; tokens >> token;)
                if (token[0] == 'g' && token != "gsave" && token != "grestore")
                    glyphs.push_back(token);
        }
        return glyphs;
    }

    /// How often `part` occurs in `text`.
    static std::size_t count(const std::string& text, const std::string& part)
    {
        std::size_t found = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++found;
        return found;
    }

    TemporaryFolder folder;
};

} // namespace quelm::tests

#endif
