// What a command loads: the libraries that it needs, and no others.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/copied_program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using testing::Contains;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::StartsWith;

using Libraries = std::set<std::string>;

class StartJourney : public Journey {
protected:
    /// The libraries that the driver loads, by the names of their files. What it starts is not looked at.
    Libraries loadedBy(Request request) const
    {
        const fs::path reports = folder / "loaded";
        fs::remove_all(reports);
        fs::create_directory(reports);
        request.environment = {"LD_DEBUG=files", "LD_DEBUG_OUTPUT=" + (reports / "of").string()};
        EXPECT_EQ(driver(request).status, 0);
        return namedIn(reports);
    }

    Libraries loadedBy(const Arguments& arguments) const
    {
        Request request;
        request.arguments = arguments;
        return loadedBy(request);
    }

    /// The loader writes a report for each process; those of others have not the driver's own library.
    static Libraries namedIn(const fs::path& reports)
    {
        const std::string mark = "calling init: ";
        Libraries all;
        for (const auto& report : fs::directory_iterator(reports)) {
            Libraries names;
            std::ifstream stream(report.path());
            for (std::string line; std::getline(stream, line);)
                if (const auto at = line.find(mark); at != std::string::npos)
                    names.insert(fs::path(line.substr(at + mark.size())).filename());
            if (std::ranges::any_of(names,
                                    [](const auto& name) { return name.starts_with("libquelm-base"); }))
                all.merge(names);
        }
        return all;
    }

    /// Those of them that a plain command has no use for: toolkits, fonts, networks, print queues, address
    /// books, ciphers, and modules.
    static Libraries heavyOnes(const Libraries& loaded)
    {
        Libraries heavy;
        for (const auto& name : loaded)
            for (const char* beginning :
                 {"libgtk",      "libgdk",   "libgobject",    "libgio",         "libgmodule",
                  "libpango",    "libcairo", "libfontconfig", "libfreetype",    "libharfbuzz",
                  "libldap",     "liblber",  "libsasl",       "libnetsnmp",     "libcups",
                  "libavahi",    "libdbus",  "libgnutls",     "libcrypto",      "libssl",
                  "libkrb5",     "libebook", "libcamel",      "libedataserver", "libsoup",
                  "libxml2",     "libicu",   "contacts.so",   "device.so",      "directory.so",
                  "drawings.so", "queue.so", "charsets.so",   "libuchardet"})
                if (name.starts_with(beginning))
                    heavy.insert(name);
        return heavy;
    }
};

/// What the sanitizers' builds have besides is among these.
constexpr std::size_t mostLibraries = 16;

TEST_F(StartJourney, HelpLoadsNoLibraryThatOnlySomeCommandsNeed)
{
    for (const Arguments& arguments :
         {Arguments{"--help"}, {"--version"}, {"fax", "--help"}, {"outbox", "--help"}}) {
        const auto loaded = loadedBy(arguments);
        EXPECT_THAT(loaded, Contains(StartsWith("libquelm-base.so")));
        EXPECT_THAT(heavyOnes(loaded), IsEmpty()) << arguments.front();
        EXPECT_LE(loaded.size(), mostLibraries);
    }
}

TEST_F(StartJourney, TheAttributesOfAJobNeedTheComponentAlone)
{
    const auto loaded = loadedBy({"attributes", "--to", "Ann=555-1234", "--to", "Ben=555-1235"});
    EXPECT_THAT(loaded, Contains("libBramblecorLanFax.so"));
    EXPECT_THAT(heavyOnes(loaded), IsEmpty());
    EXPECT_LE(loaded.size(), mostLibraries + 1);
}

TEST_F(StartJourney, TheConfigurationIsShownAndRecipientsAreReadFromAFileWithoutMore)
{
    EXPECT_THAT(heavyOnes(loadedBy({"config", "show"})), IsEmpty());
    const auto rows = file("rows.csv", "name,number\nAnn,555-1234\nBen,555-1235\n");
    EXPECT_THAT(heavyOnes(loadedBy({"attributes", "--recipients", rows})), IsEmpty());
}

TEST_F(StartJourney, APhonebookIsListedAndAJobIsWrittenToAFileWithoutMore)
{
    EXPECT_THAT(heavyOnes(loadedBy({"phonebook", "add", "Ann", "555-1234"})), IsEmpty());
    EXPECT_THAT(heavyOnes(loadedBy({"phonebook", "list"})), IsEmpty());
    EXPECT_THAT(heavyOnes(loadedBy({"fax", document("letter.ps", "Hello"), "--entry", "Ann", "--cover",
                                    "--note", "Hello", "--output", path("job.ps")})),
                IsEmpty());
}

TEST_F(StartJourney, CardsLoadTheLibraryForCardsAndNoOtherModule)
{
    driver({"phonebook", "add", "Ann", "555-1234"});
    const auto loaded = loadedBy({"phonebook", "export", path("cards.vcf")});
    EXPECT_THAT(loaded, Contains(StartsWith("libebook-contacts")));
    const auto heavy = heavyOnes(loaded);
    EXPECT_THAT(heavy, Contains("contacts.so"));
    for (const char* other : {"device.so", "directory.so", "drawings.so", "queue.so"})
        EXPECT_FALSE(heavy.contains(other)) << other;
}

TEST_F(StartJourney, ACoverSheetInAnotherScriptLoadsTheFonts)
{
    const auto loaded = loadedBy({"fax", document("letter.ps", "Hello"), "--to", "Ann=5", "--cover", "--note",
                                  "Ελλάδα", "--output", path("job.ps")});
    EXPECT_THAT(heavyOnes(loaded), Contains("drawings.so"));
}

TEST_F(StartJourney, AModuleThatIsMissingEndsOnlyWhatNeedsIt)
{
    const fs::path installation = folder / "installation";
    fs::create_directory(installation);
    copyProgram("quelm-driver", installation);
    fs::remove(installation / "modules/contacts.so");
    const auto run = [&](const Arguments& arguments) {
        Request request;
        request.arguments = {(installation / "quelm-driver").string(), "--home", home.string(), "--user",
                             "ann"};
        request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
        request.environment = {"LC_ALL=C.UTF-8",   "LANGUAGE=",      "HOME=" + path("own"),
                               "XDG_CONFIG_HOME=", "XDG_DATA_HOME=", "XDG_STATE_HOME="};
        return runProgram(request);
    };
    EXPECT_EQ(run({"phonebook", "add", "Ann", "555-1234"}).status, 0);
    const auto result = run({"phonebook", "export", path("cards.vcf")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "quelm-driver: the program's module " +
                                 (installation / "modules/contacts.so").string() +
                                 " is missing; install the program again with all its parts\n");
    EXPECT_FALSE(fs::exists(path("cards.vcf")));
    EXPECT_EQ(run({"phonebook", "export", path("entries.csv")}).status, 0);
}

} // namespace
} // namespace journeys
