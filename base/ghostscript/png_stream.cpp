// Finds the ends of pictures by walking over their chunks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/png_stream.h"

#include "base/error.h"
#include "base/translation.h"

#include <cstdint>

namespace quelm {
namespace {

constexpr std::string_view signature("\x89PNG\r\n\x1a\n", 8);
constexpr std::size_t typeAt = 4;        // behind the length of the data
constexpr std::size_t chunkFrame = 12;   // length, type, check sum
constexpr std::size_t lengthAndType = 8; // what tells a chunk's size and whether it is the last

std::size_t lengthOf(std::string_view chunk)
{
    std::uint32_t length = 0;
    for (std::size_t i = 0; i < typeAt; ++i)
        length = length << 8U | static_cast<unsigned char>(chunk[i]);
    return length;
}

} // namespace

std::optional<std::string> PngStream::next()
{
    if (chunk_ == 0) {
        const std::string_view head = std::string_view(bytes_).substr(0, signature.size());
        if (head != signature.substr(0, head.size()))
            throw Error(localized("what Ghostscript made of the page is no picture"));
        if (head.size() < signature.size())
            return std::nullopt;
        chunk_ = signature.size();
    }
    while (bytes_.size() >= chunk_ + lengthAndType) {
        const std::string_view chunk = std::string_view(bytes_).substr(chunk_);
        const std::size_t end = chunk_ + chunkFrame + lengthOf(chunk);
        if (end > largest_)
            throw Error(localized("the page is too large to be shown"));
        if (bytes_.size() < end)
            return std::nullopt;
        const bool last = chunk.substr(typeAt, typeAt) == "IEND";
        chunk_ = end;
        if (last) {
            std::string picture = bytes_.substr(0, end);
            bytes_.erase(0, end);
            chunk_ = 0;
            return picture;
        }
    }
    return std::nullopt;
}

} // namespace quelm
