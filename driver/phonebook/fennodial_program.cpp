// Options and help of fennodial.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/fennodial_program.h"

#include "base/command_line/help_texts.h"
#include "base/command_line/program_arguments.h"
#include "base/error.h"
#include "base/translation.h"

#include <CLI/CLI.hpp>

#include <string_view>
#include <utility>

namespace quelm {
namespace {

constexpr std::string_view pathOption = "-FP";

UsageError noPhonebook() { return UsageError(localized("say which phonebook to open: fennodial -FP FILE")); }

std::string pathBehindOption(int argc, const char* const* argv)
{
    std::string path;
    for (int i = 2; i < argc; ++i)
        path += (i == 2 ? "" : " ") + std::string(argv[i]);
    if (path.empty())
        throw noPhonebook();
    return path;
}

} // namespace

std::shared_ptr<CLI::App> fennodialProgram()
{
    auto program =
        std::make_shared<CLI::App>(localized("Opens a phonebook of the LAN fax component."), "fennodial");
    beginProgram(*program);
    HelpTexts texts;
    texts.details = {
        localized("At a terminal it offers to list, show, add, remove, import and export entries and groups; "
                  "started from a desktop it opens a terminal for that, elsewhere it prints the list.")};
    texts.examples = {{"fennodial -FP ~/.local/share/quelm/db/phonebook/user/ann.xdb",
                       localized("Opens a user's own phonebook.")},
                      {"fennodial -FP office.xdb", localized("Opens a phonebook of the working folder.")}};
    texts.foreignWords = {
        {"-FP FILE", localized("The phonebook; all that follows is the file's path, blanks included")}};
    texts.environment = {
        {"LANGUAGE, LC_ALL, LC_MESSAGES, LANG", localized("The language of messages and help.")},
        {"DISPLAY, WAYLAND_DISPLAY", localized("The screen on which a terminal is opened.")},
    };
    texts.files = {{"~/.local/share/quelm/db/phonebook/", localized("The user's phonebooks.")}};
    texts.related = {"quelm-driver(1)"};
    addHelp(*program, std::move(texts));
    return program;
}

FennodialLine parseFennodialLine(int argc, const char* const* argv)
{
    FennodialLine line;
    if (argc > 1 && argv[1] == pathOption) {
        line.phonebook = pathBehindOption(argc, argv);
        return line;
    }
    line.information = parseArguments(*fennodialProgram(), argc, argv);
    if (line.information.empty())
        throw noPhonebook();
    return line;
}

} // namespace quelm
