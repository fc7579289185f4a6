// Reads and writes kept option values with GLib's key files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/features/feature_file.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"

#include <fcntl.h>
#include <glib.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace quelm {

namespace {

constexpr const char* group = "features";

/// All options take some kilobytes. GLib takes much longer for a file of twice the size.
constexpr std::size_t largestFile = 1048576;

struct Release {
    void operator()(GKeyFile* keys) const { g_key_file_unref(keys); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(gchar* text) const { g_free(text); }
    void operator()(gchar** texts) const { g_strfreev(texts); }
};
using Keys = std::unique_ptr<GKeyFile, Release>;
using Failure = std::unique_ptr<GError, Release>;
using Text = std::unique_ptr<gchar, Release>;
using Texts = std::unique_ptr<gchar*, Release>;

Error unusable(const std::string& path, const std::string& reason)
{
    return Error(
        localized("the kept options in %s cannot be used: %s; repair or remove the file, it is left as it is",
                  path, reason));
}

Error unwritable(const std::string& path, const std::string& reason)
{
    return Error(localized("the options cannot be kept in %s: %s", path, reason));
}

Keys readKeys(const std::string& path)
{
    struct stat status {};
    const bool isThere = ::stat(path.c_str(), &status) == 0;
    if (isThere && S_ISFIFO(status.st_mode)) // which reading would wait for
        throw unusable(path, localized("that is no plain file"));
    if (isThere && S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) > largestFile)
        throw unusable(path, localized("it is larger than 1 MiB"));
    Keys keys(g_key_file_new());
    GError* error = nullptr;
    const auto flags = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (g_key_file_load_from_file(keys.get(), path.c_str(), flags, &error) == FALSE) {
        const Failure failure(error);
        // Its text quotes the line, which may hold the number of a credit card.
        if (error->domain == G_KEY_FILE_ERROR)
            throw unusable(path, localized("it holds what is no option"));
        if (!g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT))
            throw unusable(path, error->message);
        return keys;
    }
    // Which would end the value that it stands in.
    std::ifstream file(path, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    if (std::find(Bytes(file), Bytes(), '\0') != Bytes())
        throw unusable(path, localized("it holds a character NUL"));
    return keys;
}

/// Locks a folder against other drivers until destroyed; a lock on the file itself would be lost
/// when the file is replaced.
class FolderLock {
public:
    explicit FolderLock(const std::string& path)
        : folder_(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
    }

    /// False when another program held the lock for all that time. A file system without locks needs none.
    bool lock(std::chrono::milliseconds limit)
    {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK && errno != EINTR)
                return true;
            if (std::chrono::steady_clock::now() >= deadline)
                return false;
            constexpr int moment = 20;
            ::poll(nullptr, 0, moment);
        }
        return true;
    }

private:
    FileHandle folder_; // whose lock goes when it is closed
};

/// The line in which an option has its value, counted from 1: what people find in the file.
int lineOf(const std::string& name, const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    int number = 0;
    int found = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with(name) &&
            line.find_first_not_of(" \t", name.size()) == line.find('=', name.size()))
            found = number; // the last one counts
    }
    return found;
}

std::map<std::string, std::string> valuesOf(const Keys& keys, const std::string& path)
{
    std::map<std::string, std::string> values;
    const Texts names(g_key_file_get_keys(keys.get(), group, nullptr, nullptr));
    for (gchar** name = names.get(); name != nullptr && *name != nullptr; ++name) {
        GError* error = nullptr;
        const Text value(g_key_file_get_string(keys.get(), group, *name, &error));
        if (value == nullptr) {
            const Failure failure(error); // its text quotes the value, too
            throw unusable(path, localized("its line %d is no text that can be read", lineOf(*name, path)));
        }
        values[*name] = value.get();
    }
    return values;
}

void setValue(GKeyFile* keys, const std::string& name, const FeatureValue& value)
{
    if (const int* number = std::get_if<int>(&value))
        g_key_file_set_integer(keys, group, name.c_str(), *number);
    else
        g_key_file_set_string(keys, group, name.c_str(), std::get<std::string>(value).c_str());
}

} // namespace

std::map<std::string, std::string> FeatureFile::read() const
{
    return valuesOf(readKeys(ownPath_), ownPath_);
}

void FeatureFile::write(const std::map<std::string, FeatureValue>& values, bool patient) const
{
    const std::filesystem::path folder = std::filesystem::path(ownPath_).parent_path();
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure)
        throw unwritable(ownPath_, systemReason(failure.value()));
    FolderLock lock(folder.string());
    if (!lock.lock(patient ? lockLimit_ : std::chrono::milliseconds(0)))
        throw unwritable(
            ownPath_,
            localized("another program keeps the folder \"%s\" locked; end it and choose the options again",
                      folder.string()));
    const Keys keys = readKeys(ownPath_);
    valuesOf(keys, ownPath_); // what cannot be read is not written over
    for (const auto& [name, value] : values)
        setValue(keys.get(), name, value);
    gsize length = 0;
    const Text text(g_key_file_to_data(keys.get(), &length, nullptr));
    if (length > largestFile) // which could not be read again
        throw unwritable(ownPath_, localized("it would be larger than 1 MiB; make the file smaller"));
    AtomicFile file(ownPath_);
    file.restrictToOwner();
    file.write(std::string_view(text.get(), length));
    file.commit();
}

} // namespace quelm
