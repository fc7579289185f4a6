// Texts in any script as drawings that a PostScript page can call.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_DRAWINGS_H
#define DRIVER_COVER_DRAWINGS_H

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What a text looks like beside the page's own fonts.
enum class Typeface {
    sans,  ///< goes with Helvetica
    serif, ///< goes with Times-Roman
};

/// The drawings of one page: outlines of texts, which need no font at the device. One object belongs to one
/// thread at a time; several threads may each have theirs.
class Drawings {
public:
    /// One line of a text.
    struct Line {
        std::size_t drawing = 0; ///< its position in the array that `postScript` defines
        double width = 0;        ///< in points, from the beginning of the line to its right end
        bool isTooTall = false;  ///< its ink reaches beyond its room
    };

    /// What a line may take up, in points.
    struct LineRoom {
        double above = std::numeric_limits<double>::infinity(); ///< from the base line to the top of its ink
        double below = std::numeric_limits<double>::infinity(); ///< and down to the bottom
        /// Where the page cuts it off. The beginning of a text that is read from right to left stands there.
        double width = std::numeric_limits<double>::infinity();
    };

    static const LineRoom anyRoom; ///< without bounds

    Drawings() = default;
    virtual ~Drawings() = default;
    Drawings(const Drawings&) = delete;
    Drawings& operator=(const Drawings&) = delete;

    /// Lays out `text` (UTF-8 without control characters) at `size` points, more than 0, and draws it: as one
    /// line, or as many as it takes to stay within `widest` points; only a single character that is wider
    /// still goes beyond. Lines of a text that is read from right to left end at `widest` where that is
    /// finite. The empty text is one line, too. The blank at which a line was broken counts for nothing.
    /// A line whose ink reaches above or below `room` is drawn smaller, but not smaller than half its size.
    /// One that is wider than the room, and read from right to left, is cut off at its end on the left.
    ///
    /// Throws quelm::Error when there is no font, one cannot be read, the text is longer than 128 KB, or the
    /// page has more than 65,535 lines, an array's limit; then nothing was added.
    [[nodiscard]] std::vector<Line> add(std::string_view text, Typeface typeface, double size,
                                        double widest = std::numeric_limits<double>::infinity(),
                                        const LineRoom& room = anyRoom)
    {
        return draw(text, typeface, size, widest, room);
    }

    /// The characters of all texts so far that no font of this machine has, each once, as UTF-8. The drawings
    /// leave them out.
    [[nodiscard]] virtual const std::string& missing() const = 0;

    /// PostScript of Level 2 that defines, in the dictionary on top of the stack, what the drawings share
    /// (`/NAMEGlyphs`) and `/NAME`, an array of procedures. Each draws its line from the current point, which
    /// is the beginning of the base line, in the current colour and within what clips the page, and leaves
    /// the current point at the line's end, and all else as it was.
    ///
    /// It has to be run by itself, not as a part of a procedure. It is ASCII in lines of some 100 characters,
    /// each with a line end.
    [[nodiscard]] virtual std::string postScript(std::string_view name) const = 0;

private:
    /// Does what `add` says.
    virtual std::vector<Line> draw(std::string_view text, Typeface typeface, double size, double widest,
                                   const LineRoom& room) = 0;
};

inline const Drawings::LineRoom Drawings::anyRoom{};

/// Makes drawings. Implemented by the module "drawings", which brings the libraries for fonts.
class DrawingLibrary {
public:
    static constexpr const char* moduleName = "drawings";

    DrawingLibrary() = default;
    virtual ~DrawingLibrary() = default;
    DrawingLibrary(const DrawingLibrary&) = delete;
    DrawingLibrary& operator=(const DrawingLibrary&) = delete;

    /// Drawings with the fonts of this machine, which are looked for with the first text.
    [[nodiscard]] virtual std::unique_ptr<Drawings> start() const = 0;
};

} // namespace quelm

#endif
