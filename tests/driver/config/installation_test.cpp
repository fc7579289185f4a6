// Finding the installation, the user and the settings.
#include "driver/config/installation.h"

#include "base/error.h"
#include "driver/boundary/host_state.h"
#include "driver/boundary/record_database.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace {

/// Puts an environment variable back when a test ends.
class KeptVariable {
public:
    explicit KeptVariable(const char* variable) : name(variable)
    {
        if (const char* given = std::getenv(name)) {
            value = given;
        }
    }
    ~KeptVariable()
    {
        if (value) {
            setenv(name, value->c_str(), 1);
        } else {
            unsetenv(name);
        }
    }
    KeptVariable(const KeptVariable&) = delete;
    KeptVariable& operator=(const KeptVariable&) = delete;

private:
    const char* name;
    std::optional<std::string> value;
};

class InstallationTest : public testing::Test {
protected:
    const KeptVariable home{"HOME"};
    const KeptVariable configHome{"XDG_CONFIG_HOME"};
    TemporaryFolder folder;
};

TEST_F(InstallationTest, ByDefaultIsTheFolderOfTheRunningProgram)
{
    EXPECT_EQ(quelm::resolveHome(""), std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

TEST_F(InstallationTest, IsAbsoluteAndEndsWithoutASlash)
{
    EXPECT_EQ(quelm::resolveHome(folder.path().string() + "///"), folder.path().string());
    EXPECT_EQ(quelm::resolveHome("."), std::filesystem::current_path().string());
    EXPECT_EQ(quelm::resolveHome("/"), "");
}

TEST_F(InstallationTest, WithoutCataloguesUsesThoseBesideTheProgram)
{
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    EXPECT_EQ(quelm::localeFolder(folder.path()), program + "/locale");
    std::filesystem::create_directory(folder / "locale");
    EXPECT_EQ(quelm::localeFolder(folder.path()), folder / "locale");
}

TEST_F(InstallationTest, MustBeAFolder)
{
    EXPECT_THROW(quelm::resolveHome(folder / "missing"), quelm::Error);
    EXPECT_THROW(quelm::resolveHome(writeFile(folder / "file", "")), quelm::Error);
}

TEST_F(InstallationTest, AUserIsOneWhoseNameCanNameAFile)
{
    EXPECT_EQ(quelm::resolveUser("ann.o'neil zoë"), "ann.o'neil zoë");
    EXPECT_FALSE(quelm::resolveUser("").empty());
    for (const char* name : {"..", ".", "a/b", "/", "a\nb"}) {
        EXPECT_THROW(quelm::resolveUser(name), quelm::Error) << name;
    }
}

TEST_F(InstallationTest, OptionsAreKeptInTheFolderOfSettings)
{
    setenv("HOME", "/home/ann", 1);
    setenv("XDG_CONFIG_HOME", "/settings", 1);
    EXPECT_EQ(quelm::featureFilePath("", "ann"), "/settings/quelm/features/ann.ini");
    EXPECT_EQ(quelm::featureFilePath("/mine", "ann"), "/mine/features/ann.ini");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(quelm::featureFilePath("", "ann"), "/home/ann/.config/quelm/features/ann.ini");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(quelm::featureFilePath("", "ann"), "/home/ann/.config/quelm/features/ann.ini");
}

TEST_F(InstallationTest, GetsItsFolderForPhonebooks)
{
    quelm::prepareInstallation(folder.path());
    quelm::prepareInstallation(folder.path());
    EXPECT_TRUE(std::filesystem::is_directory(folder / "db"));
}

TEST_F(InstallationTest, TroubleIsExplainedByWhatTheHostRefused)
{
    quelm::HostState state(folder.path(), "ann");
    std::filesystem::create_directory(folder / "db");
    EXPECT_EQ(quelm::startUpTrouble(state, quelm::lastDatabaseError()), "it gives no reason");
    state.trouble = "the dialog definition cannot be used: it is not UTF-8";
    EXPECT_EQ(quelm::startUpTrouble(state, ""), state.trouble);
}

TEST_F(InstallationTest, TroubleIsExplainedByAFolderThatCannotBeMade)
{
    const quelm::HostState state(folder.path(), "ann");
    EXPECT_EQ(quelm::startUpTrouble(state, ""), "the folder " + folder / "db/phonebook" +
                                                    " cannot be made; " + folder / "db" +
                                                    " is no folder that you may write to");
}

TEST_F(InstallationTest, TroubleIsExplainedByAPhonebookThatIsNone)
{
    const quelm::HostState state(folder.path(), "ann");
    std::filesystem::create_directories(folder / "db/phonebook/user");
    const std::string file = writeFile(folder / "db/phonebook/user/ann.xdb", "no phonebook at all");
    EXPECT_NE(quelm::startUpTrouble(state, "").find(file), std::string::npos)
        << quelm::startUpTrouble(state, "");
    EXPECT_EQ(contentOf(file), "no phonebook at all");
}

} // namespace
