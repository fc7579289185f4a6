// Reads the driver's configuration file with GLib's key file parser.
#include "driver/core/configuration.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <glib.h>

#include "driver/core/error.h"

namespace quelm {

namespace {

[[noreturn]] void fail(const std::string& file, const std::string& problem)
{
    throw Error("The configuration file \"" + file + "\" " + problem);
}

/// One key that the driver knows, and what taking its value does. `take` answers with what is
/// wrong with the value, or with an empty text.
struct Key {
    std::string_view group;
    std::string_view name;
    std::string (*take)(Configuration&, const std::string& value);
};

/// A relative path counts from the folder of the configuration file.
std::string fromFileFolder(const Configuration& configuration, const std::string& value)
{
    if (value.front() == '/')
        return value;
    const std::size_t slash = configuration.file.rfind('/');
    return slash == std::string::npos ? value : configuration.file.substr(0, slash + 1) + value;
}

constexpr std::array<Key, 4> knownKeys{{
    {"driver", "home",
     [](Configuration& configuration, const std::string& value) -> std::string {
         configuration.home = fromFileFolder(configuration, value);
         return "";
     }},
    {"driver", "user",
     [](Configuration& configuration, const std::string& value) -> std::string {
         if (value.find('/') != std::string::npos)
             return "a user name without \"/\"";
         configuration.user = value;
         return "";
     }},
    {"driver", "component",
     [](Configuration& configuration, const std::string& value) -> std::string {
         configuration.component = fromFileFolder(configuration, value);
         return "";
     }},
    {"job", "pdl",
     [](Configuration& configuration, const std::string& value) -> std::string {
         if (value != "dsc" && value != "pjl")
             return "dsc or pjl";
         configuration.pdl = value == "dsc" ? Pdl::dsc : Pdl::pjl;
         return "";
     }},
}};

struct Freer {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(gchar* text) const { g_free(text); }
    void operator()(gchar** texts) const { g_strfreev(texts); }
    void operator()(GError* error) const { g_error_free(error); }
};
using KeyFile = std::unique_ptr<GKeyFile, Freer>;
using Text = std::unique_ptr<gchar, Freer>;
using Texts = std::unique_ptr<gchar*, Freer>;
using Problem = std::unique_ptr<GError, Freer>;

/// GLib's message on one line, without its full stop.
std::string oneLine(const GError& error)
{
    std::string text = error.message;
    for (char& character : text) {
        if (static_cast<unsigned char>(character) < 0x20)
            character = ' ';
    }
    return text;
}

/// The whole file; bounded, so that a device named by mistake does not fill the memory.
std::string contentOf(const std::string& path)
{
    constexpr std::size_t mostBytes = std::size_t{1} << 20U;
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        fail(path, std::string("cannot be read: ") + std::strerror(errno) + "; check the name given");
    if (S_ISDIR(status.st_mode))
        fail(path, "is a folder; name a file");
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        fail(path, std::string("cannot be read: ") + std::strerror(errno) + "; check its permissions");
    std::string content(mostBytes + 1, '\0');
    std::size_t size = 0;
    ssize_t got = 1;
    while (size < content.size() && got > 0) {
        got = read(file, content.data() + size, content.size() - size);
        size += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    const int error = errno;
    close(file);
    if (got < 0)
        fail(path, std::string("cannot be read: ") + std::strerror(error));
    if (size > mostBytes)
        fail(path, "is larger than 1 MiB and no configuration file; name another file");
    content.resize(size);
    return content;
}

KeyFile parse(const std::string& path, const std::string& content)
{
    const char* invalid = nullptr;
    if (g_utf8_validate_len(content.data(), content.size(), &invalid) == FALSE) {
        const std::string_view valid(content.data(), static_cast<std::size_t>(invalid - content.data()));
        std::size_t line = 1;
        for (const char character : valid)
            line += character == '\n' ? 1 : 0;
        fail(path, "is no UTF-8 text in line " + std::to_string(line) + "; save it as UTF-8");
    }
    KeyFile keyFile(g_key_file_new());
    GError* error = nullptr;
    if (g_key_file_load_from_data(keyFile.get(), content.data(), content.size(), G_KEY_FILE_NONE, &error) ==
        FALSE) {
        const Problem problem(error);
        // An empty file says nothing, which is fine.
        if (content.find_first_not_of(" \t\r\n") != std::string::npos)
            fail(path, "cannot be understood: " + oneLine(*problem));
    }
    return keyFile;
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

/// The key of that name, or an Error that lists what is possible.
const Key& requireKey(const std::string& path, std::string_view group, std::string_view name)
{
    std::string possible;
    for (const Key& key : knownKeys) {
        if (key.group != group)
            continue;
        if (key.name == name)
            return key;
        possible += (possible.empty() ? "" : ", ") + std::string(key.name);
    }
    fail(path,
         "has an unknown key " + quoted(name) + " in [" + std::string(group) + "]; possible are " + possible);
}

void requireGroup(const std::string& path, std::string_view group)
{
    for (const Key& key : knownKeys) {
        if (key.group == group)
            return;
    }
    fail(path, "has an unknown group [" + std::string(group) + "]; possible are [driver] and [job]");
}

void takeGroup(Configuration& configuration, GKeyFile* keyFile, const char* group)
{
    const std::string& path = configuration.file;
    requireGroup(path, group);
    const Texts names(g_key_file_get_keys(keyFile, group, nullptr, nullptr));
    for (gchar** name = names.get(); name != nullptr && *name != nullptr; ++name) {
        const Key& key = requireKey(path, group, *name);
        const std::string where = "[" + std::string(group) + "] " + *name;
        GError* error = nullptr;
        const Text value(g_key_file_get_string(keyFile, group, *name, &error));
        if (error != nullptr) { // a value may have come all the same
            const Problem problem(error);
            fail(path, "has a bad value at " + where + ": " + oneLine(*problem));
        }
        if (*value == '\0')
            fail(path, "has no value at " + where + "; write one or remove the line");
        const std::string expected = key.take(configuration, value.get());
        if (!expected.empty())
            fail(path,
                 "has " + quoted(value.get()) + " at " + where + ", where " + expected + " is expected");
    }
}

} // namespace

Configuration readConfiguration(const std::string& path)
{
    Configuration configuration;
    configuration.file = path;
    const KeyFile keyFile = parse(path, contentOf(path));
    const Texts groups(g_key_file_get_groups(keyFile.get(), nullptr));
    for (gchar** group = groups.get(); *group != nullptr; ++group)
        takeGroup(configuration, keyFile.get(), *group);
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
