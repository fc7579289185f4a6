// Reads and writes the main window's choices with GLib's key files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/desktop_choices.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"

#include <glib.h>

#include <filesystem>
#include <memory>
#include <string_view>

namespace quelm {
namespace {

struct Release {
    void operator()(GKeyFile* keys) const { g_key_file_unref(keys); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(gchar* text) const { g_free(text); }
};
using Keys = std::unique_ptr<GKeyFile, Release>;
using Failure = std::unique_ptr<GError, Release>;
using Text = std::unique_ptr<gchar, Release>;

constexpr const char* destinationGroup = "destination";
constexpr const char* jobGroup = "job";
constexpr const char* windowGroup = "window";
constexpr int largestSize = 16384;

constexpr const char* wordOf(DestinationKind kind)
{
    switch (kind) {
    case DestinationKind::device:
        return "device";
    case DestinationKind::queue:
        return "queue";
    case DestinationKind::named:
        return "named";
    case DestinationKind::file:
        break;
    }
    return "file";
}

DestinationKind kindOf(std::string_view word)
{
    for (const auto kind : {DestinationKind::device, DestinationKind::queue, DestinationKind::named})
        if (word == wordOf(kind))
            return kind;
    return DestinationKind::file;
}

/// The file's keys; none when there is no such file. Throws Error when it cannot be used.
Keys keysOf(const std::string& path)
{
    Keys keys(g_key_file_new());
    GError* error = nullptr;
    if (g_key_file_load_from_file(keys.get(), path.c_str(), G_KEY_FILE_KEEP_COMMENTS, &error) == FALSE) {
        const Failure failure(error);
        if (!g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT))
            throw Error(localized(
                "the choices kept in %s cannot be used: %s; repair or remove the file, it is left as it is",
                path, error->message));
    }
    return keys;
}

std::string textOf(const Keys& keys, const char* group, const char* key)
{
    const Text text(g_key_file_get_string(keys.get(), group, key, nullptr));
    return text == nullptr ? "" : text.get();
}

int sizeOf(const Keys& keys, const char* key)
{
    const int size = g_key_file_get_integer(keys.get(), windowGroup, key, nullptr);
    return size > 0 && size <= largestSize ? size : 0;
}

void write(const std::string& path, const DesktopChoices& choices)
{
    const Keys keys = keysOf(path);
    const auto setText = [&keys](const char* group, const char* key, const std::string& text) {
        g_key_file_set_string(keys.get(), group, key, text.c_str());
    };
    setText(destinationGroup, "kind", wordOf(choices.destination.kind));
    setText(destinationGroup, "file", choices.destination.file);
    setText(destinationGroup, "device", choices.destination.device);
    setText(destinationGroup, "queue", choices.destination.queue);
    setText(destinationGroup, "name", choices.destination.name);
    if (choices.pdl)
        setText(jobGroup, "pdl", *choices.pdl == Pdl::pjl ? "pjl" : "dsc");
    setText(windowGroup, "document-folder", choices.documentFolder);
    g_key_file_set_integer(keys.get(), windowGroup, "width", choices.width);
    g_key_file_set_integer(keys.get(), windowGroup, "height", choices.height);

    std::error_code failure;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), failure);
    gsize length = 0;
    const Text text(g_key_file_to_data(keys.get(), &length, nullptr));
    AtomicFile file(path);
    file.write(std::string_view(text.get(), length));
    file.commit();
}

} // namespace

DesktopChoices DesktopChoicesFile::load()
{
    DesktopChoices choices;
    try {
        const Keys keys = keysOf(path_);
        choices.destination = {
            kindOf(textOf(keys, destinationGroup, "kind")), textOf(keys, destinationGroup, "file"),
            textOf(keys, destinationGroup, "device"), textOf(keys, destinationGroup, "queue")};
        choices.destination.name = textOf(keys, destinationGroup, "name");
        if (const auto pdl = textOf(keys, jobGroup, "pdl"); pdl == "dsc" || pdl == "pjl")
            choices.pdl = pdl == "pjl" ? Pdl::pjl : Pdl::dsc;
        choices.documentFolder = textOf(keys, windowGroup, "document-folder");
        choices.width = sizeOf(keys, "width");
        choices.height = sizeOf(keys, "height");
    } catch (const Error& error) {
        usable_ = false;
        log(Severity::warning, error.what());
    }
    written_ = choices;
    return choices;
}

void DesktopChoicesFile::keep(const DesktopChoices& choices)
{
    if (!usable_ || written_ == choices)
        return;
    try {
        write(path_, choices);
        written_ = choices;
    } catch (const Error& error) {
        log(Severity::warning, error.what());
    }
}

} // namespace quelm
