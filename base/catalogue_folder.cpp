// Finds the folder of catalogues.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/catalogue_folder.h"

#include "base/environment.h"
#include "base/translation.h"

#include <filesystem>
#include <system_error>

namespace quelm {

namespace fs = std::filesystem;

void useOwnTranslations()
{
    if (const fs::path folder = programFolder(); !folder.empty())
        useTranslations(localeFolder(folder.string()));
}

std::string localeFolder(const std::string& home)
{
    const fs::path own = home + "/locale"; // the home "/" is the empty text
    const fs::path program = programFolder();
    std::error_code failure;
    const bool usesOwn = program.empty() || fs::is_directory(own, failure);
    return (usesOwn ? own : program / "locale").string();
}

} // namespace quelm
