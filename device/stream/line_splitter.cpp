// Finds the ends of lines. A CR is known as one only when the byte behind it is there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/line_splitter.h"

#include <algorithm>

namespace quelm::device {

std::size_t LineSplitter::take(std::string_view bytes)
{
    if (isReady_ || bytes.empty())
        return 0;
    if (line_.end == LineEnd::cr) {
        isReady_ = true;
        if (bytes.front() != '\n')
            return 0;
        line_.end = LineEnd::crLf;
        ++offset_;
        return 1;
    }
    const auto isEnd = [](char byte) { return byte == '\n' || byte == '\r'; };
    const auto end = std::ranges::find_if(bytes, isEnd);
    const auto size = static_cast<std::size_t>(end - bytes.begin());
    const auto kept = std::min(size, Line::longest - line_.text.size());
    line_.text.append(bytes.substr(0, kept));
    line_.isCut = line_.isCut || kept < size;
    offset_ += size;
    if (end == bytes.end())
        return size;
    line_.end = *end == '\n' ? LineEnd::lf : LineEnd::cr;
    isReady_ = line_.end == LineEnd::lf;
    ++offset_;
    return size + 1;
}

void LineSplitter::skip(std::size_t bytes)
{
    offset_ += bytes;
    line_.begin = offset_;
}

void LineSplitter::next()
{
    line_.number += line_.end == LineEnd::none ? 0 : 1;
    line_.text.clear();
    line_.isCut = false;
    line_.end = LineEnd::none;
    line_.begin = offset_;
    isReady_ = false;
}

} // namespace quelm::device
