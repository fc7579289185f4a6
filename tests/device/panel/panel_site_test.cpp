// Tests of the status pages, on a device's real memory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/panel_site.h"

#include "base/error.h"
#include "tests/device/panel/panel_support.h"

#include <algorithm>

namespace quelm::tests {
namespace {

using namespace device;
using device::tests::faxFor;
using device::tests::noon;

using PanelSiteTest = PanelTest;

std::uint32_t numberAt(const std::string& png, std::size_t at)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8U | static_cast<unsigned char>(png.at(at + i));
    return number;
}

TEST_F(PanelSiteTest, AnEmptyDeviceSaysSoOnEveryPage)
{
    EXPECT_TRUE(holds(page("/").textOf("//main"), "The lines are free."));
    EXPECT_TRUE(holds(page("/jobs").textOf("//main"), "No job has come yet."));
    EXPECT_TRUE(holds(page("/calls").textOf("//main"), "No call has been made yet."));
    EXPECT_TRUE(holds(page("/received").textOf("//main"), "Nothing has been received yet."));
    EXPECT_EQ(page("/").count("//meta[@http-equiv='refresh']"), 0U);
}

TEST_F(PanelSiteTest, TheStatusShowsCallsUnderWayWithTheirProgress)
{
    addRendered(faxFor({"5550104477", "5550104478"}), 3);
    const auto due = begin();
    settings.progress = [&] {
        return std::map<int, PanelProgress>{{due.call.number, {1, std::chrono::milliseconds(31'500)}},
                                            {999, {}}};
    };
    settings.now = [] { return noon; };
    const auto status = page("/");
    EXPECT_EQ(status.textOf("(//table)[1]/tbody/tr"),
              "1 A letter 5550104477 1 page 2 of 3  page 2 of 3 0:32");
    EXPECT_EQ(status.count("(//table)[1]/tbody/tr"), 1U);
    EXPECT_EQ(status.values("//progress/@value"), std::vector<std::string>{"1"});
    EXPECT_EQ(status.values("//progress/@max"), std::vector<std::string>{"3"});
    EXPECT_TRUE(holds(status.textOf("//dl"), "2023-11-14 22:13:20"));
    EXPECT_EQ(status.count("//meta[@http-equiv='refresh']"), 1U);
    endSent(due);
    endSent(begin());
    EXPECT_EQ(page("/").count("//meta[@http-equiv='refresh']"), 0U);
}

TEST_F(PanelSiteTest, AJobShowsWhatItAskedForItsRecipientsAndItsCalls)
{
    auto reading = faxFor({"5550104477", "5550104478"});
    reading.destinations[1].mailbox = "42";
    reading.resolution = Resolution::superfine;
    reading.coverSheet = reading.confirmationSheet = true;
    reading.creditCard = "4000123412341234";
    reading.objections = {{7, "OID_ATT_SHOE_SIZE is not known"}};
    const int job = addRendered(reading, 3);
    endSent(begin(), "5550104477", tiff(3));
    const auto due = begin();
    CallRecord busy = due.call;
    busy.state = CallState::ended;
    busy.result = "busy";
    busy.code = -1;
    static_cast<void>(log->endCall(busy, false, noon + std::chrono::seconds(60)));

    const auto shown = page("/jobs/" + std::to_string(job));
    EXPECT_EQ(shown.textOf("//h1"), "Job 1: A letter");
    const std::string facts = shown.textOf("//dl");
    for (const char* part : {"superfine (204 x 391 dots per inch)", "up to 14400 bit/s", "Cover sheet yes",
                             "Credit card yes", "Confirmation yes", "Pages 3", "State calling"})
        EXPECT_TRUE(holds(facts, part)) << part << "\n" << facts;
    EXPECT_TRUE(holds(shown.textOf("//main"), "line 7:  OID_ATT_SHOE_SIZE is not known"));
    EXPECT_EQ(shown.count("//table[caption='Recipients']/tbody/tr"), 2U);
    EXPECT_TRUE(holds(shown.textOf("//table[caption='Recipients']/tbody/tr[1]"), "1 5550104477 sent"));
    EXPECT_TRUE(holds(shown.textOf("//table[caption='Recipients']/tbody/tr[2]"),
                      "2 5550104478 42 waiting busy again at 2023-11-14 22:14:20"))
        << shown.textOf("//table[caption='Recipients']/tbody/tr[2]");
    EXPECT_EQ(shown.count("//table[caption='Calls']/tbody/tr"), 2U);
    EXPECT_EQ(shown.values("//table[caption='Calls']//span[starts-with(@class,'badge')]/@class"),
              (std::vector<std::string>{"badge bad", "badge good"}));
    EXPECT_EQ(shown.count("//meta[@http-equiv='refresh']"), 1U);
    EXPECT_FALSE(holds(get("/jobs/1").body, "4123"));
}

TEST_F(PanelSiteTest, AJobThatIsDoneSaysWhetherEverybodyReceivedIt)
{
    addRendered(faxFor({"555", "556"}));
    const auto fail = [&](const DueCall& due) {
        CallRecord failed = due.call;
        failed.state = CallState::ended;
        failed.code = 17;
        static_cast<void>(log->endCall(failed, false, std::nullopt));
    };
    endSent(begin());
    endSent(begin());
    EXPECT_EQ(page("/jobs").textOf("//tbody/tr/td[6]"), "done");
    addRendered(faxFor({"555", "556"}));
    endSent(begin());
    fail(begin());
    EXPECT_EQ(page("/jobs").textOf("//tbody/tr/td[6]"), "done, 1 failed");
    EXPECT_EQ(page("/jobs").textOf("//tbody/tr/td[4]"), "1 of 2 sent");
    addRendered(faxFor({"555"}));
    fail(begin());
    EXPECT_EQ(page("/jobs").textOf("//tbody/tr/td[6]"), "done, none sent");
    EXPECT_EQ(page("/jobs").values("//tbody/tr/td[6]/span/@class"),
              (std::vector<std::string>{"badge bad", "badge bad", "badge good"}));
}

TEST_F(PanelSiteTest, ALongTitleIsCutInTablesAndWholeOnTheJobsPage)
{
    std::string title;
    for (int i = 0; i < 200; ++i)
        title += "\u9577\u3044";
    addRendered(faxFor({"5550104477"}));
    auto reading = faxFor({"5550104478"});
    reading.title = title;
    addRendered(reading);
    endSent(begin());
    const auto due = begin();
    settings.progress = [&] { return std::map<int, PanelProgress>{{due.call.number, {}}}; };
    std::string shown;
    for (int i = 0; i < 30; ++i)
        shown += "\u9577\u3044";
    shown += "...";
    for (const char* place : {"/", "/jobs"}) {
        const auto page = this->page(place);
        EXPECT_EQ(page.textOf("//table[caption='Jobs']/tbody/tr[1]/td[2]"), shown) << place;
        EXPECT_EQ(page.values("//table[caption='Jobs']//bdi/@title"), std::vector<std::string>{title})
            << place << ": that of the job whose title is cut";
    }
    EXPECT_EQ(page("/").textOf("//table[caption='Calls under way']/tbody/tr[1]/td[2]"), shown);
    EXPECT_EQ(page("/jobs/2").textOf("//h1"), "Job 2: " + title);
}

TEST_F(PanelSiteTest, ARefusedJobSaysWhyItHasNoConfirmationSheet)
{
    auto reading = faxFor({"555"});
    reading.confirmationSheet = true;
    add(reading);
    log->setFailed(1, "the document has no page");
    EXPECT_TRUE(holds(page("/jobs/1").textOf("//dl"), "Confirmation yes Problem the document has no page"))
        << page("/jobs/1").textOf("//dl");
    log->setReported(1);
    EXPECT_TRUE(holds(page("/jobs/1").textOf("//dl"), "Confirmation sheet (PDF) as text Problem"));
    reading.refusals = {{4, "the resolution is none of the table's: 9"}};
    add(reading);
    EXPECT_TRUE(holds(page("/jobs/2").textOf("//dl"), "Confirmation no sheet: nobody was called"));
    reading.confirmationSheet = false;
    add(reading);
    EXPECT_TRUE(holds(page("/jobs/3").textOf("//dl"), "Confirmation no"));
    EXPECT_FALSE(holds(page("/jobs/3").textOf("//dl"), "no sheet"));
}

TEST_F(PanelSiteTest, ACallShowsItsMailboxAndWhatTheLineDidToIt)
{
    addRendered(faxFor({"5550104477", "5550104478"}), 3);
    const auto end = [&](const char* mailbox, int frames, int rows) {
        CallRecord call = begin().call;
        call.state = CallState::ended;
        call.result = "sent";
        call.receiver = "5550104477";
        call.bitRate = 9600;
        call.errorCorrection = true;
        call.mailbox = mailbox;
        call.repeatedFrames = frames;
        call.damagedRows = rows;
        static_cast<void>(log->endCall(call, true, std::nullopt));
    };
    end("42", 7, 1);
    end("", 0, 0);
    for (const char* place : {"/jobs/1", "/calls"}) {
        const auto shown = page(place);
        EXPECT_TRUE(
            holds(shown.textOf("//table[caption='Calls']/tbody/tr[2]/td[7]"), "5550104477 mailbox 42"))
            << shown.textOf("//table[caption='Calls']/tbody/tr[2]/td[7]");
        EXPECT_TRUE(holds(shown.textOf("//table[caption='Calls']/tbody/tr[2]/td[10]"),
                          "9600 bit/s, error correction  7 pieces sent again, 1 line damaged"));
        EXPECT_EQ(shown.textOf("//table[caption='Calls']/tbody/tr[1]/td[10]"),
                  "9600 bit/s, error correction");
        EXPECT_EQ(shown.textOf("//table[caption='Calls']/tbody/tr[1]/td[7]"), "5550104477");
    }
}

TEST_F(PanelSiteTest, ARefusedJobSaysWhyLineByLine)
{
    auto reading = faxFor({});
    reading.refusals = {{4, "the resolution is none of the table's: 9"}, {0, "it names no destination"}};
    const int job = add(reading);
    const auto shown = page("/jobs/" + std::to_string(job));
    EXPECT_TRUE(holds(shown.textOf("//main"), "line 4:  the resolution is none of the table's: 9"));
    EXPECT_TRUE(holds(shown.textOf("//main"), "it names no destination"));
    EXPECT_EQ(shown.textOf("//dl/dd[1]"), "refused");
    EXPECT_EQ(shown.count("//table"), 0U);
}

TEST_F(PanelSiteTest, ListsAreShownInParts)
{
    for (int i = 0; i < 30; ++i)
        add(faxFor({"5550104477"}));
    const auto first = page("/jobs");
    EXPECT_EQ(first.count("//tbody/tr"), 25U);
    EXPECT_TRUE(holds(first.textOf("//tbody/tr[1]"), "30"));
    EXPECT_EQ(first.values("//nav[@class='more']//a/@href"), std::vector<std::string>{"/jobs?before=6"});
    const auto second = page("/jobs", "6");
    EXPECT_EQ(second.count("//tbody/tr"), 5U);
    EXPECT_EQ(second.values("//nav[@class='more']//a/@href"), std::vector<std::string>{"/jobs"});
}

TEST_F(PanelSiteTest, RecipientsAreShownInPartsWithTheirOwnCalls)
{
    std::vector<std::string> numbers;
    for (int i = 0; i < 101; ++i)
        numbers.push_back("555" + std::to_string(1000 + i));
    addRendered(faxFor(numbers));
    endSent(begin());
    const auto first = page("/jobs/1");
    EXPECT_EQ(first.count("//table[caption='Recipients']/tbody/tr"), 100U);
    EXPECT_EQ(first.count("//table[caption='Calls']/tbody/tr"), 1U);
    EXPECT_EQ(first.values("//nav[@class='more']//a/@href"), std::vector<std::string>{"/jobs/1?part=2"});
    const auto second = page("/jobs/1", "", "2");
    EXPECT_EQ(second.count("//table[caption='Recipients']/tbody/tr"), 1U);
    EXPECT_EQ(second.count("//table[caption='Calls']/tbody/tr"), 0U);
    EXPECT_EQ(get("/jobs/1", "", "3").status, 404);
}

TEST_F(PanelSiteTest, CallsLeadToTheirJobAndToWhatWasReceived)
{
    sentJob("5550104477", 2);
    const auto calls = page("/calls");
    EXPECT_EQ(calls.values("//tbody//a/@href"),
              (std::vector<std::string>{"/jobs/1", "/received/5550104477/call-1"}));
}

TEST_F(PanelSiteTest, WhatANumberReceivedIsShownNewestFirst)
{
    sentJob("5550104477", 1);
    sentJob("5550104478", 2);
    sentJob("5550104477", 3);
    const auto all = page("/received");
    EXPECT_EQ(all.count("//figure"), 2U);
    EXPECT_EQ(all.textOf("(//figure)[1]"), "5550104477 2 faxes 3 pages");
    EXPECT_EQ(all.values("//img/@src"),
              (std::vector<std::string>{"/received/5550104477/call-3/1-small.png",
                                        "/received/5550104478/call-2/1-small.png"}));
    const auto one = page("/received/5550104477");
    EXPECT_EQ(one.textOf("(//h2)[1]"), "Call 3");
    EXPECT_EQ(one.textOf("(//h2)[2]"), "Call 1");
    EXPECT_EQ(one.count("//figure"), 4U);
    EXPECT_FALSE(holds(get("/received/5550104477").body, "call-2"));
    EXPECT_EQ(page("/received/5550104477/call-3").count("//figure"), 3U);
    EXPECT_EQ(get("/received/5550104477/call-3.tif").file, folder->receivedCall("5550104477", 3));
    EXPECT_EQ(get("/received/5550104477/call-3.tif").type, "image/tiff");
    // Nobody's fax is found below another's number.
    EXPECT_EQ(get("/received/5550104477/call-2").status, 404);
    EXPECT_EQ(get("/received/5550104477/call-2.tif").status, 404);
    EXPECT_EQ(get("/received/5550104477/call-2/1.png").status, 404);
    EXPECT_EQ(page("/").count("//section[h2='Latest received']//figure"), 3U);
}

TEST_F(PanelSiteTest, AFileOfACallThatIsNotRememberedHasNoFactsOfAnother)
{
    sentJob("5550104477", 1);
    std::filesystem::copy_file(folder->receivedCall("5550104477", 1), folder->receivedCall("5550104477", 7));
    EXPECT_EQ(page("/received/5550104477/call-1").values("//dl//a/@href"),
              (std::vector<std::string>{"/jobs/1", "/received/5550104477/call-1.tif"}));
    EXPECT_EQ(page("/received/5550104477/call-7").values("//dl//a/@href"),
              std::vector<std::string>{"/received/5550104477/call-7.tif"});
}

TEST_F(PanelSiteTest, LongFaxesAreShownInParts)
{
    sentJob("555", 61);
    EXPECT_EQ(page("/received/555").count("//figure"), 8U);
    EXPECT_TRUE(holds(page("/received/555").textOf("//main"), "all 61 pages"));
    EXPECT_EQ(page("/received/555/call-1").count("//figure"), 60U);
    EXPECT_EQ(page("/received/555/call-1").values("//nav[@class='more']//a/@href"),
              std::vector<std::string>{"/received/555/call-1?part=2"});
    EXPECT_EQ(page("/received/555/call-1", "", "2").count("//figure"), 1U);
    EXPECT_EQ(get("/received/555/call-1", "", "3").status, 404);
    EXPECT_EQ(page("/jobs/1").count("//figure"), 8U);
    EXPECT_EQ(page("/jobs/1/pages").count("//figure"), 60U);
    EXPECT_EQ(page("/jobs/1/pages", "", "2").count("//figure"), 1U);
}

TEST_F(PanelSiteTest, PicturesAreWholePagesAndThumbnails)
{
    sentJob("555", 2);
    for (const std::string below : {"/received/555/call-1/", "/jobs/1/pages/"}) {
        const auto whole = get(below + "2.png");
        EXPECT_EQ(whole.status, 200);
        EXPECT_EQ(whole.type, "image/png");
        EXPECT_EQ(numberAt(whole.body, 16), 1728U);
        EXPECT_EQ(numberAt(whole.body, 20), 2248U); // 64 by 40 dots, of 204 by 98 in an inch
        EXPECT_EQ(numberAt(get(below + "2-small.png").body, 16), 320U);
        EXPECT_EQ(numberAt(get(below + "2-small.png").body, 20), 416U);
        EXPECT_EQ(get(below + "3.png").status, 404);
        EXPECT_EQ(get(below + "0.png").status, 404);
        EXPECT_EQ(get(below + "02.png").status, 404);
        EXPECT_EQ(get(below + "2.gif").status, 404);
    }
}

TEST_F(PanelSiteTest, ADamagedFileIsABlankSheet)
{
    sentJob("555", 1);
    writeFile(folder->receivedCall("555", 1), "no TIFF file");
    EXPECT_EQ(numberAt(get("/received/555/call-1/1.png").body, 16), 1728U);
    EXPECT_TRUE(holds(page("/received/555/call-1").textOf("//main"), "The file cannot be shown."));
    EXPECT_EQ(page("/received").count("//figure"), 1U);
    EXPECT_EQ(page("/").count("//figure"), 1U);
}

TEST_F(PanelSiteTest, ConfirmationSheetsAreServedWhenTheyAreThere)
{
    auto reading = faxFor({"555"});
    reading.confirmationSheet = true;
    addRendered(reading);
    endSent(begin());
    EXPECT_EQ(get("/reports/1.pdf").status, 404);
    writeFile(folder->reportPdf(1), "%PDF-");
    writeFile(folder->reportText(1), "Fax confirmation");
    log->setReported(1);
    EXPECT_EQ(get("/reports/1.pdf").file, folder->reportPdf(1));
    EXPECT_EQ(get("/reports/1.pdf").type, "application/pdf");
    EXPECT_EQ(get("/reports/1.txt").type, "text/plain; charset=utf-8");
    EXPECT_EQ(page("/jobs/1").values("//dl//a/@href"),
              (std::vector<std::string>{"/reports/1.pdf", "/reports/1.txt"}));
}

TEST_F(PanelSiteTest, WhatSendersWriteIsShownAsItIsAndIsNoMarkup)
{
    const std::string title = "<script>alert(1)</script> & \"'\n\x1B[2J \u05e9\u05dc\u05d5\u05dd \u202e \xFF";
    sentJob("555", 1, title);
    for (const char* place : {"/", "/jobs", "/jobs/1", "/jobs/1/pages"}) {
        const auto shown = page(place);
        EXPECT_EQ(shown.count("//script"), 0U) << place;
        EXPECT_TRUE(
            holds(shown.textOf("/html"), "<script>alert(1)</script> & \"'  [2J \u05e9\u05dc\u05d5\u05dd"))
            << place;
    }
}

TEST_F(PanelSiteTest, NothingLiesOutsideOfWhatIsShown)
{
    sentJob("555", 1);
    writeFile(folder->path() / "received" / "secret", "secret");
    for (const char* place : {"/../device.db",
                              "/received/..",
                              "/received/../device.db",
                              "/received/../call-1.tif",
                              "/received/.",
                              "/received/secret",
                              "/received//call-1.tif",
                              "/received/555/..",
                              "/received/555/call-1/../../",
                              "/received/555/call-01.tif",
                              "/received/555/call--1.tif",
                              "/received/555/call-1.tif/x",
                              "/received/555/call-1/1.png/x",
                              "/jobs/0",
                              "/jobs/-1",
                              "/jobs/01",
                              "/jobs/1x",
                              "/jobs/99999999999",
                              "/jobs/2",
                              "/jobs/1/x",
                              "/jobs/1/pages/1.png/x",
                              "/jobs/2/pages",
                              "/jobs/2/pages/1.png",
                              "/reports",
                              "/reports/1",
                              "/reports/2.pdf",
                              "/reports/1.pdf/x",
                              "/reports/../device.db",
                              "/device.db",
                              "//",
                              "",
                              "jobs",
                              "/JOBS",
                              "/style.css/x",
                              "/favicon.ico"}) {
        const auto answer = get(place);
        EXPECT_EQ(answer.status, 404) << place;
        EXPECT_TRUE(answer.file.empty()) << place;
        ReadPage read(answer.body);
    }
    EXPECT_EQ(get("/" + std::string(100'000, '/')).status, 404);
    EXPECT_EQ(get(std::string("/jobs/1\0", 8)).status, 404);
    // A slash at the end changes nothing.
    EXPECT_EQ(get("/received/555/").status, 200);
    for (const char* number : {"0", "-1", "x", "1x", "01", "99999999999", "1000001"})
        EXPECT_EQ(get("/received", "", number).status, 404) << number;
    for (const char* number : {"0", "-1", "x", "1x", "01", "99999999999"})
        EXPECT_EQ(get("/jobs", number).status, 404) << number;
    std::filesystem::remove(folder->receivedCall("555", 1));
    std::filesystem::create_symlink(folder->database(), folder->receivedCall("555", 1));
    EXPECT_EQ(get("/received/555/call-1.tif").status, 404);
}

TEST_F(PanelSiteTest, AFolderThatCannotBeReadShowsNothing)
{
    std::filesystem::remove_all(folder->path() / "received");
    EXPECT_TRUE(holds(page("/received").textOf("//main"), "Nothing has been received yet."));
    EXPECT_EQ(get("/received/555").status, 404);
}

TEST_F(PanelSiteTest, ADatabaseThatCannotBeReadIsSaid)
{
    add(faxFor({"555"}));
    writeFile(folder->database(), std::string(100'000, 'x'));
    const auto answer = get("/jobs");
    EXPECT_EQ(answer.status, 500);
    EXPECT_EQ(ReadPage(answer.body).textOf("//h1"), "Failed");
    EXPECT_TRUE(holds(answer.body, "device.db")) << answer.body;
}

TEST_F(PanelSiteTest, TheStyleSheetIsForLightAndDarkScreens)
{
    const auto style = get("/style.css");
    EXPECT_EQ(style.status, 200);
    EXPECT_EQ(style.type, "text/css; charset=utf-8");
    EXPECT_TRUE(holds(style.body, "prefers-color-scheme: dark"));
    EXPECT_TRUE(holds(style.body, "max-width: 40rem"));
    EXPECT_TRUE(holds(style.body, "td { overflow-wrap: break-word;")) << "words stay whole in a narrow cell";
    EXPECT_EQ(std::ranges::count(style.body, '{'), std::ranges::count(style.body, '}'));
    EXPECT_FALSE(holds(style.body, "url("));
}

} // namespace
} // namespace quelm::tests
