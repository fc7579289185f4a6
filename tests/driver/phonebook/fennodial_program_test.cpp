// How fennodial takes its arguments.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/fennodial_program.h"

#include "base/error.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

#include <vector>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

FennodialLine parsed(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "fennodial");
    return parseFennodialLine(static_cast<int>(arguments.size()), arguments.data());
}

std::string refusal(const std::vector<const char*>& arguments)
{
    return test::failureLine<UsageError>([&] { parsed(arguments); });
}

TEST(FennodialProgram, TakesAllBehindItsOptionAsThePath)
{
    EXPECT_EQ(parsed({"-FP", "/home/ann/my", "phone", "book.xdb"}).phonebook, "/home/ann/my phone book.xdb");
    EXPECT_EQ(parsed({"-FP", "--help"}).phonebook, "--help");
    EXPECT_EQ(parsed({"-FP", "a"}).information, "");
}

TEST(FennodialProgram, ShowsHelpAndVersion)
{
    EXPECT_THAT(parsed({"--help"}).information, StartsWith("Usage: fennodial -FP FILE\n\nOpens a phonebook"));
    EXPECT_THAT(parsed({"-h"}).information, HasSubstr("  -FP FILE       The phonebook;"));
    EXPECT_THAT(parsed({"-h"}).information, HasSubstr("Examples:\n  fennodial -FP "));
    EXPECT_EQ(parsed({"-V"}).information, parsed({"--version"}).information);
    EXPECT_THAT(parsed({"-V"}).information, StartsWith("fennodial "));
}

TEST(FennodialProgram, SaysWhatIsWrong)
{
    const std::string which = "say which phonebook to open: fennodial -FP FILE";
    EXPECT_EQ(refusal({}), which);
    EXPECT_EQ(refusal({"-FP"}), which);
    EXPECT_EQ(refusal({"-FP", ""}), which);
    EXPECT_EQ(refusal({"a.xdb"}), "\"a.xdb\" is one word too many; see fennodial --help");
    EXPECT_EQ(refusal({"--hlep"}), "there is no option --hlep here; did you mean --help?");
}

} // namespace
} // namespace quelm
