// The fax component in a driver that is connected to a device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"
#include "tests/servers/slapd_server.h"
#include "tests/servers/snmpd_server.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

#include <chrono>

namespace {

/// A user at the component's dialogs, with a device and the directory that it names.
class RealDeviceTest : public DriverTest {
protected:
    RealDeviceTest() : DriverTest(build_paths::componentLibrary()) {}

    void connect(const servers::SnmpdServer& device)
    {
        options.device.address = device.address();
        options.device.timeout = std::chrono::milliseconds(500);
        start();
    }

    static servers::SnmpdSettings withDirectory(const servers::SlapdServer& directory)
    {
        servers::SnmpdSettings settings;
        settings.objects = servers::directorySettings(directory.address(), servers::SlapdServer::base());
        return settings;
    }

    void openFaxDialog() { driver().call("T40InvokeFaxDialog"); }
    std::string field(const char* name) { return *driver().show(name).text; }
    bool directoryIsOffered() { return driver().show("LDAP PB Type").sensitive; }

    LogCapture log;
};

} // namespace

TEST_F(RealDeviceTest, TheSessionLivesAsLongAsADriverWithADevice)
{
    EXPECT_EQ(pBiDi, nullptr);
    const servers::SnmpdServer device({});
    connect(device);
    EXPECT_NE(pBiDi, nullptr);
    options.device.address.clear();
    start();
    EXPECT_EQ(pBiDi, nullptr);
}

TEST_F(RealDeviceTest, ADeviceThatComesBackOffersItsDirectoryWhenTheDialogIsOpenedAgain)
{
    const servers::SlapdServer directory({});
    servers::SnmpdServer device(withDirectory(directory));
    connect(device);
    device.process().freeze();
    openFaxDialog();
    EXPECT_FALSE(directoryIsOffered());
    EXPECT_EQ(field("LDAP PB Status"), "Unavailable");
    EXPECT_NE(driver().lastFailure().device, "");
    device.process().thaw();
    openFaxDialog();
    EXPECT_TRUE(directoryIsOffered());
    EXPECT_EQ(driver().lastFailure().device, "");
}

TEST_F(RealDeviceTest, AHeldFailureIsLoggedWhenItIsReleased)
{
    servers::SnmpdServer device({});
    options.holdFailures = true;
    connect(device);
    device.process().freeze();
    openFaxDialog();
    EXPECT_THAT(log.messages, testing::IsEmpty());
    driver().releaseFailures();
    EXPECT_THAT(log.messages, testing::ElementsAre(driver().lastFailure().device));
}

TEST_F(RealDeviceTest, AFailureThatACommandEndsWithIsNotLoggedBesides)
{
    servers::SnmpdServer device({});
    options.holdFailures = true;
    connect(device);
    device.process().freeze();
    openFaxDialog();
    const std::string reason = driver().lastFailure().device;
    EXPECT_EQ(refusal([&] { driver().failWith(reason); }), reason);
    options.device.address.clear();
    start(); // the driver before it has ended
    EXPECT_THAT(log.messages, testing::IsEmpty());
}

TEST_F(RealDeviceTest, TheInfoDialogShowsWhatTheDeviceSaysNow)
{
    const servers::SlapdServer directory({});
    servers::SnmpdServer device(withDirectory(directory));
    connect(device);
    openFaxDialog();
    driver().press("LDAP More Info Button");
    EXPECT_EQ(field("LDAP HostPort"), directory.address());
    EXPECT_EQ(field("LDAP Server Type"), "Quelm Fax 7");
    driver().press("LDAP Info Close");
    device.process().stop();
    auto other = withDirectory(directory);
    other.description = "Quelm Fax 8";
    device.startAnother(other);
    driver().press("LDAP More Info Button");
    EXPECT_EQ(field("LDAP Server Type"), "Quelm Fax 8");
}

TEST_F(RealDeviceTest, TheInfoDialogOfADeviceThatWentSilentIsEmpty)
{
    const servers::SlapdServer directory({});
    servers::SnmpdServer device(withDirectory(directory));
    connect(device);
    openFaxDialog();
    driver().press("LDAP More Info Button");
    driver().press("LDAP Info Close");
    device.process().freeze();
    const auto before = std::chrono::steady_clock::now();
    driver().press("LDAP More Info Button");
    EXPECT_LT(std::chrono::steady_clock::now() - before, 3 * options.device.timeout);
    EXPECT_EQ(field("LDAP HostPort"), "");
    EXPECT_EQ(field("LDAP Fax"), "");
    EXPECT_EQ(log.messages.size(), 1U);
    device.process().thaw();
}
