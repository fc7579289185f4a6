// The pages of fax files, dot by dot.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_FAX_PAGES_H
#define TESTS_JOURNEYS_FAX_PAGES_H

#include "tests/device/tiff/page_support.h"

#include <string>
#include <vector>

namespace journeys {

using FaxPage = quelm::device::tests::Page;
using quelm::device::tests::pagesIn;

/// What Ghostscript itself makes of a print job at a density. Throws std::runtime_error when it fails.
std::vector<FaxPage> renderedPages(const std::string& job, const std::string& density,
                                   const std::string& tiff);

} // namespace journeys

#endif
