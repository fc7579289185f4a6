// Tests of how texts get into pages: escaped, on one line, and never as markup.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/html.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

using namespace device;

TEST(HtmlTest, EveryCharacterThatMeansSomethingIsEscaped)
{
    EXPECT_EQ(text("<script>alert('a' & \"b\")</script>").markup(),
              "&lt;script&gt;alert(&#39;a&#39; &amp; &quot;b&quot;)&lt;/script&gt;");
}

TEST(HtmlTest, ControlCharactersAreBlanksAndWhatIsNoTextIsReplaced)
{
    EXPECT_EQ(text("a\nb\tc\x01").markup(), "a b c ");
    EXPECT_EQ(text(std::string("a\0b", 3)).markup(), "a b");
    EXPECT_EQ(text("\xFF").markup(), "\xEF\xBF\xBD");
}

TEST(HtmlTest, ATextOfOthersDoesNotTurnWhatStandsAroundIt)
{
    EXPECT_EQ(foreignText("\u05e9\u05dc\u05d5\u05dd").markup(), "<bdi>\u05e9\u05dc\u05d5\u05dd</bdi>");
    EXPECT_EQ(foreignText("\u202e<").markup(), "<bdi>\\u{202e}&lt;</bdi>");
}

TEST(HtmlTest, AttributesAreEscapedAndLeftOutWhenEmpty)
{
    EXPECT_EQ(element("a", {{"href", "\"><b>"}, {"class", ""}}, text("x")).markup(),
              "<a href=\"&quot;&gt;&lt;b&gt;\">x</a>");
    EXPECT_EQ(emptyElement("img", {{"alt", ""}, {"src", "a.png"}}).markup(), "<img alt=\"\" src=\"a.png\"/>");
    EXPECT_EQ(link("/jobs", element("b", text("y"))).markup(), "<a href=\"/jobs\"><b>y</b></a>");
}

TEST(HtmlTest, PiecesAreAddedUp)
{
    Html both = text("a");
    EXPECT_TRUE(Html().isEmpty());
    both += text("b");
    EXPECT_EQ((both + text("c")).markup(), "abc");
}

} // namespace
} // namespace quelm::tests
