// The manual pages that the build wrote, as the programs that show them read them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/man_page.h"
#include "base/manual/roff.h"
#include "base/manual/shell_names.h"
#include "base/process.h"
#include "manual/programs.h"
#include "tests/support/build_paths.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace quelm {
namespace {

namespace fs = std::filesystem;

std::set<std::string> filesBelow(const std::string& folder)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            names.insert(entry.path().lexically_relative(folder).generic_string());
    return names;
}

std::vector<std::string> allPages()
{
    std::vector<std::string> paths;
    for (const auto& name : filesBelow(build_paths::inBuild("manual/man")))
        paths.push_back(build_paths::inBuild("manual/man/" + name));
    return paths;
}

/// Runs a program over pages; what it complains about.
std::string complaintsOf(std::vector<std::string> arguments, const std::vector<std::string>& pages)
{
    arguments.insert(arguments.end(), pages.begin(), pages.end());
    ProcessRequest request;
    request.arguments = arguments;
    request.environment = {"PATH=" + std::string(std::getenv("PATH")), "LC_ALL=C.UTF-8", "MANWIDTH=80"};
    const auto result = runProcess(request);
    return (result.exitStatus == 0 ? "" : std::to_string(result.exitStatus) + " ") + result.errors +
           (arguments[0] == "mandoc" ? result.output : "");
}

TEST(ManualPages, AreWrittenForEveryCommandInEveryLanguage)
{
    std::set<std::string> expected;
    std::vector<std::string> folders{"man1/"};
    for (const auto& entry : fs::directory_iterator(build_paths::inStage("locale")))
        folders.push_back(entry.path().filename().string() + "/man1/");
    ASSERT_GT(folders.size(), 1U);
    for (const auto& program : describedPrograms())
        for (const auto& page : manPages(program, "2026-11-23"))
            for (const auto& folder : folders)
                expected.insert(folder + page.name + ".1");
    EXPECT_GT(expected.size(), 50U);
    EXPECT_EQ(filesBelow(build_paths::inBuild("manual/man")), expected);
}

TEST(ManualPages, ShowEveryOptionOfTheirCommand)
{
    for (const auto& program : describedPrograms()) {
        std::map<std::string, std::string> texts;
        for (const auto& page : manPages(program, "2026-11-23"))
            texts[page.name] = page.text;
        forEachCommand(program, [&texts](const CommandView& command) {
            auto name = command.path;
            std::ranges::replace(name, ' ', '-');
            for (const auto& option : allOptionsOf(command))
                for (const auto& word : option.names)
                    EXPECT_THAT(texts[name], testing::HasSubstr(roff::bold(word))) << name;
            for (const char* part : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS",
                                     "ENVIRONMENT", "FILES", "EXAMPLES", "SEE ALSO"})
                EXPECT_THAT(texts[name], testing::HasSubstr("\n.SH \"" + std::string(part) + "\"\n")) << name;
        });
    }
}

TEST(ManualPages, ReferToPagesThatAreThere)
{
    std::set<std::string> names;
    std::string all;
    for (const auto& program : describedPrograms())
        for (const auto& page : manPages(program, "2026-11-23")) {
            names.insert(page.name);
            all += page.text.substr(page.text.find("SEE ALSO"));
        }
    std::istringstream words(all);
    int references = 0;
    for (std::string word; words >> word;) {
        const auto end = word.find("\\fR(1)");
        if (!word.starts_with("\\fB") || end == std::string::npos)
            continue;
        auto name = word.substr(3, end - 3);
        std::erase(name, '\\');
        EXPECT_TRUE(names.contains(name)) << name;
        ++references;
    }
    EXPECT_GT(references, 50);
}

TEST(ManualPages, PleaseMandoc)
{
    EXPECT_EQ(complaintsOf({"mandoc", "-T", "lint", "-W", "style"}, allPages()), "");
}

TEST(ManualPages, AreShownByManWithoutAWarning)
{
    // It takes a while for each: those of the programs, and the longest.
    auto pages = allPages();
    std::erase_if(pages, [](const std::string& page) {
        const auto name = std::filesystem::path(page).stem().string();
        return name != "fennodial" && name.find('-') != name.rfind('-') && name != "quelm-driver-fax";
    });
    EXPECT_GE(pages.size(), 10U);
    EXPECT_EQ(complaintsOf({"man", "--warnings", "-E", "UTF-8", "-P", "cat", "-l"}, pages), "");
}

} // namespace
} // namespace quelm
