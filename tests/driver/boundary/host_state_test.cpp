// The one host state and the globals.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/host_state.h"

#include "base/error.h"
#include "host/fax_session.h"
#include "tests/support/test_dialogs.h"

namespace {

TEST(HostStateTest, TheGlobalsPointAtItAsLongAsItExists)
{
    EXPECT_EQ(pDriverDirector, nullptr);
    {
        const quelm::HostState state("/opt/quelm", "ann");
        EXPECT_EQ(quelm::HostState::current(), &state);
        EXPECT_NE(pDriverDirector, nullptr);
        EXPECT_NE(pDriverGlobals, nullptr);
        EXPECT_EQ(pBiDi, nullptr);
        EXPECT_EQ(pFaxSession, nullptr);
        pFaxSession = reinterpret_cast<Tarvik40Fax*>(&pFaxSession);
    }
    EXPECT_EQ(quelm::HostState::current(), nullptr);
    EXPECT_EQ(pDriverDirector, nullptr);
    EXPECT_EQ(pDriverGlobals, nullptr);
    EXPECT_EQ(pFaxSession, nullptr);
}

TEST(HostStateTest, ThereIsOneAtATime)
{
    const quelm::HostState state("/opt/quelm", "ann");
    EXPECT_THROW(quelm::HostState("/opt/quelm", "bob"), quelm::Error);
    EXPECT_EQ(quelm::HostState::current(), &state);
}

TEST(HostStateTest, TheEmptyStringIsNeverNull) { EXPECT_STREQ(pEmptyString, ""); }

TEST(HostStateTest, HandlersBelongToAWidgetAndASignal)
{
    quelm::HostState state("/opt/quelm", "ann");
    state.tree.build(testDialogs);
    const quelm::Widget& window = *state.tree.find("Window");
    const quelm::HostState::Handler handler = [] {};
    EXPECT_EQ(state.handlerFor(window, "delete_event"), nullptr);
    state.setHandler(window, "delete_event", handler);
    EXPECT_EQ(state.handlerFor(window, "delete_event"), handler);
    EXPECT_EQ(state.handlerFor(window, "destroy"), nullptr);
    EXPECT_EQ(state.handlerFor(*state.tree.find("Entry"), "delete_event"), nullptr);
}

} // namespace
