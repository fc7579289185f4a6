// Tests of configuration files share this fixture.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_CONFIG_CONFIGURATION_TEST_H
#define TESTS_DRIVER_CONFIG_CONFIGURATION_TEST_H

#include "base/error.h"
#include "driver/config/configuration_file.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <optional>
#include <string>

/// Gives an environment variable a value for the time of a test.
class Variable {
public:
    Variable(const char* variable, const std::string& value) : name_(variable)
    {
        if (const char* present = std::getenv(variable))
            before_ = present;
        setenv(variable, value.c_str(), 1);
    }
    ~Variable()
    {
        if (before_)
            setenv(name_, before_->c_str(), 1);
        else
            unsetenv(name_);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    std::optional<std::string> before_;
};

class ConfigurationTest : public testing::Test {
protected:
    quelm::Configuration read(const std::string& content, mode_t mode = S_IRUSR | S_IWUSR)
    {
        const std::string file = writeFile(folder / "quelm.conf", content);
        chmod(file.c_str(), mode);
        return quelm::readConfiguration(file);
    }

    /// The error's line without the file, which it must name.
    std::string problemWith(const std::string& content, mode_t mode = S_IRUSR | S_IWUSR)
    {
        try {
            read(content, mode);
        } catch (const quelm::Error& error) {
            return withoutFile(error.what(), folder / "quelm.conf");
        }
        return "";
    }
    static std::string problemAt(const std::string& path)
    {
        try {
            static_cast<void>(quelm::readConfiguration(path));
        } catch (const quelm::Error& error) {
            return withoutFile(error.what(), path);
        }
        return "";
    }

    TemporaryFolder folder;
    Variable xdgFolder{"XDG_CONFIG_HOME", folder / "config"};
    Variable homeFolder{"HOME", folder / "home"};
    Variable machineFolders{"XDG_CONFIG_DIRS", folder / "site" + ":" + folder / "machine"};

private:
    static std::string withoutFile(const std::string& line, const std::string& path)
    {
        const std::string start = "the configuration file \"" + path + "\" ";
        EXPECT_EQ(line.find(start), 0U) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
        return line.substr(start.size());
    }
};

#endif
