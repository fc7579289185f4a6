// Faxes that wait for their time, and those that were handed over and are sent again.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/print_listener.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>
#include <fstream>
#include <iterator>
#include <thread>

namespace journeys {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using servers::Ending;
using servers::Manner;
using servers::PrintListener;
using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* nobodySends =
    "no program is there that sends it: open the desktop, run \"quelm-driver outbox run --wait\", or run "
    "\"systemctl --user enable --now quelm-outbox.timer\" once";

class OutboxJourney : public Journey {
protected:
    /// Runs the driver when clocks in `zone` show `now`; without it by the machine's own clock.
    Result at(const std::string& now, const Arguments& arguments, const std::string& input = {}) const
    {
        Request request;
        if (!now.empty())
            request.arguments = {"--now", now};
        request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
        request.environment = {"TZ=" + zone};
        request.input = input;
        return driver(request);
    }

    Arguments fax(const Arguments& options) const
    {
        Arguments all{"fax", letter, "--to", "Ann=555-1234"};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }

    /// The job as it is at that time.
    std::string job(const std::string& now, const Arguments& options = {}) const
    {
        auto arguments = fax({"--output", "-", "--send-now"});
        arguments.insert(arguments.end(), options.begin(), options.end());
        return at(now, arguments).output;
    }

    /// All jobs of the outbox.
    Json jobs(const std::string& now = evening) const
    {
        const auto result = at(now, {"outbox", "list", "--json"});
        EXPECT_EQ(result.status, 0) << result.errors;
        return Json::parse(result.output);
    }

    /// "handed over" and the like of a job.
    std::string state(int number, const std::string& now = evening) const
    {
        for (const auto& one : jobs(now))
            if (one["number"] == number)
                return one["state"];
        return "not there";
    }

    /// Whether any file of the outbox holds the bytes.
    bool isKept(const std::string& bytes) const
    {
        return std::ranges::any_of(fs::recursive_directory_iterator(states()), [&](const auto& entry) {
            if (!entry.is_regular_file())
                return false;
            std::ifstream stream(entry.path(), std::ios::binary);
            const std::string text((std::istreambuf_iterator<char>(stream)), {});
            return text.find(bytes) != std::string::npos;
        });
    }

    fs::path states() const { return home.parent_path() / "home/state"; }

    static constexpr const char* evening = "2026-11-22T18:00";
    static constexpr const char* night = "2026-11-23T04:05";
    std::string zone = "Asia/Kolkata";
    std::string letter = document("letter.ps", "Hello");
};

TEST_F(OutboxJourney, AFaxForTheNightWaitsAndGoesOutThen)
{
    PrintListener device(Manner::takesAll);
    const auto queued = withoutSummary(at(evening, fax({"--device", device.address(), "--send-at", "4:05"})));
    EXPECT_EQ(queued.status, 0);
    EXPECT_EQ(queued.output, "");
    EXPECT_EQ(queued.errors,
              "the device is not told the time; the outbox keeps it\njob 1 in the outbox: fax job "
              "of " +
                  letter + " for 1 recipient waits until tomorrow at 04:05; " + nobodySends + "\n");
    ASSERT_EQ(jobs().size(), 1U);
    EXPECT_EQ(jobs()[0]["due"], "2026-11-23T04:05:00+05:30");
    EXPECT_EQ(jobs()[0]["destination"]["address"], device.address());

    EXPECT_EQ(at("2026-11-23T04:04", {"outbox", "run"}).errors, "");
    EXPECT_EQ(device.connections(), 0);
    const auto run = at(night, {"outbox", "run"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors,
              "job 1: device " + device.address() + ": fax job of letter.ps for 1 recipient handed over\n");
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), job(evening)) << "the job is the one of its queueing, byte for byte";
    EXPECT_EQ(state(1, night), "handed over");
    EXPECT_EQ(at(night, {"outbox", "run"}).errors, "");
    EXPECT_EQ(device.connections(), 1);
}

TEST_F(OutboxJourney, TheMomentIsThatOfTheUsersClockAcrossTheChangeOfSummerTime)
{
    zone = "Europe/Berlin";
    for (const auto& [now, time] : {std::pair{"2026-03-28T12:00", "02:30"},
                                    {"2026-10-24T12:00", "02:30"},
                                    {"2026-10-24T12:00", "00:00"},
                                    {"2026-12-31T23:59", "12:00"}})
        EXPECT_EQ(at(now, fax({"--output", path("job"), "--send-at", time})).status, 0);
    const auto all = jobs();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0]["due"], "2026-03-29T03:30:00+02:00") << "02:30 is left out on that day";
    EXPECT_EQ(all[1]["due"], "2026-10-25T02:30:00+02:00") << "the first of two";
    EXPECT_EQ(all[2]["due"], "2026-10-25T00:00:00+02:00");
    EXPECT_EQ(all[3]["due"], "2027-01-01T12:00:00+01:00");
    EXPECT_FALSE(exists("job"));
}

TEST_F(OutboxJourney, AFileAppearsAtItsTimeWhereverTheDriverRunsThen)
{
    ASSERT_EQ(at(evening, fax({"--output", path("night.job"), "--send-at", "04:05"})).status, 0);
    EXPECT_FALSE(exists("night.job"));
    EXPECT_EQ(at(night, {"outbox", "run"}).errors,
              "job 1: " + path("night.job") + ": fax job of letter.ps for 1 recipient\n");
    EXPECT_EQ(content("night.job"), job(evening));

    ASSERT_EQ(at(evening, fax({"--output", path("soon.job"), "--send-at", "04:05"})).status, 0);
    EXPECT_EQ(at(evening, {"outbox", "send", "2"}).errors,
              "job 2: " + path("soon.job") + ": fax job of letter.ps for 1 recipient\n");
    EXPECT_EQ(content("soon.job"), job(evening)) << "it does not wait for its time any more";
    expectFailure(at(evening, {"outbox", "send", "2"}), 1, "2");
}

TEST_F(OutboxJourney, TheCurrentMinuteMeansAtOnce)
{
    PrintListener device(Manner::takesAll);
    const auto result =
        withoutSummary(at(evening, fax({"--device", device.address(), "--send-at", "18:00"})));
    EXPECT_THAT(result.errors, EndsWith("handed over\n"));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
}

TEST_F(OutboxJourney, AKeptSendAtWaitsInLaterFaxesUnlessTheyAreToGoNow)
{
    const auto chosen = at(evening, {"script", "-"},
                           "call T40InvokeFaxDialog\nchoose \"LanFax Send Time\" 1\nchoose \"SendAtHr\" 4\n"
                           "choose \"SendAtMin\" 5\nchoose \"SendAtAmPm\" 0\npress \"LanFax OK Button\"\n");
    ASSERT_EQ(chosen.status, 0) << chosen.errors;
    PrintListener device(Manner::takesAll);
    EXPECT_THAT(at(evening, fax({"--device", device.address()})).errors,
                HasSubstr("waits until tomorrow at 04:05; "));
    EXPECT_EQ(device.connections(), 0);
    EXPECT_THAT(at(evening, fax({"--device", device.address(), "--send-now"})).errors,
                EndsWith("handed over\n"));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    expectFailure(at(evening, fax({"--output", "-"})), 1, "a fax job for standard output cannot wait");
}

TEST_F(OutboxJourney, AScriptIsAnsweredInAFixedForm)
{
    PrintListener device(Manner::takesAll);
    const auto result = at(evening, {"script", "-"},
                           "call T40InvokeFaxDialog\nchoose \"LanFax Send Time\" 1\nchoose \"SendAtHr\" 4\n"
                           "choose \"SendAtMin\" 5\nchoose \"SendAtAmPm\" 0\npress \"AddFaxRcpt\"\n"
                           "type \"RecipientName\" \"Ann\"\ntype \"RecipientNumber\" \"555-1234\"\n"
                           "press \"LanFaxAddRcpt OK Button\"\npress \"LanFax OK Button\"\n"
                           "summary \"" +
                               letter + "\"\nfax \"" + letter + "\" device " + device.address() + "\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output,
                EndsWith("ok\nsummary 8\nrecipient \"Ann\" \"555-1234\"\ndocument \"letter.ps\" "
                         "pages 1\ncover no\nresolution \"standard\"\nspeed \"super-g3\"\n"
                         "confirmation yes\ntime \"2026-11-23T04:05:00+05:30\"\nunsent \"the "
                         "device is not told the time; the outbox keeps it\"\n"
                         "ok\nwaits outbox job 1 until \"2026-11-23T04:05:00+05:30\"\n"));
    EXPECT_THAT(result.errors, EndsWith(std::string(nobodySends) + "\n"));
    EXPECT_EQ(device.connections(), 0);
}

TEST_F(OutboxJourney, AnyJobCanBePutInAndARunSendsItOnce)
{
    PrintListener device(Manner::takesAll);
    const auto queued = at(evening, fax({"--device", device.address(), "--outbox"}));
    EXPECT_THAT(queued.errors, HasSubstr("job 1 in the outbox: fax job of " + letter +
                                         " for 1 recipient waits to be sent; "));
    std::vector<Result> runs(2);
    {
        std::vector<std::jthread> programs;
        for (auto& run : runs)
            programs.emplace_back([this, &run] { run = at(evening, {"outbox", "run"}); });
    }
    for (const auto& run : runs) {
        EXPECT_EQ(run.status, 0);
        EXPECT_THAT(run.errors, AnyOf(HasSubstr("handed over"),
                                      HasSubstr("another \"quelm-driver outbox run\""), IsEmpty()));
    }
    EXPECT_EQ(state(1), "handed over");
    device.stop();
    EXPECT_EQ(device.connections(), 1);
}

TEST_F(OutboxJourney, AJobThatIsOverdueAsks)
{
    PrintListener device(Manner::takesAll);
    ASSERT_EQ(at(evening, fax({"--device", device.address(), "--send-at", "04:05"})).status, 0);
    const auto question =
        HasSubstr("quelm-driver: job 1 (letter.ps) was due today at 04:05 and is not sent without your word: "
                  "run \"quelm-driver outbox send 1\", or \"quelm-driver outbox cancel 1\"\n");
    const std::string late = "2026-11-23T05:06";
    const auto run = at(late, {"outbox", "run"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, question);
    EXPECT_EQ(at(late, {"outbox", "run", "--quiet"}).errors, "");
    const auto list = at(late, {"outbox", "list"});
    EXPECT_THAT(list.output, HasSubstr("overdue"));
    EXPECT_THAT(list.errors, question);
    EXPECT_EQ(device.connections(), 0);

    Request request;
    request.arguments = {"--now", late, "outbox", "run"};
    request.environment = {"TZ=" + zone};
    request.inputIsTerminal = true;
    request.input = "n\n";
    EXPECT_THAT(driver(request).errors, HasSubstr("Send it now? [y/n] "));
    EXPECT_EQ(device.connections(), 0);
    request.input = "y\n";
    EXPECT_THAT(driver(request).errors, HasSubstr("handed over"));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
}

TEST_F(OutboxJourney, AProgramKilledOnTheWayToADeviceLeavesAnUncertainJob)
{
    PrintListener device(Manner::stalls, 5000);
    letter = file("large.ps", content("letter.ps") + "%" + std::string(std::size_t{24} << 20U, 'x') + "\n");
    Request request;
    request.arguments = fax({"--device", device.address()});
    request.meanwhile = [&](int process) {
        EXPECT_TRUE(device.waitForBytes(5000));
        ::kill(process, SIGKILL);
    };
    EXPECT_EQ(driver(request).status, 128 + SIGKILL);
    const auto list = driver({"outbox", "list"});
    EXPECT_THAT(list.output, HasSubstr("uncertain"));
    EXPECT_THAT(list.errors, HasSubstr("device " + device.address() + " may have it already"));
    EXPECT_EQ(driver({"outbox", "run"}).status, 0);
    EXPECT_EQ(device.connections(), 1) << "it is not sent again by itself";
    expectFailure(driver({"outbox", "send", "1"}), 1, "say --yes to send it all the same");
    Request terminal;
    terminal.arguments = {"outbox", "send", "1"};
    terminal.inputIsTerminal = true;
    terminal.input = "n\n";
    const auto declined = driver(terminal);
    EXPECT_EQ(declined.status, 1);
    EXPECT_THAT(declined.errors, HasSubstr("Send it once more? [y/n] "));
    EXPECT_THAT(declined.errors, EndsWith("quelm-driver: job 1 is left as it is\n"));
    EXPECT_EQ(device.connections(), 1);

    PrintListener other(Manner::takesAll);
    EXPECT_THAT(
        driver({"outbox", "resend", "1", "--device", other.address()}).errors,
        HasSubstr("device " + other.address() + ": fax job of large.ps for 1 recipient handed over\n"));
    EXPECT_EQ(driver({"outbox", "cancel", "1"}).status, 0);
    EXPECT_EQ(jobs("")[0]["state"], "cancelled");
}

TEST_F(OutboxJourney, WhatWasHandedOverCanBeSentAgain)
{
    PrintListener device(Manner::takesAll);
    ASSERT_EQ(at(evening,
                 fax({"--device", device.address(), "--resolution", "fine", "--cover", "--note", "Call me"}))
                  .status,
              0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    const auto first = device.received();
    EXPECT_EQ(state(1), "handed over");

    const auto again = at(night, {"outbox", "resend", "1"});
    EXPECT_EQ(again.errors,
              "job 2: device " + device.address() + ": fax job of letter.ps for 1 recipient handed over\n");
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), first);
    EXPECT_EQ(jobs()[1]["sentBefore"], 1);

    fs::remove(letter);
    const auto toBob =
        at(evening, {"outbox", "resend", "1", "--to", "Bob=555-9", "--output", path("bob.job")});
    EXPECT_EQ(toBob.status, 0) << toBob.errors;
    EXPECT_EQ(toBob.errors, path("bob.job") + ": fax job of letter.ps for 1 recipient\n");
    const auto bobs = content("bob.job");
    EXPECT_THAT(bobs, HasSubstr("OID_ATT_FAX_DESTINATION_PHONE \"5559\""));
    EXPECT_THAT(bobs, Not(HasSubstr("5551234"))) << "the former recipients stay where they are";
    EXPECT_THAT(bobs, HasSubstr("OID_ATT_FAX_RESOLUTION 1;")) << "the options are those of the job";
    EXPECT_THAT(bobs, HasSubstr("Call me"));
    EXPECT_THAT(pages(path("bob.job")).back(), HasSubstr("Hello"));
}

TEST_F(OutboxJourney, AJobForOthersIsMadeOfWhatTheJobHeldWhateverTheDialogsShow)
{
    PrintListener device(Manner::takesAll);
    const std::string send = "fax \"" + letter + "\" device " + device.address() + "\n";
    const std::string open = "call T40InvokeFaxDialog\n";
    const std::string toAnn =
        open + "press \"AddFaxRcpt\"\ntype \"RecipientName\" \"Ann\"\ntype \"RecipientNumber\" \"555\"\n"
               "press \"LanFaxAddRcpt OK Button\"\n";
    const auto sent = [&](const std::string& script) {
        EXPECT_EQ(at(evening, {"script", file("script", toAnn + script + send)}).status, 0);
        EXPECT_EQ(device.waitForEnding(), Ending::closed);
        return device.received();
    };
    const auto sentToBob = [&](int number) {
        EXPECT_EQ(at(evening,
                     {"outbox", "resend", std::to_string(number), "--to", "Bob=777", "--output", path("bob")})
                      .status,
                  0);
        return content("bob");
    };
    // Unticking the box takes no prefix out of a job.
    const auto prefixed =
        sent("tick \"LanFax Dialing Prefix\" on\ntype \"LanFax Dialing Prefix Info\" \"9\"\n"
             "press \"LanFax OK Button\"\n" +
             open + "tick \"LanFax Dialing Prefix\" off\npress \"LanFax OK Button\"\n");
    EXPECT_THAT(prefixed, HasSubstr("PHONE \"9,555\""));
    EXPECT_THAT(sentToBob(1), HasSubstr("PHONE \"9,777\""));

    const auto bare = sent("choose \"LanFax Cover Sheet Option\" 0\npress \"LanFax OK Button\"\n" + open +
                           "choose \"LanFax Cover Sheet Option\" 1\n"
                           "type \"LanFax Cover Sheet Notes\" \"secret\"\npress \"LanFax Cancel Button\"\n");
    EXPECT_THAT(bare, Not(HasSubstr("secret")));
    EXPECT_THAT(sentToBob(2), Not(HasSubstr("secret")));
    EXPECT_EQ(pages(path("bob")).size(), 1U) << "without a cover page";
}

TEST_F(OutboxJourney, AKeptJobThatCannotBeSentAgainIsNamedByItsOwnNumber)
{
    PrintListener device(Manner::takesAll);
    ASSERT_EQ(driver(fax({"--device", device.address()})).status, 0);
    const auto result = driver({"outbox", "resend", "1", "--output", path("missing/fax.job")});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("job 1 was not sent again: "));
    EXPECT_THAT(result.errors, Not(HasSubstr("job 2")));
    EXPECT_EQ(jobs("").size(), 1U);
}

TEST_F(OutboxJourney, OtherRecipientsGetTheirOwnNamesAndTheNoteIsSaid)
{
    PrintListener device(Manner::takesAll);
    ASSERT_EQ(driver(fax({"--device", device.address(), "--cover", "--note", "Call me", "--show-recipients",
                          "--custom-text", "Dear Ann alone"}))
                  .status,
              0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    const Arguments toBob{"outbox", "resend", "1", "--to", "Bob=555-9", "--output"};
    const auto resend = [&](const std::string& name, const Arguments& more) {
        auto arguments = toBob;
        arguments.push_back(path(name));
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto result = driver(arguments);
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.errors;
    };
    EXPECT_THAT(resend("a.job", {}),
                HasSubstr("the text \"Dear Ann alone\" in place of the recipients' names is not taken to "
                          "other recipients"));
    EXPECT_THAT(content("a.job"), Not(HasSubstr("Dear Ann")));
    EXPECT_THAT(pages(path("a.job")).front(), HasSubstr("Bob"));
    EXPECT_THAT(pages(path("a.job")).front(), HasSubstr("Callme"));
    EXPECT_THAT(resend("b.job", {"--note", "Bob, call me", "--custom-text", "Dear Bob"}),
                Not(HasSubstr("not taken")));
    EXPECT_THAT(pages(path("b.job")).front(), AllOf(HasSubstr("DearBob"), HasSubstr("Bob,callme")));
    resend("c.job", {"--no-cover"});
    EXPECT_THAT(content("c.job"), Not(HasSubstr("Call me")));
    auto device2 = toBob;
    device2[5] = "--device";
    device2.push_back(device.address());
    EXPECT_THAT(driver(device2).errors,
                HasSubstr("a cover sheet with the note \"Call me\" and 1 page of letter.ps\n"));
    expectFailure(driver({"outbox", "resend", "1", "--note", "Hi"}), 2, "--note needs --to");
}

TEST_F(OutboxJourney, TheCardIsForgottenAndAskedForAgain)
{
    const std::string number = "4111111111112345";
    const Arguments card{"--credit-card-file", file("card", number + "\n")};
    fs::permissions(path("card"), fs::perms::owner_read | fs::perms::owner_write);
    PrintListener device(Manner::takesAll);
    auto arguments = fax({"--device", device.address()});
    arguments.insert(arguments.end(), card.begin(), card.end());
    ASSERT_EQ(at(evening, arguments).status, 0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    const auto first = device.received();
    EXPECT_THAT(first, HasSubstr(number));
    EXPECT_FALSE(isKept(number));

    const auto refused = at(night, {"outbox", "resend", "1"});
    expectFailure(refused, 1, "job 1 charged a credit card, whose number is not kept");
    Arguments again{"outbox", "resend", "1"};
    again.insert(again.end(), card.begin(), card.end());
    ASSERT_EQ(at(night, again).status, 0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), first) << "the card's line is where it was";

    Request request;
    request.arguments = {"outbox", "resend", "1"};
    request.inputIsTerminal = true;
    request.errorsAreTerminal = true;
    request.input = "4222222222225555\n";
    const auto asked = driver(request);
    EXPECT_EQ(asked.status, 0) << asked.errors;
    EXPECT_THAT(asked.errors, HasSubstr("(it is not shown)"));
    EXPECT_THAT(asked.errors, Not(HasSubstr("4222")));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_THAT(device.received(), HasSubstr("4222222222225555"));

    ASSERT_EQ(at(night, {"outbox", "resend", "1", "--without-card"}).status, 0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_THAT(device.received(), Not(HasSubstr("CREDIT_CARD")));
    EXPECT_FALSE(isKept(number));
    EXPECT_FALSE(isKept("4222222222225555"));
}

TEST_F(OutboxJourney, NothingIsKeptWhereTheConfigurationSaysSo)
{
    PrintListener device(Manner::takesAll);
    const auto configuration = file("quelm.conf", "[outbox]\nkeep-days=0\n");
    auto arguments = fax({"--device", device.address(), "--config", configuration});
    EXPECT_EQ(at(evening, arguments).status, 0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_FALSE(fs::exists(states()));
    arguments.insert(arguments.end(), {"--send-at", "04:05"});
    EXPECT_EQ(at(evening, arguments).status, 0);
    EXPECT_EQ(jobs().size(), 1U) << "what waits is there all the same";
    EXPECT_EQ(at(night, {"outbox", "run", "--config", configuration}).status, 0);
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_THAT(jobs(night), IsEmpty());
}

TEST_F(OutboxJourney, WithoutAPlaceForItAJobGoesOutNowAndNoneWaits)
{
    std::ofstream(states()) << "a file in the way\n";
    PrintListener device(Manner::takesAll);
    const auto now = withoutSummary(at(evening, fax({"--device", device.address()})));
    EXPECT_EQ(now.status, 0);
    EXPECT_THAT(now.errors, HasSubstr("warning: the fax job goes out without being kept in the outbox: "));
    EXPECT_THAT(now.errors, EndsWith("handed over\n"));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    const auto later = withoutSummary(at(evening, fax({"--device", device.address(), "--send-at", "04:05"})));
    EXPECT_EQ(later.status, 1);
    EXPECT_THAT(later.errors, HasSubstr(states().string()));
    EXPECT_EQ(device.connections(), 1);
}

TEST_F(OutboxJourney, AQueueHoldsAJobUntilItsTimeAndGivesItBack)
{
    servers::CupsdServer cupsd({{{"fax"}}});
    Request request;
    request.environment = {"TZ=UTC", "CUPS_SERVER=" + cupsd.address()};
    const std::time_t due = std::time(nullptr) + 7200;
    std::tm clock{};
    ::gmtime_r(&due, &clock);
    std::array<char, 6> time{};
    std::strftime(time.data(), time.size(), "%H:%M", &clock);
    request.arguments = fax({"--queue", "fax", "--send-at", time.data()});
    const auto held = withoutSummary(driver(request));
    EXPECT_EQ(held.status, 0);
    EXPECT_THAT(held.errors, HasSubstr("queue fax, job 1: fax job of " + letter +
                                       " for 1 recipient handed over, and held until "));
    EXPECT_THAT(held.errors, HasSubstr(std::string(" at ") + time.data()));
    EXPECT_FALSE(cupsd.wasPrinted(1));
    request.arguments = {"outbox", "list"};
    EXPECT_THAT(driver(request).output, HasSubstr("held by the queue"));
    request.arguments = {"outbox", "cancel", "1"};
    const auto cancelled = driver(request);
    EXPECT_EQ(cancelled.status, 0) << cancelled.errors;
    EXPECT_EQ(jobs("")[0]["state"], "cancelled");
    EXPECT_FALSE(cupsd.wasPrinted(1));

    request.environment.back() = "CUPS_SERVER=" + path("no-socket");
    request.arguments = fax({"--queue", "fax", "--send-at", time.data()});
    const auto here = driver(request);
    EXPECT_EQ(here.status, 0);
    EXPECT_THAT(here.errors,
                HasSubstr("job 2 in the outbox: fax job of " + letter + " for 1 recipient waits until "));
    EXPECT_THAT(here.errors, HasSubstr("cannot be reached")) << "why the queue does not hold it";
}

TEST_F(OutboxJourney, AFullDiskIsToldAndLeavesNothing)
{
    PrintListener device(Manner::takesAll);
    const std::string head = "%!PS\nshowpage\n%";
    constexpr std::size_t room = 1'000'000;
    letter = file("large.ps", head + std::string(room - head.size() - 10, 'x') + "\n");
    const auto later = fax({"--device", device.address(), "--send-at", "04:05"});
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit full{room, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    const auto result = at(evening, later);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr(states().string()));
    EXPECT_THAT(jobs(), IsEmpty());
    EXPECT_FALSE(isKept(std::string(100, 'x')));
}

TEST_F(OutboxJourney, AFailureIsToldAndStaysInTheList)
{
    const auto closed = "127.0.0.1:1";
    ASSERT_EQ(at(evening, fax({"--device", closed, "--outbox"})).status, 0);
    const auto run = at(evening, {"outbox", "run"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("quelm-driver: job 1: device 127.0.0.1:1: refuses the connection"));
    EXPECT_THAT(run.errors,
                EndsWith("quelm-driver: 1 job was not handed over; see quelm-driver outbox list\n"));
    EXPECT_EQ(state(1), "failed");
    EXPECT_THAT(at(evening, {"outbox", "show", "1"}).output, HasSubstr("refuses the connection"));
    expectFailure(at(evening, {"outbox", "send", "1"}), 1, "job 1: device 127.0.0.1:1: refuses");

    EXPECT_EQ(withoutSummary(at(evening, fax({"--device", closed}))).status, 1);
    EXPECT_EQ(jobs().size(), 1U) << "of a fax that failed at once its command has told";
}

TEST_F(OutboxJourney, JobsAreCancelledOneByOne)
{
    for (int i = 0; i < 2; ++i)
        ASSERT_EQ(at(evening, fax({"--output", path("job"), "--send-at", "04:05"})).status, 0);
    const auto result = at(evening, {"outbox", "cancel", "1", "7", "2"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("job 1 (letter.ps) is cancelled\n"));
    EXPECT_THAT(result.errors, HasSubstr("7"));
    EXPECT_THAT(result.errors, HasSubstr("job 2 (letter.ps) is cancelled\n"));
    EXPECT_EQ(at(night, {"outbox", "run"}).errors, "");
    EXPECT_FALSE(exists("job"));
    expectFailure(at(evening, {"outbox", "cancel", "1"}), 1, "");
}

TEST_F(OutboxJourney, ARunThatWaitsIsTheOneThatSendsAndEndsWithCtrlC)
{
    ASSERT_EQ(at(evening, fax({"--output", path("job"), "--send-at", "04:05"})).status, 0);
    Request request;
    request.arguments = {"--now", evening, "outbox", "run", "--wait"};
    request.environment = {"TZ=" + zone};
    std::string second;
    Result quiet;
    request.meanwhile = [&](int process) {
        while (second.find("another") == std::string::npos)
            second = at(evening, {"outbox", "run"}).errors;
        quiet = at(evening, {"outbox", "run", "--quiet"});
        EXPECT_THAT(at(evening, fax({"--output", path("b"), "--send-at", "05:05"})).errors,
                    HasSubstr("the running \"quelm-driver outbox run\" sends it"));
        ::kill(process, SIGINT);
    };
    EXPECT_EQ(driver(request).status, 128 + SIGINT);
    EXPECT_EQ(quiet.errors, "");
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(second, "another \"quelm-driver outbox run\" sends what waits in the outbox\n");
    EXPECT_EQ(state(1), "waiting");
}

TEST_F(OutboxJourney, AnEmptyOutboxSaysSoAndWrongUsageIsRefused)
{
    EXPECT_EQ(driver({"outbox", "list"}).output, "the outbox is empty\n");
    EXPECT_EQ(jobs(""), Json::array());
    EXPECT_EQ(driver({"outbox", "run", "--wait"}).status, 0);
    expectFailure(driver({"outbox"}), 2, "outbox needs one of");
    expectFailure(driver({"outbox", "show"}), 2, "NUMBER is missing");
    expectFailure(driver({"outbox", "send", "x"}), 2, "\"x\" is no number of a job");
    expectFailure(driver({"outbox", "show", "1"}), 1, "1");
    ASSERT_EQ(at(evening, fax({"--output", path("job"), "--send-at", "04:05"})).status, 0);
    expectFailure(driver({"outbox", "resend", "1", "--shared", "book.xdb"}), 2, "--shared needs --entry");
    expectFailure(driver({"outbox", "resend", "1", "--duplicates", "add"}), 2, "--duplicates needs --to");
    expectFailure(driver({"outbox", "resend", "1", "--output", "-"}), 2, "a kept job goes to");
    expectFailure(driver({"outbox", "resend", "1", "--credit-card", "4111"}), 1, "charged no credit card");
    expectFailure(driver(fax({"--output", "-", "--outbox"})), 2, "standard output cannot wait");
    expectFailure(driver(fax({"--outbox"})), 2, "say with --output");
}

} // namespace
} // namespace journeys
