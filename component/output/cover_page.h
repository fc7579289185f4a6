// The cover page: the two PostScript texts that put one extra page ahead of a faxed document.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef OUTPUT_COVER_PAGE_H
#define OUTPUT_COVER_PAGE_H

#include <cstddef>

/// Sizes of the texts in bytes, terminator not counted. Hosts rely on them.
inline constexpr std::size_t coverPageHeaderSize = 593;
inline constexpr std::size_t coverPageTrailerSize = 12848;

/// A printf format with sixteen "%s", in this order: recipient's name, company, phone, fax and e-mail;
/// sender's name, company, phone, fax and e-mail (each the inside of a PostScript string); note (the
/// inside of an array, such as "(a note)"); year, month, day of the month, hour (0 to 23) and minute
/// (bare numbers; leading zeros do no harm). Values are not escaped. The result opens the page and a
/// dictionary that `coverPageTrailerText` closes. NUL-terminated; made from cover_page_header.txt.
extern const char coverPageHeaderText[coverPageHeaderSize + 1];

/// The page program: lays out the form, prints what the header defined, shows the page, and leaves the
/// interpreter as it was before the header. Written as it stands, it is no format. NUL-terminated; made
/// from cover_page.ps.
extern const char coverPageTrailerText[coverPageTrailerSize + 1];

#endif
