// Has Ghostscript make fax files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/fax_pages.h"

#include "tests/journeys/run_program.h"

#include <stdexcept>

namespace journeys {

std::vector<FaxPage> renderedPages(const std::string& job, const std::string& density,
                                   const std::string& tiff)
{
    Request request;
    request.arguments = {"gs",
                         "-q",
                         "-dSAFER",
                         "-dBATCH",
                         "-dNOPAUSE",
                         "-sDEVICE=tiffg4",
                         "-r" + density,
                         "-sOutputFile=" + tiff,
                         job};
    const auto result = runProgram(request);
    if (result.status != 0)
        throw std::runtime_error("Ghostscript failed: " + result.output + result.errors);
    return pagesIn(tiff);
}

} // namespace journeys
