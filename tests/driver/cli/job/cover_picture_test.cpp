// Which paths lead to one file. What the pictures show, tests/journeys/cover_preview_test.cpp looks at.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/cover_picture.h"

#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace quelm {
namespace {

namespace fs = std::filesystem;

class OneFileTest : public testing::Test {
protected:
    OneFileTest()
    {
        fs::create_directory(folder / "inner");
        fs::create_directory_symlink(folder / "inner", folder / "link");
        writeFile(folder / "there", "x");
        fs::create_symlink("there", folder / "other");
        fs::create_symlink("new", folder / "waiting");
    }

    bool one(const std::string& first, const std::string& second) const
    {
        const bool found = leadToOneFile(folder / first, folder / second);
        EXPECT_EQ(leadToOneFile(folder / second, folder / first), found);
        return found;
    }

    TemporaryFolder folder;
};

TEST_F(OneFileTest, HasTheSameNameOrIsLedToByALink)
{
    EXPECT_TRUE(one("there", "there"));
    EXPECT_TRUE(one("there", "inner/../there"));
    EXPECT_TRUE(one("there", "other"));
    EXPECT_TRUE(one("inner/new", "link/new"));
}

TEST_F(OneFileTest, DoesNotNeedToExist)
{
    EXPECT_TRUE(one("new", "./new"));
    EXPECT_TRUE(one("new", "waiting"));
}

TEST_F(OneFileTest, AreTwoOfDifferentNamesOrFolders)
{
    EXPECT_FALSE(one("there", "new"));
    EXPECT_FALSE(one("new", "newer"));
    EXPECT_FALSE(one("new", "inner/new"));
    EXPECT_FALSE(one("none/new", "none/newer"));
    EXPECT_FALSE(one("none/new", "nowhere/new"));
}

TEST_F(OneFileTest, StandardOutputIsTheFileThatItGoesTo)
{
    EXPECT_TRUE(leadToOneFile("-", "-"));
    EXPECT_EQ(inProcess([this] {
                  const int file = ::open((folder / "there").c_str(), O_WRONLY);
                  ::dup2(file, STDOUT_FILENO);
                  return (leadToOneFile("-", folder / "other") ? 1 : 0) +
                         (leadToOneFile(folder / "there", "-") ? 2 : 0) +
                         (leadToOneFile("-", folder / "new") ? 4 : 0);
              }),
              3);
}

TEST_F(OneFileTest, ADeviceThatKeepsNothingIsNone)
{
    EXPECT_EQ(inProcess([] {
                  const int file = ::open("/dev/null", O_WRONLY);
                  ::dup2(file, STDOUT_FILENO);
                  return leadToOneFile("-", "/dev/null") ? 1 : 0;
              }),
              0);
}

} // namespace
} // namespace quelm
