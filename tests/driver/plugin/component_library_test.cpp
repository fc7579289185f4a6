// Loading components, and what is said about files that are none.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/component_library.h"

#include "base/error.h"
#include "base/whole_file.h"
#include "driver/boundary/host_state.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_paths.h"
#include "tests/support/temporary_folder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

using quelm::ComponentLibrary;

std::string problemOfLoading(const std::string& file)
{
    try {
        const ComponentLibrary library(file);
    } catch (const quelm::Error& error) {
        return error.what();
    }
    return "none";
}

bool isLoaded(const std::string& file)
{
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr)
        dlclose(library);
    return library != nullptr;
}

TEST(ComponentLibraryTest, TellsWhatTheComponentSaysAboutItself)
{
    const ComponentLibrary library(pluginPath("good"));
    EXPECT_STREQ(library.displayName(), "Test Component");
    EXPECT_STREQ(library.version(), "0.1");
    EXPECT_STREQ(library.text("PBEntryTags"), ",usg,nam,");
    ASSERT_EQ(library.exportList().size(), 8U);
    EXPECT_EQ(library.exportList().front(), "InitializeFaxComponent");
    EXPECT_EQ(library.exportList().back(), "BoxFired");
}

TEST(ComponentLibraryTest, FindsFunctionsOfTheExportListAlone)
{
    const ComponentLibrary library(pluginPath("good"));
    EXPECT_NE(library.exported("Fired"), nullptr);
    EXPECT_EQ(library.exported("PBEntryTags"), nullptr);
    EXPECT_EQ(library.exported("abort"), nullptr);
    EXPECT_EQ(library.exported(""), nullptr);
    EXPECT_NE(library.symbol("PBEntryTags"), nullptr);
}

struct Broken {
    const char* plugin;
    std::string problem;
};

TEST(ComponentLibraryTest, EachBrokenComponentIsRefusedForItsOwnReasonAndUnloaded)
{
    const std::vector<Broken> table{
        {"without_version", "it lacks the descriptor object _QuelmSOVersion"},
        {"empty_version", "its descriptor object _QuelmSOVersion is empty"},
        {"without_entry_point", "it lacks the entry point InitializeFaxComponent"},
        {"without_listed_function", "it lacks the entry point ThrowsNumber that its export list names"},
        {"list_without_commas", "its export list _QuelmSOExportList does not begin and end with a comma"},
    };
    for (const Broken& row : table) {
        const std::string file = pluginPath(row.plugin);
        EXPECT_EQ(problemOfLoading(file), file + " is not a fax component: " + row.problem);
        EXPECT_FALSE(isLoaded(file)) << row.plugin;
    }
}

TEST(ComponentLibraryTest, AnImportThatTheDriverLacksIsNamed)
{
    const std::string file = pluginPath("imports_unknown");
    const std::string problem = problemOfLoading(file);
    EXPECT_EQ(problem.find("the component " + file + " cannot be loaded: undefined symbol"), 0U) << problem;
    EXPECT_NE(problem.find("notOfAnyHost"), std::string::npos) << problem;
}

TEST(ComponentLibraryTest, AFileThatIsNoLibraryIsRefused)
{
    const TemporaryFolder folder;
    const std::string text = writeFile(folder / "text.so", "I am a text.\n");
    EXPECT_EQ(problemOfLoading(text),
              "the component " + text + " cannot be loaded: it is not a shared library");
    EXPECT_EQ(problemOfLoading(folder / "missing.so"),
              "the component " + folder / "missing.so" +
                  " cannot be loaded: no such file; install it there or name another one");
}

TEST(ComponentLibraryTest, AStartedComponentStaysLoaded)
{
    const TemporaryFolder folder;
    const std::string file = folder / "component.so";
    std::filesystem::copy_file(pluginPath("good"), file);
    {
        quelm::HostState state(folder.path(), "ann");
        ComponentLibrary library(file);
        EXPECT_TRUE(library.start(state.guard));
    }
    EXPECT_TRUE(isLoaded(file));
}

TEST(ComponentLibraryTest, AComponentThatWasNeverStartedIsUnloaded)
{
    const TemporaryFolder folder;
    const std::string file = folder / "component.so";
    std::filesystem::copy_file(pluginPath("good"), file);
    {
        const ComponentLibrary library(file);
        EXPECT_TRUE(isLoaded(file));
    }
    EXPECT_FALSE(isLoaded(file));
}

TEST(ComponentLibraryTest, AComponentThatDoesNotStartSaysSo)
{
    for (const char* plugin : {"start_fails", "start_throws"}) {
        const LogCapture log;
        quelm::HostState state("/opt/quelm", "ann");
        ComponentLibrary library(pluginPath(plugin));
        EXPECT_FALSE(library.start(state.guard)) << plugin;
    }
}

} // namespace
