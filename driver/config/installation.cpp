// Finds folders and names, and explains a failed start.
#include "driver/config/installation.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"
#include "driver/boundary/record_database.h"
#include "driver/store/record_store.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>

namespace quelm {

namespace fs = std::filesystem;

namespace {

/// The folder of the running program; empty when the system does not tell.
fs::path programFolder()
{
    std::error_code failure;
    const fs::path program = fs::read_symlink("/proc/self/exe", failure);
    return failure ? fs::path() : program.parent_path();
}

/// An environment variable, or the empty text.
std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string userHomeFolder()
{
    std::string folder = environment("HOME");
    if (folder.empty()) {
        const passwd* entry = ::getpwuid(::getuid());
        folder = entry == nullptr ? "" : entry->pw_dir;
    }
    return folder;
}

std::string settingsFolder()
{
    const std::string configHome = environment("XDG_CONFIG_HOME");
    if (!configHome.empty() && configHome.front() == '/') {
        return configHome + "/quelm";
    }
    const std::string home = userHomeFolder();
    if (home.empty()) {
        throw Error(localized("no folder for the driver's settings is known; set HOME or XDG_CONFIG_HOME"));
    }
    return home + "/.config/quelm";
}

/// Why a folder that should exist does not; empty when nothing speaks against it.
std::string folderTrouble(const fs::path& folder)
{
    std::error_code failure;
    const fs::path parent = folder.parent_path();
    if (fs::exists(folder, failure) ||
        (fs::is_directory(parent, failure) && ::access(parent.c_str(), W_OK) == 0)) {
        return "";
    }
    return localized("the folder %s cannot be made; %s is no folder that you may write to", folder.string(),
                     parent.string());
}

/// Why the phonebook cannot be used; empty when it can.
std::string phonebookTrouble(const fs::path& file)
{
    std::error_code failure;
    if (!fs::exists(file, failure)) {
        return "";
    }
    try {
        const RecordStore store(file.string(), RecordStore::Access::readWrite);
        return "";
    } catch (const Error& error) {
        return error.what();
    }
}

} // namespace

void useOwnTranslations()
{
    if (const fs::path folder = programFolder(); !folder.empty()) {
        useTranslations(localeFolder(folder.string()));
    }
}

std::string localeFolder(const std::string& home)
{
    const fs::path own = home + "/locale"; // the home "/" is the empty text
    const fs::path program = programFolder();
    std::error_code failure;
    const bool usesOwn = program.empty() || fs::is_directory(own, failure);
    return (usesOwn ? own : program / "locale").string();
}

std::string resolveHome(const std::string& given)
{
    const fs::path folder = given.empty() ? programFolder() : fs::path(given);
    if (folder.empty()) {
        throw Error(localized(
            "the folder of the running program cannot be found; name the installation with --home"));
    }
    std::error_code failure;
    if (!fs::is_directory(folder, failure)) {
        throw Error(localized("there is no installation folder %s", folder.string()));
    }
    std::string home = fs::absolute(folder).lexically_normal().string();
    while (!home.empty() && home.back() == '/') {
        home.pop_back();
    }
    return home;
}

std::string resolveUser(const std::string& given)
{
    std::string user = given;
    if (user.empty()) {
        const passwd* entry = ::getpwuid(::getuid());
        user = entry != nullptr ? entry->pw_name : environment("LOGNAME");
    }
    if (user.empty()) {
        throw Error(localized("your login name is not known; name the user with --user"));
    }
    const bool isPlain = std::none_of(user.begin(), user.end(), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return character == '/' || code < 0x20 || code == 0x7F;
    });
    if (!isPlain || user == "." || user == "..") {
        throw Error(localized("\"%s\" cannot be a user's name; files are named after it", user));
    }
    return user;
}

bool hasDisplay() { return !environment("DISPLAY").empty() || !environment("WAYLAND_DISPLAY").empty(); }

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

std::string startUpTrouble(const HostState& state, const std::string& databaseErrorBefore)
{
    const std::string databaseError = lastDatabaseError();
    const fs::path phonebooks = state.home + "/db/phonebook";
    const fs::path own = phonebooks / "user";
    std::error_code failure;
    const std::array reasons{state.trouble, folderTrouble(fs::exists(phonebooks, failure) ? own : phonebooks),
                             phonebookTrouble(own / (state.user + ".xdb")),
                             databaseError == databaseErrorBefore ? std::string() : databaseError};
    const auto* known = std::find_if(reasons.begin(), reasons.end(),
                                     [](const std::string& reason) { return !reason.empty(); });
    return known == reasons.end() ? localized("it gives no reason") : *known;
}

} // namespace quelm
