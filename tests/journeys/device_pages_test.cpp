// From the typed recipient to the received page: what arrives is what was sent, and nobody else's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/servers/job_sender.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <thread>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using testing::IsEmpty;
using testing::SizeIs;

class DevicePagesJourney : public DeviceJourney {
protected:
    /// A document whose pages each say what they are.
    std::string threePages(const std::string& name) const
    {
        std::string text = "%!PS-Adobe-3.0\n/Helvetica findfont 12 scalefont setfont\n";
        for (int page = 1; page <= 3; ++page)
            text += "72 700 moveto (" + name + ", page " + std::to_string(page) +
                    ") show 72 500 moveto 200 100 rlineto stroke showpage\n";
        return file(name + ".ps", text + "%%EOF\n");
    }

    /// What Ghostscript makes of the job that these options give.
    std::vector<FaxPage> expected(const std::string& document, Arguments options,
                                  const std::string& density) const
    {
        options.insert(options.begin(),
                       {"--now", "2024-03-05T14:07", "fax", document, "--output", path("job")});
        EXPECT_EQ(driver(options).status, 0);
        return renderedPages(path("job"), density, path("expected.tif"));
    }
    /// Sends the same to the device.
    void sendThat(const std::string& document, const Arguments& options) const
    {
        auto all = fax(document, options);
        all.insert(all.begin(), {"--now", "2024-03-05T14:07"});
        const auto result = driver(all);
        EXPECT_EQ(result.status, 0) << result.errors;
    }
};

TEST_F(DevicePagesJourney, EachResolutionArrivesDotByDot)
{
    const auto document = threePages("letter");
    const std::array<std::array<const char*, 3>, 3> resolutions{{
        {"standard", "204x98", "5550000001"},
        {"fine", "204x196", "5550000002"},
        {"superfine", "204x391", "5550000003"},
    }};
    serve({"--lines", "2"});
    for (const auto& [resolution, density, number] : resolutions)
        sendThat(document, {"--to", "Ann=" + std::string(number), "--resolution", resolution});
    ASSERT_TRUE(hasSaid(": done, 1 of 1 sent", 3));
    for (const auto& [resolution, density, number] : resolutions) {
        const auto pages = expected(document, {"--to", "Ann=1", "--resolution", resolution}, density);
        EXPECT_THAT(pages, SizeIs(3));
        EXPECT_EQ(receivedPages(number), pages) << resolution;
    }
}

TEST_F(DevicePagesJourney, ACoverSheetInGreekArrivesAheadOfTheDocumentInBothForms)
{
    const auto document = threePages("letter");
    const Arguments options{"--to", "Αγγελική=5550000001", "--cover", "--note", "Καλημέρα"};
    auto pjl = options;
    pjl[1] = "Αγγελική=5550000002";
    pjl.insert(pjl.end(), {"--pdl", "pjl"});
    serve();
    sendThat(document, options);
    sendThat(document, pjl);
    ASSERT_TRUE(hasSaid(": done, 1 of 1 sent", 2));
    const auto pages = expected(document, options, "204x98");
    EXPECT_THAT(pages, SizeIs(4));
    EXPECT_EQ(receivedPages("5550000001"), pages);
    auto other = options;
    other[1] = "Αγγελική=5550000002"; // stands on the cover sheet
    EXPECT_EQ(receivedPages("5550000002"), expected(document, other, "204x98"));
}

TEST_F(DevicePagesJourney, NobodyReceivesAPageACoverSheetOrANameOfAnotherJob)
{
    struct Client {
        std::string document;
        Arguments options;
        std::vector<std::string> numbers;
    };
    std::vector<Client> clients;
    for (const std::string name : {"Ann", "Bob", "Cleo", "Dora"}) {
        const auto at = std::to_string(clients.size());
        Client client{
            document(name + ".ps", "the letter to " + name), {"--cover", "--note", "for " + name}, {}};
        for (const std::string last : {"1", "2"}) {
            client.numbers.push_back("555000" + at + last);
            client.options.insert(client.options.end(), {"--to", name + "=" + client.numbers.back()});
        }
        clients.push_back(client);
    }
    serve({"--lines", "3"});
    std::vector<std::jthread> senders;
    for (const auto& client : clients)
        senders.emplace_back([this, &client] { sendThat(client.document, client.options); });
    senders.clear();
    ASSERT_TRUE(hasSaid(": done, 2 of 2 sent", clients.size()));

    std::vector<std::string> all;
    for (const auto& client : clients) {
        const auto pages = expected(client.document, client.options, "204x98");
        EXPECT_THAT(pages, SizeIs(2));
        for (const auto& number : client.numbers) {
            EXPECT_EQ(receivedPages(number), pages) << number;
            all.push_back(number);
        }
    }
    EXPECT_EQ(receivers(), all);
}

TEST_F(DevicePagesJourney, FiveHundredRecipientsOfAListReceiveItOnceEach)
{
    std::ostringstream rows;
    rows << "name,number\n";
    constexpr int count = 500;
    for (int i = 0; i < count; ++i)
        rows << "Person " << i << ",555-" << 1000 + i << "\n";
    const auto letter = document("letter.ps", "a letter to everybody");
    const Arguments options{"--recipients", file("list.csv", rows.str())};
    serve({"--lines", "8", "--until-idle"});
    sendThat(letter, options);
    // However busy this computer is, as long as it goes on.
    for (std::size_t sent = 50; sent <= count; sent += 50)
        ASSERT_TRUE(hasSaid(": sent, 1 page,", sent));
    ASSERT_TRUE(deviceEnds());
    EXPECT_THAT(said("job 1: done, 500 of 500 sent"), SizeIs(1));
    EXPECT_THAT(said(": sent, 1 page,"), SizeIs(count));
    const auto pages = expected(letter, options, "204x98");
    EXPECT_THAT(receivers(), SizeIs(count));
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(receivedPages("555" + std::to_string(1000 + i)), pages);
}

TEST_F(DevicePagesJourney, ADocumentThatIsNoFaxIsPrinted)
{
    serve();
    EXPECT_EQ(servers::sendJob(address(), content(fs::path(document("letter.ps", "to paper")).filename())),
              servers::DeviceEnding::closed);
    EXPECT_TRUE(hasSaid("job 1: printed, 1 page"));
    EXPECT_THAT(pagesIn(path("state/printed/job-1.tif")), SizeIs(1));
    EXPECT_THAT(receivers(), IsEmpty());
}

} // namespace
} // namespace journeys
