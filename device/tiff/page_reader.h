// Reads a TIFF file of fax pages, one page after the other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_TIFF_PAGE_READER_H
#define DEVICE_TIFF_PAGE_READER_H

#include "device/tiff/tiff_handle.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace quelm::device {

/// What a page says of itself.
struct PageFacts {
    std::uint32_t width = 0; ///< dots
    std::uint32_t height = 0;
    double across = 0; ///< dots in an inch
    double down = 0;
};

/// Stands on a page, at first on the first one. Needs no more memory than one page does.
class PageReader {
public:
    /// Throws quelm::Error when the file cannot be read or is no TIFF file. `shownName` names it there.
    explicit PageReader(const std::string& file, const std::string& shownName = {});

    /// How many pages there are.
    [[nodiscard]] int count() const { return count_; }
    /// Goes on to the next page; false behind the last. Throws quelm::Error when the page is damaged.
    bool next();

    /// Throws quelm::Error when the page is none that a fax could be: it is not black and white.
    [[nodiscard]] PageFacts facts() const;
    /// True when it is coded as pages of faxes are kept here.
    [[nodiscard]] bool isT6() const;
    /// Hands out the page's rows, decoded, from the top: whole bytes, in which black is 1 and the bits behind
    /// the last dot are 0. Throws quelm::Error when the page is damaged.
    void readRows(const std::function<void(std::span<const std::uint8_t>)>& take) const;

    /// The library's handle, for a writer.
    [[nodiscard]] TIFF* handle() const { return tiff_.get(); }
    /// Throws the error of a page that is damaged.
    [[noreturn]] void failDamaged() const;

private:
    std::string shownName_;
    std::unique_ptr<int> messages_ = std::make_unique<int>(0); ///< of the library
    TiffHandle tiff_;
    int count_ = 0;
    int page_ = 1;
};

/// How many pages a file has; 0 when it is no TIFF file.
[[nodiscard]] int pagesInFile(const std::string& file);

} // namespace quelm::device

#endif
