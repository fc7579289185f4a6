// The device's commands and options that CLI11 is told of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/command_line.h"

#include "base/command_line/program_arguments.h"
#include "base/translation.h"
#include "device/command_help.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <functional>
#include <limits>

namespace quelm::device {
namespace {

constexpr int highestPort = std::numeric_limits<std::uint16_t>::max();

/// Adds an option with a number from `least` to `most`; the last one given counts.
CLI::Option* addNumber(CLI::App& command, const std::string& name, int least, int most,
                       const std::function<void(int)>& store, const std::string& description)
{
    const auto take = [store, name, least, most](const std::string& given) {
        int number = 0;
        const char* end = given.data() + given.size();
        const auto result = std::from_chars(given.data(), end, number);
        if (result.ec != std::errc() || result.ptr != end || number < least || number > most)
            throw CLI::ValidationError(name,
                                       localized("\"%s\" is no number from %d to %d", given, least, most));
        store(number);
    };
    return command.add_option_function<std::string>(name, take, description)->type_name("N")->take_last();
}

/// Adds `--NAME N` for a port and `--no-NAME` for none.
void addOptionalPort(CLI::App& command, const std::string& name, std::optional<std::uint16_t>& port,
                     const std::string& description, const std::string& withoutDescription)
{
    auto* with = addNumber(
        command, "--" + name, 0, highestPort,
        [&port](int number) { port = static_cast<std::uint16_t>(number); }, description);
    command
        .add_flag_callback(
            "--no-" + name, [&port] { port.reset(); }, withoutDescription)
        ->excludes(with);
}

/// Adds an option with a text that is not empty; the last one given counts.
CLI::Option* addText(CLI::App& command, const std::string& name, std::string& value, const std::string& type,
                     const std::string& description)
{
    const auto take = [&value, name](const std::string& given) {
        if (given.empty())
            throw CLI::ValidationError(name, localized("is empty"));
        value = given;
    };
    return command.add_option_function<std::string>(name, take, description)->type_name(type)->take_last();
}

/// A station identity is what T.30 has room and signs for.
void addIdentity(CLI::App& command, std::string& identity)
{
    const auto take = [&identity](const std::string& given) {
        constexpr std::size_t longest = 20;
        if (given.empty() || given.size() > longest ||
            given.find_first_not_of("0123456789 +") != std::string::npos)
            throw CLI::ValidationError(
                "--identity",
                localized("\"%s\" is no station identity; write at most %d digits, blanks and \"+\"", given,
                          longest));
        identity = given;
    };
    command
        .add_option_function<std::string>("--identity", take,
                                          localized("Station identity: digits, blanks and \"+\""))
        ->type_name("TEXT")
        ->take_last();
}

CLI::App* addRead(CLI::App& program, ReadOptions& options)
{
    auto* read =
        program.add_subcommand("read", localized("Say what a device would do with a job"))->fallthrough();
    read->add_option("JOB", options.job, localized("File with the print stream; - is standard input"))
        ->required()
        ->type_name("");
    read->add_flag("--json", options.asJson, localized("Answer in JSON"));
    read->add_flag_callback(
        "--no-render", [&options] { options.render = false; },
        localized("Draw no pages, and leave them uncounted"));
    return read;
}

CLI::App* addServe(CLI::App& program, ServeOptions& options)
{
    constexpr int mostLines = 32;
    auto* serve = program.add_subcommand("serve", localized("Be a device: take jobs, and fax their pages"))
                      ->fallthrough();
    addText(*serve, "--state", options.state, "DIR", localized("Folder for everything that the device keeps"))
        ->required();
    addNumber(
        *serve, "--port", 0, highestPort,
        [&options](int port) { options.port = static_cast<std::uint16_t>(port); },
        localized("Port for jobs (9100); 0 is any free one"));
    serve
        ->add_option("--address", options.addresses,
                     localized("Listen at this address instead of loopback; repeat for more"))
        ->type_name("ADDRESS")
        ->allow_extra_args(false);
    addText(*serve, "--exchange", options.exchange, "FILE", localized("What stands behind which number"));
    addNumber(
        *serve, "--lines", 1, mostLines, [&options](int lines) { options.lines = lines; },
        localized("Calls that are made at once (1)"));
    serve->add_flag("--real-time", options.realTime, localized("Take as long as a telephone line does"));
    serve->add_flag("--until-idle", options.untilIdle, localized("End once all calls are done"));
    addOptionalPort(*serve, "panel", options.panel,
                    localized("Port of the status pages (8631); 0 is any free one"),
                    localized("Serve no status pages"));
    addOptionalPort(*serve, "snmp", options.snmp, localized("Port for SNMP (1161); 0 is any free one"),
                    localized("Answer nothing over SNMP"));
    serve->add_flag("--with-directory", options.withDirectory,
                    localized("Start a directory server with sample people"));
    serve->add_flag("--json", options.asJson, localized("Say what happens in JSON, an object a line"));
    addIdentity(*serve, options.identity);
    return serve;
}

} // namespace

std::shared_ptr<CLI::App> deviceProgram(DeviceCommandLine& line)
{
    auto program = std::make_shared<CLI::App>(
        localized("An emulated device that takes fax jobs, dials, and faxes their pages."), "quelm-device");
    beginProgram(*program);
    program->require_subcommand(1);
    addRead(*program, line.read)->callback([&line] { line.command = DeviceCommand::read; });
    addServe(*program, line.serve)->callback([&line] { line.command = DeviceCommand::serve; });
    addHelpCommand(*program);
    addDeviceHelp(*program);
    return program;
}

DeviceCommandLine parseDeviceCommandLine(int argc, const char* const* argv)
{
    DeviceCommandLine line;
    line.information = parseArguments(*deviceProgram(line), argc, argv);
    return line;
}

} // namespace quelm::device
