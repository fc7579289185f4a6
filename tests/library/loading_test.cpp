// How the library meets hosts that lack the boundary or a part of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

struct Outcome {
    int status;
    std::string output;
};

/// Lets a host program load the library; `binding` is "lazy" or "now".
Outcome load(const std::string& host, const std::string& binding)
{
    const std::string command =
        "unset LD_BIND_NOW; '" + host + "' '" + build_paths::componentLibrary() + "' " + binding + " 2>&1";
    FILE* output = popen(command.c_str(), "r");
    if (output == nullptr)
        return {-1, "cannot run " + command};
    std::string text;
    for (int c; (c = std::fgetc(output)) != EOF;)
        text += static_cast<char>(c);
    const int status = pclose(output);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
}

TEST(Loading, IsRefusedWithoutTheBoundaryByTheNameOfAVariable)
{
    const Outcome outcome = load(build_paths::inBuild("tests/library/host_without_boundary"), "lazy");
    EXPECT_EQ(outcome.status, 1) << outcome.output;
    EXPECT_NE(outcome.output.find("undefined symbol: p"), std::string::npos) << outcome.output;
}

TEST(Loading, LooksUpFunctionsWhenTheyAreFirstCalled)
{
    const Outcome outcome = load(build_paths::inBuild("tests/library/host_with_variables"), "lazy");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_EQ(outcome.output, "loaded\n");
}

TEST(Loading, IsRefusedAtOnceWithoutTheFunctionsWhenTheHostBindsNow)
{
    const Outcome outcome = load(build_paths::inBuild("tests/library/host_with_variables"), "now");
    EXPECT_EQ(outcome.status, 1) << outcome.output;
    EXPECT_NE(outcome.output.find("undefined symbol: "), std::string::npos) << outcome.output;
}

} // namespace
