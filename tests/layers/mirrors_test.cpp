// Every source has a test, and the checker sees one that has none.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/layers/mirrors.h"

#include "tests/layers/source_tree.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Project, NamesATestForEverySource)
{
    const auto found = layers::checkMirrors(build_paths::projectFolder);
    EXPECT_GT(found.mirrored, 100);
    EXPECT_GT(found.named, 10);
    for (const auto& violation : found.violations)
        ADD_FAILURE() << violation;
}

class MirrorsTest : public SourceTree {
protected:
    void tabulate(const std::string& row)
    {
        write("docs/building.md", "# Guide\n\n| a | b |\n| --- | --- |\n" + row + "\n");
    }
    std::vector<std::string> violations() const { return layers::checkMirrors(root()).violations; }
};

TEST_F(MirrorsTest, ATestBesideItsSourcesMirrorIsEnough)
{
    write("base/clock.cpp", "");
    write("tests/base/clock_test.cpp", "");
    EXPECT_THAT(violations(), IsEmpty());
    EXPECT_EQ(layers::checkMirrors(root()).mirrored, 1);
}

TEST_F(MirrorsTest, ASourceWithoutATestIsReported)
{
    write("base/clock.cpp", "");
    write("tests/driver/cli/clock_test.cpp", "");
    EXPECT_THAT(violations(), ElementsAre("base/clock.cpp has no test: write tests/base/clock_test.cpp, "
                                          "or name in docs/building.md the journey that runs it"));
}

TEST_F(MirrorsTest, AHeaderNeedsNone)
{
    write("base/clock.h", "");
    EXPECT_THAT(violations(), IsEmpty());
}

TEST_F(MirrorsTest, AJourneyThatTheGuideNamesIsEnough)
{
    write("driver/cli/main.cpp", "");
    write("driver/cli/fax.cpp", "");
    write("tests/journeys/usage_test.cpp", "");
    write("tests/desktop/tour.py", "");
    tabulate("| `driver/cli/main.cpp`, `driver/cli/fax.cpp` | `tests/journeys/usage_test.cpp`, "
             "`tests/desktop/tour.py` |");
    EXPECT_THAT(violations(), IsEmpty());
    EXPECT_EQ(layers::checkMirrors(root()).named, 2);
}

TEST_F(MirrorsTest, AJourneyThatIsNotThereIsReported)
{
    write("driver/cli/main.cpp", "");
    tabulate("| `driver/cli/main.cpp` | `tests/journeys/usage_test.cpp` |");
    EXPECT_THAT(
        violations(),
        ElementsAre("driver/cli/main.cpp is run by tests/journeys/usage_test.cpp, which does not exist"));
    tabulate("| `driver/cli/main.cpp` | people |");
    EXPECT_THAT(violations(), ElementsAre("driver/cli/main.cpp is in docs/building.md without a test"));
    tabulate("| `driver/cli/main.cpp`");
    EXPECT_THAT(violations(), ElementsAre("driver/cli/main.cpp is in docs/building.md without a test"));
    tabulate("| `driver/cli/main.cpp` | `driver/cli/main.cpp` |");
    EXPECT_THAT(violations(),
                ElementsAre("driver/cli/main.cpp is run by driver/cli/main.cpp, which does not exist"));
}

TEST_F(MirrorsTest, ARowThatIsNoLongerTrueIsReported)
{
    write("tests/driver/cli/main_test.cpp", "");
    tabulate("| `driver/cli/main.cpp` | `tests/driver/cli/main_test.cpp` |");
    EXPECT_THAT(violations(), ElementsAre("driver/cli/main.cpp is in docs/building.md, but does not exist"));
    write("driver/cli/main.cpp", "");
    EXPECT_THAT(violations(),
                ElementsAre("driver/cli/main.cpp has a test of its own: take it from docs/building.md"));
}

TEST_F(MirrorsTest, OtherTablesAreNotLookedAt)
{
    tabulate("| `asan` | under sanitizers |");
    EXPECT_THAT(violations(), IsEmpty());
}

} // namespace
