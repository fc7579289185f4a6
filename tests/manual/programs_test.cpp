// The programs that have help, manual pages and completions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "manual/programs.h"

#include "base/manual/shell_names.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

TEST(DescribedPrograms, AreThoseThatUsersStart)
{
    std::vector<std::string> names;
    for (const auto& program : describedPrograms())
        names.push_back(program.name);
    EXPECT_THAT(names, testing::ElementsAre("quelm-driver", "quelm-desktop", "fennodial", "quelm-device"));
}

TEST(DescribedPrograms, SayWhatEachCommandAndOptionIs)
{
    for (const auto& program : describedPrograms())
        forEachCommand(program, [](const CommandView& command) {
            EXPECT_NE(command.description, "") << command.path;
            for (const auto& option : allOptionsOf(command))
                EXPECT_NE(option.description, "") << command.path << " " << labelOf(option);
            for (const auto& place : command.places)
                EXPECT_NE(place.description, "") << command.path << " " << labelOf(place);
        });
}

TEST(DescribedPrograms, HaveHelpAndVersionWithTheirLettersEverywhere)
{
    for (const auto& program : describedPrograms())
        forEachCommand(program, [](const CommandView& command) {
            std::vector<std::string> labels;
            for (const auto& option : allOptionsOf(command))
                labels.push_back(labelOf(option));
            EXPECT_THAT(labels, testing::IsSupersetOf({"-h, --help", "-V, --version"})) << command.path;
        });
}

} // namespace
} // namespace quelm
