// Tests of what all status pages have around their content.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/page_frame.h"

#include "tests/device/panel/panel_support.h"

namespace quelm::tests {
namespace {

using namespace device;

TEST(PageFrame, SaysWhereOneIsAndHowToGoOn)
{
    const ReadPage page(documentOf({"Job 7: <b>", "/jobs", text("content"), false}));
    EXPECT_EQ(page.textOf("/html/head/title"), "Job 7: <b> - fax device");
    EXPECT_EQ(page.textOf("//main/h1"), "Job 7: <b>");
    EXPECT_EQ(page.values("//header/nav//a/@href"),
              (std::vector<std::string>{"/", "/jobs", "/calls", "/received"}));
    EXPECT_EQ(page.textOf("//header/nav//a[@aria-current='page']"), "Jobs");
    EXPECT_EQ(page.values("//a[@class='skip']/@href"), std::vector<std::string>{"#content"});
    EXPECT_EQ(page.values("//main/@id"), std::vector<std::string>{"content"});
    EXPECT_EQ(page.values("//link[@rel='stylesheet']/@href"), std::vector<std::string>{"/style.css"});
    EXPECT_EQ(page.count("//meta[@name='viewport']"), 1U);
    EXPECT_EQ(page.count("//script"), 0U);
    EXPECT_EQ(page.count("//@style"), 0U);
}

TEST(PageFrame, ABrowserAsksAgainOnlyWhenItIsTold)
{
    const PanelPage still{"Jobs", "/jobs", {}, false};
    const PanelPage moving{"Jobs", "/jobs", {}, true};
    EXPECT_EQ(ReadPage(documentOf(still)).count("//meta[@http-equiv='refresh']"), 0U);
    EXPECT_EQ(ReadPage(documentOf(moving)).values("//meta[@http-equiv='refresh']/@content"),
              std::vector<std::string>{"2"});
}

TEST(PageFrame, ATableHasHeadsThatAreReadWithItsCells)
{
    const ReadPage page(documentOf(
        {"x", "/", table("Some jobs", {"Job", "Title"}, tableRow({text("1"), text("one")})), false}));
    EXPECT_EQ(page.count("//table/thead/tr/th[@scope='col']"), 2U);
    EXPECT_EQ(page.textOf("//table/caption"), "Some jobs");
    EXPECT_EQ(page.textOf("//table/tbody/tr"), "1 one");
    EXPECT_EQ(page.values("//div[@role='region']/@aria-label"), std::vector<std::string>{"Some jobs"});
}

TEST(PageFrame, APicturesDescriptionStandsInForIt)
{
    const ReadPage page(documentOf({"x", "/", thumbnail("/jobs/1/pages", 3, "page 3"), false}));
    EXPECT_EQ(page.values("//a/img/@alt"), std::vector<std::string>{"page 3"});
    EXPECT_EQ(page.values("//img/@src"), std::vector<std::string>{"/jobs/1/pages/3-small.png"});
    EXPECT_EQ(page.values("//a[@class='page']/@href"), std::vector<std::string>{"/jobs/1/pages/3.png"});
}

TEST(PageFrame, ARefusalLeadsBack)
{
    const ReadPage page(documentOf(refusalPage("Not found", "There is no such page.")));
    EXPECT_EQ(page.textOf("//main"), "Not found There is no such page. To the status");
    EXPECT_EQ(page.count("//@aria-current"), 0U);
}

} // namespace
} // namespace quelm::tests
