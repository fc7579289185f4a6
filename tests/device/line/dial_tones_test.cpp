// Tests of dialling.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "device/line/fax_call.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using namespace std::chrono_literals;

std::string dialled(const std::string& keys)
{
    std::chrono::milliseconds duration{0};
    return dialTones(keys, duration);
}

TEST(DialTonesTest, TheExchangeHearsEveryKey)
{
    for (const std::string keys : {"0123456789*#", "0", "9,5550104477", "#31#0049301", "1111111111", ""})
        EXPECT_EQ(dialled(keys), keys);
}

TEST(DialTonesTest, TheExchangeHearsPausesByTheirLength)
{
    for (const std::string keys : {",", ",,5", "5,", "5,,,,,,,,,,,,,,,,,,,,6", "9,,1,2,,,"})
        EXPECT_EQ(dialled(keys), keys);
}

TEST(DialTonesTest, ANumberIsAsLongAsTheJobAllows)
{
    const std::string keys(500, '7');
    EXPECT_EQ(dialled(keys), keys);
}

TEST(DialTonesTest, DiallingTakesLineTime)
{
    std::chrono::milliseconds duration = 1s;
    (void)dialTones("9,12", duration);
    EXPECT_EQ(duration, 1s + 3 * 160ms + 2s);
}

TEST(DialTonesTest, NothingElseIsDialled)
{
    std::chrono::milliseconds duration = 1s;
    try {
        (void)dialTones("555x1", duration);
        ADD_FAILURE() << "dialled";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "\"555x1\": a telephone has no key for \"x1\"");
    }
    EXPECT_EQ(duration, 1s);
}

} // namespace
} // namespace quelm::device::tests
