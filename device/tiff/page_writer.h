// Writes a TIFF file of fax pages: class F, T.6.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_TIFF_PAGE_WRITER_H
#define DEVICE_TIFF_PAGE_WRITER_H

#include "base/file_handle.h"
#include "device/tiff/page_reader.h"

#include <string>

namespace quelm::device {

/// The file appears whole or not at all: it has its name behind `finish`.
class PageWriter {
public:
    /// `pages` is how many there will be. Throws quelm::Error when nothing can be written there, which is
    /// NoRoom when a disk is full; so do the others.
    PageWriter(std::string file, int pages);
    ~PageWriter();
    PageWriter(const PageWriter&) = delete;
    PageWriter& operator=(const PageWriter&) = delete;

    /// Adds the reader's page, after it was seen to be whole: as it is when it is in T.6, and coded so
    /// otherwise.
    void copy(const PageReader& reader);
    /// Adds it with white at its right, so that it is `width` dots wide.
    void widen(const PageReader& reader, std::uint32_t width);
    /// Makes the file durable and gives it its name, which another may have had.
    void finish();

private:
    void remove() noexcept;
    void beginPage(const PageFacts& facts);
    void endPage();
    [[noreturn]] void fail(int error) const;

    std::string file_;
    int pages_;
    int page_ = 0;
    FileHandle folder_;
    std::string name_; ///< of the file so far, in the folder
    FileHandle written_;
    TiffHandle tiff_;
};

} // namespace quelm::device

#endif
