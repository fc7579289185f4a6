// Scripts: the dialogs' behaviour as a user sees it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ScriptJourney : public Journey {
protected:
    /// The answer of a script's last line.
    std::string lastAnswer(const std::vector<std::string>& lines) const
    {
        const auto answers = script(lines);
        return answers.empty() ? "" : answers.back();
    }

    /// The lines that add a recipient, up to the press of OK.
    static std::vector<std::string> adding(const std::string& name, const std::string& number)
    {
        return {"press \"AddFaxRcpt\"", "type \"RecipientName\" \"" + name + "\"",
                "type \"RecipientNumber\" \"" + number + "\"", "press \"LanFaxAddRcpt OK Button\""};
    }
};

/// Scripts, one behind the other.
std::vector<std::string> operator+(std::vector<std::string> first, const std::vector<std::string>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const std::vector<std::string> openDialog{"call T40InvokeFaxDialog"};

TEST_F(ScriptJourney, AUserAddsARecipient)
{
    EXPECT_THAT(script(openDialog + adding("Ann", "555-1234") +
                       std::vector<std::string>{"rows \"LanFax Recipient List\"", "windows"}),
                ElementsAre("ok", "ok", "ok", "ok", "ok", "rows \"LanFax Recipient List\" 1",
                            "row 0 \"Ann\" \"555-1234\" \"\" \"\" \"\" \"\"", "windows 1",
                            "window \"Lan Fax Window\" title \"Quelm LAN Fax Setup\""));
}

TEST_F(ScriptJourney, ADuplicateIsAskedAbout)
{
    EXPECT_THAT(
        script(openDialog + adding("Anne", "555-1234") + adding("Anne", "555-1234") +
               std::vector<std::string>{"answer yes", "rows \"LanFax Recipient List\""}),
        ElementsAre(
            "ok", "ok", "ok", "ok", "ok", "ok", "ok", "ok", "ok",
            "question \"Name:   Anne\\r\\nFax Number:   555-1234\\r\\n\\nThis Recipient already exists in "
            "your Recipient List.\\r\\nDo you want to add a duplicate of this Recipient?\"",
            "ok", "rows \"LanFax Recipient List\" 2", "row 0 \"Anne\" \"555-1234\" \"\" \"\" \"\" \"\"",
            "row 1 \"Anne\" \"555-1234\" \"\" \"\" \"\" \"\""));
}

TEST_F(ScriptJourney, ANoKeepsTheRecipientDialogOpen)
{
    EXPECT_THAT(lastAnswer(openDialog + adding("Anne", "1") + adding("Anne", "1") +
                           std::vector<std::string>{"answer no", "show \"RecipientName\""}),
                HasSubstr("operable yes text \"Anne\""));
}

TEST_F(ScriptJourney, AMissingNameIsReportedInTheErrorWindow)
{
    const auto answers =
        script(openDialog + std::vector<std::string>{
                                "press \"AddFaxRcpt\"", "press \"LanFaxAddRcpt OK Button\"", "windows",
                                "press \"LanFax Add Fax Rcpt Error Close Button\"", "windows"});
    EXPECT_THAT(answers, ElementsAre("ok", "ok", "ok", "windows 3",
                                     "window \"Lan Fax Window\" title \"Quelm LAN Fax Setup\"",
                                     "window \"LanFax Add Recipient Window\" title \"Add Fax Recipient\"",
                                     "window \"LanFax Add Recipient Error Window\" title \"Error!\"", "ok",
                                     "windows 2", "window \"Lan Fax Window\" title \"Quelm LAN Fax Setup\"",
                                     "window \"LanFax Add Recipient Window\" title \"Add Fax Recipient\""));
}

TEST_F(ScriptJourney, TheCoverSheetChoiceFreesItsNotes)
{
    EXPECT_THAT(lastAnswer(openDialog + std::vector<std::string>{"show \"LanFax Cover Sheet Notes\""}),
                HasSubstr("sensitive no"));
    EXPECT_THAT(lastAnswer(openDialog + std::vector<std::string>{"choose \"LanFax Cover Sheet Option\" 1",
                                                                 "show \"LanFax Cover Sheet Notes\""}),
                HasSubstr("sensitive yes"));
}

TEST_F(ScriptJourney, UntickingTheDialingPrefixKeepsItInTheJob)
{
    const auto letter = document("letter.ps", "Hello");
    std::string text;
    for (const auto& line :
         openDialog + adding("Ann", "555") +
             std::vector<std::string>{"tick \"LanFax Dialing Prefix\" on",
                                      "type \"LanFax Dialing Prefix Info\" \"9\"",
                                      "press \"LanFax OK Button\"", "call T40InvokeFaxDialog",
                                      "tick \"LanFax Dialing Prefix\" off", "press \"LanFax OK Button\"",
                                      "fax \"" + letter + "\" \"" + path("job") + "\""})
        text += line + "\n";
    const auto result = driver({"script", "-"}, text);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("the dialing prefix 9 is dialled"));
    EXPECT_THAT(content("job"), HasSubstr("PHONE \"9,555\";"));
    EXPECT_THAT(pages(path("job")), ElementsAre("Hello"));
}

TEST_F(ScriptJourney, SeveralSelectedRowsAreRemovedAfterAQuestion)
{
    const auto answers = script(openDialog + adding("A", "1") + adding("B", "2") + adding("C", "3") +
                                adding("D", "4") + adding("E", "5") +
                                std::vector<std::string>{"select \"LanFax Recipient List\" 1 3",
                                                         "press \"LanFax Remove Button\"", "answer yes",
                                                         "rows \"LanFax Recipient List\""});
    EXPECT_THAT(std::vector(answers.end() - 7, answers.end()),
                ElementsAre("ok", "question \"Are you sure you want to remove all 2 Recipients?\"", "ok",
                            "rows \"LanFax Recipient List\" 3", "row 0 \"A\" \"1\" \"\" \"\" \"\" \"\"",
                            "row 1 \"C\" \"3\" \"\" \"\" \"\" \"\"",
                            "row 2 \"E\" \"5\" \"\" \"\" \"\" \"\""));
}

TEST_F(ScriptJourney, ClosingTheDialogFromItsFrameKeepsTheRecipients)
{
    const auto answers = script(
        openDialog + adding("A", "1") +
        std::vector<std::string>{"close \"Lan Fax Window\"", "windows", "rows \"LanFax Recipient List\""});
    EXPECT_THAT(std::vector(answers.end() - 3, answers.end()),
                ElementsAre("windows 0", "rows \"LanFax Recipient List\" 1",
                            "row 0 \"A\" \"1\" \"\" \"\" \"\" \"\""));
}

TEST_F(ScriptJourney, EveryKindOfWidgetShowsItsState)
{
    EXPECT_THAT(
        script(openDialog + std::vector<std::string>{"show \"LanFax Resolution\"",
                                                     "show \"LanFax Details Button\"",
                                                     "show \"LanFax Pref Duplicates\"",
                                                     "show \"LanFax Recipient List\"", "show \"SendAtHr\""}),
        ElementsAre("ok",
                    "widget \"LanFax Resolution\" kind ComboBoxMain visible yes sensitive yes operable yes "
                    "text \"\" value 0 items "
                    "\"Standard\" \"Superfine\" \"Fine\"",
                    "widget \"LanFax Details Button\" kind Button visible yes sensitive no operable no text "
                    "\"_Details...\"",
                    "widget \"LanFax Pref Duplicates\" kind CheckBox visible yes sensitive yes operable yes "
                    "text \"Adding "
                    "Duplicate Recipients\" ticked yes",
                    "widget \"LanFax Recipient List\" kind ListBox visible yes sensitive yes operable yes "
                    "value -1 rows 0 "
                    "selected none",
                    "widget \"SendAtHr\" kind SpinBox visible yes sensitive no operable no value 12"));
}

TEST_F(ScriptJourney, AnImpossibleActionStopsTheScriptAtItsLine)
{
    const auto name =
        file("s", "# opens the dialog\ncall T40InvokeFaxDialog\npress \"LanFax Details Button\"\nwindows\n");
    const auto result = driver({"script", name});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "ok\n");
    EXPECT_THAT(result.errors, HasSubstr(name + ":3: "));
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
}

TEST_F(ScriptJourney, ImpossibleActionsOfEveryKind)
{
    for (const auto* line :
         {"press \"No Such Button\"", "press \"LanFax OK Button\"", "type \"RecipientName\" \"Ann\"",
          "choose \"LanFax Resolution\" 3", "tick \"LanFax OK Button\" on",
          "select \"LanFax Recipient List\" 0", "close \"Lan Fax Window\"", "answer yes",
          "call NoSuchFunction", "show \"Nothing\"", "rows \"Nothing\"", "rows \"LanFax OK Button\"",
          "fax nothing.ps out"})
        expectFailure(driver({"script", "-"}, std::string(line) + "\n"), 1, "standard input:1: ");
    EXPECT_THAT(files(), testing::IsEmpty());
}

TEST_F(ScriptJourney, ATypoAnywhereDoesNothingAtAll)
{
    const auto name = file("s", "call T40InvokeFaxDialog\nchoose \"LanFax Resolution\" 2\npush \"OK\"\n");
    expectFailure(driver({"script", name}), 1, name + ":3: unknown command \"push\"");
    EXPECT_THAT(lastAnswer(openDialog + std::vector<std::string>{"show \"LanFax Resolution\""}),
                HasSubstr("value 0"));
}

TEST_F(ScriptJourney, AJobWithoutRecipientsIsRefusedAndTheDialogShownAgain)
{
    const auto letter = document("letter.ps", "Hello");
    const auto result = driver({"script", "-"}, "fax \"" + letter + "\" \"" + path("job") + "\"\n");
    expectFailure(result, 1, "standard input:1: ");
    EXPECT_FALSE(exists("job"));
}

} // namespace
} // namespace journeys
