// Tests of a single fax machine.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/fax_machine.h"

#include "device/line/modem_library.h"
#include "tests/device/line/call_support.h"

#include <algorithm>

namespace quelm::device::tests {
namespace {

class FaxMachineTest : public CallTest {
protected:
    FaxMachineTest()
    {
        calling.calls = true;
        calling.file = caller.pages;
        calling.identity = caller.identity;
        receiving.file = answering.keepAs;
        receiving.identity = answering.identity;
    }

    FaxMachineSettings calling;
    FaxMachineSettings receiving;
};

bool speaksWithin(FaxMachine& machine, int pieces)
{
    for (int piece = 0; piece < pieces; ++piece) {
        Samples samples{};
        machine.speak(samples);
        machine.listen({});
        if (std::ranges::any_of(samples, [](std::int16_t sample) { return sample != 0; }))
            return true;
    }
    return false;
}

TEST_F(FaxMachineTest, BothSortsSpeakFirst)
{
    FaxMachine first(calling);
    FaxMachine second(receiving);
    EXPECT_TRUE(speaksWithin(first, 200)) << "the calling tone";
    EXPECT_TRUE(speaksWithin(second, 200)) << "the called tone";
}

TEST_F(FaxMachineTest, ACallerGivesUpWhenNobodyAnswers)
{
    FaxMachine machine(calling);
    int pieces = 0;
    for (; !machine.hasEnded() && pieces < 10000; ++pieces) {
        Samples samples{};
        machine.speak(samples);
        machine.listen({});
    }
    EXPECT_TRUE(machine.hasEnded());
    EXPECT_EQ(machine.code(), T30_ERR_T0_EXPIRED);
    EXPECT_GE(pieces, 30 * 50);
    EXPECT_FALSE(machine.hasAgreed());
    EXPECT_EQ(machine.state().pages, 0);
    EXPECT_EQ(machine.otherIdentity(), "");
    EXPECT_EQ(machine.otherSubAddress(), "");
}

TEST_F(FaxMachineTest, HangingUpEndsIt)
{
    FaxMachine machine(calling);
    EXPECT_FALSE(machine.hasEnded());
    machine.hangUp();
    EXPECT_TRUE(machine.hasEnded());
    EXPECT_EQ(machine.code(), T30_ERR_CALLDROPPED);
    machine.hangUp();
    Samples samples{};
    samples.fill(1);
    machine.speak(samples);
    EXPECT_EQ(samples, Samples{});
}

TEST_F(FaxMachineTest, TwoMachinesAgreeAndTellEachOtherWhoTheyAre)
{
    calling.subAddress = "42";
    FaxMachine first(calling);
    FaxMachine second(receiving);
    for (int piece = 0; piece < 10000 && !first.hasEnded(); ++piece) {
        Samples said{};
        Samples answered{};
        first.speak(said);
        second.speak(answered);
        second.listen(said);
        first.listen(answered);
    }
    EXPECT_TRUE(second.hasEnded());
    EXPECT_EQ(second.code(), T30_ERR_OK);
    EXPECT_TRUE(first.hasAgreed());
    EXPECT_EQ(first.state().pages, 3);
    EXPECT_EQ(second.state().pages, 3);
    EXPECT_EQ(first.otherIdentity(), "+1 555 010 4477");
    EXPECT_EQ(second.otherIdentity(), "+1 555 010 0000");
    EXPECT_EQ(second.otherSubAddress(), "42");
    EXPECT_FALSE(second.isOutOfPaper());
    EXPECT_EQ(second.damagedRows(), 0);
}

} // namespace
} // namespace quelm::device::tests
