// Finds folders and names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/installation.h"

#include "base/environment.h"
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace quelm {

namespace fs = std::filesystem;

namespace {

std::string userHomeFolder()
{
    std::string folder = environmentVariable("HOME");
    if (folder.empty()) {
        const passwd* entry = ::getpwuid(::getuid());
        folder = entry == nullptr ? "" : entry->pw_dir;
    }
    return folder;
}

std::string settingsFolder()
{
    const std::string folder = xdgFolder("XDG_CONFIG_HOME", ".config");
    if (folder.empty())
        throw Error(localized("no folder for the driver's settings is known; set HOME or XDG_CONFIG_HOME"));
    return folder + "/quelm";
}

} // namespace

std::string xdgFolder(const char* variable, const char* belowHome)
{
    std::string given = environmentVariable(variable);
    if (given.starts_with('/'))
        return given;
    const std::string home = userHomeFolder();
    return home.empty() ? home : home + "/" + belowHome;
}

std::string resolveHome(const std::string& given)
{
    const fs::path folder = given.empty() ? programFolder() : fs::path(given);
    if (folder.empty()) {
        throw Error(localized(
            "the folder of the running program cannot be found; name the installation with --home"));
    }
    std::error_code failure;
    if (!fs::is_directory(folder, failure))
        throw Error(localized("there is no installation folder %s", folder.string()));
    std::string home = fs::absolute(folder).lexically_normal().string();
    while (!home.empty() && home.back() == '/')
        home.pop_back();
    return home;
}

std::string resolveUser(const std::string& given)
{
    std::string user = given;
    if (user.empty()) {
        const passwd* entry = ::getpwuid(::getuid());
        user = entry != nullptr ? entry->pw_name : environmentVariable("LOGNAME");
    }
    if (user.empty())
        throw Error(localized("your login name is not known; name the user with --user"));
    const bool isPlain = std::none_of(user.begin(), user.end(), [](char character) {
        return character == '/' || isControlCharacter(character);
    });
    if (!isPlain || user == "." || user == "..")
        throw Error(localized("\"%s\" cannot be a user's name; files are named after it", user));
    return user;
}

std::string outboxFolder()
{
    const std::string state = xdgFolder("XDG_STATE_HOME", ".local/state");
    return state.empty() ? "" : state + "/quelm/outbox";
}

std::string defaultComponent(const std::string& home) { return home + "/libBramblecorLanFax.so"; }

std::string featureFilePath(const std::string& configDirectory, const std::string& user)
{
    return (configDirectory.empty() ? settingsFolder() : configDirectory) + "/features/" + user + ".ini";
}

void prepareInstallation(const std::string& home)
{
    std::error_code ignored;
    fs::create_directory(home + "/db", ignored);
}

} // namespace quelm
