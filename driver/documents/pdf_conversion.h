// Turns PDF into PostScript with Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_PDF_CONVERSION_H
#define DRIVER_DOCUMENTS_PDF_CONVERSION_H

#include "base/file_handle.h"
#include "base/ghostscript/ghostscript.h"

#include <cstddef>
#include <string>

namespace quelm {

/// What became of a PDF document.
struct ConvertedPdf {
    FileHandle postScript; ///< an unnamed file
    std::size_t pages = 0; ///< how many it has
    std::string warning;   ///< not empty when the PDF was damaged and had to be mended
};

/// Converts the PDF that stands in the open file `pdf`, from its start. Ghostscript runs without access
/// to other files. `name` names the document in the line of the quelm::Error that is thrown when the
/// PDF is protected or damaged beyond repair, has no pages, or not all of them could be converted; when the
/// disk is full, a bound is reached, or Ghostscript is not installed.
ConvertedPdf convertPdf(const FileHandle& pdf, const std::string& name, const GhostscriptBounds& bounds);

} // namespace quelm

#endif
