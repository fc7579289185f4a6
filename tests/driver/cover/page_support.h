// What the tests of the cover page share: the component's real page, filled, and what prints of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_COVER_PAGE_SUPPORT_H
#define TESTS_DRIVER_COVER_PAGE_SUPPORT_H

#include "driver/cover/cover_header.h"
#include "driver/cover/cover_page.h"
#include "driver/plugin/fax_session.h"

#include <string>
#include <vector>

namespace quelm::tests {

/// The template that the component publishes.
const CoverPageTemplate& realTemplate();

/// Values as the component puts them into the header: the recipient's name, and a note as it is typed. The
/// time is 2024-03-05 14:07; all else is empty.
CoverValues typedValues(const std::string& name, const std::string& note);

/// The page that the component writes for these values.
std::string componentsPage(const CoverValues& values);

/// What is made of that page.
CoverPage pageFor(const CoverValues& values);

/// The texts on each page of some PostScript, line by line from above, without blanks around them and without
/// the labels of the cover page. Throws when Ghostscript fails.
std::vector<std::vector<std::string>> printedTexts(const std::string& postScript);

/// What Ghostscript writes to its standard output when it runs the program. Throws when it fails.
std::string ghostscriptOutput(const std::string& program);

/// Where ink is, in points from the lower left corner of the page.
struct InkBox {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

/// Where the first pages of two programs differ. Throws when they are alike.
InkBox difference(const std::string& one, const std::string& other);

} // namespace quelm::tests

#endif
