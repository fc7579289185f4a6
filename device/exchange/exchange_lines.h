// The groups and keys of the exchange's file, as they stand there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_EXCHANGE_EXCHANGE_LINES_H
#define DEVICE_EXCHANGE_EXCHANGE_LINES_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm::device {

/// A line "key = value", without the white space around both; neither is empty.
struct ExchangeEntry {
    std::string key;
    std::string value;
};

/// A line "[name]", and the entries below it, whose keys are all different.
struct ExchangeGroup {
    std::string name;
    std::vector<ExchangeEntry> entries;
};

/// Reads the text of a file. `fail` throws: `problem` is the rest of a sentence that begins with the file's
/// name, "has no value at [exchange] cards; ...". It is called when the text is no UTF-8, has a line that is
/// neither of those two, nor empty, nor a comment behind "#", or has a group or a key of a group twice.
[[nodiscard]] std::vector<ExchangeGroup>
readExchangeLines(std::string_view text, const std::function<void(const std::string& problem)>& fail);

/// How a message names a key: "[exchange] cards".
[[nodiscard]] std::string placeOf(const std::string& group, const std::string& key);

} // namespace quelm::device

#endif
