// The configuration file: what it may say, and what is said about a wrong one.
#include "driver/core/configuration.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "driver/core/error.h"
#include "tests/driver/core/temporary_folder.h"

namespace {

/// Gives an environment variable a value for the time of a test.
class Variable {
public:
    Variable(const char* variable, const std::string& value) : name(variable)
    {
        if (const char* present = std::getenv(variable))
            before = present;
        setenv(variable, value.c_str(), 1);
    }
    ~Variable()
    {
        if (before)
            setenv(name, before->c_str(), 1);
        else
            unsetenv(name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name;
    std::optional<std::string> before;
};

class ConfigurationTest : public testing::Test {
protected:
    quelm::Configuration read(const std::string& content)
    {
        return quelm::readConfiguration(writeFile(folder / "quelm.conf", content));
    }

    /// The error's line without the file, which it must name.
    std::string problemWith(const std::string& content)
    {
        try {
            read(content);
        } catch (const quelm::Error& error) {
            return withoutFile(error.what(), folder / "quelm.conf");
        }
        return "";
    }
    static std::string problemAt(const std::string& path)
    {
        try {
            quelm::readConfiguration(path);
        } catch (const quelm::Error& error) {
            return withoutFile(error.what(), path);
        }
        return "";
    }

    TemporaryFolder folder;
    Variable xdgFolder{"XDG_CONFIG_HOME", folder / "config"};
    Variable homeFolder{"HOME", folder / "home"};

private:
    static std::string withoutFile(const std::string& line, const std::string& path)
    {
        const std::string start = "The configuration file \"" + path + "\" ";
        EXPECT_EQ(line.find(start), 0U) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
        return line.substr(start.size());
    }
};

} // namespace

TEST_F(ConfigurationTest, SaysEverythingThatItKnows)
{
    const auto configuration = read("# ours\n[driver]\nhome = /opt/quelm\nuser=Zoë\ncomponent=/lib/a b.so\n\n"
                                    "[job]\npdl=pjl\n");
    EXPECT_EQ(configuration.file, folder / "quelm.conf");
    EXPECT_EQ(configuration.home, "/opt/quelm");
    EXPECT_EQ(configuration.user, "Zoë");
    EXPECT_EQ(configuration.component, "/lib/a b.so");
    EXPECT_EQ(configuration.pdl, quelm::Pdl::pjl);
    EXPECT_EQ(read("[job]\npdl=dsc\n").pdl, quelm::Pdl::dsc);
}

TEST_F(ConfigurationTest, MaySayNothing)
{
    for (const char* content : {"", "\n \n", "# only a comment\n", "[driver]\n", "[job]\n[driver]\n"}) {
        const auto configuration = read(content);
        EXPECT_FALSE(configuration.home || configuration.user || configuration.component ||
                     configuration.pdl);
    }
}

TEST_F(ConfigurationTest, RelativePathsCountFromItsFolder)
{
    const auto configuration = read("[driver]\nhome=install\ncomponent=../lib.so\n");
    EXPECT_EQ(configuration.home, folder / "install");
    EXPECT_EQ(configuration.component, folder / "../lib.so");
}

TEST_F(ConfigurationTest, UnknownWordsAreNamedWithWhatIsPossible)
{
    EXPECT_EQ(problemWith("[printer]\nhome=/x\n"),
              "has an unknown group [printer]; possible are [driver] and [job]");
    EXPECT_EQ(problemWith("[driver]\nhomes=/x\n"),
              "has an unknown key \"homes\" in [driver]; possible are home, user, component");
    EXPECT_EQ(problemWith("[job]\nhome=/x\n"), "has an unknown key \"home\" in [job]; possible are pdl");
    EXPECT_EQ(problemWith("[job]\npdl=PCL\n"), "has \"PCL\" at [job] pdl, where dsc or pjl is expected");
    EXPECT_EQ(problemWith("[driver]\nuser=a/b\n"),
              "has \"a/b\" at [driver] user, where a user name without \"/\" is expected");
    EXPECT_EQ(problemWith("[driver]\nhome=\n"),
              "has no value at [driver] home; write one or remove the line");
}

TEST_F(ConfigurationTest, MalformedFilesAreRefused)
{
    EXPECT_EQ(problemWith("home=/x\n").find("cannot be understood: "), 0U);
    const std::string noPair = problemWith("[driver]\nhome /x\n");
    EXPECT_NE(noPair.find("home /x"), std::string::npos) << noPair;
    EXPECT_EQ(problemWith("[driver\n").find("cannot be understood: "), 0U);
    EXPECT_EQ(problemWith("[driver]\nhome=a\\qb\n").find("has a bad value at [driver] home: "), 0U);
    EXPECT_EQ(problemWith("[driver]\nuser=Zo\xEB\n"), "is no UTF-8 text in line 2; save it as UTF-8");
    EXPECT_EQ(problemWith(std::string("[driver]\n\0", 10)), "is no UTF-8 text in line 2; save it as UTF-8");
}

TEST_F(ConfigurationTest, FilesThatCannotBeReadAreNamed)
{
    EXPECT_EQ(problemAt(folder / "none"), "cannot be read: No such file or directory; check the name given");
    EXPECT_EQ(problemAt(folder.path()), "is a folder; name a file");
    EXPECT_EQ(problemAt("/dev/zero"), "is larger than 1 MiB and no configuration file; name another file");
    const std::string closed = writeFile(folder / "closed", "[driver]\n");
    chmod(closed.c_str(), 0);
    EXPECT_EQ(inProcess([&] {
                  becomeOrdinaryUser();
                  return problemAt(closed) == "cannot be read: Permission denied; check its permissions" ? 0
                                                                                                         : 1;
              }),
              0);
}

TEST_F(ConfigurationTest, UsersOwnFileIsReadWhenItIsThere)
{
    EXPECT_EQ(quelm::userConfigurationFile(), folder / "config/quelm/quelm.conf");
    EXPECT_EQ(quelm::loadConfiguration(std::nullopt).file, "");
    std::filesystem::create_directories(folder / "config/quelm");
    writeFile(folder / "config/quelm/quelm.conf", "[driver]\nuser=anne\n");
    EXPECT_EQ(quelm::loadConfiguration(std::nullopt).user, "anne");
}

TEST_F(ConfigurationTest, NamedFileIsReadInstead)
{
    std::filesystem::create_directories(folder / "config/quelm");
    writeFile(folder / "config/quelm/quelm.conf", "[driver]\nuser=anne\n");
    const std::string named = writeFile(folder / "named", "[job]\npdl=pjl\n");
    const auto configuration = quelm::loadConfiguration(named);
    EXPECT_EQ(configuration.pdl, quelm::Pdl::pjl);
    EXPECT_FALSE(configuration.user);
    EXPECT_THROW(quelm::loadConfiguration(folder / "none"), quelm::Error);
}

TEST_F(ConfigurationTest, WrongFileOfTheUsersIsAnError)
{
    std::filesystem::create_directories(folder / "config/quelm/quelm.conf");
    EXPECT_THROW(quelm::loadConfiguration(std::nullopt), quelm::Error);
}

TEST_F(ConfigurationTest, HomeFolderServesWithoutAnXdgFolder)
{
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(quelm::userConfigurationFile(), folder / "home/.config/quelm/quelm.conf");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(quelm::userConfigurationFile(), folder / "home/.config/quelm/quelm.conf");
    unsetenv("HOME");
    EXPECT_EQ(quelm::userConfigurationFile(), "");
    EXPECT_EQ(quelm::loadConfiguration(std::nullopt).file, "");
}
