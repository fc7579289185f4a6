// The component director.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/director.h"

#include "tests/support/log_capture.h"
#include "tests/support/test_dialogs.h"

namespace {

class DirectorTest : public HostTest {};

TEST_F(DirectorTest, ADefinitionThatCannotBeUsedIsRefusedAndLogged)
{
    const LogCapture log;
    EXPECT_FALSE(pDriverDirector->parseXMLBuffer(host::in("<XmlGuiDefinition>")));
    EXPECT_FALSE(pDriverDirector->parseXMLBuffer(nullptr));
    EXPECT_FALSE(pDriverDirector->parseXMLBuffer(
        host::in("<XmlGuiDefinition><DialogWindow Name=\"\xff\"/></XmlGuiDefinition>")));
    ASSERT_EQ(log.messages.size(), 2U);
    EXPECT_EQ(log.messages[1], "the dialog definition cannot be used: it is not UTF-8");
    EXPECT_EQ(state.failures.last().definition, log.messages[1]);
}

TEST_F(DirectorTest, TheSameDefinitionAgainKeepsWhatTheWidgetsHold)
{
    widget("Entry").setText("typed");
    EXPECT_TRUE(pDriverDirector->parseXMLBuffer(host::in(testDialogs)));
    EXPECT_EQ(widget("Entry").text(), "typed");
}

TEST_F(DirectorTest, AResourceIsKeptUnderItsNameUntilItIsReplaced)
{
    int first = 0;
    int second = 0;
    EXPECT_TRUE(pDriverDirector->registerResource(host::in("FaxSession"), &first));
    EXPECT_EQ(state.resources.at("FaxSession"), &first);
    EXPECT_TRUE(pDriverDirector->registerResource(host::in("FaxSession"), &second));
    EXPECT_EQ(state.resources.at("FaxSession"), &second);
    EXPECT_FALSE(pDriverDirector->registerResource(nullptr, &first));
}

} // namespace
