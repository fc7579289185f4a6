// One row for each key of the configuration.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/config_listing.h"

#include "base/terminal/columns.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/config/configuration_keys.h"

#include <nlohmann/json.hpp>

#include <vector>

namespace quelm {
namespace {

/// A key, and what holds for it.
struct Row {
    std::string group;
    std::string name;
    std::string value;                     ///< empty for none
    const ConfiguredValue* said = nullptr; ///< null when no file says it
};

Row rowOf(const Configuration& configuration, const ConfigurationKey& key, const std::string& group)
{
    Row row{group, std::string(key.name), std::string(key.preset)};
    row.said = configuration.find(group, key.name);
    if (row.said != nullptr)
        row.value = key.kind == KeyKind::secret ? "*****" : row.said->value;
    return row;
}

/// The keys in the order of their table; those of a destination are there when a file says them.
std::vector<Row> rowsOf(const Configuration& configuration)
{
    std::vector<Row> rows;
    bool hasDestinations = false;
    for (const ConfigurationKey& key : configurationKeys()) {
        if (key.group != destinationGroup) {
            rows.push_back(rowOf(configuration, key, std::string(key.group)));
        } else if (!hasDestinations) {
            hasDestinations = true;
            for (const ConfiguredValue& value : configuration.values)
                if (isGroup(destinationGroup, value.group))
                    rows.push_back({value.group, value.name, value.value, &value});
        }
    }
    return rows;
}

} // namespace

std::string configurationText(const Configuration& configuration)
{
    std::vector<std::vector<std::string>> files;
    for (const ConfigurationSource& source : configuration.sources)
        files.push_back({source.file, source.isThere ? localized("read") : localized("not there")});
    std::string text = alignedColumns(files);
    std::vector<std::vector<std::string>> rows;
    for (const Row& row : rowsOf(configuration)) {
        const auto place = row.said == nullptr ? localized("default")
                                               : row.said->file + ":" + std::to_string(row.said->line);
        rows.push_back({"[" + row.group + "] " + row.name, row.value, place});
    }
    return text + "\n" + alignedColumns(rows);
}

std::string configurationJson(const Configuration& configuration)
{
    using Json = nlohmann::ordered_json;
    Json files = Json::array();
    for (const ConfigurationSource& source : configuration.sources)
        files.push_back({{"file", source.file}, {"read", source.isThere}});
    Json values = Json::array();
    for (const Row& row : rowsOf(configuration)) {
        const bool isSaid = row.said != nullptr;
        values.push_back({{"group", row.group},
                          {"key", row.name},
                          {"value", row.value.empty() ? Json() : Json(row.value)},
                          {"file", isSaid ? Json(row.said->file) : Json()},
                          {"line", isSaid ? Json(row.said->line) : Json()}});
    }
    const Json answer = {{"files", files}, {"values", values}};
    return answer.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace quelm
