// The user's own choices: kept by what is done in the dialogs, left alone by one job's options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace journeys {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Lines = std::vector<std::string>;

class SavedChoicesJourney : public Journey {
protected:
    const std::string letter = document("letter.ps", "Hello");
    const std::string kept = home.parent_path() / "home/config/quelm/features/ann.ini";

    void SetUp() override { std::filesystem::create_directories(std::filesystem::path(kept).parent_path()); }

    void keep(const std::string& values) const
    {
        std::ofstream file(kept, std::ios::binary);
        file << "[features]\n" << values;
    }

    /// What a script answers, and what it says; with a clock that stands still.
    Result play(const Lines& lines) const
    {
        std::string text;
        for (const auto& line : lines)
            text += line + "\n";
        return driver({"script", "-", "--now", "2026-03-04T05:06"}, text);
    }

    static Lines joined(Lines first, const Lines& then)
    {
        first.insert(first.end(), then.begin(), then.end());
        return first;
    }

    /// The job of a script, after these steps and one recipient.
    std::string jobOf(const Lines& steps) const
    {
        const auto result = play(joined(joined({"call T40InvokeFaxDialog"}, joined(steps, adding)),
                                        {"fax \"" + letter + "\" \"" + path("job") + "\"", "windows"}));
        EXPECT_EQ(result.status, 0) << result.errors;
        return content("job");
    }

    const Lines adding{"press \"AddFaxRcpt\"", "type \"RecipientName\" \"Ann\"",
                       "type \"RecipientNumber\" \"1\"", "press \"LanFaxAddRcpt OK Button\""};
    /// Opens and confirms every dialog that decides what goes out.
    const Lines confirming{"press \"LanFax Setup Cover Sheet Button\"",
                           "press \"Sender Properties Button\"",
                           "press \"LanFaxSender OK Button\"",
                           "press \"LanFaxCover OK Button\"",
                           "press \"LanFax OK Button\"",
                           "call T40InvokeFaxDialog"};

    static constexpr const char* choices =
        "LanFax Cover Sheet Option=1\nLanFax Cover Sheet Notes=Call me\nShow Rcpt Info Checkbox=1\n"
        "Show Rcpt Info=1\nCover Sheet Custom Text=All of you\nShow Sender Info Checkbox=1\n"
        "Sender Fax Number=555\nSender Fax Name=Bob\nSender Fax Organization=Acme\n"
        "Sender Fax Tel Number=556\nSender Fax Email Addr=bob@acme.example\n"
        "LanFax Dialing Prefix=1\nLanFax Dialing Prefix Info=9\n"
        "LanFax Credit Card=1\nLanFax Credit Card Info=4111222233334444\n";
};

TEST_F(SavedChoicesJourney, AJobStraightAfterAStartIsTheJobAfterConfirmingEveryDialog)
{
    keep(choices);
    const std::string confirmed = jobOf(confirming);
    for (const char* words : {"(Bob)", "(555)", "(Acme)", "(556)", "(bob@acme.example)", "[ (Call me) ]",
                              "DESTINATION_PHONE \"9,1\"", "4111222233334444"})
        EXPECT_THAT(confirmed, HasSubstr(words));
    EXPECT_TRUE(jobOf({}) == confirmed);
    const auto fax = driver({"fax", letter, "--to", "Ann=1", "--kept-credit-card", "--output", path("other"),
                             "--now", "2026-03-04T05:06"});
    EXPECT_EQ(fax.status, 0) << fax.errors;
    EXPECT_TRUE(content("other") == confirmed);
}

TEST_F(SavedChoicesJourney, SoIsOneWithChoicesThatAreNotTicked)
{
    keep("LanFax Cover Sheet Option=1\nShow Rcpt Info Checkbox=1\nCover Sheet Custom Text=Not shown\n"
         "Sender Fax Name=Bob\nLanFax Dialing Prefix Info=9\nLanFax Credit Card Info=4111\n");
    const std::string confirmed =
        jobOf({"press \"LanFax Setup Cover Sheet Button\"", "press \"LanFaxCover OK Button\"",
               "press \"LanFax OK Button\"", "call T40InvokeFaxDialog"});
    EXPECT_THAT(confirmed, AllOf(HasSubstr("(Ann)"), Not(HasSubstr("4111")), HasSubstr("PHONE \"1\"")));
    EXPECT_TRUE(jobOf({}) == confirmed);
    EXPECT_EQ(driver({"fax", letter, "--to", "Ann=1", "--output", path("other"), "--now", "2026-03-04T05:06"})
                  .status,
              0);
    EXPECT_TRUE(content("other") == confirmed);
}

TEST_F(SavedChoicesJourney, ACoverPageStraightAfterAStartIsThatOfTheJob)
{
    keep(choices);
    const auto pictureOf = [&](const Lines& steps) {
        const auto result = play(joined(joined({"call T40InvokeFaxDialog"}, joined(steps, adding)),
                                        {"cover \"" + path("cover.png") + "\""}));
        EXPECT_EQ(result.status, 0) << result.errors;
        return content("cover.png");
    };
    const std::string confirmed = pictureOf(confirming);
    EXPECT_THAT(confirmed, Not(IsEmpty()));
    EXPECT_TRUE(pictureOf({}) == confirmed);
    EXPECT_EQ(
        driver({"fax", "--to", "Ann=1", "--cover-preview", path("other.png"), "--now", "2026-03-04T05:06"})
            .status,
        0);
    EXPECT_TRUE(content("other.png") == confirmed);
}

TEST_F(SavedChoicesJourney, AWindowThatIsOpenStaysOpenWhenAJobIsWritten)
{
    keep(choices);
    const auto answers = play(joined(joined({"call T40InvokeFaxDialog"}, adding),
                                     {"press \"LanFax Setup Cover Sheet Button\"", "windows",
                                      "fax \"" + letter + "\" \"" + path("job") + "\"", "windows"}))
                             .output;
    const auto first = answers.find("windows");
    const auto second = answers.find("windows", first + 1);
    ASSERT_NE(second, std::string::npos) << answers;
    const std::string before = answers.substr(first, answers.find("\nok", first) - first);
    EXPECT_EQ(answers.substr(second, before.size()), before);
    EXPECT_THAT(before, AllOf(HasSubstr("Lan Fax Window"), HasSubstr("Cover Sheet Setup Window")));
}

TEST_F(SavedChoicesJourney, AttributesThatContradictThePageAreToldWithTheJob)
{
    const auto result = play(joined(
        joined({"call T40InvokeFaxDialog"}, adding),
        {"press \"LanFax OK Button\"", "call T40InvokeFaxDialog", "choose \"LanFax Cover Sheet Option\" 1",
         "press \"LanFax Cancel Button\"", "fax \"" + letter + "\" \"" + path("job") + "\""}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "quelm-driver: warning: the fax goes out without a cover page, though the fax dialog "
              "shows that one is sent; open the dialog and press Ok to send it\n");
}

TEST_F(SavedChoicesJourney, TheSharedPhonebookOfOneProcessIsListedInTheNext)
{
    const auto book = path("shared.xdb");
    ASSERT_EQ(driver({"phonebook", "add", "Zoe", "5", "--file", book}).status, 0);
    script({"call T40InvokeFaxDialog", "press \"Select Shared PB Button\"",
            "type \"SharedPBSelectFileDialog\" \"" + book + "\"", "press \"SharedPBSelectFileDialog\""});
    const Lines listing{"show \"LanFax Shared PB Name\"", "call T40InvokeFaxDialog", "press \"AddPBFaxRcpt\"",
                        "choose \"Current PB Type\" 1", "rows \"Fax PB List\""};
    const auto next = play(listing);
    EXPECT_EQ(next.errors, "");
    EXPECT_THAT(next.output, AllOf(HasSubstr(book), HasSubstr("\"Zoe\"")));
    std::filesystem::remove(book);
    const auto gone = play(listing);
    EXPECT_EQ(gone.status, 0);
    EXPECT_THAT(gone.errors, HasSubstr("the shared phonebook is not listed: "));
    script({"call LanFaxPrefsTabDefaults"});
    EXPECT_EQ(play(listing).errors, "");
}

TEST_F(SavedChoicesJourney, OptionsOfOneJobAreNotKept)
{
    const auto before = attributeText({"--to", "Ann=1"});
    attributes({"--to", "Ann=1", "--resolution", "fine", "--speed", "4800", "--no-confirmation", "--cover",
                "--prefix", "9", "--credit-card", "1"});
    EXPECT_EQ(attributeText({"--to", "Ann=1"}), before);
}

TEST_F(SavedChoicesJourney, WhatTheUserChoseInTheDialogIsTheStartingPoint)
{
    script({"call T40InvokeFaxDialog", "choose \"LanFax Resolution\" 2", "choose \"LanFax Send Speed\" 0",
            "press \"LanFax OK Button\""});
    EXPECT_THAT(attributeText({"--to", "Ann=1"}),
                AllOf(HasSubstr("RESOLUTION 1;"), HasSubstr("OID_VAL_FAX_TYPE_G3_FORCED_4800;")));
    EXPECT_THAT(attributeText({"--to", "Ann=1", "--resolution", "superfine"}),
                AllOf(HasSubstr("RESOLUTION 2;"), HasSubstr("OID_VAL_FAX_TYPE_G3_FORCED_4800;")));
}

TEST_F(SavedChoicesJourney, TheUsersCoverSheetGoesWithEveryJob)
{
    script({"call T40InvokeFaxDialog", "choose \"LanFax Cover Sheet Option\" 1",
            "type \"LanFax Cover Sheet Notes\" \"Hello\"", "press \"LanFax Setup Cover Sheet Button\"",
            "tick \"Show Sender Info Checkbox\" on", "press \"Sender Properties Button\"",
            "type \"Sender Fax Name\" \"Bob\"", "press \"LanFaxSender OK Button\"",
            "press \"LanFaxCover OK Button\"", "press \"LanFax OK Button\""});
    ASSERT_EQ(driver({"fax", letter, "--to", "Ann=1", "--output", path("job")}).status, 0);
    EXPECT_THAT(content("job"), AllOf(HasSubstr("/SenderName       (Bob)"), HasSubstr("[ (Hello) ]")));
    ASSERT_EQ(driver({"fax", letter, "--to", "Ann=1", "--no-cover", "--output", path("job")}).status, 0);
    EXPECT_THAT(content("job"), testing::Not(HasSubstr("/SenderName")));
}

// --- Kept choices that are not what the user meant -------------------------------------------------------

class UnreadableChoicesJourney : public SavedChoicesJourney {
protected:
    /// `fax`, `attributes` and a script's `fax` and `cover`, with these options, have to fail with this line,
    /// once.
    void expectRefusal(const std::string& line, const Arguments& options = {}) const
    {
        for (Arguments all : {Arguments{"fax", letter, "--to", "Ann=1", "--output", path("job")},
                              Arguments{"fax", "--to", "Ann=1", "--cover-preview", path("job")},
                              Arguments{"attributes", "--to", "Ann=1", "--output", path("job")}}) {
            all.insert(all.end(), options.begin(), options.end());
            const auto result = driver(all);
            EXPECT_EQ(result.status, 1);
            EXPECT_EQ(result.errors, "quelm-driver: " + line + "\n");
        }
        for (const std::string& step :
             {"fax \"" + letter + "\" \"" + path("job") + "\"", "cover \"" + path("job") + "\""}) {
            const auto result = play({"call T40InvokeFaxDialog", step});
            EXPECT_EQ(result.status, 1);
            EXPECT_EQ(result.errors, "quelm-driver: standard input:2: " + line + "\n");
        }
        EXPECT_FALSE(exists("job"));
    }

    std::string unusable(const std::string& reason) const
    {
        return "the kept options in " + kept + " cannot be used: " + reason +
               "; repair or remove the file, it is left as it is";
    }
};

TEST_F(UnreadableChoicesJourney, AFileThatCannotBeReadEndsEveryJob)
{
    keep("LanFax Cover Sheet Notes=Call \xff me\n");
    expectRefusal(unusable("its line 2 is no text that can be read"));
    keep("rubbish\n");
    expectRefusal(unusable("it holds what is no option"));
    keep(std::string("LanFax Cover Sheet Notes=Call\0 me\n", 34));
    expectRefusal(unusable("it holds a character NUL"));
}

TEST_F(UnreadableChoicesJourney, AValueThatDoesNotSuitEndsEveryJobUnlessItIsSetAnew)
{
    keep("LanFax Resolution=7\n");
    const std::string line =
        "the value \"7\" of \"Fax Resolution\" in " + kept +
        " does not suit and is passed over; set it anew in the fax dialog, or remove it from "
        "the file";
    expectRefusal(line);
    const auto fax =
        driver({"fax", letter, "--to", "Ann=1", "--resolution", "standard", "--output", path("job")});
    EXPECT_EQ(fax.status, 0);
    EXPECT_THAT(fax.errors, HasSubstr("quelm-driver: warning: " + line + "\n"));
    const auto set =
        play(joined(joined({"call T40InvokeFaxDialog"}, adding),
                    {"choose \"LanFax Resolution\" 0", "fax \"" + letter + "\" \"" + path("job") + "\""}));
    EXPECT_EQ(set.status, 0);
    EXPECT_EQ(attributeText({"--to", "Ann=1"}), attributeText({"--to", "Ann=1", "--resolution", "standard"}))
        << "it is written over, though it is the default";
}

TEST_F(UnreadableChoicesJourney, APreferenceThatDoesNotSuitIsAWarningAndACardThatIsNotChargedIsNone)
{
    keep("LanFax Pref Duplicates=7\nLanFax Credit Card=7\nLanFax Credit Card Info=" + std::string(99, '4') +
         "\n");
    const auto fax = driver({"fax", letter, "--to", "Ann=1", "--output", path("job")});
    EXPECT_EQ(fax.status, 0) << fax.errors;
    EXPECT_THAT(fax.errors, AllOf(HasSubstr("\"Adding Duplicate Recipients\""), Not(HasSubstr("444"))));
    EXPECT_EQ(driver({"fax", letter, "--to", "Ann=1", "--kept-credit-card", "--output", path("job")}).status,
              1);
}

TEST_F(UnreadableChoicesJourney, AScriptThatWritesNoJobIsToldAtItsEnd)
{
    keep("LanFax Resolution=7\n");
    const auto result = play({"call T40InvokeFaxDialog"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("\"Fax Resolution\""));
}

// --- Groups -------------------------------------------------------------------------------------------

TEST_F(SavedChoicesJourney, AGroupWhoseMembersHaveNoEntryIsToldWhenItIsSavedAndWhenItIsPicked)
{
    const auto saved =
        play(joined(joined({"call T40InvokeFaxDialog"}, adding),
                    {"press \"LanFax Save Group Button\"", "type \"LanFaxAddGroup Group Name\" \"Team\"",
                     "press \"LanFaxAddGroup Ok Button\""}));
    EXPECT_EQ(saved.status, 0);
    EXPECT_THAT(saved.errors, HasSubstr("the group \"Team\" sends nothing to its member \"Ann\", of whom the "
                                        "phonebook"));
    const Lines picking{"call T40InvokeFaxDialog", "press \"AddPBFaxRcpt\"", "select \"Fax PB List\" 0",
                        "press \"Add Button\"", "rows \"Fax Cur Recipient List\""};
    EXPECT_EQ(play(picking).errors, saved.errors) << "once, and in the same words";
    ASSERT_EQ(driver({"phonebook", "add", "Ann", "1"}).status, 0);
    const auto picked = play(picking);
    EXPECT_EQ(picked.errors, "");
    EXPECT_THAT(picked.output, HasSubstr("\"Ann\"")) << "the last member counts, too";
}

} // namespace
} // namespace journeys
