// The phonebook program, by itself and opened from the fax dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

namespace journeys {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::string program = build_paths::inStage("fennodial");

/// What a program says and shows at a terminal at which `typed` is typed.
Result atTerminal(const Arguments& arguments, const std::string& typed)
{
    int screen = -1;
    const auto child = ::forkpty(&screen, nullptr, nullptr, nullptr);
    if (child == 0) {
        std::vector<char*> argv;
        for (const auto& argument : arguments)
            argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    Result result;
    EXPECT_EQ(::write(screen, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    std::array<char, 4096> block{};
    pollfd readable{screen, POLLIN, 0};
    for (;;) {
        if (::poll(&readable, 1, 60000) != 1) {
            ::kill(child, SIGKILL);
            break;
        }
        const auto size = ::read(screen, block.data(), block.size());
        if (size <= 0)
            break;
        result.output.append(block.data(), static_cast<std::size_t>(size));
    }
    ::close(screen);
    int status = 0;
    ::waitpid(child, &status, 0);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}

class PhonebookProgram : public Journey {
protected:
    PhonebookProgram() : book(path("a b.xdb"))
    {
        EXPECT_EQ(driver({"phonebook", "add", "Zoë", "1", "--file", book}).status, 0);
    }

    static Result run(const Arguments& arguments)
    {
        Request request;
        request.arguments = arguments;
        request.arguments.insert(request.arguments.begin(), program);
        return runProgram(request);
    }

    std::string book;
};

TEST_F(PhonebookProgram, PrintsTheListWithoutATerminal)
{
    const auto result = run({"-FP", book});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Zoë  1\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(PhonebookProgram, StartedFromADesktopItOpensATerminalForItself)
{
    const auto phonebook = path("team book.xdb");
    const auto programs = folder / "programs";
    std::filesystem::create_directory(programs);
    const auto emulator =
        file("programs/x-terminal-emulator", "#!/bin/sh\nprintf '%s\\n' \"$@\" >\"$0.new\"\n"
                                             "mv \"$0.new\" \"$0.started\"\n");
    std::filesystem::permissions(emulator, std::filesystem::perms::owner_all);
    Request request;
    request.arguments = {"sh", "-c", "exec \"$0\" -FP $1 </dev/null", program, phonebook};
    request.environment = {"DISPLAY=:0", "PATH=" + programs.string() + ":/usr/bin:/bin"};
    const auto result = runProgram(request);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "");
    for (int tries = 0; tries < 1000 && !exists("programs/x-terminal-emulator.started"); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(content("programs/x-terminal-emulator.started"),
              "-e\n" + std::filesystem::canonical(program).string() + "\n-FP\n" + phonebook + "\n");
}

TEST_F(PhonebookProgram, StartedFromADesktopWithoutATerminalProgramItSaysSo)
{
    Request request;
    request.arguments = {"/bin/sh", "-c", "exec \"$0\" -FP $1 </dev/null", program, path("a.xdb")};
    request.environment = {"DISPLAY=:0", "PATH=" + path("nowhere")};
    const auto result = runProgram(request);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("no terminal program is installed"));
}

TEST_F(PhonebookProgram, APathThatAShellHasPartedIsPutTogether)
{
    const auto split = book.find(' ');
    EXPECT_EQ(run({"-FP", book.substr(0, split), book.substr(split + 1)}).output, "Zoë  1\n");
}

TEST_F(PhonebookProgram, OffersItsMenuAtATerminal)
{
    const auto result = atTerminal({program, "-FP", book}, "add\nBob\n2\n\n\n\nlist\nquit\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(HasSubstr("1 entry, 0 groups"), HasSubstr("added the entry \"Bob\""),
                                     HasSubstr("Zoë  1\r\nBob  2\r\n")));
    EXPECT_EQ(run({"-FP", book}).output, "Zoë  1\nBob  2\n");
}

TEST_F(PhonebookProgram, FailsInOneLine)
{
    const auto missing = run({"-FP", path("none.xdb")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.errors,
                AllOf(StartsWith("fennodial: "), HasSubstr("no such file"), EndsWith("name\n")));
    for (const auto& arguments : {Arguments{}, {"-FP"}, {"-FP", ""}, {book}, {"--what"}}) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, "fennodial: say which phonebook to open: fennodial -FP FILE\n");
    }
    Request request;
    request.arguments = {program, "-FP", book};
    request.outputFile = "/dev/full";
    EXPECT_EQ(runProgram(request).status, 1);
}

TEST_F(PhonebookProgram, TellsItsUsageAndVersion)
{
    EXPECT_THAT(run({"--help"}).output, HasSubstr("Usage: fennodial -FP FILE\n"));
    EXPECT_THAT(run({"--version"}).output, testing::MatchesRegex("fennodial [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(PhonebookProgram, TheFaxDialogsOpenButtonsStartIt)
{
    std::filesystem::create_symlink(program, home / "fennodial");
    driver({"phonebook", "add", "Ann", "9"});
    const auto answers =
        script({"call T40InvokeFaxDialog", "press \"Open Personal PB Button\"",
                "press \"Select Shared PB Button\"", "type SharedPBSelectFileDialog \"" + book + "\"",
                "press SharedPBSelectFileDialog", "press \"Open Shared PB Button\""});
    EXPECT_THAT(answers, testing::ElementsAre("ok", "Ann  9", "ok", "ok", "ok", "ok", "Zoë  1", "ok"));
}

} // namespace
} // namespace journeys
