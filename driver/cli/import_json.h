// What came of an import or export, as data for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_IMPORT_JSON_H
#define DRIVER_CLI_IMPORT_JSON_H

#include "driver/phonebook/actions.h"
#include "driver/phonebook/import.h"

#include <string>

namespace quelm {

// Each is one JSON object in UTF-8, with a line end behind it. docs/phonebooks.md lists the keys.

/// A report; `failure` is why nothing was imported, empty when it was.
[[nodiscard]] std::string importJson(const ImportReport& report, const std::string& failure);

/// What was written to a file, or would be.
[[nodiscard]] std::string exportJson(const std::string& file, FileFormat format, const ExportCount& count,
                                     Doing doing);

} // namespace quelm

#endif
