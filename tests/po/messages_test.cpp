// How the lines that are thrown or logged begin and end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

/// The texts that are thrown or logged as they stand, each with the file that it is in.
const std::vector<std::pair<std::string, std::string>>& messages()
{
    static const std::regex call(
        R"re(\b(?:Error|fail|log|report|failed)\((?:Severity::\w+, |\w+, )?\s*(?:quelm::)?localized(?:Count)?\(\s*"((?:[^"\\]|\\.)*)")re");
    static std::vector<std::pair<std::string, std::string>> found;
    if (!found.empty())
        return found;
    for (const char* folder : {"base", "driver", "device"}) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(build_paths::inProject(folder))) {
            if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
                continue;
            std::ifstream stream(entry.path());
            const std::string source{std::istreambuf_iterator<char>(stream), {}};
            for (std::sregex_iterator match(source.begin(), source.end(), call);
                 match != std::sregex_iterator(); ++match)
                found.emplace_back((*match)[1], entry.path().filename());
        }
    }
    return found;
}

TEST(Messages, BeginWithASmallLetterAsTheyStandBehindAProgramsName)
{
    const auto& all = messages();
    EXPECT_GT(all.size(), 100U);
    for (const auto& [text, file] : all) {
        const bool isName = text.starts_with("Ghostscript") || text.starts_with("CUPS ");
        EXPECT_FALSE(text.front() >= 'A' && text.front() <= 'Z' && !isName) << file << ": " << text;
    }
}

TEST(Messages, EndWithoutAFullStop)
{
    for (const auto& [text, file] : messages())
        EXPECT_FALSE(text.ends_with('.') && !text.ends_with("...")) << file << ": " << text;
}

} // namespace
