// Reads the driver's configuration files, and puts them over one another.
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
#include "driver/config/device_fit.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

namespace quelm {

namespace {

/// Of a configuration file, in one of the XDG folders.
constexpr const char* below = "/quelm/quelm.conf";

/// `problem` ends the sentence: "has ...", "cannot be read ...".
std::string sentence(const std::string& file, const std::string& problem)
{
    // Translators: %s is the file's name, and what is wrong with it: "has no value at ...".
    return localized("the configuration file \"%s\" %s", file, problem);
}

[[noreturn]] void fail(const std::string& file, const std::string& problem)
{
    throw Error(sentence(file, problem));
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

/// What is wrong with a file that holds a secret; empty when nothing is. A secret that others can read, or a
/// stranger wrote, is none.
std::string exposureOf(const std::string& path, const struct stat& status)
{
    constexpr mode_t anybodyElse = S_IRWXG | S_IRWXO;
    if ((status.st_mode & anybodyElse) != 0)
        return localized("holds a secret, and others have access to it; run chmod 600 %s", path);
    if (status.st_uid != geteuid() && status.st_uid != 0)
        return localized("holds a secret, and belongs to another user; copy it to a file of your own");
    return "";
}

/// The groups of a file as they are written in messages: "[driver], [job] and [outbox]".
std::string possibleGroups()
{
    std::vector<std::string> names;
    for (const ConfigurationKey& key : configurationKeys())
        if (const auto name = "[" + std::string(key.group) + "]"; names.empty() || names.back() != name)
            names.push_back(name);
    std::string text;
    for (std::size_t i = 0; i + 1 < names.size(); ++i)
        text += (i == 0 ? "" : ", ") + names[i];
    // Translators: the groups of a configuration file, and the last of them.
    return localized("%s and %s", text, names.back());
}

/// One file, its lines taken apart. What is wrong with it is handed on, and counts as not there.
class ConfigurationReader {
public:
    ConfigurationReader(std::string file, const PipeLimits& limits, const ProblemTaker& problems)
        : path_(std::move(file)), problems_(problems), content_(contentOf(path_, limits)),
          keyFile_(content_.text, [this](const std::string& problem) { complain(problem); })
    {
        own_.file = path_;
        for (const std::string& group : keyFile_.groups())
            readGroup(group);
        if (holdsSecret(own_.device))
            if (const auto exposure = exposureOf(path_, content_.status); !exposure.empty())
                complain(exposure);
    }

    /// Puts what the file says over what is there.
    void putOver(Configuration& configuration) const
    {
        configuration.file = path_;
        auto others = std::move(configuration.destinations);
        configuration.destinations.clear();
        for (const std::string& group : groups_)
            putGroupOver(configuration, group);
        // A destination is one thing: of those of one name the other file says nothing.
        for (auto& destination : others)
            if (configuration.findDestination(destination.name) == nullptr)
                configuration.destinations.push_back(std::move(destination));
    }

private:
    void complain(const std::string& problem) const { problems_(sentence(path_, problem)); }

    void readGroup(const std::string& group)
    {
        const auto& keys = configurationKeys();
        if (std::ranges::none_of(keys, [&](const auto& key) { return isGroup(key.group, group); }))
            return complain(localized("has an unknown group [%s] in line %d; possible are %s", oneLine(group),
                                      keyFile_.line(group, ""), possibleGroups()));
        const bool isDestination = isGroup(destinationGroup, group);
        if (isDestination) {
            const auto name = trimmed(std::string_view(group).substr(destinationBeginning.size()));
            if (name.empty() || own_.findDestination(name) != nullptr)
                return complain(name.empty()
                                    ? localized("has a destination without a name in line %d; write "
                                                "[destination NAME]",
                                                keyFile_.line(group, ""))
                                    : localized("has a second destination \"%s\" in line %d; give it "
                                                "another name",
                                                name, keyFile_.line(group, "")));
            own_.destinations.push_back({std::string(name)});
        }
        groups_.push_back(group);
        for (const std::string& name : keyFile_.keys(group))
            readKey(group, name);
        if (isDestination && own_.destinations.back().kind == NamedDestination::Kind::none)
            complain(localized("names no place in [%s] (line %d); write device, queue or file there",
                               oneLine(group), keyFile_.line(group, "")));
    }

    void readKey(const std::string& group, const std::string& name)
    {
        const ConfigurationKey* key = keyOf(group, name);
        if (key == nullptr)
            return;
        const auto value = keyFile_.value(group, name);
        if (!value)
            return;
        const std::string expected = key->take(own_, *value);
        if (!expected.empty())
            return complain(localized("has \"%s\" at %s, where %s is expected", *value,
                                      keyFile_.placeOf(group, name), expected));
        said_.push_back({key, {group, name, *value, path_, keyFile_.line(group, name)}});
    }

    /// The key of that name; null when there is none, of which the user is told.
    const ConfigurationKey* keyOf(const std::string& group, const std::string& name) const
    {
        std::string possible;
        for (const ConfigurationKey& key : configurationKeys()) {
            if (!isGroup(key.group, group))
                continue;
            if (key.name == name)
                return &key;
            possible += (possible.empty() ? "" : ", ") + std::string(key.name);
        }
        complain(localized("has an unknown key \"%s\" in [%s] (line %d); possible are %s", name,
                           oneLine(group), keyFile_.line(group, name), possible));
        return nullptr;
    }

    void putGroupOver(Configuration& configuration, const std::string& group) const
    {
        const bool isDestination = isGroup(destinationGroup, group);
        if (isDestination) {
            const auto name = trimmed(std::string_view(group).substr(destinationBeginning.size()));
            configuration.destinations.push_back({std::string(name)});
        }
        auto& values = configuration.values;
        if (isDestination)
            std::erase_if(values, [&](const auto& value) { return value.group == group; });
        for (const auto& [key, said] : said_) {
            if (said.group != group)
                continue;
            static_cast<void>(key->take(configuration, said.value));
            std::erase_if(values, [&, &mine = said](const auto& value) {
                return value.group == mine.group && value.name == mine.name;
            });
            values.push_back(said);
            if (key->kind == KeyKind::path)
                values.back().value = fromFileFolder(path_, said.value);
        }
    }

    std::string path_;
    const ProblemTaker& problems_;
    Content content_;
    KeyFile keyFile_;
    Configuration own_;               ///< what this file alone says
    std::vector<std::string> groups_; ///< in their order
    std::vector<std::pair<const ConfigurationKey*, ConfiguredValue>> said_;
};

/// What several files say together and does not fit.
void checkTogether(const Configuration& configuration, const ProblemTaker& problems)
{
    const auto* named = configuration.find("job", "destination");
    if (named != nullptr && configuration.findDestination(configuration.destination) == nullptr) {
        std::string possible;
        for (const auto& destination : configuration.destinations)
            possible += (possible.empty() ? "" : ", ") + destination.name;
        const auto place = localized("%s (line %d)", "[job] destination", named->line);
        problems(sentence(named->file,
                          possible.empty()
                              ? localized("has \"%s\" at %s, and no destination is configured; add "
                                          "[destination %s]",
                                          named->value, place, named->value)
                              : localized("has \"%s\" at %s, which is no destination; possible are %s",
                                          named->value, place, possible)));
    }
    const std::string mismatch = deviceMismatch(configuration.device);
    if (mismatch.empty())
        return;
    // The file that counts most is the one to look into.
    for (const auto& source : configuration.sources)
        if (std::ranges::any_of(configuration.values, [&source](const auto& value) {
                return value.group == "device" && value.file == source.file;
            }))
            return problems(sentence(source.file, mismatch));
}

/// Reads all sources that are there; the first counts most.
Configuration readSources(std::vector<ConfigurationSource> sources, const PipeLimits& limits,
                          const ProblemTaker& problems)
{
    Configuration configuration;
    const std::vector<ConfigurationSource> leastFirst(sources.rbegin(), sources.rend());
    for (const auto& source : leastFirst) {
        if (!source.isThere)
            continue;
        try {
            ConfigurationReader(source.file, limits, problems).putOver(configuration);
        } catch (const Error& error) { // as a file that cannot be read
            problems(error.what());
        }
    }
    configuration.sources = std::move(sources);
    checkTogether(configuration, problems);
    return configuration;
}

[[noreturn]] void throwProblem(const std::string& line) { throw Error(line); }

/// One that is there but cannot be read is an error: it was meant to be used.
bool isThere(const std::string& file)
{
    struct stat status {};
    return lstat(file.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

} // namespace

const ConfiguredValue* Configuration::find(std::string_view group, std::string_view name) const
{
    const auto found = std::ranges::find_if(
        values, [&](const auto& value) { return value.group == group && value.name == name; });
    return found == values.end() ? nullptr : &*found;
}

const NamedDestination* Configuration::findDestination(std::string_view name) const
{
    const auto found = std::ranges::find(destinations, name, &NamedDestination::name);
    return found == destinations.end() ? nullptr : &*found;
}

Configuration readConfiguration(const std::string& path, const PipeLimits& limits)
{
    return readSources({{path, true}}, limits, throwProblem);
}

std::vector<ConfigurationSource> configurationSources()
{
    std::vector<std::string> files;
    const auto add = [&files](const std::string& file) {
        if (std::ranges::find(files, file) == files.end())
            files.push_back(file);
    };
    if (const auto own = userConfigurationFile(); !own.empty())
        add(own);
    const char* given = std::getenv("XDG_CONFIG_DIRS");
    const std::string folders = given == nullptr || *given == '\0' ? "/etc/xdg" : given;
    for (std::size_t begin = 0; begin <= folders.size();) {
        const auto end = std::min(folders.find(':', begin), folders.size());
        auto folder = folders.substr(begin, end - begin);
        while (folder.ends_with('/'))
            folder.pop_back();
        // A relative XDG folder counts as none.
        if (folder.starts_with('/'))
            add(folder + below);
        begin = end + 1;
    }
    std::vector<ConfigurationSource> sources;
    sources.reserve(files.size());
    for (const auto& file : files)
        sources.push_back({file, isThere(file)});
    return sources;
}

std::string userConfigurationFile()
{
    // A relative XDG folder counts as none.
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder != nullptr && *folder == '/')
        return std::string(folder) + below;
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? std::string(home) + "/.config" + below : "";
}

Configuration loadConfiguration(const std::optional<std::string>& namedFile)
{
    return loadConfiguration(namedFile, throwProblem);
}

Configuration loadConfiguration(const std::optional<std::string>& namedFile, const ProblemTaker& problems)
{
    if (namedFile)
        return readSources({{*namedFile, true}}, {}, problems);
    return readSources(configurationSources(), {}, problems);
}

} // namespace quelm
