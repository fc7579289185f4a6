// What every command looks at before a job goes out: recipients from wherever they come, cards, numbers that
// stand twice. SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/journeys/phonebook_record.h"
#include "tests/servers/slapd_server.h"
#include "tests/servers/snmpd_server.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace journeys {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* twoDestinations = "555\";\n%%OID_ATT_FAX_DESTINATION_PHONE\t\"9006";

class HandoverJourney : public Journey {
protected:
    /// One field of a phonebook's record.
    static std::string field(const std::string& tag, const std::string& value)
    {
        return ".s" + tag + "\r\n" + value + "\r\n.e" + tag + "\r\n";
    }

    /// Puts an entry that no dialog would write into the phonebook of the file, which is made with somebody
    /// else in it.
    void addEntry(const std::string& book, const std::string& name, const std::string& number,
                  const std::string& otherFields = {}) const
    {
        if (!std::filesystem::exists(book)) {
            std::filesystem::create_directories(std::filesystem::path(book).parent_path());
            EXPECT_EQ(driver({"phonebook", "add", "Zed", "1", "--file", book}).status, 0);
        }
        addRecord(book, "u" + name,
                  field("usg", "0") + field("nam", name) + field("fxn", number) + otherFields);
    }

    /// Runs `fax` and `attributes`, which both have to fail at once and write nothing.
    void expectRefusal(const Arguments& options, const std::string& words) const
    {
        for (Arguments all : {Arguments{"fax", letter}, Arguments{"attributes"}}) {
            all.insert(all.end(), options.begin(), options.end());
            all.insert(all.end(), {"--output", path("out")});
            expectFailure(driver(all), 1, words);
            EXPECT_FALSE(exists("out"));
        }
    }

    Result fax(const Arguments& options) const
    {
        Arguments all{"fax", letter, "--output", path("out")};
        all.insert(all.end(), options.begin(), options.end());
        auto result = driver(all);
        EXPECT_EQ(result.status, 0) << result.errors;
        return result;
    }

    mode_t modeOf(const std::string& name) const
    {
        struct stat status {};
        EXPECT_EQ(::stat(path(name).c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    /// Has the fax dialog keep this card, with its box ticked.
    void keepCard(const std::string& number) const
    {
        script({"call T40InvokeFaxDialog", "tick \"LanFax Credit Card\" on",
                "type \"LanFax Credit Card Info\" \"" + number + "\"", "press \"LanFax OK Button\""});
    }

    std::string letter = document("letter.ps", "Hello");
};

/// The lines of a script that add a recipient in the open fax dialog.
std::string adding(const std::string& name, const std::string& number)
{
    return "press \"AddFaxRcpt\"\ntype \"RecipientName\" \"" + name + "\"\ntype \"RecipientNumber\" \"" +
           number + "\"\npress \"LanFaxAddRcpt OK Button\"\n";
}

// --- Names of other jobs -------------------------------------------------------------------------------

TEST_F(HandoverJourney, EveryCoverSheetOfAScriptNamesItsOwnRecipientsAlone)
{
    const auto write = [&](const std::string& name) {
        return "press \"LanFax OK Button\"\nfax \"" + letter + "\" \"" + path(name) +
               "\"\ncall T40InvokeFaxDialog\n";
    };
    const std::string removal =
        "select \"LanFax Recipient List\" 0 1\npress \"LanFax Remove Button\"\nanswer yes\n";
    const auto result =
        driver({"script", "-"},
               "call T40InvokeFaxDialog\nchoose \"LanFax Cover Sheet Option\" 1\n"
               "press \"LanFax Setup Cover Sheet Button\"\ntick \"Show Rcpt Info Checkbox\" on\n"
               "press \"LanFaxCover OK Button\"\n" +
                   adding("Ann", "1") + adding("Jürgen", "2") + write("1") + write("2") + removal +
                   adding("Åse", "3") + adding("Zoë", "4") + write("3") +
                   "press \"LanFax Setup Cover Sheet Button\"\ntick \"Show Rcpt Info Checkbox\" off\n"
                   "press \"LanFaxCover OK Button\"\n" +
                   write("4"));
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(content("1"), HasSubstr("/RecipientName    (Ann, J\\374rgen)\n"));
    EXPECT_EQ(content("2"), content("1"));
    EXPECT_THAT(content("3"), HasSubstr("/RecipientName    (\\305se, Zo\\353)\n"));
    EXPECT_THAT(content("4"), HasSubstr("/RecipientName    ()\n"));
}

// --- Recipients from phonebooks and the directory ------------------------------------------------------

TEST_F(HandoverJourney, ASharedPhonebookCannotAddADestination)
{
    const auto book = path("shared.xdb");
    addEntry(book, "Mal", twoDestinations);
    expectRefusal({"--shared", book, "--entry", "Mal"},
                  "--entry Mal: Mal (555\"; %%OID_ATT_FAX_DESTINATION_PHONE \"9006) cannot be sent a fax: ");
}

TEST_F(HandoverJourney, OtherFieldsOfAPhonebookAreCheckedToo)
{
    const auto book = path("shared.xdb");
    addEntry(book, "Mailbox", "1", field("fxm", "\";"));
    addEntry(book, "Company", "2", field("cmp", "Acme\n%%EOF"));
    addEntry(book, "Number", std::string(50, '3'));
    addEntry(book, "Ann@PJL", "4");
    for (const auto& [name, words] :
         {std::pair{"Mailbox", "cannot be sent a fax: the mailbox is not one to four"},
          std::pair{"Company", "cannot be sent a fax: the organization holds a line end"},
          std::pair{"Number", "cannot be sent a fax: the fax number is longer than 46 characters"},
          std::pair{"Ann@PJL", "cannot be sent a fax: The Name must not contain \"@\""}})
        expectRefusal({"--shared", book, "--entry", name}, words);
}

TEST_F(HandoverJourney, TheDirectoryIsCheckedToo)
{
    servers::SlapdSettings settings;
    settings.records = {servers::person("Quote", "Q", "555\"1"), servers::person("Good", "Γιώργος", "555-2")};
    const servers::SlapdServer directory(settings);
    servers::SnmpdSettings deviceSettings;
    deviceSettings.objects = servers::directorySettings(directory.address(), servers::SlapdServer::base());
    const servers::SnmpdServer device(deviceSettings);
    expectRefusal({"--device-snmp", device.address(), "--directory", "Quote"},
                  "--directory Quote: Quote, Q (555\"1) cannot be sent a fax: ");
    EXPECT_THAT(fax({"--device-snmp", device.address(), "--directory", "Good"}).errors,
                HasSubstr("for 1 recipient"));
}

TEST_F(HandoverJourney, AScriptIsWarnedAndItsFaxRefusedUntilTheRecipientIsRemoved)
{
    addEntry((home / "db/phonebook/user/ann.xdb").string(), "Mal", twoDestinations);
    const std::string pick = "call T40InvokeFaxDialog\npress \"AddPBFaxRcpt\"\nselect \"Fax PB List\" 1\n"
                             "press \"Add Button\"\npress \"LanFaxRcptPB OK Button\"\n" +
                             adding("Ann", "2") + "press \"LanFax OK Button\"\n";
    const std::string write = "fax \"" + letter + "\" \"" + path("out") + "\"\n";
    const std::string warning =
        "quelm-driver: warning: Mal (555\"; %%OID_ATT_FAX_DESTINATION_PHONE \"9006) cannot be "
        "sent a fax: The number must not contain \"\"\". Possible are digits and ";

    const auto refused = driver({"script", "-"}, pick + write);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors,
                AllOf(StartsWith(warning), HasSubstr("\nquelm-driver: standard input:11: Mal (555")));
    EXPECT_EQ(std::ranges::count(refused.errors, '\n'), 2) << refused.errors;
    EXPECT_FALSE(exists("out"));

    const auto mended =
        driver({"script", "-"}, pick +
                                    "call T40InvokeFaxDialog\nselect \"LanFax Recipient List\" 0\n"
                                    "press \"LanFax Remove Button\"\nanswer yes\n"
                                    "press \"LanFax OK Button\"\n" +
                                    write);
    EXPECT_EQ(mended.status, 0) << mended.errors;
    EXPECT_THAT(mended.errors, StartsWith(warning));
    EXPECT_THAT(content("out"), AllOf(HasSubstr("PHONE \"2\""), Not(HasSubstr("9006"))));
}

TEST_F(HandoverJourney, NamesOfPeopleInAnyScriptGoOut)
{
    Arguments options;
    for (const auto* name : {"Ann O'Neil", "Νίκος Παπαδόπουλος", "בן־דוד ג׳ורג׳", "王小明", "ジョン・スミス",
                             "علی‌رضا"}) {
        const auto book = path("people.xdb");
        addEntry(book, name, std::to_string(100 + options.size()));
        options.insert(options.end(), {"--entry", name});
    }
    options.insert(options.end(), {"--shared", path("people.xdb"), "--cover", "--show-recipients"});
    EXPECT_THAT(fax(options).errors, HasSubstr("for 6 recipients"));
}

TEST_F(HandoverJourney, AKeptTextWithControlCharactersGetsIntoNoJob)
{
    script({"call T40InvokeFaxDialog", "choose \"LanFax Cover Sheet Option\" 1",
            "type \"LanFax Cover Sheet Notes\" \"marked\"", "press \"LanFax OK Button\""});
    int replaced = 0;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(folder.parent_path() / "home/config")) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path());
        std::string kept(std::istreambuf_iterator<char>(in), {});
        if (const auto at = kept.find("marked"); at != std::string::npos) {
            std::ofstream(entry.path()) << kept.replace(at, 6, "a\x04");
            ++replaced;
        }
    }
    ASSERT_EQ(replaced, 1);
    expectFailure(driver({"fax", letter, "--to", "Ann=1", "--output", path("out")}), 1,
                  "the note of the cover sheet holds a line end or another control character");
    EXPECT_FALSE(exists("out"));
}

// --- Credit cards --------------------------------------------------------------------------------------

TEST_F(HandoverJourney, AJobWithACardIsItsOwnersAlone)
{
    const auto card = file("card", "4111 1111 1111 2345\n");
    ASSERT_EQ(::chmod(card.c_str(), 0600), 0);
    ASSERT_EQ(::chmod(file("out", "before").c_str(), 0666), 0);
    const auto result = fax({"--to", "Ann=1", "--credit-card-file", card});
    EXPECT_EQ(modeOf("out"), 0600U);
    EXPECT_EQ(result.errors, path("out") + ": fax job of " + letter +
                                 " for 1 recipient; the credit card ending in 2345 is charged\n");
    EXPECT_EQ(
        driver({"attributes", "--to", "Ann=1", "--credit-card", "4111", "--output", path("lines")}).status,
        0);
    EXPECT_EQ(modeOf("lines"), 0600U);
    EXPECT_EQ(driver({"script", "-"}, "call T40InvokeFaxDialog\n" + adding("Ann", "1") +
                                          "tick \"LanFax Credit Card\" on\ntype \"LanFax Credit Card Info\" "
                                          "\"4111\"\npress \"LanFax OK Button\"\nfax \"" +
                                          letter + "\" \"" + path("by script") + "\"\n")
                  .status,
              0);
    EXPECT_EQ(modeOf("by script"), 0600U);
    ASSERT_EQ(::chmod(file("out", "before").c_str(), 0666), 0);
    fax({"--to", "Ann=1"});
    EXPECT_EQ(modeOf("out"), 0666U) << "without a card nothing is changed";
}

TEST_F(HandoverJourney, ANameThatTwoEntriesHaveIsNobodys)
{
    const auto book = path("book.xdb");
    addEntry(book, "Ian", "5559");
    addRecord(book, "uIan2", field("usg", "0") + field("nam", "Ian") + field("fxn", "9999"));
    expectRefusal({"--shared", book, "--entry", "Ian"},
                  "--entry Ian: the phonebook " + book + " has two entries of that name; rename one of them");
}

TEST_F(HandoverJourney, AKeptCardIsChargedOnlyWhenTheJobAsksForIt)
{
    keepCard("4111 1111 1111 2345");
    EXPECT_EQ(fax({"--to", "Ann=1"}).errors, path("out") + ": fax job of " + letter + " for 1 recipient\n");
    EXPECT_THAT(content("out"), Not(HasSubstr("CREDIT_CARD")));
    EXPECT_THAT(attributeText({"--to", "Ann=1"}), Not(HasSubstr("CREDIT_CARD")));

    EXPECT_THAT(
        driver({"fax", letter, "--to", "Ann=1", "--dry-run"}).output,
        HasSubstr("\nthe credit card ending in 2345 is not charged; --kept-credit-card charges it\n"));
    EXPECT_THAT(driver({"fax", letter, "--to", "Ann=1", "--dry-run", "--kept-credit-card"}).output,
                Not(HasSubstr("not charged")));

    EXPECT_THAT(fax({"--to", "Ann=1", "--kept-credit-card"}).errors,
                HasSubstr("; the credit card ending in 2345 is charged\n"));
    EXPECT_THAT(content("out"), HasSubstr("%%OID_ATT_CREDIT_CARD \"4111 1111 1111 2345\";\r\n"));
    const auto lines = driver({"attributes", "--to", "Ann=1", "--kept-credit-card"});
    EXPECT_EQ(lines.status, 0);
    EXPECT_THAT(lines.output, HasSubstr("CREDIT_CARD \"4111"));
    EXPECT_EQ(lines.errors, "quelm-driver: the credit card ending in 2345 is charged\n");

    const auto stream = driver({"fax", letter, "--to", "Ann=1", "--kept-credit-card", "--output", "-"});
    EXPECT_EQ(stream.status, 0);
    EXPECT_EQ(stream.errors, "quelm-driver: the credit card ending in 2345 is charged\n");

    // The dialog's own choice stays.
    EXPECT_THAT(script({"show \"LanFax Credit Card\"", "show \"LanFax Credit Card Info\""}),
                ElementsAre(HasSubstr("ticked yes"), HasSubstr("2345")));
}

TEST_F(HandoverJourney, WhereNoCardIsKeptNoneIsCharged)
{
    expectRefusal({"--to", "Ann=1", "--kept-credit-card"},
                  "--kept-credit-card: the fax dialog keeps no credit card");
    expectRefusal({"--to", "Ann=1", "--credit-card-file", path("none")}, "none");
    expectRefusal({"--to", "Ann=1", "--credit-card-file", file("card", "")}, "no credit card number");
}

TEST_F(HandoverJourney, ACardsNumberIsReadFromStandardInputOnce)
{
    const auto result =
        driver({"attributes", "--to", "Ann=1", "--credit-card-file", "-"}, "4111 1111 1111 2345\r\nmore\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, HasSubstr("CREDIT_CARD \"4111 1111 1111 2345\";"));
    expectFailure(driver({"attributes", "--recipients", "-", "--credit-card-file", "-"}), 2,
                  "standard input is read once");
    expectFailure(driver({"attributes", "--to", "Ann=1", "--credit-card", "4111", "--kept-credit-card"}), 2,
                  "stands beside");
}

TEST_F(HandoverJourney, NoOutputTellsACardsNumber)
{
    keepCard("4111222233334444");
    const auto card = file("card", "4111222233334444\n");
    for (const Arguments& options :
         {Arguments{"--kept-credit-card"}, Arguments{"--credit-card", "4111222233334444"},
          Arguments{"--credit-card-file", card}, Arguments{"--credit-card", "4111222233334444\""},
          Arguments{"--credit-card", "4111222233334444,4111222233334444"}, Arguments{"--to", "Bob=x"}}) {
        Arguments all{"fax", letter, "--to", "Ann=1", "--output", path("out")};
        all.insert(all.end(), options.begin(), options.end());
        const auto result = driver(all);
        EXPECT_THAT(result.errors + result.output, Not(HasSubstr("41112222")));
    }
}

// --- Numbers that stand twice --------------------------------------------------------------------------

const Arguments oneNumber{"--to", "Ann=555-1234", "--to", "Bob=2", "--to", "Cid=(555) 1234"};

Arguments with(Arguments arguments, const Arguments& more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

TEST_F(HandoverJourney, ANumberUnderTwoNamesIsWarnedOf)
{
    const std::string warning = "quelm-driver: warning: Cid ((555) 1234) has the same fax number as Ann "
                                "(555-1234), so the fax goes there twice\n";
    for (const auto& options : {oneNumber, with(oneNumber, {"--duplicates", "add"})}) {
        EXPECT_THAT(fax(options).errors, AllOf(StartsWith(warning), HasSubstr("for 3 recipients")));
        const auto lines = driver(with({"attributes"}, options));
        EXPECT_EQ(lines.status, 0);
        EXPECT_EQ(lines.errors, warning);
    }
}

TEST_F(HandoverJourney, ANumberUnderTwoNamesIsLeftOutWhenDuplicatesAreSkipped)
{
    const auto result = fax(with(oneNumber, {"--duplicates", "skip"}));
    EXPECT_EQ(result.errors, path("out") + ": fax job of " + letter + " for 2 recipients\n");
    const auto list = file("list.csv", "name,number,mailbox\nAnn,5,1\nBob,5,2\nCid,5,1\nDee,5,\n");
    EXPECT_EQ(attributes({"--recipients", list, "--duplicates", "skip"}).size(), 8U) << "mailboxes differ";
}

TEST_F(HandoverJourney, ANumberUnderTwoNamesIsAskedAbout)
{
    expectRefusal(
        with(oneNumber, {"--duplicates", "ask"}),
        "Cid ((555) 1234): this recipient is in the job already; say --duplicates add or --duplicates skip");
    Request request;
    request.arguments = with(with({"attributes"}, oneNumber), {"--duplicates", "ask"});
    request.inputIsTerminal = true;
    for (const auto& [typed, writes] : {std::pair{"y\n", 8U}, {"n\n", 7U}}) {
        request.input = typed;
        const auto result = driver(request);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.writes.size(), writes);
        EXPECT_EQ(result.errors, "Cid ((555) 1234) has the same fax number as Ann (555-1234), so the fax "
                                 "goes there twice.\nSend the fax to both? [y/n] ");
    }
}

TEST_F(HandoverJourney, AScriptsFaxWarnsOfANumberThatStandsTwice)
{
    const auto result = driver(
        {"script", "-"}, "call T40InvokeFaxDialog\n" + adding("Ann", "5") + adding("Bob", "(5)") +
                             "press \"LanFax OK Button\"\nfax \"" + letter + "\" \"" + path("out") + "\"\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.errors,
        "quelm-driver: warning: Bob ((5)) has the same fax number as Ann (5), so the fax goes there twice\n");
}

TEST_F(HandoverJourney, AScriptsFaxSaysWhatIsChargedAndDialled)
{
    const std::string faxes = "press \"LanFax OK Button\"\nfax \"" + letter + "\" \"" + path("out") + "\"\n";
    const auto result = driver(
        {"script", "-"}, "call T40InvokeFaxDialog\n" + adding("Ann", "5") +
                             "tick \"LanFax Dialing Prefix\" on\ntype \"LanFax Dialing Prefix Info\" \"9\"\n"
                             "tick \"LanFax Credit Card\" on\n"
                             "type \"LanFax Credit Card Info\" \"4111222233334444\"\n" +
                             faxes +
                             "call T40InvokeFaxDialog\ntick \"LanFax Dialing Prefix\" off\n"
                             "tick \"LanFax Credit Card\" off\n" +
                             faxes);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.errors,
        "quelm-driver: the credit card ending in 4444 is charged\n"
        "quelm-driver: the dialing prefix 9 is dialled, though its box is not ticked any more\n"
        "quelm-driver: the credit card ending in 4444 is charged, though its box is not ticked any more\n");
}

TEST_F(HandoverJourney, AScriptsFaxWaitsForNoAnswer)
{
    const auto result = driver(
        {"script", "-"}, "call T40InvokeFaxDialog\n" + adding("Ann", "5") +
                             "select \"LanFax Recipient List\" 0\npress \"LanFax Remove Button\"\nfax \"" +
                             letter + "\" \"" + path("out") + "\"\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("a question is waiting for an answer; answer it first"));
    EXPECT_FALSE(exists("out"));
}

TEST_F(HandoverJourney, HundredsOfWarningsAreAFewLines)
{
    std::string list = "name,number\n";
    for (int i = 0; i < 300; ++i)
        list += "Person " + std::to_string(i) + ",555\n";
    const auto result = driver({"attributes", "--recipients", file("list.csv", list)});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 11);
    EXPECT_THAT(result.errors, testing::EndsWith("there are 289 more warnings like this\n"));
}

TEST_F(HandoverJourney, AZeroInParenthesesBehindACountryCodeIsWarnedOf)
{
    EXPECT_THAT(
        fax({"--to", "Ann=+44 (0)20 7946 0000"}).errors,
        StartsWith(
            "quelm-driver: warning: Ann (+44 (0)20 7946 0000): this dials +4402079460000, with the 0 in "
            "parentheses; write +442079460000 to leave it out\n"));
}

// --- Fifos ---------------------------------------------------------------------------------------------

TEST_F(HandoverJourney, AttributesForAFifoThatNobodyReadsAreGivenUp)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const auto started = std::chrono::steady_clock::now();
    expectFailure(driver({"attributes", "--to", "Ann=1", "--output", path("fifo")}), 1,
                  "no program reads this fifo");
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(100));
}

} // namespace
} // namespace journeys
