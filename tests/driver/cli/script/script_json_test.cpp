// The answers of scripts in JSON.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_json.h"

#include "driver/cli/script/script_answers.h"
#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

#include <ctime>

namespace quelm {
namespace {

using Json = nlohmann::json;

/// The answer, which is one line.
Json parsed(const ScriptAnswer& answer)
{
    const auto text = answerJson(answer);
    EXPECT_EQ(text.find('\n'), text.size() - 1) << text;
    return Json::parse(text);
}

TEST(ScriptJson, AnActionIsDone)
{
    ScriptAnswer answer;
    answer.line = 4;
    EXPECT_EQ(parsed(answer), Json({{"line", 4}, {"ok", true}}));
    answer.question = QuestionView{3, "Sure\r\n?"};
    EXPECT_EQ(parsed(answer), Json({{"line", 4}, {"ok", true}, {"question", "Sure\r\n?"}}));
}

TEST(ScriptJson, AWidgetHasWhatItsKindHas)
{
    ScriptAnswer answer;
    WidgetView view;
    view.name = "L";
    view.kind = "ListBox";
    view.visible = view.operable = true;
    view.value = 0;
    view.rowCount = 3;
    view.selection = {0, 2};
    answer.widget = view;
    EXPECT_EQ(parsed(answer)["widget"], Json({{"name", "L"},
                                              {"kind", "ListBox"},
                                              {"visible", true},
                                              {"sensitive", false},
                                              {"operable", true},
                                              {"value", 0},
                                              {"rows", 3},
                                              {"selected", {0, 2}}}));
    EXPECT_FALSE(parsed(answer).contains("ok"));
}

TEST(ScriptJson, RowsAndWindowsAreArrays)
{
    ScriptAnswer rows;
    rows.list = "L";
    rows.rows = {{"Ann", "\xff"}};
    EXPECT_EQ(parsed(rows)["rows"], Json::parse(R"([["Ann", "\ufffd"]])"));
    ScriptAnswer windows;
    windows.windows.emplace();
    EXPECT_EQ(parsed(windows)["windows"], Json::array());
}

TEST(ScriptJson, AJobsNumbersAreNumbers)
{
    const KeptVariable zone("TZ");
    ::setenv("TZ", "UTC", 1);
    ::tzset();
    ScriptAnswer answer;
    answer.receipt = {ScriptReceipt::Kind::waits, NetworkAddress{"::1", 9101}, 7, 0};
    EXPECT_EQ(parsed(answer)["job"], Json({{"state", "waiting"},
                                           {"held", false},
                                           {"number", 7},
                                           {"queueJob", nullptr},
                                           {"destination", {{"kind", "device"}, {"address", "[::1]:9101"}}},
                                           {"due", "1970-01-01T00:00:00+00:00"}}));
    answer.receipt = {ScriptReceipt::Kind::handed, QueueTarget{"fax"}, 12, 0};
    EXPECT_EQ(parsed(answer)["job"]["queueJob"], 12);
    EXPECT_EQ(parsed(answer)["job"]["number"], nullptr);
    EXPECT_EQ(parsed(answer)["job"]["due"], nullptr);
}

} // namespace
} // namespace quelm
