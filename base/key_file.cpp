// Parses key files with GLib.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/key_file.h"

#include "base/texts.h"
#include "base/translation.h"

#include <glib.h>

#include <algorithm>
#include <string_view>

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

bool loads(GKeyFile* file, std::string_view content, GError** error)
{
    return g_key_file_load_from_data(file, content.data(), content.size(), G_KEY_FILE_NONE, error) != FALSE;
}

/// The first line that GLib does not take, which it does not name: it reads line by line.
int badLine(std::string_view content)
{
    const std::unique_ptr<GKeyFile, Freer> trial(g_key_file_new());
    std::vector<std::size_t> ends;
    for (auto end = content.find('\n'); end != std::string_view::npos; end = content.find('\n', end + 1))
        ends.push_back(end + 1);
    const auto bad = std::ranges::partition_point(ends, [&](std::size_t end) {
        const auto beginning = content.substr(0, end);
        return beginning.find_first_not_of(" \t\r\n") == std::string_view::npos ||
               loads(trial.get(), beginning, nullptr);
    });
    return static_cast<int>(bad - ends.begin()) + 1;
}

std::string_view withoutBlanks(std::string_view text)
{
    constexpr const char* blanks = " \t\r\f\v";
    const auto begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// Where groups begin and keys stand, by GLib's rules for lines; of keys that stand twice, the last.
std::map<std::pair<std::string, std::string>, int> linesOf(std::string_view content)
{
    std::map<std::pair<std::string, std::string>, int> lines;
    std::string group;
    for (int number = 1; !content.empty(); ++number) {
        const auto end = std::min(content.find('\n'), content.size());
        const auto line = withoutBlanks(content.substr(0, end));
        content.remove_prefix(std::min(end + 1, content.size()));
        if (line.starts_with('[') && line.ends_with(']')) {
            group = line.substr(1, line.find(']') - 1);
            lines.emplace(std::pair(group, ""), number);
        } else if (const auto equal = line.find('='); !line.starts_with('#') && equal != line.npos) {
            lines[{group, std::string(withoutBlanks(line.substr(0, equal)))}] = number;
        }
    }
    return lines;
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
        return;
    }
    // An empty file says nothing, which is fine.
    if (content.find_first_not_of(" \t\r\n") == std::string::npos)
        return;
    GError* error = nullptr;
    if (!loads(parsed_->file.get(), content, &error)) {
        const Problem problem(error);
        parsed_->file.reset(g_key_file_new()); // what stands ahead of it was read
        fail_(localized("cannot be understood in line %d: %s", badLine(content), oneLine(problem->message)));
        return;
    }
    lines_ = linesOf(content);
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

std::optional<std::string> KeyFile::value(const std::string& group, const std::string& key) const
{
    GError* error = nullptr;
    const Text value(g_key_file_get_string(parsed_->file.get(), group.c_str(), key.c_str(), &error));
    if (error != nullptr) { // a value may have come all the same
        const Problem problem(error);
        fail_(localized("has a bad value at %s: %s", placeOf(group, key), oneLine(problem->message)));
        return std::nullopt;
    }
    if (*value == '\0') {
        fail_(localized("has no value at %s; write one or remove the line", placeOf(group, key)));
        return std::nullopt;
    }
    return value.get();
}

int KeyFile::line(const std::string& group, const std::string& key) const
{
    const auto found = lines_.find({group, key});
    return found == lines_.end() ? 0 : found->second;
}

std::string KeyFile::placeOf(const std::string& group, const std::string& key) const
{
    // Translators: a group and a key of a configuration file, [job] pdl, and where the key stands.
    return localized("%s (line %d)", "[" + oneLine(group) + "] " + oneLine(key), line(group, key));
}

} // namespace quelm
