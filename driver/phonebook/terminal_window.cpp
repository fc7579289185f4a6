// Finds and starts a terminal emulator.
#include "driver/phonebook/terminal_window.h"

#include "driver/core/error.h"
#include "driver/core/installation.h"
#include "driver/core/translation.h"

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

namespace quelm {
namespace {

bool inputIsNullDevice()
{
    struct stat input {};
    struct stat nullDevice {};
    return ::fstat(STDIN_FILENO, &input) == 0 && ::stat("/dev/null", &nullDevice) == 0 &&
           S_ISCHR(input.st_mode) && input.st_rdev == nullDevice.st_rdev;
}

/// The system's own choice goes ahead of what is there in any case.
std::string terminalEmulator()
{
    for (const char* program : {"x-terminal-emulator", "xterm"}) {
        const std::unique_ptr<char, decltype(&g_free)> path(g_find_program_in_path(program), g_free);
        if (path != nullptr)
            return path.get();
    }
    throw Error(localized("no terminal program is installed to open the phonebook in; install xterm, or run "
                          "fennodial at a terminal"));
}

} // namespace

bool isStartedFromDesktop() { return inputIsNullDevice() && hasDisplay(); }

void openInTerminalWindow(const std::vector<std::string>& command)
{
    std::vector<std::string> arguments{terminalEmulator(), "-e"};
    arguments.insert(arguments.end(), command.begin(), command.end());
    std::vector<char*> texts;
    texts.reserve(arguments.size() + 1);
    for (auto& argument : arguments)
        texts.push_back(argument.data());
    texts.push_back(nullptr);
    GError* problem = nullptr;
    constexpr auto flags = static_cast<GSpawnFlags>(G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    if (g_spawn_async(nullptr, texts.data(), nullptr, flags, nullptr, nullptr, nullptr, &problem) != FALSE)
        return;
    const std::unique_ptr<GError, decltype(&g_error_free)> owner(problem, g_error_free);
    throw Error(
        localized("the terminal program %s cannot be started: %s", arguments.front(), problem->message));
}

} // namespace quelm
