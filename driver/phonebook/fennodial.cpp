// The program fennodial, which the fax dialog starts to open a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/log.h"
#include "base/program_end.h"
#include "base/standard_output.h"
#include "base/terminal/terminal_emulator.h"
#include "base/terminal/terminal_window.h"
#include "base/translation.h"
#include "base/version.h"
#include "driver/phonebook/actions.h"
#include "driver/phonebook/menu.h"

#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string usage()
{
    return quelm::localized("Opens a phonebook of the LAN fax component.\n"
                            "Usage: fennodial -FP FILE\n") +
           "\n" +
           quelm::localized(
               "At a terminal it offers to list, show, add, remove, import and export entries and\n"
               "groups; started from a desktop it opens a terminal for that, elsewhere it prints the\n"
               "list. All that follows -FP is the file's path, blanks included.\n") +
           "\n" +
           quelm::localized("  --help       Print this help and exit\n"
                            "  --version    Print the version and exit\n");
}

quelm::UsageError noPhonebook()
{
    return quelm::UsageError(quelm::localized("say which phonebook to open: fennodial -FP FILE"));
}

/// The path behind -FP. The fax dialog hands it over without quotes, so that a shell has parted it at
/// its blanks.
std::string pathOf(const std::vector<std::string>& arguments)
{
    if (arguments.size() < 2 || arguments.front() != "-FP")
        throw noPhonebook();
    std::string path = arguments[1];
    for (std::size_t i = 2; i < arguments.size(); ++i)
        path += " " + arguments[i];
    if (path.empty())
        throw noPhonebook();
    return path;
}

void open(const quelm::PhonebookPlace& place)
{
    if (::isatty(STDIN_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 1) {
        quelm::Menu(place, std::cin, std::cout).run();
        return;
    }
    if (quelm::isStartedFromDesktop()) {
        quelm::becomeTerminalWindow(
            {std::filesystem::read_symlink("/proc/self/exe").string(), "-FP", place.path});
    }
    const auto list = quelm::listPhonebook(place, false);
    quelm::writeAnswer(list.done);
    for (const auto& warning : list.warnings)
        quelm::log(quelm::Severity::warning, warning);
}

void run(const std::vector<std::string>& arguments)
{
    if (arguments.size() == 1 && arguments.front() == "--help")
        quelm::writeAnswer(usage());
    else if (arguments.size() == 1 && arguments.front() == "--version")
        quelm::writeAnswer(quelm::programAndVersion("fennodial") + "\n");
    else
        open({pathOf(arguments), false});
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is an error like any other
    return quelm::exitStatusOf("fennodial", [&] { run(std::vector<std::string>(argv + 1, argv + argc)); });
}
