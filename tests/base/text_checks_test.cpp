// Checks of texts from outside.
#include "base/text_checks.h"

#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace quelm {
namespace {

TEST(TextChecks, TellsUtf8FromOtherBytes)
{
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("Zoë 田中"));
    EXPECT_FALSE(isUtf8("Zo\xeb"));
    EXPECT_FALSE(isUtf8("\xc3"));
    EXPECT_FALSE(isUtf8("\xc0\xaf"));
    EXPECT_FALSE(isUtf8("\xed\xa0\x80"));
    EXPECT_FALSE(isUtf8(std::string_view("a\0b", 3)));
}

TEST(TextChecks, FindsControlCharacters)
{
    EXPECT_FALSE(hasControlCharacter("Zoë, 12 (x)"));
    for (const auto* text : {"a\nb", "a\tb", "\x1b[0m", "\x7f"})
        EXPECT_TRUE(hasControlCharacter(text));
}

class ReadTextFile : public testing::Test {
protected:
    ReadTextFile()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "text-checks-XXXXXX").string();
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
    EXPECT_EQ(test::failureLine([&] { readTextFile(folder / "f", 1048576); }),
              (folder / "f").string() + ": is larger than 1 MiB; give a smaller file");
}

TEST_F(ReadTextFile, NamesAMissingFile)
{
    const auto line = test::failureLine([&] { readTextFile(folder / "none", 100); });
    EXPECT_EQ(line.find((folder / "none").string() + ": cannot be read: "), 0U) << line;
}

} // namespace
} // namespace quelm
