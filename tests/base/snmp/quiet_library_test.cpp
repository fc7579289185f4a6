// The SNMP library says nothing where it is not asked to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/snmp/quiet_library.h"

#include "tests/support/log_capture.h"

#include <gtest/gtest.h>
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <string>
#include <vector>

namespace {

TEST(QuietSnmpLibrary, MessagesGoToTheLogAsInformationAndNowhereElse)
{
    quelm::keepSnmpLibraryQuiet("quelm-test");
    const LogCapture log;
    testing::internal::CaptureStderr();
    snmp_log(LOG_ERR, "a packet is malformed\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(log.messages, std::vector<std::string>{"SNMP: a packet is malformed"});
    EXPECT_STREQ(netsnmp_ds_get_string(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_APPTYPE), "quelm-test");
}

} // namespace
