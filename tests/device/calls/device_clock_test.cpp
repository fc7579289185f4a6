// Tests of the device's clock.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/device_clock.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using std::chrono::hours;
using std::chrono::minutes;

Moment systemNow()
{
    return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

TEST(DeviceClockTest, BeginsWithTheSystemsClock)
{
    const Moment before = systemNow();
    const DeviceClock clock(false);
    const Moment shown = clock.now();
    EXPECT_LE(before, shown);
    EXPECT_LE(shown, systemNow());
}

TEST(DeviceClockTest, SimulatedItJumpsAndNeverGoesBack)
{
    DeviceClock clock(false);
    const Moment later = clock.now() + hours(1);
    clock.advanceTo(later);
    EXPECT_GE(clock.now(), later);
    clock.advanceTo(later - minutes(30));
    EXPECT_GE(clock.now(), later);
    EXPECT_LT(clock.now(), later + minutes(30));
}

TEST(DeviceClockTest, InRealTimeItDoesNotJump)
{
    DeviceClock clock(true);
    clock.advanceTo(clock.now() + hours(1));
    EXPECT_LT(clock.now(), systemNow() + minutes(1));
    EXPECT_TRUE(clock.isRealTime());
}

TEST(DeviceClockTest, GoesOnFromWhatTheDeviceRemembers)
{
    for (const bool realTime : {false, true}) {
        const Moment ahead = systemNow() + hours(5);
        EXPECT_GE(DeviceClock(realTime, ahead).now(), ahead);
        EXPECT_LT(DeviceClock(realTime, ahead).now(), ahead + minutes(1));
        EXPECT_LE(DeviceClock(realTime, systemNow() - hours(5)).now(), systemNow());
    }
}

} // namespace
} // namespace quelm::device::tests
