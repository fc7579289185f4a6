// The fixed form of a script's answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_answers.h"

#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

namespace quelm {
namespace {

WidgetView view(const char* name, const char* kind)
{
    WidgetView result;
    result.name = name;
    result.kind = kind;
    result.visible = result.sensitive = result.operable = true;
    return result;
}

std::string widgetAnswer(const WidgetView& widget)
{
    ScriptAnswer answer;
    answer.widget = widget;
    return answerText(answer);
}

std::string rowsAnswer(const std::string& list, const std::vector<std::vector<std::string>>& rows)
{
    ScriptAnswer answer;
    answer.list = list;
    answer.rows = rows;
    return answerText(answer);
}

std::string windowsAnswer(const std::vector<WidgetView>& windows)
{
    ScriptAnswer answer;
    answer.windows = windows;
    return answerText(answer);
}

std::string receiptAnswer(const ScriptReceipt& receipt)
{
    ScriptAnswer answer;
    answer.receipt = receipt;
    return answerText(answer);
}

std::string summaryAnswer(const JobSummary& summary)
{
    ScriptAnswer answer;
    answer.summary = summary;
    return answerText(answer);
}

TEST(ScriptAnswers, AButtonShowsItsText)
{
    auto button = view("LanFax OK Button", "Button");
    button.text = "_Ok";
    button.operable = false;
    EXPECT_EQ(widgetAnswer(button),
              "widget \"LanFax OK Button\" kind Button visible yes sensitive yes operable no text \"_Ok\"\n");
}

TEST(ScriptAnswers, ACheckBoxShowsItsTick)
{
    auto box = view("B", "CheckBox");
    box.sensitive = box.visible = box.operable = false;
    box.ticked = true;
    EXPECT_EQ(widgetAnswer(box),
              "widget \"B\" kind CheckBox visible no sensitive no operable no ticked yes\n");
}

TEST(ScriptAnswers, AComboBoxShowsItsIndexAndItems)
{
    auto combo = view("LanFax Resolution", "ComboBoxMain");
    combo.value = 2;
    combo.items = {"Standard", "Superfine", "Fine"};
    EXPECT_EQ(widgetAnswer(combo),
              "widget \"LanFax Resolution\" kind ComboBoxMain visible yes sensitive yes operable yes "
              "value 2 items \"Standard\" \"Superfine\" \"Fine\"\n");
}

TEST(ScriptAnswers, AListShowsItsRowsAndSelection)
{
    auto list = view("L", "ListBox");
    list.value = -1;
    list.rowCount = 3;
    EXPECT_EQ(
        widgetAnswer(list),
        "widget \"L\" kind ListBox visible yes sensitive yes operable yes value -1 rows 3 selected none\n");
    list.value = 0;
    list.selection = {0, 2};
    EXPECT_EQ(
        widgetAnswer(list),
        "widget \"L\" kind ListBox visible yes sensitive yes operable yes value 0 rows 3 selected 0 2\n");
}

TEST(ScriptAnswers, RowsStandOneALineWithTheirCells)
{
    EXPECT_EQ(rowsAnswer("L", {{"Ann", "555", ""}, {"B\"ob", "1\t2", "x"}}),
              "rows \"L\" 2\nrow 0 \"Ann\" \"555\" \"\"\nrow 1 \"B\\\"ob\" \"1\\t2\" \"x\"\n");
    EXPECT_EQ(rowsAnswer("L", {}), "rows \"L\" 0\n");
}

TEST(ScriptAnswers, WindowsStandOneALineWithTheirTitles)
{
    auto window = view("Lan Fax Window", "DialogWindow");
    window.title = "Quelm LAN Fax Setup";
    EXPECT_EQ(windowsAnswer({window}),
              "windows 1\nwindow \"Lan Fax Window\" title \"Quelm LAN Fax Setup\"\n");
    EXPECT_EQ(windowsAnswer({}), "windows 0\n");
}

TEST(ScriptAnswers, AQuestionStandsOnOneLine)
{
    ScriptAnswer answer;
    answer.question = QuestionView{3, "Name:   Ann\r\nSure?"};
    EXPECT_EQ(answerText(answer), "ok\nquestion \"Name:   Ann\\r\\nSure?\"\n");
}

TEST(ScriptAnswers, AJobThatWasHandedOverStandsOnOneLine)
{
    using Kind = ScriptReceipt::Kind;
    EXPECT_EQ(receiptAnswer({Kind::handed, NetworkAddress{"::1", 9101}, 0, 0}),
              "ok\nhanded device \"[::1]:9101\"\n");
    EXPECT_EQ(receiptAnswer({Kind::handed, QueueTarget{"a \"fax\""}, 12, 0}),
              "ok\nhanded queue \"a \\\"fax\\\"\" job 12\n");
}

TEST(ScriptAnswers, AJobThatWaitsSaysUntilWhen)
{
    const KeptVariable zone("TZ");
    ::setenv("TZ", "UTC", 1);
    ::tzset();
    using Kind = ScriptReceipt::Kind;
    EXPECT_EQ(receiptAnswer({Kind::waits, NetworkAddress{"::1", 9101}, 7, 0}),
              "ok\nwaits outbox job 7 until \"1970-01-01T00:00:00+00:00\"\n");
    EXPECT_EQ(receiptAnswer({Kind::held, QueueTarget{"fax"}, 12, 0}),
              "ok\nheld queue \"fax\" job 12 until \"1970-01-01T00:00:00+00:00\"\n");
}

TEST(ScriptAnswers, ASummaryHasALineForEachSubject)
{
    EXPECT_EQ(summaryAnswer({}), "ok\nsummary 6\ndocument \"\" pages unknown\ncover no\nresolution \"\"\n"
                                 "speed \"\"\nconfirmation no\ntime now\n");
    JobSummary summary;
    JobRecipient ann;
    ann.name = "Ann\"";
    ann.number = "555";
    summary.recipients = {ann};
    summary.document = "a.ps";
    summary.pages = 2;
    summary.hasCoverPage = true;
    summary.resolution = "fine";
    summary.speed = "14.4";
    summary.hasConfirmation = true;
    summary.dialingPrefix = "9";
    summary.card = "2345";
    summary.plan.target = FileTarget{"a b"};
    summary.notReaching = {"the note"};
    EXPECT_EQ(summaryAnswer(summary),
              "ok\nsummary 11\nrecipient \"Ann\\\"\" \"555\"\ndocument \"a.ps\" pages 2\ncover yes\n"
              "resolution \"fine\"\nspeed \"14.4\"\nconfirmation yes\nprefix \"9\"\ncard \"2345\"\ntime "
              "now\ndestination file \"a b\"\nunsent \"the note\"\n");
    summary.plan.target = NetworkAddress{"::1", 9100};
    EXPECT_NE(summaryAnswer(summary).find("\ndestination device \"[::1]:9100\"\n"), std::string::npos);
    summary.plan.target = QueueTarget{"fax"};
    EXPECT_NE(summaryAnswer(summary).find("\ndestination queue \"fax\"\n"), std::string::npos);
}

} // namespace
} // namespace quelm
