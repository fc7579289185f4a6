// Key files: groups of keys with values, as GLib parses them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_KEY_FILE_H
#define BASE_KEY_FILE_H

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quelm {

/// The content of one file.
class KeyFile {
public:
    /// Called with what is wrong with the file: `problem` is the rest of the sentence that begins with the
    /// file's name, "has no value at [job] pdl (line 2); ...". It may throw; when it returns, what the
    /// problem is about counts as not there.
    using Fail = std::function<void(const std::string& problem)>;

    /// Calls `fail`, which stays in use, when the content is no UTF-8 or no key file.
    KeyFile(const std::string& content, Fail fail);
    ~KeyFile();
    KeyFile(const KeyFile&) = delete;
    KeyFile& operator=(const KeyFile&) = delete;

    /// In their order; one that stands twice is one.
    [[nodiscard]] std::vector<std::string> groups() const;
    /// Of a group that is there; of keys that stand twice, the last has the value.
    [[nodiscard]] std::vector<std::string> keys(const std::string& group) const;
    /// Of a key that is there; fails when it is empty or malformed, and then returns nothing.
    [[nodiscard]] std::optional<std::string> value(const std::string& group, const std::string& key) const;

    /// The line in which a key has its value, counted from 1; for an empty key the first line of the group.
    [[nodiscard]] int line(const std::string& group, const std::string& key) const;

    /// How a message names a key: "[job] pdl (line 2)".
    [[nodiscard]] std::string placeOf(const std::string& group, const std::string& key) const;

private:
    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
    std::map<std::pair<std::string, std::string>, int> lines_;
    Fail fail_;
};

} // namespace quelm

#endif
