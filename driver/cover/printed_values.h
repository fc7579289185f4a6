// Values of a cover page in the form in which they print as they were typed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_PRINTED_VALUES_H
#define DRIVER_COVER_PRINTED_VALUES_H

#include "driver/cover/cover_header.h"

#include <string>
#include <vector>

namespace quelm {

/// A header's values, and what has to stand around them on the page.
struct PrintedValues {
    CoverValues values;
    std::string ahead;            ///< PostScript ahead of the values; empty when the page needs nothing
    std::string behind;           ///< ends what `ahead` began
    std::vector<std::string> cut; ///< a sentence for each text that does not fit
};

/// Makes the values for a header from those that the component put into it, which are texts of one line.
/// Where all of them print as they were typed and fit, they are the component's, and nothing stands around
/// the page. Throws quelm::Error when the note is none that a component writes, and when no font of this
/// machine has a character.
[[nodiscard]] PrintedValues printedValues(const CoverValues& typed);

} // namespace quelm

#endif
