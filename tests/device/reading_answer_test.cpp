// What is said about jobs that were read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/reading_answer.h"

#include "tests/device/stream/sample_jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quelm::device {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

JobReading reading(const Lines& lines, std::optional<int> pages = 3)
{
    return {readJob(joined(lines)), 0, pages};
}

TEST(ReadingAnswer, SaysAllThatPeopleWantToKnow)
{
    EXPECT_EQ(readingText({reading(dscJob())}), "Form:                DSC: comments of the document\n"
                                                "Title:               letter.ps\n"
                                                "Pages:               3 pages\n"
                                                "Resolution:          fine (204 x 196 dots per inch)\n"
                                                "Speed:               up to 14400 bit/s\n"
                                                "Cover sheet:         yes\n"
                                                "Confirmation sheet:  yes\n"
                                                "Credit card:         ******** (8 keys)\n"
                                                "Fax to 2 recipients:\n"
                                                "  5550104477     dials 5550104477\n"
                                                "  9,+5550108812  dials 9,005550108812  mailbox 12a#\n");
}

TEST(ReadingAnswer, SaysWhatIsRefusedAndWhatIsPassedOver)
{
    const auto job = reading(inserted(replaced(dscJob(), "RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 3;\r\n"),
                                      "FAX_TYPE", "%%OID_ATT_NEW 1;\r\n"),
                             std::nullopt);
    const auto text = readingText({job});
    EXPECT_THAT(text, HasSubstr("Pages:               not known\n"));
    EXPECT_THAT(text, HasSubstr("The device refuses the job:\n  line 8: \"OID_ATT_FAX_RESOLUTION\" has"));
    EXPECT_THAT(text, HasSubstr("Passed over:\n  line 9: \"OID_ATT_NEW\" is"));
    EXPECT_THAT(refusalLine({job}),
                HasSubstr("the device refuses the job: line 8: \"OID_ATT_FAX_RESOLUTION\""));
    EXPECT_EQ(refusalLine({job, reading(dscJob())}), "the device refuses 1 of 2 jobs");
    EXPECT_EQ(refusalLine({reading(dscJob())}), "");
    EXPECT_THAT(refusalLine({reading({"%!PS\n", "%%OID_ATT_FAX_RESOLUTION 3;\r\n"}, std::nullopt)}),
                HasSubstr("the device refuses the job for 10 reasons, the first of them: line 2: "));
}

TEST(ReadingAnswer, CountsAllReasonsAlsoThoseThatAreLeftOut)
{
    std::string many;
    for (int i = 0; i < 200; ++i)
        many += "%%OID_ATT_FAX_DESTINATION_PHONE \"x\";\r\n";
    const auto job = reading(inserted(dscJob(), "5550104477", many), std::nullopt);
    EXPECT_THAT(refusalLine({job}), HasSubstr("the device refuses the job for 200 reasons, the first"));
    EXPECT_THAT(readingText({job}), HasSubstr("  and 100 more\n"));
}

TEST(ReadingAnswer, AJobThatIsNoFaxHasNoSettingsOfOne)
{
    const auto job = reading({"%!PS\n", "showpage\n"}, 1);
    EXPECT_EQ(readingText({job}), "Form:   PostScript without attribute lines\n"
                                  "Title:  none\n"
                                  "Pages:  1 page\n"
                                  "No fax: the job is printed.\n");
    const auto answer = json::parse(readingJson({job})).at("jobs").at(0);
    EXPECT_EQ(answer.at("fax"), false);
    EXPECT_FALSE(answer.contains("recipients"));
}

TEST(ReadingAnswer, SaysTheSameInJson)
{
    auto lines = inserted(dscJob(), "FAX_TYPE", "%%OID_ATT_NEW 1;\r\n");
    const auto answer = json::parse(readingJson({reading(lines)}));
    const auto size = joined(lines).size();
    const json expected = {
        {"form", "dsc"},
        {"title", "letter.ps"},
        {"fax", true},
        {"taken", true},
        {"pages", 3},
        {"recipients",
         {{{"line", 11}, {"number", "5550104477"}, {"keys", "5550104477"}, {"mailbox", nullptr}},
          {{"line", 12}, {"number", "9,+5550108812"}, {"keys", "9,005550108812"}, {"mailbox", "12a#"}}}},
        {"resolution", "fine"},
        {"dotsPerInch", {204, 196}},
        {"speed", "14400"},
        {"coverSheet", true},
        {"confirmationSheet", true},
        {"creditCardKeys", 8},
        {"begin", 0},
        {"end", size},
        {"postScriptBegin", 0},
        {"postScriptEnd", size},
        {"refusals", json::array()},
        {"objections", {{{"line", 9}, {"text", "\"OID_ATT_NEW\" is no attribute that the device knows"}}}},
    };
    EXPECT_EQ(answer.at("jobs").at(0), expected);
}

TEST(ReadingAnswer, JsonNamesEverySpeedAndResolution)
{
    const auto settings = [](const std::string& part, const std::string& line, const char* key) {
        return json::parse(readingJson({reading(replaced(dscJob(), part, line))})).at("jobs").at(0).at(key);
    };
    EXPECT_EQ(settings("RESOLUTION", "", "resolution"), "standard");
    EXPECT_EQ(settings("RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 2;\r\n", "resolution"), "superfine");
    EXPECT_EQ(settings("FAX_TYPE", "", "speed"), "automatic");
    EXPECT_EQ(settings("FAX_TYPE", "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_FORCED_4800;\r\n", "speed"),
              "4800");
}

TEST(ReadingAnswer, NeverShowsACard)
{
    for (const auto& answer : {readingText({reading(dscJob())}), readingJson({reading(dscJob())})}) {
        EXPECT_THAT(answer, Not(HasSubstr("4000")));
        EXPECT_THAT(answer, Not(HasSubstr("1234")));
    }
}

TEST(ReadingAnswer, ShowsAnyBytesAsText)
{
    const auto job = reading(replaced(dscJob(), "%%Title", "%%Title: (\xE4\x1B[2J)\n"));
    EXPECT_THAT(readingText({job}), HasSubstr("Title:               \uFFFD [2J\n"));
    EXPECT_EQ(json::parse(readingJson({job})).at("jobs").at(0).at("title"), "\uFFFD\x1B[2J");
}

TEST(ReadingAnswer, SeveralJobsAreNumbered)
{
    const auto text = readingText({reading(dscJob()), reading(pjlJob())});
    EXPECT_THAT(text, HasSubstr("Job 1 of 2\nForm:                DSC"));
    EXPECT_THAT(text, HasSubstr("\n\nJob 2 of 2\nForm:                PJL"));
}

} // namespace
} // namespace quelm::device
