// The program quelm-desktop: takes the command line and opens the desktop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/file_handle.h"
#include "base/file_io.h"
#include "base/program_end.h"
#include "base/standard_output.h"
#include "base/version.h"
#include "driver/cli/command_line.h"
#include "driver/cli/driver_setup.h"
#include "driver/desktop/application.h"

#include <fcntl.h>
#include <unistd.h>

#include <exception>
#include <functional>
#include <new>
#include <string>

namespace {

/// The phonebook program, which the component starts and waits for, must not take over a terminal that the
/// desktop happens to be started from.
void readNothingFromStandardInput()
{
    const quelm::FileHandle nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (nothing.isOpen())
        ::dup2(nothing.get(), STDIN_FILENO);
}

/// Does `work`, and keeps why it failed. Not for wrong usage: whoever typed it reads that in the terminal.
void keepingFailure(std::string& line, const std::function<void()>& work)
{
    try {
        work();
    } catch (const quelm::UsageError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        line = error.what();
        throw;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const quelm::WriteSignalsIgnored ignored;
    std::string failure;
    const int status = quelm::exitStatusOf("quelm-desktop", [&] {
        const auto line = quelm::parseDesktopCommandLine(argc, argv);
        if (!line.information.empty())
            return quelm::writeAnswer(line.information);
        keepingFailure(failure, [&line] {
            const auto setup = quelm::setUpDriver(line);
            readNothingFromStandardInput();
            quelm::runDesktop({setup.driver, setup.pdl, line.document,
                               quelm::programAndVersion("quelm-desktop"), setup.outbox, setup.destinations,
                               setup.destination ? setup.destination->name : ""});
        });
    });
    // A program that was started by a click has nobody who reads its standard error.
    if (!failure.empty())
        quelm::tellStartFailure(failure);
    return status;
}
