// Tests of the values in a header.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/cover_header.h"

#include "base/error.h"
#include "page_support.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

CoverValues differentValues()
{
    CoverValues values;
    for (std::size_t slot = 0; slot < values.size(); ++slot)
        values.at(slot) = "value " + std::to_string(slot) + " ) ( \\ %s %%";
    return values;
}

TEST(CoverHeader, GivesBackWhatItWasFilledWith)
{
    const auto header = CoverHeader::parse(realTemplate().header);
    ASSERT_TRUE(header.has_value());
    const std::string page = header->filled(differentValues()) + "what follows";
    std::string_view rest = page;
    EXPECT_EQ(header->take(rest), differentValues());
    EXPECT_EQ(rest, "what follows");
}

TEST(CoverHeader, IsFilledAsTheComponentFillsIt)
{
    const auto header = CoverHeader::parse(realTemplate().header);
    EXPECT_EQ(header.value().filled(differentValues()) + realTemplate().trailer,
              componentsPage(differentValues()));
}

TEST(CoverHeader, OfAnotherFormIsNone)
{
    std::string format = realTemplate().header;
    EXPECT_FALSE(CoverHeader::parse("").has_value());
    EXPECT_FALSE(CoverHeader::parse("(%s)\n").has_value());
    EXPECT_FALSE(CoverHeader::parse(format + "%s\n").has_value());
    const auto changed = [&](const std::string& what, const std::string& into) {
        std::string other = format;
        other.replace(other.find(what), what.size(), into);
        return CoverHeader::parse(other).has_value();
    };
    EXPECT_FALSE(changed("(%s)", "%s"));
    EXPECT_FALSE(changed("(%s)", "<%s>"));
    EXPECT_FALSE(changed("(%s)", "(%d)"));
    EXPECT_FALSE(changed("(%s)", "(%s %s)"));
    EXPECT_FALSE(changed("[%s]", "(%s)"));
    EXPECT_FALSE(changed("%s\n", "%"));
    EXPECT_TRUE(changed("/RecipientName", "/Recipient"));
}

} // namespace
} // namespace quelm::tests
