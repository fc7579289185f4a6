// Files that the loader must not be given.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/shared_object.h"

#include "tests/support/plugin_paths.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

class SharedObjectTest : public testing::Test {
protected:
    std::string problemOf(const std::string& content)
    {
        return quelm::problemOfSharedObject(writeFile(folder / "library.so", content));
    }

    TemporaryFolder folder;
    const std::string good = contentOf(pluginPath("good"));
};

TEST_F(SharedObjectTest, AWholeLibraryMayBeLoaded) { EXPECT_EQ(problemOf(good), ""); }

TEST_F(SharedObjectTest, AFileOfAnotherKindIsNoLibrary)
{
    for (const char* content : {"", "I", "I am a text.\n"})
        EXPECT_EQ(problemOf(content), "it is not a shared library") << content;
}

TEST_F(SharedObjectTest, AProgramIsNoLibrary)
{
    std::string program = good;
    program[16] = 2; // the kind of file: a program at a fixed address
    EXPECT_EQ(problemOf(program), "it is not a shared library");
}

TEST_F(SharedObjectTest, ALibraryForAnotherProcessorIsToldApart)
{
    std::string other = good;
    other[18] = static_cast<char>(other[18] ^ 1); // the processor
    EXPECT_EQ(problemOf(other), "it is built for another kind of processor");
}

TEST_F(SharedObjectTest, ALibraryThatIsCutShortAnywhereInItsSegmentsIsRefused)
{
    for (const std::size_t length : {std::size_t{5}, std::size_t{63}, std::size_t{100}, std::size_t{3000}})
        EXPECT_EQ(problemOf(good.substr(0, length)), "it is cut short; install it again") << length;
}

TEST_F(SharedObjectTest, HeadersFullOfNonsenseAreRefused)
{
    std::string nonsense = good;
    std::fill(nonsense.begin() + 64, nonsense.begin() + 64 + 56 * 4, '\xff');
    EXPECT_EQ(problemOf(nonsense), "it is cut short; install it again");
    std::string entries = good;
    entries[54] = 1; // the size of a segment's header
    EXPECT_EQ(problemOf(entries), "it is not a shared library");
}

TEST_F(SharedObjectTest, WhatIsNotThereOrNoFileIsNamedSo)
{
    EXPECT_EQ(quelm::problemOfSharedObject(folder / "missing.so"),
              "no such file; install it there or name another one");
    EXPECT_EQ(quelm::problemOfSharedObject(folder.path()), "it is not a file");
}

} // namespace
