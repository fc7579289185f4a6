// The texts of the device's commands.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/command_help.h"

#include "base/command_line/help_texts.h"
#include "base/translation.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace quelm::device {

void addDeviceHelp(CLI::App& program)
{
    HelpTexts whole;
    whole.details = {
        localized("It is for trying, demonstrating and testing without hardware: the pages are really faxed, "
                  "to receivers that keep what arrives. Nobody is called.")};
    whole.examples = {{"quelm-device serve --state device", localized("Is a device until Ctrl-C ends it.")},
                      {"quelm-device read letter.job", localized("Says what a device would do with a job.")}};
    whole.environment = {
        {"LANGUAGE, LC_ALL, LC_MESSAGES, LANG", localized("The language of messages and help.")},
        {"TMPDIR", localized("The folder for files that are needed for a while; by default /tmp.")},
    };
    whole.files = {
        {"DIR/exchange.conf", localized("What stands behind which number, in the folder of --state.")},
        {"DIR/received/", localized("What was received, a folder for each number.")},
    };
    whole.related = {"quelm-driver(1)"};
    addHelp(program, std::move(whole));

    HelpTexts read;
    read.details = {localized(
        "It shows the attributes of the job, whom it goes to, its pages, and what is wrong with it.")};
    read.examples = {{"quelm-device read letter.job", localized("Reads a file.")},
                     {"quelm-device read - --json < letter.job",
                      localized("Reads standard input, and answers other programs.")}};
    addHelp(commandAt(program, "read"), std::move(read));

    HelpTexts serve;
    serve.details = {
        localized("It says where it listens, then \"ready\", then what happens, and goes on with the same "
                  "folder where it was ended.")};
    serve.examples = {
        {"quelm-device serve --state device", localized("Listens on loopback, on the usual ports.")},
        {"quelm-device serve --state device --with-directory --real-time",
         localized("Has people to search for, and takes its time.")},
        {"quelm-device serve --state device --port 0 --no-panel --no-snmp --until-idle",
         localized("Takes a job on any free port, and ends when it is done.")}};
    addHelp(commandAt(program, "serve"), std::move(serve));

    HelpTexts help;
    help.examples = {{"quelm-device help serve", localized("Shows the options of the command serve.")}};
    addHelp(commandAt(program, "help"), std::move(help));
}

} // namespace quelm::device
