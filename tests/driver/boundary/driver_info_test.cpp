// What the component is told about the driver.
#include "host/driver_info.h"

#include "tests/support/test_dialogs.h"

namespace {

class DriverInfoTest : public HostTest {};

TEST_F(DriverInfoTest, NamesTheInstallationAndTheUser)
{
    EXPECT_STREQ(pDriverGlobals->getExecutableLocation(), "/opt/quelm");
    EXPECT_STREQ(pDriverGlobals->getCurrentUserName(), "ann");
}

TEST_F(DriverInfoTest, TheTextsStayWhereTheyAre)
{
    EXPECT_EQ(pDriverGlobals->getExecutableLocation(), pDriverGlobals->getExecutableLocation());
    EXPECT_EQ(pDriverGlobals->getCurrentUserName(), pDriverGlobals->getCurrentUserName());
}

TEST_F(DriverInfoTest, WithoutATranslationTheTextItselfIsCopied)
{
    host::TextBuffer out;
    EXPECT_FALSE(host::translate("No catalogue knows this text.", out.text));
    EXPECT_STREQ(out.c_str(), "No catalogue knows this text.");
}

TEST(DriverInfoWithoutADriver, IsEmptyAndNotNull)
{
    GlobalDriverInfo info;
    EXPECT_STREQ(info.getExecutableLocation(), "");
    EXPECT_STREQ(info.getCurrentUserName(), "");
}

} // namespace
