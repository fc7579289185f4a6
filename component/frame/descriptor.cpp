// The descriptor objects.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "frame/descriptor.h"

#include "frame/dialog_definition.h"
#include "frame/export_list.h"
#include "output/cover_page.h"

const char* _QuelmSODisplayName = "Bramblecor Pro Family Lan Fax Library";
const char* _QuelmSOVersion = "0.1";
const char* _QuelmSOExportList = exportList;
const char* pLanFaxXMLData = dialogDefinitionText;
const char* pT40CoverPageHeader = coverPageHeaderText;
const char* pT40CoverPageTrailer = coverPageTrailerText;
