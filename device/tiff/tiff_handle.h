// An open TIFF file of the library's, which says nothing by itself.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_TIFF_TIFF_HANDLE_H
#define DEVICE_TIFF_TIFF_HANDLE_H

#include "base/released_by.h"

#include <tiffio.h>

#include <filesystem>
#include <memory>
#include <string>

namespace quelm::device {

using TiffHandle = std::unique_ptr<TIFF, ReleasedBy<TIFFClose>>;

/// Opens a file with the library's letters for the mode ("r", "w"); null when it cannot. What the library has
/// to say of the file, now or later, is not written to standard error but counted in `messages`, which
/// outlives the handle where it is given.
[[nodiscard]] TiffHandle openTiff(const std::string& file, const char* mode, int* messages = nullptr);

/// Opens a file to be read of which nothing is known; null when it cannot, and for a link or what is no plain
/// file. Says nothing of what is wrong with it, and takes no more memory in one piece than 64 MiB for what it
/// says of itself. It may become shorter meanwhile.
[[nodiscard]] TiffHandle openForeignTiff(const std::filesystem::path& file);

/// Keeps the library from writing to standard error for files that others open. Once for the process; may be
/// called again, on any thread.
void silenceTiffLibrary();

} // namespace quelm::device

#endif
