// Bad input of every kind: one line, status 1, and nothing lost or overwritten.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FailuresJourney : public Journey {
protected:
    Result fax(const std::string& from, const std::string& to) const
    {
        return driver({"fax", from, "--to", "Ann=1", "--output", to});
    }

    std::string letter = document("letter.ps", "Hello");
};

TEST_F(FailuresJourney, ADocumentThatIsNotThere)
{
    expectFailure(fax(path("none.ps"), path("out")), 1, path("none.ps"));
    EXPECT_THAT(files(), ElementsAre("letter.ps"));
}

TEST_F(FailuresJourney, ADocumentThatIsNone)
{
    expectFailure(fax(file("notes.txt", "Hello\n"), path("out")), 1, path("notes.txt"));
    expectFailure(fax(file("empty.ps", ""), path("out")), 1, path("empty.ps"));
    expectFailure(fax(folder.string(), path("out")), 1, folder.string());
    EXPECT_FALSE(exists("out"));
}

TEST_F(FailuresJourney, PostScriptThatFails)
{
    const std::string faulty = file("faulty.ps", "%!PS\nshowpage nonsense showpage\n");
    const std::string words = faulty +
                              ": page 2 cannot be faxed: it uses a command that is not known (PostScript "
                              "error /undefined in nonsense)";
    expectFailure(fax(faulty, path("out")), 1, words);
    const auto result =
        driver({"script", "-"}, "call T40InvokeFaxDialog\nfax " + faulty + " " + path("out") + "\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, testing::HasSubstr(words));
    EXPECT_FALSE(exists("out"));
}

TEST_F(FailuresJourney, ADriverThatIsKilledLeavesNothingOfItsDocument)
{
    namespace fs = std::filesystem;
    const fs::path temporary = folder / "temporary";
    fs::create_directory(temporary);
    // The document makes a file of its own once it runs.
    const std::string endless = file("endless.ps", "%!PS\nnull (w) .tempfile { } loop\n");
    const auto isRun = [&] {
        std::error_code gone;
        for (const auto& entry : fs::directory_iterator(temporary))
            if (entry.path().filename().string().starts_with("quelm-gs-") && !fs::is_empty(entry, gone) &&
                !gone)
                return true;
        return false;
    };
    for (const int signal : {SIGKILL, SIGINT, SIGTERM}) {
        Request request;
        request.arguments = {"fax", endless, "--to", "Ann=1", "--output", path("out")};
        request.environment = {"TMPDIR=" + temporary.string()};
        request.meanwhile = [&](int process) {
            EXPECT_TRUE(soon(isRun));
            ::kill(process, signal);
        };
        EXPECT_EQ(driver(request).status, 128 + signal);
        EXPECT_TRUE(soon([&] { return fs::is_empty(temporary); }));
    }
    EXPECT_FALSE(exists("out"));
}

TEST_F(FailuresJourney, AnOutputFolderThatIsNotThere)
{
    expectFailure(fax(letter, path("none/out")), 1, "none");
    expectFailure(driver({"attributes", "--to", "Ann=1", "--output", path("none/out")}), 1, "none");
    EXPECT_THAT(files(), ElementsAre("letter.ps"));
}

TEST_F(FailuresJourney, AnOutputThatIsTheDocument)
{
    const auto before = content("letter.ps");
    expectFailure(fax(letter, letter), 1, letter);
    EXPECT_EQ(content("letter.ps"), before);
}

TEST_F(FailuresJourney, AFailedJobLeavesTheOlderOne)
{
    file("out", "older job");
    expectFailure(fax(path("none.ps"), path("out")), 1, "none.ps");
    expectFailure(driver({"fax", letter, "--output", path("out")}), 1, "no recipients");
    expectFailure(driver({"fax", letter, "--to", "A@n=1", "--output", path("out")}), 2, "A@n");
    EXPECT_EQ(content("out"), "older job");
}

TEST_F(FailuresJourney, AFullDevice)
{
    Request request;
    request.outputFile = "/dev/full";
    for (const auto& arguments :
         {Arguments{"attributes", "--to", "Ann=1"},
          Arguments{"fax", letter, "--to", "Ann=1", "--output", "-"}, Arguments{"--help"},
          Arguments{"--version"}, Arguments{"script", file("s", "windows\n")}}) {
        request.arguments = arguments;
        expectFailure(driver(request), 1, "standard output");
    }
    expectFailure(fax(letter, "/dev/full"), 1, "/dev/full");
}

TEST_F(FailuresJourney, AReaderThatWentAway)
{
    Request request;
    request.outputClosed = true;
    for (const auto& arguments : {Arguments{"attributes", "--to", "Ann=1"},
                                  Arguments{"fax", letter, "--to", "Ann=1", "--output", "-"},
                                  Arguments{"--help"}, Arguments{"script", file("s", "windows\n")}}) {
        request.arguments = arguments;
        expectFailure(driver(request), 1, "standard output");
    }
}

TEST_F(FailuresJourney, AComponentThatIsNone)
{
    for (const auto& component : {path("none.so"), file("text.so", "Hello\n"), folder.string()})
        expectFailure(driver({"--component", component, "attributes", "--to", "Ann=1"}), 1, component);
}

TEST_F(FailuresJourney, AnInstallationFolderWithoutAComponent)
{
    std::filesystem::remove(home / "libBramblecorLanFax.so");
    expectFailure(driver({"attributes", "--to", "Ann=1"}), 1, "libBramblecorLanFax.so");
}

TEST_F(FailuresJourney, AConfigurationThatCannotBeUsed)
{
    for (const auto& config :
         {path("none.conf"), folder.string(), file("bad.conf", "[driver\nx"), file("odd.conf", "[x]\ny=1\n")})
        expectFailure(driver({"--config", config, "attributes", "--to", "Ann=1"}), 1, config);
}

TEST_F(FailuresJourney, APhonebookThatIsNoneStaysAsItIs)
{
    const auto phonebook = home / "db/phonebook/user/ann.xdb";
    std::filesystem::create_directories(phonebook.parent_path());
    file("notes", "My own notes, which are no phonebook.\n");
    std::filesystem::copy_file(path("notes"), phonebook);
    expectFailure(driver({"attributes", "--to", "Ann=1"}), 1, "ann.xdb");
    std::filesystem::copy_file(phonebook, path("after"));
    EXPECT_EQ(content("after"), content("notes"));
}

TEST_F(FailuresJourney, ARecipientListThatCannotBeRead)
{
    expectFailure(driver({"attributes", "--recipients", path("none.csv")}), 1,
                  path("none.csv") + ": cannot be read");
    expectFailure(driver({"attributes", "--recipients", folder.string()}), 1,
                  folder.string() + ": cannot be read");
}

TEST_F(FailuresJourney, AScriptThatCannotBeRead)
{
    expectFailure(driver({"script", path("none")}), 1, path("none") + ": cannot be read");
}

TEST_F(FailuresJourney, NamesWithLineEndsStayOnOneLine)
{
    expectFailure(fax(path("no\nne.ps"), path("out")), 1, "no");
    expectFailure(driver({"attributes", "--recipients", path("no\nne")}), 1, "no");
}

} // namespace
} // namespace journeys
