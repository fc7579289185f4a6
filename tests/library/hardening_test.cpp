// What is released is hardened: against overrun buffers, and against writing to where calls are looked up.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/library/elf_file.h"
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

/// The values of all entries with a tag.
std::string entry(const ElfFile& file, const std::string& tag)
{
    std::string values;
    for (const DynamicEntry& entry : file.dynamicEntries())
        if (entry.tag == tag)
            values += entry.value + " ";
    return values;
}

bool calls(const ElfFile& file, const std::string& function)
{
    const auto symbols = file.dynamicSymbols();
    return std::any_of(symbols.begin(), symbols.end(), [&function](const DynamicSymbol& symbol) {
        return !symbol.defined && symbol.name == function;
    });
}

/// Whether it calls the C library's functions that know how large a buffer is, such as __memcpy_chk.
bool callsCheckedFunctions(const ElfFile& file)
{
    const auto symbols = file.dynamicSymbols();
    return std::any_of(symbols.begin(), symbols.end(), [](const DynamicSymbol& symbol) {
        return !symbol.defined && symbol.name.ends_with("_chk");
    });
}

/// The component, and whatever else programs load that comes with them.
std::vector<std::string> libraries()
{
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(build_paths::stageFolder()))
        if (entry.is_regular_file() && entry.path().filename().string().find(".so") != std::string::npos)
            found.push_back(entry.path().string());
    return found;
}

class HardenedProgram : public testing::TestWithParam<const char*> {
protected:
    const ElfFile file{build_paths::inStage(GetParam())};
};

TEST_P(HardenedProgram, LiesAnywhereInMemory)
{
    EXPECT_NE(entry(file, "FLAGS_1").find("PIE"), std::string::npos);
}

TEST_P(HardenedProgram, HasAllThatItCallsBoundAndClosedAtItsStart)
{
    EXPECT_NE(entry(file, "FLAGS_1").find("NOW"), std::string::npos);
    EXPECT_TRUE(file.closesItsTables());
}

TEST_P(HardenedProgram, GuardsItsStack)
{
    EXPECT_TRUE(calls(file, "__stack_chk_fail"));
    EXPECT_EQ(file.stackFlags(), "RW");
}

INSTANTIATE_TEST_SUITE_P(Of, HardenedProgram,
                         testing::Values("quelm-driver", "quelm-desktop", "fennodial", "quelm-device",
                                         "quelm-supervisor"));

TEST(HardenedLibraries, GuardTheirStacksAndCloseTheirTables)
{
    const auto files = libraries();
    EXPECT_EQ(std::count(files.begin(), files.end(), build_paths::componentLibrary()), 1);
    for (const std::string& path : files) {
        const ElfFile file(path);
        EXPECT_TRUE(file.closesItsTables()) << path;
        // The module that guesses charsets has nothing on its stack that could overflow.
        EXPECT_TRUE(calls(file, "__stack_chk_fail") || path.ends_with("/charsets.so")) << path;
        EXPECT_EQ(file.stackFlags(), "RW") << path;
    }
}

TEST(HardenedLibraries, HaveTheCLibraryCheckTheSizesOfBuffers)
{
    EXPECT_TRUE(callsCheckedFunctions(ElfFile(build_paths::componentLibrary())));
    EXPECT_TRUE(callsCheckedFunctions(ElfFile(build_paths::inStage("quelm-driver"))));
}

} // namespace
