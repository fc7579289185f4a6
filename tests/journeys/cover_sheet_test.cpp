// What the options put on the cover sheet.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class CoverSheetJourney : public Journey {
protected:
    /// The header of the cover page, with its values, of a job for Ann.
    std::string cover(const Arguments& options) const
    {
        Arguments all{
            "fax",
            document("letter.ps", "Hello"),
            "--cover",
            "--recipients",
            file("list.csv", "name,number,organization,phone,email\nAnn,555-1234,Acme,77,ann@acme\n"),
            "--now",
            "2024-03-05T14:07",
            "--output",
            path("job")};
        all.insert(all.end(), options.begin(), options.end());
        const auto result = driver(all);
        EXPECT_EQ(result.status, 0) << result.errors;
        const auto text = content("job");
        const auto start = text.find("/QLMFaxCoverSheetParameters");
        return start == std::string::npos ? "" : text.substr(start, text.find(">> def", start) - start);
    }
};

TEST_F(CoverSheetJourney, AloneItHoldsNoteAndTimeOnly)
{
    EXPECT_THAT(cover({"--note", "Call me"}),
                AllOf(HasSubstr("/RecipientName    ()"), HasSubstr("/SenderName       ()"),
                      HasSubstr("/CoverNote        [ (Call me) ]"), HasSubstr("/Year             2024"),
                      HasSubstr("/Month            03"), HasSubstr("/MonthDay         05"),
                      HasSubstr("/Hour             14"), HasSubstr("/Minute           07")));
}

TEST_F(CoverSheetJourney, ShowsTheRecipient)
{
    EXPECT_THAT(cover({"--show-recipients"}),
                AllOf(HasSubstr("/RecipientName    (Ann)"), HasSubstr("/RecipientCompany (Acme)"),
                      HasSubstr("/RecipientPhone   (77)"), HasSubstr("/RecipientFax     (555-1234)"),
                      HasSubstr("/RecipientEmail   (ann@acme)")));
}

TEST_F(CoverSheetJourney, ShowsACustomTextInPlaceOfTheName)
{
    EXPECT_THAT(cover({"--show-recipients", "--custom-text", "All of sales"}),
                AllOf(HasSubstr("/RecipientName    (All of sales)"), Not(HasSubstr("(Ann)"))));
}

TEST_F(CoverSheetJourney, WhoHidesTheRecipientsHidesAKeptTextInTheirPlaceToo)
{
    EXPECT_EQ(driver({"script", "-"}, "call T40InvokeFaxDialog\nchoose \"LanFax Cover Sheet Option\" 1\n"
                                      "press \"LanFax Setup Cover Sheet Button\"\n"
                                      "tick \"Show Rcpt Info Checkbox\" on\nchoose \"Show Rcpt Info\" 1\n"
                                      "type \"Cover Sheet Custom Text\" \"Dear Cid\"\n"
                                      "press \"LanFaxCover OK Button\"\npress \"LanFax OK Button\"\n")
                  .status,
              0);
    EXPECT_THAT(cover({"--to", "Bob=2"}), HasSubstr("(Dear Cid)"));
    EXPECT_THAT(cover({"--to", "Bob=2", "--hide-recipients"}), Not(HasSubstr("Dear Cid")));
}

TEST_F(CoverSheetJourney, ShowsTheSender)
{
    EXPECT_THAT(
        cover({"--show-sender", "--sender-name", "Bob", "--sender-number", "99", "--sender-organization",
               "Initech", "--sender-phone", "98", "--sender-email", "bob@initech"}),
        AllOf(HasSubstr("/SenderName       (Bob)"), HasSubstr("/SenderCompany    (Initech)"),
              HasSubstr("/SenderPhone      (98)"), HasSubstr("/SenderFax        (99)"),
              HasSubstr("/SenderEmail      (bob@initech)")));
}

TEST_F(CoverSheetJourney, WithSeveralRecipientsNamesThemAll)
{
    EXPECT_THAT(cover({"--show-recipients", "--to", "Bob=2"}), HasSubstr("/RecipientName    (Bob, Ann)"));
}

TEST_F(CoverSheetJourney, ANoteOfAnySignsPrintsAsItIsTyped)
{
    for (const char* note : {"See you :)", "(", "\\", ")/showpage{}def(", "J\u00fcrgen"}) {
        cover({"--note", note, "--show-recipients"});
        const auto texts = pages(path("job"));
        ASSERT_EQ(texts.size(), 2U) << note;
        std::string squeezed = note;
        std::erase(squeezed, ' ');
        EXPECT_THAT(texts[0], AllOf(HasSubstr("Ann"), HasSubstr("Note:" + squeezed))) << note;
        EXPECT_THAT(texts[1], HasSubstr("Hello"));
    }
}

TEST_F(CoverSheetJourney, ANoteInAnotherScriptIsDrawnAndDisturbsNoDocument)
{
    EXPECT_THAT(cover({"--note", "\u05e9\u05dc\u05d5\u05dd \U0001F600"}),
                HasSubstr("/CoverNote        [ (\\001QuelmA) ]"));
    EXPECT_THAT(pages(path("job")), testing::ElementsAre(HasSubstr("Note:"), HasSubstr("Hello")));
}

TEST_F(CoverSheetJourney, WhoWritesAttributesAloneIsNotToldOfThePage)
{
    const std::string note = "\ufdd0) (2) (3) (4) (5) (6) (7) (8) (9) (a) (b) (c) (d) (e";
    const auto result = driver({"attributes", "--to", "Ann=1", "--cover", "--note", note});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    expectFailure(driver({"fax", document("letter.ps", "Hello"), "--to", "Ann=1", "--cover", "--note", note,
                          "--output", path("job")}),
                  1, "the cover sheet cannot be printed: no font of this computer has U+FDD0");
    EXPECT_FALSE(exists("job"));
}

TEST_F(CoverSheetJourney, APageThatIsTakenOutOfTheJobIsWhole)
{
    cover({"--note", "\u05e9\u05dc\u05d5\u05dd"});
    const auto job = content("job");
    const auto first = job.find("%%Page: ");
    const auto second = job.find("%%Page: ", first + 1);
    ASSERT_NE(second, std::string::npos);
    const auto prolog = job.substr(0, first);
    const auto page = job.substr(first, second - first);
    const auto rest = job.substr(second);
    EXPECT_THAT(pages(file("twice.ps", prolog + page + page + rest)),
                testing::ElementsAre(HasSubstr("Note:"), HasSubstr("Note:"), HasSubstr("Hello")));
    // Without the cover page, a document's string that reads like the place of a text is the document's.
    const auto document =
        "/Courier 12 selectfont 72 72 moveto (\\001QuelmA) show countdictstack 2 string cvs show\n" + rest;
    EXPECT_EQ(pages(file("without.ps", "/Courier findfont pop\n" + document)),
              pages(file("behind.ps", prolog + document)));
}

TEST_F(CoverSheetJourney, AScriptWritesThePageThatTheCommandWrites)
{
    const std::string note = "\u05e9\u05dc\u05d5\u05dd :)";
    const auto letter = document("letter.ps", "Hello");
    ASSERT_EQ(driver({"fax", letter, "--to", "Ann=1", "--cover", "--note", note, "--now", "2024-03-05T14:07",
                      "--output", path("command.job")})
                  .status,
              0);
    const auto result = driver({"script", "-", "--now", "2024-03-05T14:07"},
                               "call T40InvokeFaxDialog\nchoose \"LanFax Cover Sheet Option\" 1\n"
                               "type \"LanFax Cover Sheet Notes\" \"" +
                                   note +
                                   "\"\npress \"AddFaxRcpt\"\ntype \"RecipientName\" \"Ann\"\n"
                                   "type \"RecipientNumber\" \"1\"\npress \"LanFaxAddRcpt OK Button\"\n"
                                   "press \"LanFax OK Button\"\nfax \"" +
                                   letter + "\" \"" + path("script.job") + "\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_TRUE(content("script.job") == content("command.job"));
    EXPECT_THAT(content("script.job"), HasSubstr("/QuelmTexts"));
}

TEST_F(CoverSheetJourney, ATextThatIsCutOffIsWarnedOfAheadOfTheJob)
{
    const auto result =
        driver({"fax", document("letter.ps", "Hello"), "--to", "Ann=1", "--cover", "--note",
                "1) (2) (3) (4) (5) (6) (7) (8) (9) (a) (b) (c) (d) (e", "--output", path("job")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors,
                testing::StartsWith(
                    "quelm-driver: warning: the cover sheet has no room for more than 13 lines of its "
                    "note: what comes behind them is cut off; shorten the note\n"));
}

TEST_F(CoverSheetJourney, OptionsThatNeedOthersSayWhich)
{
    const auto expect = [this](const Arguments& options, const std::string& words) {
        Arguments all{"attributes", "--to", "Ann=1"};
        all.insert(all.end(), options.begin(), options.end());
        expectFailure(driver(all), 2, words);
    };
    expect({"--note", "x"}, "--note needs --cover");
    expect({"--show-recipients"}, "--show-recipients needs a cover sheet; add --cover");
    expect({"--sender-name", "Bob"}, "--sender-name needs a cover sheet; add --cover");
    expect({"--cover", "--custom-text", "x"}, "--custom-text needs --show-recipients");
    expect({"--cover", "--sender-name", "Bob"}, "--sender-name needs --show-sender");
}

TEST_F(CoverSheetJourney, ATextTooLongForItsFieldNamesTheOption)
{
    const auto expect = [this](const Arguments& options) {
        Arguments all{"attributes", "--to", "Ann=1", "--cover", "--show-recipients", "--show-sender"};
        all.insert(all.end(), options.begin(), options.end());
        expectFailure(driver(all), 2, options.front() + ": ");
    };
    expect({"--note", std::string(65, 'x')});
    expect({"--custom-text", std::string(32, 'x')});
    expect({"--sender-name", std::string(32, 'x')});
    expect({"--sender-number", std::string(47, '1')});
    expect({"--sender-organization", std::string(60, 'x')});
    expect({"--sender-phone", std::string(47, '1')});
    expect({"--sender-email", std::string(60, 'x')});
    expect({"--prefix", "12345"});
    expect({"--credit-card", std::string(32, '1')});
    expect({"--note", "two\nlines"});
}

} // namespace
} // namespace journeys
