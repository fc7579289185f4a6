// Modules are loaded once, and what is wrong with one is said in a sentence.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "base/error.h"
#include "tests/base/modules/test_part.h"
#include "tests/support/build_paths.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string folder = build_paths::inBuild("tests/base/modules");

const TestPart& load(const std::string& name)
{
    return *static_cast<const TestPart*>(quelm::loadPart(folder, name));
}

std::string failureOf(const std::string& from, const std::string& name)
{
    return quelm::test::failureLine([&] { static_cast<void>(quelm::loadPart(from, name)); });
}

TEST(Module, ItsPartIsCalledAsIfItWereLinked) { EXPECT_EQ(load("good").answer(), "good"); }

TEST(Module, IsLoadedOnceWhoeverAsks)
{
    auto other = std::async(std::launch::async, [] { return &load("good"); });
    EXPECT_EQ(&load("good"), other.get());
}

TEST(Module, WhatItThrowsIsCaughtByItsType) { EXPECT_THROW(load("good").fail(), quelm::UsageError); }

TEST(Module, OneThatIsMissingIsNamedWithItsFile)
{
    TemporaryFolder empty;
    EXPECT_EQ(failureOf(empty.path(), "good"),
              "the program's module " + (empty / "good.so") +
                  " is missing; install the program again with all its parts");
}

TEST(Module, OneThatWasMissingIsFoundOnceItIsThere)
{
    TemporaryFolder later;
    EXPECT_THAT(failureOf(later.path(), "good"), HasSubstr("is missing"));
    std::filesystem::copy_file(folder + "/good.so", later / "good.so");
    EXPECT_EQ(static_cast<const TestPart*>(quelm::loadPart(later.path(), "good"))->answer(), "good");
}

TEST(Module, OneThatIsCutShortIsNotGivenToTheLoader)
{
    TemporaryFolder broken;
    writeFile(broken / "good.so", contentOf(folder + "/good.so").substr(0, 5000));
    EXPECT_THAT(failureOf(broken.path(), "good"), HasSubstr("/good.so cannot be loaded: it is cut short"));
}

TEST(Module, OneOfAnotherBuildIsRefused)
{
    for (const char* name : {"other_build", "other_part", "without_description"})
        EXPECT_THAT(failureOf(folder, name), testing::AllOf(StartsWith("the program's module " + folder +
                                                                       "/" + name + ".so cannot be loaded: "),
                                                            HasSubstr("another version of the program")));
}

TEST(Module, ALibraryThatItNeedsAndThatIsNotInstalledIsNamed)
{
    EXPECT_THAT(failureOf(folder, "needs_more"), testing::AllOf(HasSubstr("needs_more.so cannot be loaded: "),
                                                                HasSubstr("libnobody-has-it.so")));
}

TEST(Module, LiesBesideTheLibraryThatProgramsShare)
{
    EXPECT_EQ(quelm::moduleFolder(), build_paths::inStage("modules"));
}

} // namespace
