// Turns PDF into PostScript with Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_PDF_CONVERSION_H
#define DRIVER_DOCUMENTS_PDF_CONVERSION_H

#include "base/file_io.h"

#include <chrono>
#include <stop_token>
#include <string>

namespace quelm {

/// How a PDF document is converted.
struct PdfConversion {
    std::string ghostscript = "gs"; ///< the program, looked up along PATH unless it holds a "/"
    std::chrono::milliseconds timeLimit = std::chrono::minutes(10);
    std::stop_token stop; ///< gives the conversion up, which then fails
};

/// What became of a PDF document.
struct ConvertedPdf {
    FileHandle postScript; ///< an unnamed file
    std::string warning;   ///< not empty when the PDF was damaged and had to be mended
};

/// Converts the PDF that stands in the open file `pdf`, from its start. Ghostscript runs without access
/// to other files. `name` names the document in the line of the quelm::Error that is thrown when the
/// PDF is protected or damaged beyond repair, has no pages, takes longer than the limit, or when
/// Ghostscript is not installed.
ConvertedPdf convertPdf(const FileHandle& pdf, const std::string& name, const PdfConversion& conversion);

} // namespace quelm

#endif
