// Explains a failed start by what the host refused, and by the folders that the component makes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/start_failure.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"

#include <unistd.h>

#include <filesystem>

namespace quelm {

namespace fs = std::filesystem;

namespace {

/// Why a folder that should exist does not; empty when nothing speaks against it.
std::string folderTrouble(const fs::path& folder)
{
    std::error_code failure;
    const fs::path parent = folder.parent_path();
    if (fs::exists(folder, failure) ||
        (fs::is_directory(parent, failure) && ::access(parent.c_str(), W_OK) == 0))
        return "";
    return localized("the folder %s cannot be made; %s is no folder that you may write to", folder.string(),
                     parent.string());
}

} // namespace

std::string startFailure(const HostState& state)
{
    if (state.guard.failures() > 0)
        return localized("it failed in its start-up");
    const LastFailure& last = state.failures.last();
    const fs::path phonebooks = state.location + "/db/phonebook";
    std::error_code failure;
    const std::string folder =
        folderTrouble(fs::exists(phonebooks, failure) ? phonebooks / "user" : phonebooks);
    for (const std::string& reason : {last.definition, folder, last.database})
        if (!reason.empty())
            return oneLine(reason);
    return localized("it gives no reason");
}

} // namespace quelm
