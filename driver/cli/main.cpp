// The program quelm-driver: takes the command line, runs one command, and tells how it ended.
#include "driver/cli/command_line.h"
#include "driver/cli/commands.h"
#include "driver/core/error.h"
#include "driver/core/log.h"
#include "driver/jobs/file_handle.h"

#include <unistd.h>

#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <string_view>

namespace {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongUsage = 2;

int complain(std::string_view line, int status)
{
    std::cerr << "quelm-driver: " << quelm::oneLine(std::string(line)) << std::endl;
    return status;
}

void run(const quelm::CommandLine& line)
{
    if (!line.information.empty())
        return quelm::writeAll(STDOUT_FILENO, line.information, "standard output");
    switch (line.command) {
    case quelm::Command::fax:
        return quelm::runFaxCommand(line);
    case quelm::Command::attributes:
        return quelm::runAttributesCommand(line);
    case quelm::Command::script:
        return quelm::runScriptCommand(line);
    case quelm::Command::phonebook:
        return quelm::runPhonebookCommand(line);
    case quelm::Command::none:
        break;
    }
    throw quelm::Error("this build has no display support and cannot open the desktop; give a command, "
                       "see quelm-driver --help");
}

} // namespace

int main(int argc, char** argv)
{
    const quelm::WriteSignalsIgnored ignored;
    try {
        run(quelm::parseCommandLine(argc, argv));
        return done;
    } catch (const quelm::UsageError& error) {
        return complain(error.what(), wrongUsage);
    } catch (const std::bad_alloc&) {
        return complain("out of memory", failed);
    } catch (const std::exception& error) {
        return complain(error.what(), failed);
    }
}
