// Tests of the reader of help pages, and of our own pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/help/help_page.h"

#include "tests/support/build_paths.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>

namespace quelm {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using Kind = HelpBlock::Kind;

HelpBlock block(Kind kind, const std::string& text) { return {kind, {{text, false}}, {}, {}}; }

TEST(HelpPageTest, ReadsHeadingsParagraphsAndLists)
{
    const auto page =
        parseHelpPage("# Title\n\nOne\nparagraph.\n\n## Section\n- first\n- second\n  goes on\n");
    EXPECT_EQ(page, (HelpPage{block(Kind::title, "Title"), block(Kind::paragraph, "One paragraph."),
                              block(Kind::heading, "Section"), block(Kind::bullet, "first"),
                              block(Kind::bullet, "second goes on")}));
}

TEST(HelpPageTest, StepsKeepTheirNumbers)
{
    const auto page = parseHelpPage("1. one\n12. twelve\n3.no step\n");
    ASSERT_EQ(page.size(), 2U);
    EXPECT_EQ(page[0].kind, Kind::step);
    EXPECT_EQ(page[0].number, "1.");
    EXPECT_EQ(page[1].number, "12.");
    EXPECT_EQ(plainText(page[1]), "twelve 3.no step");
}

TEST(HelpPageTest, MarksMakeTextStrong)
{
    const auto page = parseHelpPage("Press **Send**\nor **Ctrl+P**.");
    ASSERT_EQ(page.size(), 1U);
    EXPECT_EQ(page[0].spans,
              (std::vector<HelpSpan>{
                  {"Press ", false}, {"Send", true}, {" or ", false}, {"Ctrl+P", true}, {".", false}}));
    EXPECT_EQ(plainText(page[0]), "Press Send or Ctrl+P.");
}

TEST(HelpPageTest, ALoneMarkIsText)
{
    EXPECT_EQ(plainText(parseHelpPage("two ** stars").at(0)), "two ** stars");
}

TEST(HelpPageTest, AHeadingKnowsWhatItIsAbout)
{
    const auto page =
        parseHelpPage("<!-- about: First Window -->\n<!-- about: Tab -->\n## One\ntext\n## Two\n");
    ASSERT_EQ(page.size(), 3U);
    EXPECT_EQ(page[0].places, (std::vector<std::string>{"First Window", "Tab"}));
    EXPECT_TRUE(page[2].places.empty());
}

TEST(HelpPageTest, TheInnermostPlaceWithASectionCounts)
{
    const auto page = parseHelpPage("# T\n<!-- about: Window -->\n## W\n<!-- about: Tab -->\n## T\n");
    EXPECT_EQ(blockAbout(page, {"Help Button", "Tab", "Window"}), 2U);
    EXPECT_EQ(blockAbout(page, {"Other Tab", "Window"}), 1U);
    EXPECT_EQ(blockAbout(page, {"Elsewhere"}), 0U);
    EXPECT_EQ(blockAbout({}, {"Window"}), 0U);
}

TEST(HelpPageTest, AnyTextIsAPage)
{
    EXPECT_TRUE(parseHelpPage("").empty());
    EXPECT_TRUE(parseHelpPage("\n\n<!-- about: nothing -->\n").empty());
    EXPECT_EQ(plainText(parseHelpPage("\xff\n").at(0)), "\xff");
}

// --- Our pages ---------------------------------------------------------------------------------------

const std::string helpFolder = build_paths::inProject("docs/help");

HelpPage ourPage(const std::string& topic)
{
    return parseHelpPage(contentOf(helpFolder + "/" + topic + ".md"));
}

std::set<std::string> placesIn(const HelpPage& page)
{
    std::set<std::string> places;
    for (const auto& part : page)
        places.insert(part.places.begin(), part.places.end());
    return places;
}

TEST(OurHelp, EveryTopicOfTheDialogsHasAPage)
{
    const std::string dialogs = contentOf(build_paths::inProject("component/frame/dialogs.xml"));
    const std::regex topic("HelpTopic=\"([^\"]*)\"");
    std::set<std::string> topics;
    for (std::sregex_iterator match(dialogs.begin(), dialogs.end(), topic), end; match != end; ++match)
        topics.insert((*match)[1]);
    EXPECT_FALSE(topics.empty());
    for (const auto& name : topics)
        EXPECT_TRUE(std::filesystem::exists(helpFolder + "/" + name + ".md")) << name;
}

TEST(OurHelp, EveryWindowAndTabWithAHelpButtonHasItsSection)
{
    EXPECT_THAT(placesIn(ourPage("LanFax")),
                IsSupersetOf({"LanFax Recipients Tab", "LanFax Options Tab", "LanFax Preferences Tab",
                              "LanFax Add Recipient Window", "LanFax Recipient Properties Window",
                              "Cover Sheet Setup Window", "Sender Information Window",
                              "Add Rcpt From PB Window", "LanFax Add Group Window"}));
}

TEST(OurHelp, SectionsAreAboutThingsThatExist)
{
    const std::string dialogs = contentOf(build_paths::inProject("component/frame/dialogs.xml"));
    for (const auto& place : placesIn(ourPage("LanFax")))
        EXPECT_NE(dialogs.find("Name=\"" + place + "\""), std::string::npos) << place;
}

TEST(OurHelp, PagesHaveATitleAndNoEmptySection)
{
    for (const std::string topic : {"LanFax", "driver"}) {
        const auto page = ourPage(topic);
        ASSERT_FALSE(page.empty()) << topic;
        EXPECT_EQ(page.front().kind, Kind::title);
        for (std::size_t i = 0; i < page.size(); ++i) {
            EXPECT_NE(plainText(page[i]), "");
            EXPECT_EQ(plainText(page[i]).find("**"), std::string::npos) << plainText(page[i]);
            const bool last = i + 1 == page.size();
            if (page[i].kind == Kind::heading) {
                ASSERT_FALSE(last);
                EXPECT_NE(page[i + 1].kind, Kind::heading) << plainText(page[i]);
            }
        }
    }
}

} // namespace
} // namespace quelm
