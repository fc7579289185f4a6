// Takes bytes apart into lines, in pieces of any size and with little memory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_LINE_SPLITTER_H
#define DEVICE_STREAM_LINE_SPLITTER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quelm::device {

/// What ends a line: PostScript knows three, and which it is is part of an attribute line.
enum class LineEnd { none, lf, crLf, cr };

/// One line of a job.
struct Line {
    /// How many bytes of a line are kept. Attribute lines are much shorter, and a binary section may be one
    /// line of a gigabyte.
    static constexpr std::size_t longest = 4096;

    std::string text; ///< without its end; at most `longest` bytes of it
    bool isCut = false;
    LineEnd end = LineEnd::none;
    std::uint64_t number = 1;
    std::uint64_t begin = 0; ///< the offset of its first byte
};

/// Splits a job. Each line is taken away with `next` before more bytes are handed over.
class LineSplitter {
public:
    explicit LineSplitter(std::uint64_t firstLine) { line_.number = firstLine; }

    /// Takes bytes up to the end of the line that they complete, and returns how many.
    std::size_t take(std::string_view bytes);

    /// Bytes that belong to no line are passed over.
    void skip(std::size_t bytes);

    /// No more bytes belong to the line, also if no line end came.
    void endLine() { isReady_ = isReady_ || !isAtLineStart(); }

    /// True when `line()` is whole.
    [[nodiscard]] bool isReady() const { return isReady_; }
    [[nodiscard]] const Line& line() const { return line_; }
    /// The line was taken; goes on with the next.
    void next();

    /// The offset of the next byte.
    [[nodiscard]] std::uint64_t offset() const { return offset_; }

private:
    [[nodiscard]] bool isAtLineStart() const { return offset_ == line_.begin && line_.end == LineEnd::none; }

    Line line_;
    std::uint64_t offset_ = 0;
    bool isReady_ = false;
};

} // namespace quelm::device

#endif
