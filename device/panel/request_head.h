// Reads the head of a request from a socket, within bounds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_REQUEST_HEAD_H
#define DEVICE_PANEL_REQUEST_HEAD_H

#include "base/file_handle.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace quelm::device {

/// How long a request's head may be: cookies of other servers at this computer may come along.
inline constexpr std::size_t longestHead = std::size_t{32} << 10U;

struct RequestHead {
    enum class Kind {
        whole,
        tooLong,
        none ///< it ended early or did not come in time
    };
    Kind kind = Kind::none;
    std::string bytes; ///< of one that is whole: its lines, and the empty one that ends it
};

/// Reads from a non-blocking socket up to the empty line, for `patience` in all.
[[nodiscard]] RequestHead readHead(const FileHandle& socket, std::chrono::milliseconds patience);

/// The head without what these pages have no use for: conditions and parts of answers ("Range"), bodies
/// ("Expect").
[[nodiscard]] std::string plainHead(const std::string& head);

} // namespace quelm::device

#endif
