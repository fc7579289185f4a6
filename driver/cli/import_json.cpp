// Makes JSON of imports and exports.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/import_json.h"

#include <nlohmann/json.hpp>

namespace quelm {
namespace {

using Json = nlohmann::ordered_json;

std::string written(const Json& json)
{
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

const char* wordOf(FileFormat format)
{
    switch (format) {
    case FileFormat::csv:
        return "csv";
    case FileFormat::vcard3:
        return "vcard3";
    case FileFormat::vcard4:
        return "vcard4";
    case FileFormat::ldif:
        break;
    }
    return "ldif";
}

} // namespace

std::string importJson(const ImportReport& report, const std::string& failure)
{
    Json json = {{"file", report.file},
                 {"format", report.format},
                 {"charset", report.charset},
                 {"charsetGuessed", report.charsetGuessed},
                 {"dryRun", report.dryRun},
                 {"added", report.added},
                 {"merged", report.merged},
                 {"withoutNumber", report.withoutNumber},
                 {"mailboxes", report.mailboxes},
                 {"extensions", report.extensions},
                 {"renamed", Json::array()},
                 {"groups", report.categories},
                 {"refused", Json::array()},
                 {"notes", report.notes},
                 {"warnings", report.strayMembers}};
    for (const auto& one : report.renamed)
        json["renamed"].push_back({{"line", one.line}, {"from", one.from}, {"to", one.to}});
    for (const auto& one : report.refused)
        json["refused"].push_back(
            {{"line", one.line}, {"reason", one.reason}, {"renameHelps", one.mendable}});
    if (!failure.empty()) {
        json["error"] = failure;
        json["status"] = 1;
    }
    return written(json);
}

std::string exportJson(const std::string& file, FileFormat format, const ExportCount& count, Doing doing)
{
    return written({{"file", file},
                    {"format", wordOf(format)},
                    {"dryRun", doing == Doing::dryRun},
                    {"entries", count.entries},
                    {"groups", count.groups},
                    {"warnings", count.warnings}});
}

} // namespace quelm
