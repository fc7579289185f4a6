// The SNMP library starts without a trace.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/snmp/snmp_library.h"

#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <clocale>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

/// Opens a session of version 3, which needs the most, and closes it.
bool opensASession()
{
    quelm::startSnmpLibrary();
    netsnmp_session wanted;
    snmp_sess_init(&wanted);
    std::string peer = "udp:127.0.0.1:9";
    std::string user = "ann";
    wanted.peername = peer.data();
    wanted.version = SNMP_VERSION_3;
    wanted.securityName = user.data();
    wanted.securityNameLen = user.size();
    wanted.securityLevel = SNMP_SEC_LEVEL_NOAUTH;
    wanted.flags |= SNMP_FLAGS_DONT_PROBE;
    void* const session = snmp_sess_open(&wanted);
    if (session != nullptr)
        snmp_sess_close(session);
    return session != nullptr;
}

TEST(SnmpLibraryTest, ItLeavesLocaleAndFilesAlone)
{
    const TemporaryFolder folder;
    // In a process of its own, which has not started the library before and has its home elsewhere.
    EXPECT_EQ(inProcess([&] {
                  for (const char* variable : {"HOME", "SNMP_PERSISTENT_DIR", "SNMPCONFPATH"})
                      setenv(variable, (folder / "").c_str(), 1);
                  setenv("LC_ALL", "C.UTF-8", 1);
                  const std::string before = setlocale(LC_ALL, nullptr);
                  if (!opensASession())
                      return 1;
                  return before == setlocale(LC_ALL, nullptr) ? 0 : 2;
              }),
              0);
    EXPECT_EQ(folder.names(), Names());
}

TEST(SnmpLibraryTest, ConfigurationFilesAreNotRead)
{
    const TemporaryFolder folder;
    writeFile(folder / "snmp.conf", "defaultPort 7\ndefCommunity secret\n");
    EXPECT_EQ(inProcess([&] {
                  for (const char* variable : {"HOME", "SNMP_PERSISTENT_DIR", "SNMPCONFPATH"})
                      setenv(variable, (folder / "").c_str(), 1);
                  opensASession();
                  const char* community =
                      netsnmp_ds_get_string(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_COMMUNITY);
                  return community == nullptr ? 0 : 1;
              }),
              0);
    EXPECT_EQ(folder.names(), Names({"snmp.conf"}));
}

TEST(SnmpLibraryTest, ItsMessagesGoToTheLogAsInformation)
{
    quelm::startSnmpLibrary();
    quelm::startSnmpLibrary(); // once more changes nothing: each message comes once
    const LogCapture log;
    snmp_log(LOG_ERR, "a packet is malformed\n");
    ASSERT_EQ(log.messages, Names({"SNMP: a packet is malformed"}));
    EXPECT_EQ(log.severities[0], quelm::Severity::information);
}

} // namespace
