// Tests of bytes inside of PostScript strings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/postscript_string.h"

#include "page_support.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

TEST(PostScriptString, EscapesWhatWouldEndItAndWhatIsNotPrintable)
{
    EXPECT_EQ(postScriptEscaped("Ann 555-1234"), "Ann 555-1234");
    EXPECT_EQ(postScriptEscaped("a(b)c\\d"), "a\\(b\\)c\\\\d");
    EXPECT_EQ(postScriptEscaped("\r\n\x7f\xfc"), "\\015\\012\\177\\374");
    EXPECT_EQ(postScriptEscaped(""), "");
}

TEST(PostScriptString, IsReadBackByteForByte)
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += std::string{static_cast<char>(byte), '7'};
    EXPECT_EQ(ghostscriptOutput("(" + postScriptEscaped(bytes) + ") print"), bytes);
}

} // namespace
} // namespace quelm::tests
