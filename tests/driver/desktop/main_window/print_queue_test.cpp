// Tests of handing jobs from the main window over to queues of a real print server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/desktop/main_window/main_window_fixture.h"
#include "tests/servers/cupsd_server.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using servers::PrinterQueue;
using testing::ElementsAre;
using testing::HasSubstr;

std::string queueName() { return gtk_entry_get_text(GTK_ENTRY(onScreen("Main Destination Queue Name"))); }

/// The items of the list of queues.
std::vector<std::string> listedQueues()
{
    std::vector<std::string> names;
    GtkTreeModel* model = gtk_combo_box_get_model(GTK_COMBO_BOX(onScreen("Main Destination Queue")));
    GtkTreeIter row;
    for (gboolean more = gtk_tree_model_get_iter_first(model, &row); more != FALSE;
         more = gtk_tree_model_iter_next(model, &row)) {
        gchar* name = nullptr;
        gtk_tree_model_get(model, &row, 0, &name, -1);
        names.emplace_back(name);
        g_free(name);
    }
    return names;
}

class MainWindowQueueTest : public MainWindowTest {
protected:
    using MainWindowTest::MainWindowTest;

    /// Starts a print server, and opens a document for one recipient that is to go to one of its queues.
    void start(const std::vector<PrinterQueue>& queues)
    {
        cupsd = std::make_unique<servers::CupsdServer>(servers::CupsdSettings{queues, {}});
        usePrintServer(cupsd->address());
        openDocument();
        fillFax({"Ann"});
        chooseItem("Main Destination Kind", queueItem);
        ASSERT_TRUE(loopUntil([&] { return listedQueues().size() == queues.size(); }));
    }

    std::unique_ptr<servers::CupsdServer> cupsd;
};

TEST_F(MainWindowQueueTest, TheQueuesAreListedAndTheUsualOneIsChosen)
{
    start({{"attic", ""}, {"fax", "", true}, {"office", ""}});
    EXPECT_THAT(listedQueues(), ElementsAre("fax", "attic", "office"));
    EXPECT_EQ(queueName(), "fax");
    EXPECT_EQ(onScreen("Main Destination Hint"), nullptr);
}

TEST_F(MainWindowQueueTest, TheChosenQueuePrintsTheJobAndTheLineNamesBoth)
{
    start({{"fax", "", true}, {"office", ""}});
    chooseItem("Main Destination Queue", 1);
    EXPECT_EQ(sendAndRead(),
              "The fax job of letter.ps for 1 recipient was handed over to queue office, job 1.");
    const auto printed = cupsd->printed(1);
    EXPECT_EQ(printed.content, expectedJob());
    EXPECT_EQ(printed.user, "ann");
    EXPECT_THAT(printed.title, testing::StartsWith("letter.ps [quelm "));
}

TEST_F(MainWindowQueueTest, AnUnknownQueueIsToldBesideTheKnownOnesAndCanBePutRight)
{
    start({{"fax", ""}});
    enterText("Main Destination Queue Name", "fox");
    EXPECT_EQ(sendAndRead(),
              "Queue fox: the print server " + cupsd->address() + " knows no such queue; it has fax");
    enterText("Main Destination Queue Name", "fax");
    EXPECT_THAT(sendAndRead(), HasSubstr("was handed over to queue fax, job 1."));
    EXPECT_EQ(cupsd->printed(1).content, expectedJob());
}

TEST_F(MainWindowQueueTest, AQueueThatTakesNoJobsIsOneLine)
{
    PrinterQueue refusing{"fax", ""};
    refusing.accepting = false;
    start({refusing});
    EXPECT_EQ(sendAndRead(), "Queue fax: takes no jobs at present; let it take them again with "
                             "cupsaccept, or choose another queue");
    EXPECT_FALSE(cupsd->wasPrinted(1));
}

TEST_F(MainWindowQueueTest, ThatAPausedQueueKeepsTheJobIsTold)
{
    PrinterQueue paused{"fax", ""};
    paused.pausedWith = "Out of paper";
    start({paused});
    EXPECT_EQ(sendAndRead(), "The fax job of letter.ps for 1 recipient was handed over to queue fax, job 1; "
                             "the queue is paused (Out of paper).");
}

TEST_F(MainWindowQueueTest, WithoutAPrintServerTheReasonIsShown)
{
    openDocument();
    fillFax({"Ann"});
    chooseItem("Main Destination Kind", queueItem);
    ASSERT_TRUE(loopUntil([] { return shownText("Main Destination Hint") != ""; }));
    EXPECT_THAT(shownText("Main Destination Hint"),
                HasSubstr("the print server 127.0.0.1:1 cannot be reached"));
    enterText("Main Destination Queue Name", "fax");
    EXPECT_THAT(sendAndRead(), HasSubstr("Queue fax: the print server 127.0.0.1:1 cannot be reached"));
}

TEST_F(MainWindowQueueTest, AQueueWhoseClockDiffersHoldsNothingAndTheOutboxKeepsTheFax)
{
    start({{"fax", ""}});
    sendAt(4, 5, false);
    const auto message = sendAndRead();
    EXPECT_THAT(message, testing::StartsWith("The fax job of letter.ps for 1 recipient waits as job 1 of the "
                                             "outbox until tomorrow at 04:05; "));
    EXPECT_THAT(message, HasSubstr("clock"));
    EXPECT_FALSE(cupsd->wasPrinted(1));
    window->close();
    EXPECT_TRUE(loopUntil([] { return onScreen("Main Quit Question Yes") != nullptr; }))
        << "it is the outbox's own now";
}

/// On the clock that the print server has, too.
class MainWindowHoldingQueueTest : public MainWindowQueueTest {
protected:
    MainWindowHoldingQueueTest() : MainWindowQueueTest("") {}
};

TEST_F(MainWindowHoldingQueueTest, AQueueHoldsAFaxForLater)
{
    start({{"fax", ""}});
    const std::tm later = localTimeAt(currentTime() + 7200);
    sendAt(later.tm_hour % 12 == 0 ? 12 : later.tm_hour % 12, later.tm_min, later.tm_hour >= 12);
    EXPECT_THAT(
        sendAndRead(),
        testing::StartsWith("The fax job of letter.ps for 1 recipient was handed over to queue fax, job 1, "
                            "which holds it until "));
    EXPECT_FALSE(cupsd->wasPrinted(1));
    EXPECT_EQ(Outbox(outbox()).job(1).state, OutboxState::handedOver);
}

} // namespace
} // namespace quelm
