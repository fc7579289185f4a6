// Imports and exports as data.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/import_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quelm {
namespace {

using nlohmann::json;

TEST(ImportJson, HoldsTheWholeReport)
{
    ImportReport report;
    report.file = "a.csv";
    report.charset = "windows-1252";
    report.charsetGuessed = true;
    report.added = 2;
    report.merged = 1;
    report.renamed = {{7, "A=B", "A B"}};
    report.categories = {"Team"};
    report.refused = {{9, "is bad\xff", true}};
    report.notes = {"read as windows-1252"};
    report.accepted = true;
    EXPECT_EQ(json::parse(importJson(report, "")),
              json::parse(R"({"file": "a.csv", "format": "csv", "charset": "windows-1252",
                              "charsetGuessed": true, "dryRun": false, "added": 2, "merged": 1,
                              "withoutNumber": 0, "mailboxes": 0, "extensions": 0,
                              "renamed": [{"line": 7, "from": "A=B", "to": "A B"}], "groups": ["Team"],
                              "refused": [{"line": 9, "reason": "is bad\ufffd", "renameHelps": true}],
                              "notes": ["read as windows-1252"], "warnings": []})"));
}

TEST(ImportJson, SaysWhyNothingWasImported)
{
    const auto failed = json::parse(importJson({}, "a.csv: nothing was imported"));
    EXPECT_EQ(failed["error"], "a.csv: nothing was imported");
    EXPECT_EQ(failed["status"], 1);
}

TEST(ImportJson, CountsWhatWasExported)
{
    EXPECT_EQ(json::parse(exportJson("b.ldif", FileFormat::ldif, {3, 1, {"x"}}, Doing::dryRun)),
              json::parse(R"({"file": "b.ldif", "format": "ldif", "dryRun": true, "entries": 3,
                              "groups": 1, "warnings": ["x"]})"));
}

} // namespace
} // namespace quelm
