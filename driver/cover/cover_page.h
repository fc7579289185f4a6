// The cover page as it goes into a job: the component's page, with every value as it was typed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_COVER_COVER_PAGE_H
#define DRIVER_COVER_COVER_PAGE_H

#include "driver/plugin/fax_session.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// One cover page, ready to be printed.
struct CoverPage {
    std::string postScript; ///< ends in a line end
    /// A sentence for each text that the page has no room for. It prints as far as the page's margin.
    std::vector<std::string> cut;
};

/// Makes the page for the job of what the component wrote, `written`, which must be its published header
/// filled with values, and its trailer.
///
/// The component puts the user's texts into the header as they stand. Where that prints them as they were
/// typed, and the note in the lines that fit, the page is the component's byte for byte. Otherwise the header
/// is written with values of the driver's own, so that each prints as it was typed:
///
/// - Texts in ISO Latin 1 are strings of the page's fonts; those of the note, which the page program prints
///   in a font without accents, of a copy of that font which has them. A hyphen is a hyphen there; the
///   component's page prints it as a minus sign.
/// - All other texts are drawings. The page's set-up gets a dictionary in which `show` takes certain strings
/// for
///   them, and which ends with the page.
/// - A note wider than the page is several strings, which the page program prints below each other.
///
/// Throws quelm::Error when a line of the page is not the component's, which its sentence names, a value is
/// no text of one line or no time, or no font of this machine has a character.
///
/// Of a component without such a header the page is taken as it is, unless it holds lines that a device would
/// take for commands; it is refused then.
[[nodiscard]] CoverPage makeCoverPage(std::string_view written, const CoverPageTemplate& expected);

} // namespace quelm

#endif
