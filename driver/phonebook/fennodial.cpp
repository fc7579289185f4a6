// The program fennodial, which the fax dialog starts to open a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/log.h"
#include "base/program_end.h"
#include "base/standard_output.h"
#include "base/terminal/terminal_emulator.h"
#include "base/terminal/terminal_window.h"
#include "driver/phonebook/actions.h"
#include "driver/phonebook/fennodial_program.h"
#include "driver/phonebook/menu.h"

#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>

namespace {

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

void run(const quelm::FennodialLine& line)
{
    if (!line.information.empty())
        return quelm::writeAnswer(line.information);
    open({line.phonebook, false});
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is an error like any other
    return quelm::exitStatusOf("fennodial", [&] { run(quelm::parseFennodialLine(argc, argv)); });
}
