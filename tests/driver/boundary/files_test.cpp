// Paths that exist and directories that are created.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/files.h"

#include "host/calls.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace {

class Files : public testing::Test {
protected:
    mode_t modeOf(const std::string& path) const
    {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    TemporaryFolder folder;
};

/// The umask for the rest of a test.
class Umask {
public:
    explicit Umask(mode_t mask) : before_(umask(mask)) {}
    ~Umask() { umask(before_); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t before_;
};

} // namespace

TEST_F(Files, PathsOfEveryKindExist)
{
    writeFile(folder / "file", "");
    std::filesystem::create_symlink("nowhere", folder / "link");
    EXPECT_TRUE(host::pathExists(folder / "file"));
    EXPECT_TRUE(host::pathExists(folder.path()));
    EXPECT_TRUE(host::pathExists(folder / "link"));
    EXPECT_FALSE(host::pathExists(folder / "nothing"));
    EXPECT_FALSE(host::pathExists(""));
    EXPECT_FALSE(FileObject::doesPathExist(nullptr));
}

TEST_F(Files, DecimalDigitsOfTheModeAreOctalPermissions)
{
    const Umask none(0);
    EXPECT_TRUE(host::createDirectory(folder / "all", 777));
    EXPECT_TRUE(host::createDirectory(folder / "some", 750));
    EXPECT_TRUE(host::createDirectory(folder / "sticky", 1777));
    EXPECT_EQ(modeOf(folder / "all"), 0777U);
    EXPECT_EQ(modeOf(folder / "some"), 0750U);
    EXPECT_EQ(modeOf(folder / "sticky"), 01777U);
}

TEST_F(Files, UmaskTakesPermissionsAway)
{
    const Umask usual(022);
    EXPECT_TRUE(host::createDirectory(folder / "all", 777));
    EXPECT_EQ(modeOf(folder / "all"), 0755U);
}

TEST_F(Files, DigitsThatAreNoPermissionsCreateNothing)
{
    for (const int mode : {-1, 8, 778, 788, 888, 10000, 77777})
        EXPECT_FALSE(host::createDirectory(folder / "refused", mode)) << mode;
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(Files, CreatesOneDirectoryWhoseParentExists)
{
    EXPECT_FALSE(host::createDirectory(folder / "a/b", 777));
    EXPECT_TRUE(host::createDirectory(folder / "a", 777));
    EXPECT_FALSE(host::createDirectory(folder / "a", 777)) << "it exists";
    EXPECT_TRUE(host::createDirectory(folder / "a/b", 777));
    EXPECT_FALSE(FileObject::createDirectory(nullptr, 777));
}

TEST_F(Files, NamesAreUtf8)
{
    EXPECT_TRUE(host::createDirectory(folder / "Zoë 山", 777));
    EXPECT_TRUE(host::pathExists(folder / "Zoë 山"));
}
