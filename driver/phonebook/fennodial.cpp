// The program fennodial, which the fax dialog starts to open a phonebook.
#include "driver/core/error.h"
#include "driver/core/log.h"
#include "driver/core/program_end.h"
#include "driver/phonebook/actions.h"
#include "driver/phonebook/menu.h"

#include <unistd.h>

#include <csignal>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view usage =
    "Opens a phonebook of the LAN fax component.\n"
    "Usage: fennodial -FP FILE\n"
    "\n"
    "At a terminal it offers to list, show, add, remove, import and export entries and groups; elsewhere it\n"
    "prints the list. All that follows -FP is the file's path, blanks included.\n"
    "\n"
    "  --help       Print this help and exit\n"
    "  --version    Print the version and exit\n";

/// The path behind -FP. The fax dialog hands it over without quotes, so that a shell has parted it at
/// its blanks.
std::string pathOf(const std::vector<std::string>& arguments)
{
    if (arguments.size() < 2 || arguments.front() != "-FP")
        throw quelm::UsageError("say which phonebook to open: fennodial -FP FILE");
    std::string path = arguments[1];
    for (std::size_t i = 2; i < arguments.size(); ++i)
        path += " " + arguments[i];
    if (path.empty())
        throw quelm::UsageError("say which phonebook to open: fennodial -FP FILE");
    return path;
}

void open(const quelm::PhonebookPlace& place)
{
    if (::isatty(STDIN_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 1) {
        quelm::Menu(place, std::cin, std::cout).run();
        return;
    }
    const auto list = quelm::listPhonebook(place, false);
    std::cout << list.done << std::flush;
    for (const auto& warning : list.warnings)
        std::cerr << "fennodial: warning: " << quelm::oneLine(warning) << std::endl;
    if (!std::cout)
        throw quelm::Error("standard output: the list cannot be written; make room, or read all of it");
}

void run(const std::vector<std::string>& arguments)
{
    if (arguments.size() == 1 && arguments.front() == "--help")
        std::cout << usage << std::flush;
    else if (arguments.size() == 1 && arguments.front() == "--version")
        std::cout << "fennodial " QUELM_DRIVER_VERSION << std::endl;
    else
        open({pathOf(arguments), false});
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is an error like any other
    return quelm::exitStatusOf("fennodial", [&] { run(std::vector<std::string>(argv + 1, argv + argc)); });
}
