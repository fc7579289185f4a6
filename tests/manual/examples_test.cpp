// The examples in the help, taken apart by the real parsers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_page.h"
#include "base/manual/shell_names.h"
#include "base/terminal/columns.h"
#include "device/command_line.h"
#include "driver/cli/command_line.h"
#include "driver/phonebook/fennodial_program.h"
#include "manual/programs.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace quelm {
namespace {

/// The words of a line as a shell parts them, up to what it does itself.
std::vector<std::string> shellWords(const std::string& line)
{
    int count = 0;
    char** parted = nullptr;
    EXPECT_TRUE(g_shell_parse_argv(line.c_str(), &count, &parted, nullptr)) << line;
    std::vector<std::string> words;
    for (int i = 0; i < count && std::string(parted[i]) != "<"; ++i)
        words.emplace_back(parted[i]);
    g_strfreev(parted);
    return words;
}

/// What the program says instead of acting; empty when it would act. Throws what its parser throws.
std::string informationOf(const std::vector<std::string>& words)
{
    std::vector<const char*> argv;
    for (const auto& word : words)
        argv.push_back(word.c_str());
    const int argc = static_cast<int>(argv.size());
    if (words.front() == "quelm-driver")
        return parseCommandLine(argc, argv.data()).information;
    if (words.front() == "quelm-desktop")
        return parseDesktopCommandLine(argc, argv.data()).information;
    if (words.front() == "quelm-device")
        return device::parseDeviceCommandLine(argc, argv.data()).information;
    return parseFennodialLine(argc, argv.data()).information;
}

TEST(Examples, StandInTheHelpOfEveryCommand)
{
    for (const auto& program : describedPrograms())
        forEachCommand(program, [](const CommandView& command) {
            EXPECT_FALSE(command.texts.examples.empty()) << command.path;
            EXPECT_LE(command.texts.examples.size(), 4U) << command.path;
            for (const auto& example : command.texts.examples) {
                EXPECT_TRUE(example.words.starts_with(command.path)) << example.words;
                EXPECT_TRUE(example.text.ends_with('.')) << example.text;
            }
        });
}

TEST(Examples, AreUnderstoodByTheirPrograms)
{
    for (const auto& program : describedPrograms())
        forEachCommand(program, [](const CommandView& command) {
            for (const auto& example : command.texts.examples) {
                const auto words = shellWords(example.words);
                const bool asksForHelp = words.size() > 1 && words[1] == "help";
                EXPECT_NO_THROW(EXPECT_EQ(!informationOf(words).empty(), asksForHelp)) << example.words;
            }
        });
}

TEST(HelpPages, OfAllCommandsKeepWithinEightyColumns)
{
    for (const auto& program : describedPrograms())
        forEachCommand(program, [](const CommandView& command) {
            std::istringstream page(helpPage(command));
            for (std::string line; std::getline(page, line);)
                EXPECT_LE(widthOf(line), 80U) << command.path << ": " << line;
        });
}

} // namespace
} // namespace quelm
