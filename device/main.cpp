// The program quelm-device: takes the command line, runs one command, and tells how it ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/file_io.h"
#include "base/program_end.h"
#include "base/standard_output.h"
#include "device/command_line.h"

namespace {

void run(const quelm::device::DeviceCommandLine& line)
{
    if (!line.information.empty())
        return quelm::writeAnswer(line.information);
    if (line.command == quelm::device::DeviceCommand::read)
        return quelm::device::runReadCommand(line.read);
    quelm::device::runServeCommand(line.serve);
}

} // namespace

int main(int argc, char** argv)
{
    const quelm::WriteSignalsIgnored ignored;
    return quelm::exitStatusOf("quelm-device", [&] {
        quelm::withJsonFailure(quelm::asksForJson(argc, argv),
                               [&] { run(quelm::device::parseDeviceCommandLine(argc, argv)); });
    });
}
