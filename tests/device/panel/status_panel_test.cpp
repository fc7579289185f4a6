// Tests of the status pages as a browser gets them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/status_panel.h"

#include "base/error.h"
#include "tests/device/panel/panel_support.h"
#include "tests/servers/job_sender.h"

#include <atomic>
#include <optional>
#include <thread>

namespace quelm::tests {
namespace {

using namespace device;
using servers::DeviceEnding;
using servers::JobSender;

class StatusPanelTest : public PanelTest {
protected:
    void begin(PanelSettings wanted = {})
    {
        panel.emplace(*folder, *log, std::move(wanted));
        address = panel->address().substr(std::string("http://").size());
        address.pop_back();
    }
    /// What is answered, with its head.
    std::string browse(const std::string& page) const
    {
        JobSender browser(address);
        browser.send("GET " + page + " HTTP/1.1\r\nHost: " + address + "\r\n\r\n");
        EXPECT_EQ(browser.waitForEnding(), DeviceEnding::closed);
        return browser.answer();
    }
    static std::string bodyOf(const std::string& answer)
    {
        return answer.substr(answer.find("\r\n\r\n") + 4);
    }

    std::optional<StatusPanel> panel;
    std::string address;
};

TEST_F(StatusPanelTest, ItSaysWhereItIs)
{
    begin();
    EXPECT_TRUE(panel->address().starts_with("http://127.0.0.1:"));
    EXPECT_TRUE(panel->address().ends_with("/"));
    EXPECT_FALSE(panel->address().ends_with(":0/"));
    const ReadPage status(bodyOf(browse("/")));
    EXPECT_EQ(status.textOf("//h1"), "Status");
}

TEST_F(StatusPanelTest, ItIsServedByIpv6Too)
{
    PanelSettings wanted;
    wanted.address = "::1";
    try {
        begin(wanted);
    } catch (const Error& error) {
        // A machine without IPv6 says so.
        EXPECT_TRUE(holds(error.what(), "[::1]")) << error.what();
        return;
    }
    EXPECT_TRUE(panel->address().starts_with("http://[::1]:"));
    EXPECT_TRUE(browse("/jobs").starts_with("HTTP/1.1 200 "));
}

TEST_F(StatusPanelTest, APortThatIsTakenIsOneClearError)
{
    begin();
    PanelSettings same;
    same.port = static_cast<std::uint16_t>(std::stoi(address.substr(address.rfind(':') + 1)));
    try {
        const StatusPanel second(*folder, *log, same);
        ADD_FAILURE() << "it was taken twice";
    } catch (const Error& error) {
        EXPECT_TRUE(holds(error.what(), address)) << error.what();
    }
    // The first goes on.
    EXPECT_TRUE(browse("/").starts_with("HTTP/1.1 200 "));
}

TEST_F(StatusPanelTest, ItCanBeStartedAgainAtOnceAndShowsWhatIsThereNow)
{
    begin();
    PanelSettings same;
    same.port = static_cast<std::uint16_t>(std::stoi(address.substr(address.rfind(':') + 1)));
    browse("/");
    panel.reset();
    sentJob("5550104477", 2);
    begin(same);
    EXPECT_TRUE(holds(browse("/jobs"), "A letter"));
}

TEST_F(StatusPanelTest, PicturesAndFilesComeOverTheLine)
{
    sentJob("5550104477", 2);
    begin();
    EXPECT_EQ(bodyOf(browse("/received/5550104477/call-1.tif")), tiff(2));
    const auto picture = browse("/received/5550104477/call-1/2-small.png");
    EXPECT_TRUE(holds(picture, "\r\nContent-Type: image/png\r\n"));
    EXPECT_EQ(bodyOf(picture), get("/received/5550104477/call-1/2-small.png").body);
    EXPECT_TRUE(browse("/received/%2e%2e/%2e%2e/device.db").starts_with("HTTP/1.1 404 "));
    EXPECT_TRUE(browse("/received/..%2f..%2fdevice.db").starts_with("HTTP/1.1 404 "));
    EXPECT_TRUE(browse("/received/../../device.db").starts_with("HTTP/1.1 404 "));
}

TEST_F(StatusPanelTest, ClientsThatStallHoldNobodyUp)
{
    PanelSettings wanted;
    wanted.mostConnections = 4;
    begin(wanted);
    std::vector<JobSender> stalling;
    for (int i = 0; i < 20; ++i) {
        stalling.emplace_back(address);
        stalling.back().send("GET / HTTP/1.1\r\nHost: ");
    }
    EXPECT_TRUE(browse("/").starts_with("HTTP/1.1 200 "));
    EXPECT_EQ(stalling[0].waitForEnding(), DeviceEnding::closed);
}

TEST_F(StatusPanelTest, SilentClientsAreNotWaitedForBeyondPatience)
{
    PanelSettings wanted;
    wanted.patience = std::chrono::milliseconds(50);
    begin(wanted);
    JobSender silent(address);
    EXPECT_EQ(silent.waitForEnding(), DeviceEnding::closed);
    EXPECT_TRUE(silent.answer().empty());
}

TEST_F(StatusPanelTest, ManyBrowsersSeeTheSameWhileJobsCome)
{
    sentJob("5550104477", 1);
    begin();
    std::atomic<int> right = 0;
    std::vector<std::jthread> browsers;
    for (int browser = 0; browser < 6; ++browser)
        browsers.emplace_back([&] {
            for (const char* shown : {"/", "/jobs", "/jobs/1", "/calls", "/received/5550104477"})
                right += browse(shown).starts_with("HTTP/1.1 200 ") ? 1 : 0;
        });
    for (int i = 0; i < 20; ++i)
        add(device::tests::faxFor({"555"}));
    browsers.clear();
    EXPECT_EQ(right, 30);
}

} // namespace
} // namespace quelm::tests
