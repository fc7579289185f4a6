// One run of Ghostscript over a job's PostScript, which draws black and white pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PAGES_PAGE_DRAWING_H
#define DEVICE_PAGES_PAGE_DRAWING_H

#include "base/file_handle.h"
#include "device/pages/page_bounds.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quelm::device {

/// The longest side of a page, in millimeters: no machine has paper for more.
constexpr long longestSide = 2000;

/// Throws that a page is too large, which is so many millimeters wide and high.
[[noreturn]] void failTooLarge(int page, long across, long down);

/// A part of a file, as a file without a name. Throws quelm::Error when it cannot be read whole, or there is
/// no room for it.
[[nodiscard]] FileHandle copyOfPart(const std::string& file, std::uint64_t begin, std::uint64_t end);

/// What Ghostscript drew, in a file that is gone with this object.
class DrawnPages {
public:
    /// Draws beside `target`. `options` are Ghostscript's for the size and the density. Throws quelm::Error
    /// as `renderPages` does.
    DrawnPages(const FileHandle& postScript, const std::vector<std::string>& options,
               const std::string& target, const PageBounds& bounds);
    ~DrawnPages();
    DrawnPages(const DrawnPages&) = delete;
    DrawnPages& operator=(const DrawnPages&) = delete;

    [[nodiscard]] const std::string& file() const { return file_; }

private:
    void draw(const FileHandle& postScript, const std::vector<std::string>& options,
              const PageBounds& bounds) const;

    FileHandle folder_;
    std::string name_;
    FileHandle lock_; ///< keeps others from sweeping the file up
    std::string file_;
};

} // namespace quelm::device

#endif
