// Parts a stream of PNG pictures, as Ghostscript writes its pages one behind the other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_GHOSTSCRIPT_PNG_STREAM_H
#define BASE_GHOSTSCRIPT_PNG_STREAM_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// Collects bytes, and hands out each picture when its last byte has come.
class PngStream {
public:
    /// `largest`: the most bytes that one picture may have.
    explicit PngStream(std::size_t largest) : largest_(largest) {}

    void append(std::string_view bytes) { bytes_ += bytes; }

    /// The next picture that is whole, as a PNG file's bytes; nothing when more bytes are needed. Throws
    /// quelm::Error when the bytes are no PNG pictures or one is too large.
    std::optional<std::string> next();

    /// True when no bytes of an unfinished picture are left.
    bool atEnd() const { return bytes_.empty(); }

private:
    std::size_t largest_;
    std::string bytes_;
    std::size_t chunk_ = 0; ///< where the first chunk that is not known to be whole starts; 0 ahead of all
};

} // namespace quelm

#endif
