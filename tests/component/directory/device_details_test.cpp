// "LDAP Info Dialog": the settings read from the device, object by object.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "directory/device_details.h"

#include "directory/device_directory.h"
#include "host/device_session.h"
#include "host/directory_client.h"
#include "tests/support/component_test.h"

#include <utility>

namespace {

constexpr const char* dialog = "LDAP Info Dialog";

struct DeviceObject {
    const char* identifier;
    const char* field;
};

const DeviceObject objects[] = {
    {"1.3.6.1.2.1.1.1.0", "LDAP Server Type"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.122.1", "Login Name"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.118.1", "LDAP Search Directory Root"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.114.11", "LDAP HostPort"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.80", "Name"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.81", "Email"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.83", "Bus Phone"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.84", "Bus Addr"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.85", "Office"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.86", "LDAP City"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.87", "LDAP State"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.88", "LDAP ZipCode"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.89", "LDAP Country"},
    {"1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.384.91", "LDAP Fax"},
};

} // namespace

class DeviceDetailsTest : public StartedComponentTest {
protected:
    /// The fax dialog was opened while there was a device with all settings.
    void openFaxDialogWithDevice()
    {
        host.connectDevice();
        host.device.tables = {{{"ubqSvcMonServiceDetailTableLDAP", 0}, "ldap.example"},
                              {{"ubqSvcMonServiceDetailTableLDAP", 1}, "o=example"}};
        for (const DeviceObject& object : objects)
            host.device.objects[object.identifier] = std::string("the ") + object.field;
        host.fire("T40InvokeFaxDialog");
        host.journal.clear();
    }

    std::string moreInfo()
    {
        host.journal.clear();
        host.press("LDAP More Info Button");
        return host.journal.all();
    }

    /// The journal of a dialog that shows the device's objects.
    std::string shown()
    {
        std::string journal;
        for (const DeviceObject& object : objects)
            journal += "deviceObject " + fake::quoted(object.identifier) + " size 1024\nset " +
                       fake::quoted(object.field) + " WidgetText " +
                       fake::quoted(host.device.objects[object.identifier]) + "\n";
        return journal + lines({R"(set "LDAP Info Dialog" Visibility on)"});
    }
};

TEST_F(DeviceDetailsTest, FourteenObjectsAreReadInOrderIntoTheirFields)
{
    openFaxDialogWithDevice();
    EXPECT_EQ(moreInfo(), shown());
    EXPECT_EQ(host.text("LDAP HostPort"), "the LDAP HostPort");
    EXPECT_EQ(host.journal.count("deviceObject"), 14);
    EXPECT_TRUE(host.visible(dialog));
}

TEST_F(DeviceDetailsTest, OpeningItTwiceReadsAllAgain)
{
    openFaxDialogWithDevice();
    moreInfo();
    host.device.objects[objects[0].identifier] = "another";
    EXPECT_EQ(moreInfo(), shown());
    EXPECT_EQ(host.text("LDAP Server Type"), "another");
}

TEST_F(DeviceDetailsTest, NothingHappensUntilTheFaxDialogWasOpenedWithADevice)
{
    host.fire("T40InvokeFaxDialog");
    EXPECT_EQ(moreInfo(), "");
    host.connectDevice();
    EXPECT_EQ(moreInfo(), "");
    EXPECT_FALSE(host.visible(dialog));
}

TEST_F(DeviceDetailsTest, AnObjectThatCannotBeReadLeavesItsFieldEmpty)
{
    openFaxDialogWithDevice();
    moreInfo();
    host.faults.failOn(fake::Op::readDeviceObject, objects[4].identifier);
    moreInfo();
    EXPECT_EQ(host.text("Name"), "");
    EXPECT_EQ(host.text("LDAP HostPort"), "the LDAP HostPort");
    EXPECT_EQ(host.text("Email"), "the Email");
}

TEST_F(DeviceDetailsTest, AShortTextAfterALongOneShowsNothingOfIt)
{
    openFaxDialogWithDevice();
    host.device.objects[objects[0].identifier] = longText(1000);
    host.device.objects[objects[1].identifier] = "x";
    moreInfo();
    EXPECT_EQ(host.text("Login Name"), "x");
}

TEST_F(DeviceDetailsTest, ATextOf1023BytesIsShownWhole)
{
    openFaxDialogWithDevice();
    host.device.objects[objects[0].identifier] = longText(1023);
    host.device.objects[objects[1].identifier] = longText(1024);
    moreInfo();
    EXPECT_EQ(host.text("LDAP Server Type"), longText(1023));
    EXPECT_EQ(host.text("Login Name"), longText(1023));
}

TEST_F(DeviceDetailsTest, TheBackupHostIsNeverFilled)
{
    openFaxDialogWithDevice();
    moreInfo();
    EXPECT_EQ(host.text("LDAP Secondary HostPort"), "");
    EXPECT_EQ(host.journal.count("set \"LDAP Secondary HostPort\""), 0);
}

TEST_F(DeviceDetailsTest, WithoutADirectorySessionItIsSetUpFirst)
{
    openFaxDialogWithDevice();
    delete std::exchange(ldapSession, nullptr);
    EXPECT_EQ(moreInfo(), lines({R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 0)",
                                 R"(deviceTable "ubqSvcMonServiceDetailTableLDAP" 1)",
                                 "new directory session", R"(setServerIP "ldap.example")",
                                 R"(setBaseServerPath "o=example")", "openSession", "bindAnonymousSession"}) +
                              shown());
}

TEST_F(DeviceDetailsTest, ADirectoryThatCannotBeSetUpDoesNotKeepTheDetailsFromBeingShown)
{
    openFaxDialogWithDevice();
    delete std::exchange(ldapSession, nullptr);
    host.device.tables.clear();
    EXPECT_TRUE(moreInfo().ends_with(lines({R"(set "LDAP PB Status" WidgetText "Unavailable")",
                                            R"(set "LDAP More Info Button" Visibility off)"}) +
                                     shown()));
    EXPECT_TRUE(host.visible(dialog));
}

TEST_F(DeviceDetailsTest, ADeviceThatWentInBetweenLeavesEveryFieldEmpty)
{
    openFaxDialogWithDevice();
    moreInfo();
    pBiDi = nullptr;
    moreInfo();
    for (const DeviceObject& object : objects)
        EXPECT_EQ(host.text(object.field), "") << object.field;
    EXPECT_TRUE(host.visible(dialog));
}

TEST_F(DeviceDetailsTest, TheDialogIsClosedByItsButtonOrItsFrame)
{
    openFaxDialogWithDevice();
    for (bool fromFrame : {false, true}) {
        moreInfo();
        host.journal.clear();
        if (fromFrame)
            host.close(dialog);
        else
            host.press("LDAP Info Close");
        EXPECT_EQ(host.journal.all(), lines({R"(set "LDAP Info Dialog" Visibility off)"}));
    }
}
