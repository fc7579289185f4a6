// Phonebooks under strain: two writers at once, a writer that is killed, and very many entries.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <future>
#include <sstream>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

class BusyPhonebook : public Journey {
protected:
    /// Steps per entry of `savingScript`, each of which is answered with one line.
    static constexpr std::size_t stepsPerEntry = 5;

    /// A script, in a file, that saves entries "NAME 1", "NAME 2", ... from the recipient window.
    std::string savingScript(const std::string& name, int entries) const
    {
        std::string script = "call T40InvokeFaxDialog\n";
        for (const auto& entry : names(name, entries))
            script += "press \"AddFaxRcpt\"\ntype \"RecipientName\" \"" + entry +
                      "\"\ntype \"RecipientNumber\" \"555\"\ntick \"AddtoPersonalPB\" on\n"
                      "press \"LanFaxAddRcpt OK Button\"\n";
        return file(name + ".script", script);
    }

    static std::vector<std::string> names(const std::string& name, int entries)
    {
        std::vector<std::string> all;
        for (int i = 1; i <= entries; ++i)
            all.push_back(name + " " + std::to_string(i));
        return all;
    }

    /// The names that `phonebook list` shows, in the phonebook's order.
    std::vector<std::string> listed() const
    {
        const auto result = driver({"phonebook", "list"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        std::vector<std::string> found;
        std::istringstream lines(result.output);
        for (std::string line; std::getline(lines, line);)
            found.push_back(line.substr(0, line.find("  ")));
        return found;
    }

    /// The names that the fax dialog lists.
    std::vector<std::string> shown() const
    {
        const auto answers =
            script({"call T40InvokeFaxDialog", "press \"AddPBFaxRcpt\"", "rows \"Fax PB List\""});
        std::vector<std::string> found;
        for (std::size_t i = 3; i < answers.size(); ++i) {
            const auto start = answers[i].find('"') + 1;
            found.push_back(answers[i].substr(start, answers[i].find('"', start) - start));
        }
        return found;
    }
};

TEST_F(BusyPhonebook, TwoDriversThatSaveAtOnceLoseNothing)
{
    const auto left = savingScript("Left", 20);
    const auto right = savingScript("Right", 20);
    auto other = std::async(std::launch::async, [&] { return driver({"script", left}); });
    const auto mine = driver({"script", right});
    for (const auto& result : {mine, other.get()}) {
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
    }
    auto expected = names("Left", 20);
    const auto more = names("Right", 20);
    expected.insert(expected.end(), more.begin(), more.end());
    EXPECT_THAT(listed(), UnorderedElementsAreArray(expected));
    EXPECT_THAT(shown(), UnorderedElementsAreArray(expected));
}

TEST_F(BusyPhonebook, ADriverKilledWhileItSavesLeavesAllThatItAnswered)
{
    constexpr int entries = 300;
    const auto all = names("Name", entries);
    const auto steps = savingScript("Name", entries);
    for (const std::size_t answered : {1U, 2U, 37U, 90U, 161U}) {
        std::filesystem::remove_all(home / "db");
        Request request;
        request.arguments = {"script", steps};
        request.killedAfterLines = 1 + answered * stepsPerEntry;
        const auto result = driver(request);
        EXPECT_EQ(result.status, 128 + SIGKILL);
        const auto lines = static_cast<std::size_t>(std::ranges::count(result.output, '\n'));
        const auto left = listed();
        EXPECT_EQ(shown(), left);
        EXPECT_GE(left.size(), (lines - 1) / stepsPerEntry);
        ASSERT_LT(left.size(), all.size()) << "the kill came too late to interrupt anything";
        EXPECT_EQ(left, std::vector(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(left.size())));
    }
}

TEST_F(BusyPhonebook, SavingGoesOnWhereAKilledDriverLeftIt)
{
    Request request;
    request.arguments = {"script", savingScript("Name", 300)};
    request.killedAfterLines = 100;
    EXPECT_EQ(driver(request).status, 128 + SIGKILL);
    auto expected = listed();
    const auto result = driver({"script", savingScript("More", 3)});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    const auto more = names("More", 3);
    expected.insert(expected.end(), more.begin(), more.end());
    EXPECT_EQ(listed(), expected);
}

TEST_F(BusyPhonebook, AHundredThousandEntriesAreListedAndTheLastOneCanBePicked)
{
    constexpr int entries = 100000;
    std::string table = "name,number\n";
    for (int i = 1; i <= entries; ++i)
        table += "Name " + std::to_string(i) + "," + std::to_string(5550000 + i) + "\n";
    const auto import = driver({"phonebook", "import", file("entries.csv", table)});
    EXPECT_EQ(import.status, 0);
    EXPECT_EQ(import.errors, "");
    EXPECT_THAT(
        script({"call T40InvokeFaxDialog", "press \"AddPBFaxRcpt\"", "show \"Fax PB List\"",
                "select \"Fax PB List\" 99999", "press \"Add Button\"", "rows \"Fax Cur Recipient List\""}),
        ElementsAre("ok", "ok",
                    "widget \"Fax PB List\" kind ListBox visible yes sensitive yes operable yes "
                    "value -1 rows 100000 selected none",
                    "ok", "ok", "rows \"Fax Cur Recipient List\" 1",
                    "row 0 \"Name 100000\" \"5650000\" \"\" \"\" \"\" \"\""));
}

} // namespace
} // namespace journeys
