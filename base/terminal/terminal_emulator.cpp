// Finds a terminal emulator, and whether one is needed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/terminal_emulator.h"

#include "base/environment.h"
#include "base/error.h"
#include "base/translation.h"

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
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

/// A program that opens a window for a command, and the options ahead of that. Where an emulator can be told
/// to be a process of its own, or to wait, it is: who waits for it then waits for the window.
struct Emulator {
    const char* program;
    std::vector<const char*> options;
};

/// In the order in which they are looked for. A program that the user names and that is not here takes "-e",
/// which most do.
const std::array<Emulator, 15>& emulators()
{
    static const std::array<Emulator, 15> known{{
        {"xdg-terminal-exec", {}},
        {"x-terminal-emulator", {"-e"}},
        {"ptyxis", {"--new-window", "--"}},
        {"kgx", {"--"}},
        {"gnome-terminal", {"--wait", "--"}},
        {"konsole", {"-e"}},
        {"xfce4-terminal", {"--disable-server", "-x"}},
        {"mate-terminal", {"--disable-factory", "-x"}},
        {"qterminal", {"-e"}},
        {"foot", {}},
        {"alacritty", {"-e"}},
        {"kitty", {}},
        {"urxvt", {"-e"}},
        {"rxvt", {"-e"}},
        {"xterm", {"-e"}},
    }};
    return known;
}

/// The program's path along PATH; empty when it is not installed.
std::string installed(const char* program)
{
    const std::unique_ptr<char, decltype(&g_free)> path(g_find_program_in_path(program), g_free);
    return path != nullptr ? path.get() : "";
}

/// The words of a setting, taken apart as a shell would; none when they cannot be.
std::vector<std::string> wordsOf(const std::string& setting)
{
    int count = 0;
    char** parsed = nullptr;
    if (g_shell_parse_argv(setting.c_str(), &count, &parsed, nullptr) == FALSE)
        return {};
    const std::unique_ptr<char*, decltype(&g_strfreev)> words(parsed, g_strfreev);
    return {parsed, parsed + count};
}

/// What starts the emulator that the user has set; empty when there is none, or it is not installed.
std::vector<std::string> usersEmulator()
{
    const char* const setting = std::getenv("TERMINAL");
    std::vector<std::string> words = wordsOf(setting != nullptr ? setting : "");
    if (words.empty())
        return {};
    const std::filesystem::path program = words.front();
    words.front() = installed(program.c_str());
    if (words.front().empty())
        return {};
    const auto known =
        std::find_if(emulators().begin(), emulators().end(),
                     [&program](const Emulator& emulator) { return emulator.program == program.filename(); });
    if (known != emulators().end())
        words.insert(words.end(), known->options.begin(), known->options.end());
    else
        words.emplace_back("-e");
    return words;
}

/// What starts the first emulator that is there.
std::vector<std::string> emulator()
{
    for (const Emulator& candidate : emulators()) {
        const std::string path = installed(candidate.program);
        if (!path.empty()) {
            std::vector<std::string> words{path};
            words.insert(words.end(), candidate.options.begin(), candidate.options.end());
            return words;
        }
        // Behind what the desktop is set to, ahead of what the machine has.
        if (&candidate == &emulators().front()) {
            if (auto words = usersEmulator(); !words.empty())
                return words;
        }
    }
    throw Error(localized("no terminal program is installed to open the phonebook in; install xterm, or run "
                          "fennodial at a terminal"));
}

} // namespace

bool isStartedFromDesktop() { return inputIsNullDevice() && hasDisplay(); }

std::vector<std::string> terminalCommand(const std::vector<std::string>& command)
{
    std::vector<std::string> words = emulator();
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

} // namespace quelm
