// Parses key files with GLib.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/key_file.h"

#include "base/texts.h"
#include "base/translation.h"

#include <glib.h>

#include <algorithm>
#include <utility>

namespace quelm {
namespace {

struct Freer {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(gchar* text) const { g_free(text); }
    void operator()(gchar** texts) const { g_strfreev(texts); }
    void operator()(GError* error) const { g_error_free(error); }
};
using Text = std::unique_ptr<gchar, Freer>;
using Texts = std::unique_ptr<gchar*, Freer>;
using Problem = std::unique_ptr<GError, Freer>;

std::vector<std::string> listOf(const Texts& texts)
{
    std::vector<std::string> list;
    for (gchar** text = texts.get(); text != nullptr && *text != nullptr; ++text)
        list.emplace_back(*text);
    return list;
}

} // namespace

struct KeyFile::Parsed {
    std::unique_ptr<GKeyFile, Freer> file{g_key_file_new()};
};

KeyFile::KeyFile(const std::string& content, Fail fail)
    : parsed_(std::make_unique<Parsed>()), fail_(std::move(fail))
{
    const char* invalid = nullptr;
    if (g_utf8_validate_len(content.data(), content.size(), &invalid) == FALSE) {
        const auto line = 1 + std::count(content.data(), invalid, '\n');
        fail_(localized("is no UTF-8 text in line %d; save it as UTF-8", line));
    }
    GError* error = nullptr;
    if (g_key_file_load_from_data(parsed_->file.get(), content.data(), content.size(), G_KEY_FILE_NONE,
                                  &error) == FALSE) {
        const Problem problem(error);
        // An empty file says nothing, which is fine.
        if (content.find_first_not_of(" \t\r\n") != std::string::npos)
            fail_(localized("cannot be understood: %s", oneLine(problem->message)));
    }
}

KeyFile::~KeyFile() = default;

std::vector<std::string> KeyFile::groups() const
{
    return listOf(Texts(g_key_file_get_groups(parsed_->file.get(), nullptr)));
}

std::vector<std::string> KeyFile::keys(const std::string& group) const
{
    return listOf(Texts(g_key_file_get_keys(parsed_->file.get(), group.c_str(), nullptr, nullptr)));
}

std::string KeyFile::value(const std::string& group, const std::string& key) const
{
    GError* error = nullptr;
    const Text value(g_key_file_get_string(parsed_->file.get(), group.c_str(), key.c_str(), &error));
    if (error != nullptr) { // a value may have come all the same
        const Problem problem(error);
        fail_(localized("has a bad value at %s: %s", placeOf(group, key), oneLine(problem->message)));
    }
    if (*value == '\0')
        fail_(localized("has no value at %s; write one or remove the line", placeOf(group, key)));
    return value.get();
}

std::string KeyFile::placeOf(const std::string& group, const std::string& key)
{
    return "[" + oneLine(group) + "] " + oneLine(key);
}

} // namespace quelm
