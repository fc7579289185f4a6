// Tests of the words for how a call ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/call_words.h"

#include "device/line/modem_library.h"

#include <gtest/gtest.h>

#include <array>

namespace quelm::device::tests {
namespace {

using Kind = CallResult::Kind;

struct Case {
    Kind kind;
    int code;
    CallEvent event;
    const char* words;
};

TEST(CallWordsTest, EachEndHasItsWords)
{
    constexpr std::array cases{
        Case{Kind::sent, T30_ERR_OK, CallEvent::none, "sent"},
        Case{Kind::sent, T30_ERR_OK, CallEvent::damagedRows, "sent, with damaged lines"},
        Case{Kind::busy, -1, CallEvent::none, "busy"},
        Case{Kind::noAnswer, -1, CallEvent::none, "no answer"},
        Case{Kind::cancelled, T30_ERR_CALLDROPPED, CallEvent::none, "broken off"},
        Case{Kind::failed, T30_ERR_CALLDROPPED, CallEvent::hungUp, "the other machine hung up"},
        Case{Kind::failed, T30_ERR_TX_T5EXP, CallEvent::outOfPaper, "the other machine is out of paper"},
        Case{Kind::failed, T30_ERR_TX_PHBDEAD, CallEvent::noisyLine, "the line is too noisy"},
        Case{Kind::failed, T30_ERR_CALLDROPPED, CallEvent::tooLong, "the call took too long"},
        Case{Kind::failed, T30_ERR_T0_EXPIRED, CallEvent::none, "no fax machine answers"},
        Case{Kind::failed, T30_ERR_T1_EXPIRED, CallEvent::none, "no fax machine answers"},
        Case{Kind::failed, T30_ERR_CANNOT_TRAIN, CallEvent::none, "cannot agree on a speed"},
        Case{Kind::failed, T30_ERR_NORESSUPPORT, CallEvent::none,
             "the other machine cannot receive these pages"},
        Case{Kind::failed, T30_ERR_TX_PHDDEAD, CallEvent::none, "the other machine does not answer any more"},
        Case{Kind::failed, T30_ERR_TX_INVALRSP, CallEvent::none, "the other machine's answers make no sense"},
        Case{Kind::failed, T30_ERR_TX_BADPG, CallEvent::none, "the other machine hung up"},
        Case{Kind::failed, T30_ERR_TX_T5EXP, CallEvent::none, "the other machine is not ready"},
        Case{Kind::failed, T30_ERR_BADTIFF, CallEvent::none, "the pages cannot be read"},
        Case{Kind::failed, T30_ERR_NOPOLL, CallEvent::none, "the call failed"},
        Case{Kind::failed, 4711, CallEvent::none, "the call failed"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(callWords(each.kind, each.code, each.event), each.words) << each.code;
}

TEST(CallWordsTest, EachCodeHasTheLibrarysWords)
{
    EXPECT_EQ(libraryWords(T30_ERR_OK), "OK");
    EXPECT_EQ(libraryWords(T30_ERR_CALLDROPPED), "The call dropped prematurely");
    EXPECT_EQ(libraryWords(T30_ERR_T0_EXPIRED), "Timed out waiting for initial communication");
    EXPECT_NE(libraryWords(4711), "");
}

} // namespace
} // namespace quelm::device::tests
