// Reads a stream to its end, block by block, while the main loop goes on.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_PAGES_BLOCK_READING_H
#define DRIVER_DESKTOP_PAGES_BLOCK_READING_H

#include <gio/gio.h>

#include <functional>
#include <string_view>

namespace quelm {

/// Receives the bytes of a stream as they come. A block without bytes comes once and last: the stream has
/// ended, cannot be read any more, or its reading was cancelled.
using BlockRead = std::function<void(std::string_view block)>;

/// Reads `stream` until it ends or `cancellation` is asked for. `read` is called on the thread of the default
/// main loop, never from within this function, and lives until it has received the last block; the stream and
/// the cancellation live as long.
void readBlocks(GInputStream* stream, GCancellable* cancellation, BlockRead read);

} // namespace quelm

#endif
