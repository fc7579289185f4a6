// Every promise of docs/assurance.md is held by tests that exist, and the checker sees one that is not.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/layers/promises.h"

#include "tests/layers/source_tree.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Project, HoldsEachOfItsPromisesByATest)
{
    const auto found = layers::checkPromises(build_paths::projectFolder);
    EXPECT_GT(found.kept, 15);
    for (const auto& violation : found.violations)
        ADD_FAILURE() << violation;
}

class PromisesTest : public SourceTree {
protected:
    void promise(const std::string& rows)
    {
        write("docs/assurance.md",
              "# Assurance\n\n| promise | held by |\n| --- | --- |\n" + rows + "\n\nEnd.\n");
    }
    layers::Promises found() const { return layers::checkPromises(root()); }
};

TEST_F(PromisesTest, TestsOfAnyKindAndFilesHoldAPromise)
{
    write("tests/base/a_test.cpp",
          "TEST(Jobs, AreWhole)\n{\n}\nTEST_F(Books,\n       ArePrivate)\nTEST_P(Kinds, Same) {}");
    write("tests/desktop/tour.py", "");
    promise("| Whole. | `Jobs.AreWhole`, `Books.ArePrivate` |\n| Seen. | `tests/desktop/tour.py`, "
            "`Kinds.Same` |");
    EXPECT_THAT(found().violations, IsEmpty());
    EXPECT_EQ(found().kept, 2);
}

TEST_F(PromisesTest, APromiseThatNoTestHoldsIsReported)
{
    promise("| Whole. | everybody |");
    EXPECT_THAT(found().violations, ElementsAre("\"Whole.\" is held by no test"));
    EXPECT_EQ(found().kept, 0);
}

TEST_F(PromisesTest, ATestThatIsNotThereIsReported)
{
    write("tests/base/a_test.cpp", "TEST(Jobs, AreWholeOnSundays) {}");
    promise("| `fax` is whole. | `Jobs.AreWhole`, `tests/base/b_test.cpp` |");
    EXPECT_THAT(found().violations,
                ElementsAre("\"`fax` is whole.\" is held by Jobs.AreWhole, which does not exist",
                            "\"`fax` is whole.\" is held by tests/base/b_test.cpp, which does not exist"));
}

TEST_F(PromisesTest, ATreeWithoutPromisesKeepsNone)
{
    EXPECT_THAT(found().violations, IsEmpty());
    EXPECT_EQ(found().kept, 0);
}

} // namespace
