// Connecting to the directory that the device is configured with, and switching the directory off.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "directory/device_directory.h"

#include "common/module_state.h"
#include "host/device_session.h"
#include "host/directory_client.h"
#include "tests/support/component_test.h"

namespace {

constexpr const char* table = "ubqSvcMonServiceDetailTableLDAP";

const std::string bothRead = lines({
    R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 0)",
    R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 1)",
});
const std::string sessionMade = lines({
    "new directory session",
    R"(setServerIP "ldap.example:389")",
    R"(setBaseServerPath "o=example")",
});
const std::string disabled = lines({
    R"(set "Current PB Type" Value 0)",
    R"(set "LDAP PB Type" Sensitivity off)",
    R"(set "LDAP PB Status" WidgetText "Unavailable")",
    R"(set "LDAP More Info Button" Visibility off)",
});

} // namespace

class DeviceDirectoryTest : public StartedComponentTest {
protected:
    void connectDirectory()
    {
        host.connectDevice();
        host.device.tables = {{{table, 0}, "ldap.example:389"}, {{table, 1}, "o=example"}};
    }

    std::string synchronize()
    {
        host.journal.clear();
        SynchronizeLDAPConnection();
        return host.journal.all();
    }

    /// Opens the fax dialog; the journal of that.
    std::string openFaxDialog()
    {
        host.journal.clear();
        host.fire("T40InvokeFaxDialog");
        return host.journal.all();
    }

    bool isDisabled()
    {
        return !host.sensitive("LDAP PB Type") && host.text("LDAP PB Status") == "Unavailable" &&
               !host.visible("LDAP More Info Button");
    }
};

TEST_F(DeviceDirectoryTest, IsReadFromTheDeviceOpenedAndBound)
{
    connectDirectory();
    EXPECT_EQ(synchronize(), bothRead + sessionMade + lines({"openSession", "bindAnonymousSession"}));
    EXPECT_NE(ldapSession, nullptr);
}

TEST_F(DeviceDirectoryTest, TheAddressIsKeptAlthoughTheHostOverwritesItAtTheNextReading)
{
    host.connectDevice();
    host.device.tables = {{{table, 0}, "a-long-server-name.example:636"}, {{table, 1}, "o"}};
    const std::string journal = synchronize();
    EXPECT_NE(journal.find(R"(setServerIP "a-long-server-name.example:636")"), std::string::npos) << journal;
}

TEST_F(DeviceDirectoryTest, LaterCallsAskTheDeviceNoMoreAndOpenAndBindAgain)
{
    connectDirectory();
    synchronize();
    LDAPSession* session = ldapSession;
    host.device.tables.clear();
    EXPECT_EQ(synchronize(), lines({"openSession", "bindAnonymousSession"}));
    pBiDi = nullptr;
    EXPECT_EQ(synchronize(), lines({"openSession", "bindAnonymousSession"}));
    EXPECT_EQ(ldapSession, session);
}

TEST_F(DeviceDirectoryTest, WithoutADeviceIsSwitchedOff)
{
    EXPECT_EQ(synchronize(), disabled);
    EXPECT_EQ(ldapSession, nullptr);
}

TEST_F(DeviceDirectoryTest, WithoutAnAddressIsSwitchedOffAndTheSearchBaseNotAskedFor)
{
    connectDirectory();
    host.device.tables.erase({table, 0});
    EXPECT_EQ(synchronize(), lines({R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 0)"}) + disabled);
    EXPECT_EQ(ldapSession, nullptr);
}

TEST_F(DeviceDirectoryTest, WithoutASearchBaseIsSwitchedOffAlthoughTheAddressWasRead)
{
    connectDirectory();
    host.device.tables.erase({table, 1});
    EXPECT_EQ(synchronize(), bothRead + disabled);
    EXPECT_EQ(ldapSession, nullptr);
}

TEST_F(DeviceDirectoryTest, ADeviceThatFailedIsAskedAgain)
{
    connectDirectory();
    host.faults.failNth(fake::Op::readDeviceTable, 1);
    synchronize();
    EXPECT_EQ(synchronize(), bothRead + sessionMade + lines({"openSession", "bindAnonymousSession"}));
}

TEST_F(DeviceDirectoryTest, AServerThatCannotBeReachedSwitchesItOffAndKeepsTheSession)
{
    connectDirectory();
    host.faults.failNth(fake::Op::openSession, 1);
    EXPECT_EQ(synchronize(), bothRead + sessionMade + lines({"openSession"}) + disabled);
    EXPECT_NE(ldapSession, nullptr);
    EXPECT_EQ(synchronize(), lines({"openSession", "bindAnonymousSession"}));
}

TEST_F(DeviceDirectoryTest, AFailedBindIsNotNoticed)
{
    connectDirectory();
    host.faults.fail(fake::Op::bindSession);
    EXPECT_EQ(synchronize(), bothRead + sessionMade + lines({"openSession", "bindAnonymousSession"}));
    EXPECT_FALSE(isDisabled());
}

TEST_F(DeviceDirectoryTest, EmptySettingsAreTakenAsTheyAre)
{
    host.connectDevice();
    host.device.tables = {{{table, 0}, ""}, {{table, 1}, ""}};
    EXPECT_EQ(synchronize(),
              bothRead + lines({"new directory session", R"(setServerIP "")", R"(setBaseServerPath "")",
                                "openSession", "bindAnonymousSession"}));
}

TEST_F(DeviceDirectoryTest, LongSettingsAreTakenWhole)
{
    host.connectDevice();
    host.device.tables = {{{table, 0}, longText(10000)}, {{table, 1}, longText(20000)}};
    const std::string journal = synchronize();
    EXPECT_NE(journal.find("setServerIP " + fake::quoted(longText(10000)) + "\n"), std::string::npos);
    EXPECT_NE(journal.find("setBaseServerPath " + fake::quoted(longText(20000)) + "\n"), std::string::npos);
}

TEST_F(DeviceDirectoryTest, SwitchingItOffHasFourEffects)
{
    currentPBType = 2;
    host.setNumber("Current PB Type", 2);
    DisableLDAP();
    EXPECT_EQ(host.journal.all(), disabled);
    EXPECT_EQ(currentPBType, 0);
    EXPECT_EQ(host.number("Current PB Type"), 0);
    EXPECT_TRUE(isDisabled());
}

TEST_F(DeviceDirectoryTest, TheStatusIsNotTranslated)
{
    host.translations["Unavailable"] = "Indisponible";
    DisableLDAP();
    EXPECT_EQ(host.text("LDAP PB Status"), "Unavailable");
}

// --- As the dialogs use it -------------------------------------------------------------------

TEST_F(DeviceDirectoryTest, OpeningTheFaxDialogWithoutADeviceLeavesTheChoiceAsTheDefinitionMadeIt)
{
    EXPECT_EQ(openFaxDialog(),
              lines({R"(set "Lan Fax Window" Visibility on)", R"(set "Lan Fax TabSet" Value 0)"}));
    EXPECT_TRUE(host.sensitive("LDAP PB Type"));
    EXPECT_EQ(host.text("LDAP PB Status"), "Enabled");
    EXPECT_TRUE(host.visible("LDAP More Info Button"));
    EXPECT_EQ(deviceInfoReady, 0);
}

TEST_F(DeviceDirectoryTest, OpeningTheFaxDialogWithADeviceConnects)
{
    connectDirectory();
    EXPECT_EQ(openFaxDialog(),
              lines({R"(set "Lan Fax Window" Visibility on)", R"(set "Lan Fax TabSet" Value 0)",
                     R"(set "LDAP PB Type" Sensitivity on)"}) +
                  bothRead + sessionMade + lines({"openSession", "bindAnonymousSession"}));
    EXPECT_EQ(deviceInfoReady, 1);
}

TEST_F(DeviceDirectoryTest, OnceOffItStaysOffUntilTheFaxDialogIsOpenedWithADevice)
{
    host.press("AddPBFaxRcpt");
    host.choose("Current PB Type", 2);
    ASSERT_TRUE(isDisabled());

    connectDirectory();
    host.choose("Current PB Type", 1);
    EXPECT_THROW(host.choose("Current PB Type", 2), std::logic_error);
    pBiDi = nullptr;
    openFaxDialog();
    EXPECT_FALSE(host.sensitive("LDAP PB Type"));

    connectDirectory();
    openFaxDialog();
    EXPECT_TRUE(host.sensitive("LDAP PB Type"));
    host.choose("Current PB Type", 2);
    EXPECT_EQ(currentPBType, 2);
}

TEST_F(DeviceDirectoryTest, TheStatusStaysUnavailableAndMoreInfoHiddenOnceTheyWere)
{
    synchronize();
    connectDirectory();
    openFaxDialog();
    EXPECT_TRUE(host.sensitive("LDAP PB Type"));
    EXPECT_EQ(host.text("LDAP PB Status"), "Unavailable");
    EXPECT_FALSE(host.visible("LDAP More Info Button"));
}
