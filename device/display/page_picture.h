// Pictures of the pages that were sent and received.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_DISPLAY_PAGE_PICTURE_H
#define DEVICE_DISPLAY_PAGE_PICTURE_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quelm::device {

/// A page in shades of grey, line by line from above.
struct PagePicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> shades; ///< 0 black to 255 white, without padding
};

/// How many pages a TIFF file has, counted up to 100,000; 0 for one that cannot be read, which files of
/// others may be.
[[nodiscard]] int pagesIn(const std::filesystem::path& tiff);

/// A page of a black and white TIFF file, from 1, at `width` pixels, as high as it looks on paper: the dots
/// of a fax are mostly higher than wide. Each pixel is the mean of the dots that it covers. Nothing when
/// there is no such page, or it is none that a fax sends: damaged, in colours, or of an unlikely size. Memory
/// and work are bounded, whatever the file says.
[[nodiscard]] std::optional<PagePicture> pictureOf(const std::filesystem::path& tiff, int page, int width);

/// A blank sheet, which stands for a page that cannot be shown.
[[nodiscard]] PagePicture blankPage(int width);

/// The picture as a PNG file.
[[nodiscard]] std::string pngOf(const PagePicture& picture);

} // namespace quelm::device

#endif
