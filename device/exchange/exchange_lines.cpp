// Parts the exchange's file in groups and keys, and says in which line that fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange_lines.h"

#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <set>

namespace quelm::device {
namespace {

/// Takes lines one by one.
class Reader {
public:
    explicit Reader(const std::function<void(const std::string& problem)>& fail) : fail_(fail) {}

    void take(std::string_view line)
    {
        ++line_;
        if (!isUtf8(line))
            fail_(localized("is no UTF-8 text in line %d; save it as UTF-8", line_));
        line = trimmed(line);
        if (line.empty() || line.starts_with('#'))
            return;
        if (line.starts_with('[') && line.find(']') == line.size() - 1)
            takeGroup(std::string(trimmed(line.substr(1, line.size() - 2))));
        else if (const auto sign = line.find('='); sign != std::string_view::npos && sign > 0)
            takeEntry(line, std::string(trimmed(line.substr(0, sign))), trimmed(line.substr(sign + 1)));
        else
            fail_(localized("has \"%s\" in line %d, which is no group in brackets, no key with \"=\" and a "
                            "value, and no comment behind \"#\"",
                            shownText(line), line_));
    }

    std::vector<ExchangeGroup> groups;

private:
    void takeGroup(std::string name)
    {
        // Where nobody sees both, one of them would say what does not hold.
        if (!names_.insert(name).second)
            fail_(localized("has the group [%s] twice; join the two", shownText(name)));
        keys_.clear();
        groups.push_back({std::move(name), {}});
    }

    void takeEntry(std::string_view line, std::string key, std::string_view value)
    {
        if (groups.empty())
            fail_(localized("has \"%s\" in line %d ahead of any group; write [exchange] or [number PATTERN] "
                            "above it",
                            shownText(line), line_));
        const std::string& group = groups.back().name;
        if (!keys_.insert(key).second)
            fail_(localized("has %s twice; remove one of the lines", placeOf(group, key)));
        if (value.empty())
            fail_(localized("has no value at %s; write one or remove the line", placeOf(group, key)));
        groups.back().entries.push_back({std::move(key), std::string(value)});
    }

    const std::function<void(const std::string& problem)>& fail_;
    std::set<std::string> names_;
    std::set<std::string> keys_; // of the last group
    int line_ = 0;
};

} // namespace

std::vector<ExchangeGroup> readExchangeLines(std::string_view text,
                                             const std::function<void(const std::string& problem)>& fail)
{
    // Some editors begin a file with it.
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    Reader reader(fail);
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        reader.take(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::move(reader.groups);
}

std::string placeOf(const std::string& group, const std::string& key)
{
    return "[" + shownText(group) + "] " + shownText(key);
}

} // namespace quelm::device
