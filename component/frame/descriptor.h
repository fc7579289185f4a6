// The descriptor objects by which a host recognises the component; one more is in common/phonebook_tags.h.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FRAME_DESCRIPTOR_H
#define FRAME_DESCRIPTOR_H

#pragma GCC visibility push(default)
extern "C" {
// Each points at constant, NUL-terminated text.
extern const char* _QuelmSODisplayName;
extern const char* _QuelmSOVersion;
extern const char* _QuelmSOExportList;   ///< the names of the functions a host may call
extern const char* pLanFaxXMLData;       ///< the dialog definition
extern const char* pT40CoverPageHeader;  ///< printf-style template of the cover page's head
extern const char* pT40CoverPageTrailer; ///< the cover page's PostScript program
}
#pragma GCC visibility pop

#endif
