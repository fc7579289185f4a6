// The directory's last trouble.
#include "driver/directory/directory_trouble.h"

#include "tests/support/log_capture.h"

#include <gtest/gtest.h>

namespace {

using quelm::lastDirectoryTrouble;

TEST(DirectoryTroubleTest, IsKeptUntilASuccessAndLoggedOnce)
{
    const LogCapture log;
    EXPECT_EQ(lastDirectoryTrouble(), "");
    quelm::reportDirectoryTrouble("The server\nis gone");
    EXPECT_EQ(lastDirectoryTrouble(), "The server is gone");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "The server is gone");
    EXPECT_EQ(log.severities[0], quelm::Severity::warning);
    quelm::clearDirectoryTrouble();
    EXPECT_EQ(lastDirectoryTrouble(), "");
    EXPECT_EQ(log.messages.size(), 1U);
}

} // namespace
