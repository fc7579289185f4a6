// Starts a terminal emulator.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/terminal_window.h"

#include "base/error.h"
#include "base/terminal/terminal_emulator.h"
#include "base/translation.h"

#include <glib.h>

#include <memory>

namespace quelm {

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
