// Reads the driver's configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/configuration_file.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/key_file.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/config/configuration_keys.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace quelm {

namespace {

/// `problem` ends the sentence: "has ...", "cannot be read ...".
[[noreturn]] void fail(const std::string& file, const std::string& problem)
{
    // Translators: %s is the file's name, and what is wrong with it: "has no value at ...".
    throw Error(localized("the configuration file \"%s\" %s", file, problem));
}

/// A file as it was read, and whose it is.
struct Content {
    std::string text;
    struct stat status {};
};

/// The whole file; bounded, so that a device named by mistake does not fill the memory.
Content contentOf(const std::string& path, const PipeLimits& limits)
{
    constexpr std::size_t mostBytes = std::size_t{1} << 20U;
    const FileHandle file = openToRead(path);
    Content content;
    if (!file.isOpen() && errno == EACCES)
        fail(path, localized("cannot be read: %s; check its permissions", systemReason(errno)));
    // What is looked at is what was opened, whatever the name stands for by now.
    if (!file.isOpen() || fstat(file.get(), &content.status) != 0)
        fail(path, localized("cannot be read: %s; check the name given", systemReason(errno)));
    if (S_ISDIR(content.status.st_mode))
        fail(path, localized("is a folder; name a file"));
    try {
        auto text = restOf(file, mostBytes, limits);
        if (!text)
            fail(path, localized("is larger than 1 MiB and no configuration file; name another file"));
        content.text = *std::move(text);
    } catch (const std::system_error& failure) {
        fail(path, localized("cannot be read: %s", systemReason(failure.code().value())));
    } catch (const PipeTimeout& timeout) {
        fail(path, localized("cannot be read: %s", timeout.what()));
    }
    return content;
}

/// A secret that others can read, or a stranger wrote, is none.
void requirePrivate(const std::string& path, const struct stat& status)
{
    constexpr mode_t anybodyElse = S_IRWXG | S_IRWXO;
    if ((status.st_mode & anybodyElse) != 0)
        fail(path, localized("holds a secret, and others have access to it; run chmod 600 %s", path));
    if (status.st_uid != geteuid() && status.st_uid != 0)
        fail(path, localized("holds a secret, and belongs to another user; copy it to a file of your own"));
}

/// The key of that name, or an Error that lists what is possible.
const ConfigurationKey& requireKey(const std::string& path, std::string_view group, std::string_view name)
{
    std::string possible;
    for (const ConfigurationKey& key : configurationKeys()) {
        if (key.group != group)
            continue;
        if (key.name == name)
            return key;
        possible += (possible.empty() ? "" : ", ") + std::string(key.name);
    }
    fail(path, localized("has an unknown key \"%s\" in [%s]; possible are %s", name, group, possible));
}

void requireGroup(const std::string& path, std::string_view group)
{
    if (std::ranges::find(configurationKeys(), group, &ConfigurationKey::group) == configurationKeys().end())
        fail(path, localized("has an unknown group [%s]; possible are [driver], [job], [device], "
                             "[directory] and [outbox]",
                             group));
}

void takeGroup(Configuration& configuration, const KeyFile& keyFile, const std::string& group)
{
    const std::string& path = configuration.file;
    requireGroup(path, group);
    for (const std::string& name : keyFile.keys(group)) {
        const ConfigurationKey& key = requireKey(path, group, name);
        const std::string value = keyFile.value(group, name);
        const std::string expected = key.take(configuration, value);
        if (!expected.empty())
            fail(path, localized("has \"%s\" at %s, where %s is expected", value,
                                 KeyFile::placeOf(group, name), expected));
    }
}

} // namespace

Configuration readConfiguration(const std::string& path, const PipeLimits& limits)
{
    Configuration configuration;
    configuration.file = path;
    const Content content = contentOf(path, limits);
    const KeyFile keyFile(content.text, [&path](const std::string& problem) { fail(path, problem); });
    for (const std::string& group : keyFile.groups())
        takeGroup(configuration, keyFile, group);
    if (holdsSecret(configuration.device))
        requirePrivate(path, content.status);
    if (const std::string mismatch = deviceMismatch(configuration.device); !mismatch.empty())
        fail(path, mismatch);
    return configuration;
}

std::string userConfigurationFile()
{
    constexpr const char* below = "/quelm/quelm.conf";
    // A relative XDG folder counts as none.
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder != nullptr && *folder == '/')
        return std::string(folder) + below;
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? std::string(home) + "/.config" + below : "";
}

Configuration loadConfiguration(const std::optional<std::string>& namedFile)
{
    if (namedFile)
        return readConfiguration(*namedFile);
    const std::string own = userConfigurationFile();
    struct stat status {};
    // One that is there but cannot be read is an error: it was meant to be used.
    if (own.empty() || (lstat(own.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)))
        return {};
    return readConfiguration(own);
}

} // namespace quelm
