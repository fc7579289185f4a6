// The phonebook program, by itself and opened from the fax dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/build_paths.h"
#include "tests/support/copied_program.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>

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
    const auto emulator = file("programs/xdg-terminal-exec", "#!/bin/sh\nprintf '%s\\n' \"$@\" >\"$0.new\"\n"
                                                             "mv \"$0.new\" \"$0.started\"\n");
    std::filesystem::permissions(emulator, std::filesystem::perms::owner_all);
    Request request;
    request.arguments = {"sh", "-c", "exec \"$0\" -FP $1 </dev/null", program, phonebook};
    request.environment = {"DISPLAY=:0", "PATH=" + programs.string() + ":/usr/bin:/bin"};
    const auto result = runProgram(request);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "");
    // It becomes the terminal: who waited for it has waited for the window.
    EXPECT_EQ(content("programs/xdg-terminal-exec.started"),
              std::filesystem::canonical(program).string() + "\n-FP\n" + phonebook + "\n");
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
    for (const auto& arguments : {Arguments{}, {"-FP"}, {"-FP", ""}}) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, "fennodial: say which phonebook to open: fennodial -FP FILE\n");
    }
    for (const auto& arguments : {Arguments{book}, {"--what"}}) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.errors, EndsWith("; see fennodial --help\n"));
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

/// The driver as built and as packages have it, without its symbols, in an installation of its own.
class OpeningPhonebooks : public Journey, public testing::WithParamInterface<bool> {
protected:
    OpeningPhonebooks()
    {
        copyProgram("quelm-driver", home);
        if (GetParam()) {
            Request strip;
            strip.arguments = {"strip", (home / "quelm-driver").string()};
            EXPECT_EQ(runProgram(strip).status, 0);
        }
        std::filesystem::create_symlink(program, home / "fennodial");
    }

    /// Carries a script out in the work folder.
    Result carryOut(const std::string& lines) const
    {
        Request request;
        request.arguments = {"env",
                             "--chdir=" + folder.string(),
                             (home / "quelm-driver").string(),
                             "--home",
                             home.string(),
                             "--user",
                             "ann",
                             "script",
                             "-"};
        request.input = lines;
        request.environment = {"XDG_CONFIG_HOME=" + path("config"), "LC_ALL=C.UTF-8",
                               "LANGUAGE=", "LSAN_OPTIONS=print_suppressions=0:suppressions=" + leaks()};
        return runProgram(request);
    }
};

TEST_P(OpeningPhonebooks, NoNameOfAFileIsACommand)
{
    for (const char* name : {"b;touch pwned;.xdb", "$(touch pwned).xdb", "`touch pwned`.xdb",
                             "a & touch pwned.xdb", "two  blanks \\ it's.xdb"}) {
        const auto chosen = path(name);
        ASSERT_EQ(driver({"phonebook", "add", "Zoë", "1", "--file", chosen}).status, 0) << name;
        std::string quoted;
        for (const char character : chosen)
            quoted += character == '\\' ? "\\\\" : std::string(1, character);
        const auto result = carryOut("call T40InvokeFaxDialog\n"
                                     "press \"Select Personal PB Button\"\n"
                                     "type PersonalPBSelectFileDialog \"" +
                                     quoted +
                                     "\"\n"
                                     "press PersonalPBSelectFileDialog\n"
                                     "press \"Open Personal PB Button\"\n"
                                     "press \"Select Shared PB Button\"\n"
                                     "type SharedPBSelectFileDialog \"" +
                                     quoted +
                                     "\"\n"
                                     "press SharedPBSelectFileDialog\n"
                                     "press \"Open Shared PB Button\"\n");
        EXPECT_EQ(result.status, 0) << name;
        EXPECT_EQ(result.errors, "") << name;
        EXPECT_EQ(result.output, "ok\nok\nok\nok\nZoë  1\nok\nok\nok\nok\nZoë  1\nok\n") << name;
        EXPECT_FALSE(exists("pwned")) << name;
        std::filesystem::remove(chosen);
    }
}

TEST_P(OpeningPhonebooks, TheUsersFolderMayHoldAnotherProgramOfThatName)
{
    // Run from a folder that is no build's, the driver is an installation, and its user has a folder of his
    // own.
    const auto other = file("fennodial", "#!/bin/sh\ntouch pwned\n");
    std::filesystem::create_directories(folder / "data/quelm");
    std::filesystem::permissions(folder / "data/quelm", std::filesystem::perms::owner_all);
    std::filesystem::rename(other, folder / "data/quelm/fennodial");
    std::filesystem::permissions(folder / "data/quelm/fennodial", std::filesystem::perms::owner_all);
    Request request;
    request.arguments = {
        "env", "--chdir=" + folder.string(), (home / "quelm-driver").string(), "--user", "ann", "script",
        "-"};
    request.input = "call T40InvokeFaxDialog\npress \"Open Personal PB Button\"\n";
    request.environment = {"XDG_CONFIG_HOME=" + path("config"), "XDG_DATA_HOME=" + path("data"),
                           "LC_ALL=C.UTF-8",
                           "LANGUAGE=", "LSAN_OPTIONS=print_suppressions=0:suppressions=" + leaks()};
    const auto result = runProgram(request);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "ok\nok\n") << "the list of an empty phonebook";
    EXPECT_FALSE(exists("pwned"));
    EXPECT_TRUE(exists("data/quelm/db/phonebook/user/ann.xdb"));
}

INSTANTIATE_TEST_SUITE_P(Programs, OpeningPhonebooks, testing::Bool(), [](const auto& tested) {
    return std::string(tested.param ? "stripped" : "asBuilt");
});

} // namespace
} // namespace journeys
