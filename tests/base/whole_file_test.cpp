// Reading files whole.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/whole_file.h"

#include "tests/support/failure_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace quelm {
namespace {

class ReadTextFile : public testing::Test {
protected:
    ReadTextFile()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "whole-file-XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
    }
    ~ReadTextFile() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder;
};

TEST_F(ReadTextFile, ReadsAFileWhole)
{
    const std::string content(200000, 'x');
    std::ofstream(folder / "f") << content;
    EXPECT_EQ(readTextFile(folder / "f", 200000), content);
}

TEST_F(ReadTextFile, RefusesALargerFile)
{
    std::ofstream(folder / "f") << std::string(1048577, 'x');
    EXPECT_EQ(test::failureLine([&] { static_cast<void>(readTextFile(folder / "f", 1048576)); }),
              (folder / "f").string() + ": is larger than 1 MiB; give a smaller file");
}

TEST_F(ReadTextFile, NamesAMissingFile)
{
    const auto line = test::failureLine([&] { static_cast<void>(readTextFile(folder / "none", 100)); });
    EXPECT_EQ(line.find((folder / "none").string() + ": cannot be read: "), 0U) << line;
}

TEST(RestOf, GivesWhatAPipeHoldsAndNoMoreThanIsAskedFor)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle out(ends[0]);
    {
        const FileHandle in(ends[1]);
        ASSERT_EQ(::write(in.get(), "four", 4), 4);
    }
    EXPECT_EQ(restOf(out, 4), "four");
    EXPECT_EQ(restOf(out, 4), "");
}

TEST(RestOf, EndsWithADeviceThatHasNoEnd)
{
    const FileHandle zeros(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(restOf(zeros, 100), std::nullopt);
}

TEST(RestOf, SaysWhyAFolderCannotBeRead)
{
    const FileHandle folder(::open("/", O_RDONLY | O_CLOEXEC));
    try {
        static_cast<void>(restOf(folder, 100));
        FAIL() << "a folder was read";
    } catch (const std::system_error& failure) {
        EXPECT_EQ(failure.code().value(), EISDIR);
    }
}

} // namespace
} // namespace quelm
