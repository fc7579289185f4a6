// Tests of the keys that numbers stand for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/dial_keys.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

namespace quelm::device::tests {
namespace {

using quelm::test::failureLine;
using testing::HasSubstr;

TEST(DialKeysTest, KeysAreWhatIsPressedForANumber)
{
    EXPECT_EQ(keysFor("5550104477"), "5550104477");
    EXPECT_EQ(keysFor("9,5550108812"), "9,5550108812");
    EXPECT_EQ(keysFor("+1 (555) 010-44.77/8"), "00155501044778");
    EXPECT_EQ(keysFor("*31#,,12"), "*31#,,12");
    EXPECT_EQ(keysFor(""), "");
    EXPECT_EQ(keysFor(" - "), "");
}

TEST(DialKeysTest, ASignWithoutAKeyIsRefusedWithoutTheDigitsBesideIt)
{
    const std::string line = failureLine([] { (void)keysFor("4000x1234"); });
    EXPECT_THAT(line, HasSubstr("\"x\""));
    EXPECT_THAT(line, Not(HasSubstr("4000")));
    EXPECT_THAT(failureLine([] { (void)keysFor("555\n1"); }), HasSubstr("no key"));
    EXPECT_THAT(failureLine([] { (void)keysFor("\xC3\xBC"); }), HasSubstr("no key"));
}

} // namespace
} // namespace quelm::device::tests
