// Finds and starts quelm-desktop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/desktop_command.h"

#include "base/command_line/parser_messages.h"
#include "base/environment.h"
#include "base/error.h"
#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

namespace quelm {
namespace {

std::string desktopProgram()
{
    std::error_code failure;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", failure);
    return (program.parent_path() / "quelm-desktop").string();
}

} // namespace

void becomeDesktop(const CommandLine& line, char** argv)
{
    std::error_code failure;
    if (!line.document.empty() && !std::filesystem::exists(line.document, failure)) {
        const auto reason = localized("\"%s\" is neither a command nor a document", line.document);
        throw UsageError(refusalLine(reason, line.commandMeant, "quelm-driver"));
    }
    if (!hasDisplay())
        throw Error(
            localized("there is no display to open the desktop on; give a command, see quelm-driver --help"));
    const std::string program = desktopProgram();
    ::execv(program.c_str(), argv);
    if (errno == ENOENT)
        throw Error(localized(
            "the desktop cannot be opened: there is no program %s; give a command, see quelm-driver --help",
            program));
    throw Error(localized("the desktop cannot be opened: %s: %s", program, systemReason(errno)));
}

} // namespace quelm
