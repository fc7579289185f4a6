// The version stands in one place, and the programs have it from there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/version.h"

#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <string>

namespace {

/// What the first group of `pattern` finds in a file of the project; nothing when it finds nothing.
std::string found(const std::string& file, const std::string& pattern)
{
    std::ifstream stream(build_paths::inProject(file));
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::smatch match;
    return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : "";
}

std::string projectVersion()
{
    return found("CMakeLists.txt", R"re(project\(BramblecorLanFax VERSION ([0-9]+\.[0-9]+\.[0-9]+) )re");
}

TEST(VersionTest, IsTheProjects)
{
    ASSERT_NE(projectVersion(), "");
    EXPECT_EQ(quelm::programAndVersion("quelm-driver"), "quelm-driver " + projectVersion());
    EXPECT_EQ(quelm::programAndVersion("fennodial"), "fennodial " + projectVersion());
}

TEST(VersionTest, TheGuideForHostsAsksForIt)
{
    const std::string version = projectVersion();
    EXPECT_EQ(found("docs/host-guide.md", R"re(find_package\(BramblecorLanFax ([0-9.]+) )re"),
              version.substr(0, version.rfind('.')));
}

} // namespace
