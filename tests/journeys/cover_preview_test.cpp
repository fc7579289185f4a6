// The picture of a cover page, which a user looks at before anything is sent.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/journeys/phonebook_record.h"
#include "tests/servers/print_listener.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <thread>

namespace journeys {
namespace {

namespace fs = std::filesystem;
using servers::Ending;
using servers::Manner;
using servers::PrintListener;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr std::size_t width = 1275;
constexpr std::size_t height = 1650;

class CoverPreviewJourney : public Journey {
protected:
    /// `fax` with these options, for Ann; the clock stands still.
    static Arguments fax(const Arguments& options)
    {
        Arguments all{"--now", "2024-03-05T14:07", "fax", "--to", "Ann=555-1234"};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }

    /// The picture of the cover page of a job with these options, which must be all that comes of it.
    std::string picture(const Arguments& options) const
    {
        Arguments all{"--cover", "--cover-preview", path("cover.png")};
        all.insert(all.end(), options.begin(), options.end());
        const auto result = driver(fax(all));
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, "");
        return content("cover.png");
    }

    /// Page 1 of a job, as Ghostscript draws it with the settings of the picture.
    std::string firstPage(const std::string& job) const
    {
        Request request;
        request.arguments = {"gs",
                             "-q",
                             "-dSAFER",
                             "-dBATCH",
                             "-dNOPAUSE",
                             "-sDEVICE=pnggray",
                             "-dTextAlphaBits=4",
                             "-dGraphicsAlphaBits=4",
                             "-r150",
                             "-dDEVICEWIDTHPOINTS=612",
                             "-dDEVICEHEIGHTPOINTS=792",
                             "-sOutputFile=" + path("page%d"),
                             job};
        EXPECT_EQ(runProgram(request).status, 0);
        const auto page = content("page1");
        for (const auto& name : files())
            if (name.starts_with("page"))
                fs::remove(path(name));
        return page;
    }

    /// The gray value of each pixel of a picture.
    std::string pixels(const std::string& png) const
    {
        Request request;
        request.arguments = {"convert", file("pixels.png", png), "-depth", "8", "gray:" + path("pixels")};
        EXPECT_EQ(runProgram(request).status, 0);
        auto bytes = content("pixels");
        fs::remove(path("pixels.png"));
        fs::remove(path("pixels"));
        return bytes;
    }

    /// A program of the name gs that does this, as a request whose PATH begins with it.
    Request withGhostscript(const std::string& script, const Arguments& arguments) const
    {
        fs::create_directory(home / "programs");
        const auto program = home / "programs/gs";
        fs::remove(program);
        fs::rename(file("gs", "#!/bin/sh\n" + script + "\n"), program);
        fs::permissions(program, fs::perms::owner_all);
        Request request;
        request.arguments = arguments;
        request.environment = {"PATH=" + (home / "programs").string() + ":/usr/bin:/bin"};
        return request;
    }

    /// Puts Eve into the user's phonebook, behind Bob, with a number that nobody could type.
    void addEve() const
    {
        EXPECT_EQ(driver({"phonebook", "add", "Bob", "2"}).status, 0);
        addRecord(home / "db/phonebook/user/ann.xdb", "uEve",
                  ".susg\r\n0\r\n.eusg\r\n.snam\r\nEve\r\n.enam\r\n.sfxn\r\n555\";\n\r\n.efxn\r\n");
    }

    /// Has the user's saved choice be to send a cover sheet.
    void keepCoverSheet() const
    {
        script({"call T40InvokeFaxDialog", "choose \"LanFax Cover Sheet Option\" 1",
                "press \"LanFax OK Button\""});
    }
};

/// The rows from one to another, without that.
std::string rows(const std::string& pixels, std::size_t from, std::size_t to)
{
    return pixels.substr(from * width, (to - from) * width);
}

bool isDark(char pixel) { return static_cast<unsigned char>(pixel) < 64; }
bool isGray(char pixel)
{
    const auto value = static_cast<unsigned char>(pixel);
    return value >= 64 && value < 192;
}

TEST_F(CoverPreviewJourney, AloneItDrawsThePageAndNothingIsSent)
{
    const auto result = driver(fax({"--cover", "--cover-preview", path("cover.png")}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, path("cover.png") + ": cover page of the fax job for 1 recipient\n");
    EXPECT_EQ(driver(fax({"--to", "Bob=2", "--cover", "--cover-preview", path("cover.png")})).errors,
              path("cover.png") + ": cover page of the fax job for 2 recipients\n");
    EXPECT_THAT(files(), ElementsAre("cover.png"));
}

TEST_F(CoverPreviewJourney, ThePictureIsGrayAsLargeAsThePageAndHasInkOnIt)
{
    const auto png = picture({});
    // The header says width, height, bits of a pixel, and kind (gray).
    EXPECT_EQ(png.substr(0, 26),
              std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x04\xfb\0\0\x06\x72\x08\0", 26));
    const auto bare = pixels(png);
    ASSERT_EQ(bare.size(), width * height);
    const auto heading = rows(bare, 150, 250);
    EXPECT_GT(std::ranges::count_if(heading, isDark), 1000);
    EXPECT_GT(std::ranges::count_if(heading, isGray), 500) << "letters have no smooth edges";
    const std::string white(100 * width, '\xff');
    EXPECT_TRUE(rows(bare, 0, 100) == white) << "the upper margin";

    // The note stands below everything else.
    const auto noted = pixels(picture({"--note", "Call me"}));
    ASSERT_EQ(noted.size(), bare.size());
    EXPECT_TRUE(rows(noted, 0, 1050) == rows(bare, 0, 1050));
    EXPECT_TRUE(rows(bare, 1055, 1155) == white);
    EXPECT_GT(std::ranges::count_if(rows(noted, 1055, 1155), isDark), 100);
}

TEST_F(CoverPreviewJourney, ThePictureIsPageOneOfTheJob)
{
    const auto letter = document("letter.ps", "Hello");
    for (const Arguments& options : {Arguments{"--note", "Gr\u00fc\u00dfe (bald)", "--show-recipients",
                                               "--show-sender", "--sender-name", "Zo\u00eb"},
                                     Arguments{"--to", "\u738b\u5c0f\u660e=2", "--show-recipients", "--note",
                                               "\u05e9\u05dc\u05d5\u05dd", "--pdl", "pjl"}}) {
        Arguments sent{letter, "--cover", "--output", path("job")};
        sent.insert(sent.end(), options.begin(), options.end());
        ASSERT_EQ(driver(fax(sent)).status, 0);
        EXPECT_TRUE(picture(options) == firstPage(path("job")));
    }
}

TEST_F(CoverPreviewJourney, WithADestinationFirstThePictureIsDrawnThenTheSameJobGoesOut)
{
    const auto letter = document("letter.ps", "Hello");
    const Arguments options{letter, "--to", "Bob=2", "--cover", "--show-recipients"};
    const auto with = [&](const Arguments& more) {
        Arguments all = options;
        all.insert(all.end(), more.begin(), more.end());
        return driver(fax(all));
    };
    ASSERT_EQ(with({"--output", path("job")}).status, 0);
    const auto job = content("job");

    const auto both = with({"--cover-preview", path("cover.png"), "--output", path("job")});
    EXPECT_EQ(both.status, 0);
    EXPECT_EQ(both.errors, path("cover.png") + ": cover page of the fax job for 2 recipients\n" +
                               path("job") + ": fax job of " + letter + " for 2 recipients\n");
    EXPECT_EQ(content("job"), job);
    EXPECT_TRUE(content("cover.png") == firstPage(path("job")));

    PrintListener device(Manner::takesAll);
    const auto sent = with({"--cover-preview", path("cover.png"), "--device", device.address()});
    EXPECT_EQ(sent.status, 0) << sent.errors;
    EXPECT_THAT(sent.errors, StartsWith(path("cover.png") + ": cover page "));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), job);
}

TEST_F(CoverPreviewJourney, AnotherPictureReplacesTheFirstWhole)
{
    file("cover.png", std::string(1000000, 'x'));
    const auto first = picture({});
    EXPECT_LT(first.size(), 200000U);
    EXPECT_NE(picture({"--note", "Call me"}), first);
    EXPECT_EQ(picture({}), first);
    EXPECT_THAT(files(), ElementsAre("cover.png"));
}

TEST_F(CoverPreviewJourney, StandardOutputGetsThePictureAndNothingElse)
{
    const auto result = driver(fax({"--cover", "--cover-preview", "-"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_TRUE(result.output == picture({}));

    const auto letter = document("letter.ps", "Hello");
    const auto both = driver(fax({letter, "--cover", "--cover-preview", "-", "--output", path("job")}));
    EXPECT_TRUE(both.output == result.output);
    EXPECT_EQ(both.errors, path("job") + ": fax job of " + letter + " for 1 recipient\n");

    Request full;
    full.arguments = fax({letter, "--cover", "--cover-preview", "-", "--output", path("late")});
    full.outputFile = "/dev/full";
    expectFailure(driver(full), 1, "standard output");
    full.outputFile.clear();
    full.outputClosed = true;
    expectFailure(driver(full), 1, "standard output");
    EXPECT_FALSE(exists("late"));
}

TEST_F(CoverPreviewJourney, APictureThatCannotBeWrittenFailsTheCommandBeforeAnythingIsSent)
{
    const auto letter = document("letter.ps", "Hello");
    PrintListener device(Manner::takesAll);
    fs::create_directory(path("folder"));
    for (const auto& place : {std::string("/dev/full"), path("folder"), path("none/cover.png"),
                              path("letter.ps/cover.png"), std::string("/proc/cover.png")}) {
        expectFailure(driver(fax({letter, "--cover", "--cover-preview", place, "--output", path("job")})), 1,
                      place.substr(0, place.rfind("/cover.png")));
    }
    expectFailure(
        driver(fax({letter, "--cover", "--cover-preview", "/dev/full", "--device", device.address()})), 1,
        "/dev/full");
    EXPECT_EQ(device.received(), "");
    EXPECT_THAT(files(), ElementsAre("folder", "letter.ps"));
    EXPECT_TRUE(fs::is_empty(path("folder")));
}

TEST_F(CoverPreviewJourney, WithoutARoomForTemporaryFilesNothingIsWritten)
{
    Request request;
    request.arguments = fax({"--cover", "--cover-preview", path("cover.png")});
    request.environment = {"TMPDIR=" + path("none")};
    expectFailure(driver(request), 1, path("none"));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(CoverPreviewJourney, AGhostscriptThatIsMissingOrFailsLeavesAnOlderPicture)
{
    const auto place = file("cover.png", "older picture");
    const auto arguments = fax({"--cover", "--cover-preview", place});
    Request missing;
    missing.arguments = arguments;
    missing.environment = {"PATH=" + path("none")};
    expectFailure(driver(missing), 1,
                  place +
                      ": the cover page cannot be drawn: Ghostscript, the program \"gs\", is not installed; "
                      "install it and try again");
    expectFailure(driver(withGhostscript("echo 'Error: /undefined in foo' >&2; exit 1", arguments)), 1,
                  place + ": the cover page cannot be drawn: Error: /undefined in foo");
    expectFailure(driver(withGhostscript("exit 3", arguments)), 1,
                  place + ": the cover page cannot be drawn: Ghostscript ended with status 3");
    for (const auto* output :
         {"true", "printf '\\211PNG\\r\\n\\032\\nhalf'", "/usr/bin/gs \"$@\" | head -c 5000",
          "/usr/bin/gs \"$@\" > $TMPDIR/p; cat $TMPDIR/p $TMPDIR/p"})
        expectFailure(
            driver(withGhostscript(output, arguments)), 1,
            place + ": the cover page cannot be drawn: what Ghostscript made of the page is no picture");
    EXPECT_EQ(content("cover.png"), "older picture");
    EXPECT_THAT(files(), ElementsAre("cover.png"));
}

TEST_F(CoverPreviewJourney, WhoEndsItWhileThePageIsDrawnKeepsTheOlderPicture)
{
    const auto place = file("cover.png", "older picture");
    auto request = withGhostscript("echo > '" + path("started") + "'; exec sleep 600",
                                   fax({"--cover", "--cover-preview", place}));
    request.meanwhile = [this](int program) {
        while (!exists("started"))
            std::this_thread::yield();
        EXPECT_EQ(::kill(program, SIGTERM), 0);
    };
    const auto result = driver(request);
    EXPECT_EQ(result.status, 128 + SIGTERM);
    EXPECT_EQ(content("cover.png"), "older picture");
    EXPECT_THAT(files(), ElementsAre("cover.png", "started"));
}

TEST_F(CoverPreviewJourney, AJobWithoutACoverSheetIsWrongUsageUnlessTheUserKeepsToSendOne)
{
    const auto place = path("cover.png");
    expectFailure(driver(fax({"--cover-preview", place})), 2, "--cover-preview needs --cover");
    expectFailure(driver(fax({"--no-cover", "--cover-preview", place})), 2, "--cover-preview needs --cover");
    keepCoverSheet();
    EXPECT_FALSE(exists("cover.png"));
    EXPECT_EQ(driver(fax({"--cover-preview", place})).status, 0);
    EXPECT_TRUE(exists("cover.png"));
    fs::remove(place);
    expectFailure(driver(fax({"--no-cover", "--cover-preview", place})), 2, "--cover-preview needs --cover");
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(CoverPreviewJourney, WhatFaxRefusesIsRefusedHereToo)
{
    const auto place = path("cover.png");
    const auto expect = [&](const Arguments& options, int status, const std::string& words) {
        Arguments all{"fax", "--cover", "--cover-preview", place};
        all.insert(all.end(), options.begin(), options.end());
        expectFailure(driver(all), status, words);
        EXPECT_FALSE(exists("cover.png"));
    };
    expect({}, 1, "no recipients");
    expect({"--to", "A@n=1"}, 2, "--to A@n=1: ");
    expect({"--to", "Ann=1", "--note", "two\nlines"}, 2, "--note: ");
    expect({"--to", "Ann=1", path("none.ps")}, 1, path("none.ps") + ": there is no such document");

    addEve();
    expect({"--entry", "Eve"}, 1, "Eve (555\";) cannot be sent a fax: ");
}

TEST_F(CoverPreviewJourney, WhatFaxWarnsOfIsWarnedOfAndACreditCardIsNotOnThePage)
{
    const auto bare = picture({"--show-recipients"});
    struct stat usual {};
    ASSERT_EQ(::stat(path("cover.png").c_str(), &usual), 0);
    fs::remove(path("cover.png"));
    EXPECT_TRUE(picture({"--show-recipients", "--credit-card", "4929123412341234", "--prefix", "9"}) == bare);
    struct stat charged {};
    ASSERT_EQ(::stat(path("cover.png").c_str(), &charged), 0);
    EXPECT_EQ(charged.st_mode, usual.st_mode);

    const auto warned =
        driver({"fax", "--to", "Zed=+44 (0)20 1", "--cover", "--cover-preview", path("cover.png")});
    EXPECT_EQ(warned.status, 0);
    EXPECT_THAT(warned.errors, HasSubstr("with the 0 in parentheses"));
    EXPECT_THAT(warned.errors, EndsWith(path("cover.png") + ": cover page of the fax job for 1 recipient\n"));
}

TEST_F(CoverPreviewJourney, ThePictureTakesNothingElsesPlace)
{
    const auto letter = document("letter.ps", "Hello");
    const auto before = content("letter.ps");
    const std::string same = "--cover-preview and --output name the same file; name two";
    const auto job = [&](const std::string& picture, const std::string& output) {
        return driver(fax({letter, "--cover", "--cover-preview", picture, "--output", output}));
    };
    expectFailure(job(path("a"), path("a")), 2, same);
    expectFailure(job(path("a"), path("./a")), 2, same);
    expectFailure(job("-", "-"), 2, same);
    expectFailure(job(letter, path("a")), 1,
                  letter + ": is the document itself; name another file for the picture");
    expectFailure(driver(fax({letter, "--cover", "--cover-preview", letter})), 1,
                  letter + ": is the document itself");
    EXPECT_EQ(content("letter.ps"), before);
    EXPECT_THAT(files(), ElementsAre("letter.ps"));
    file("list.csv", "name,number\nBob,2\n");
    file("card", "4111 1111 1111 1111\n");
    for (const auto& [option, name] :
         {std::pair{"--recipients", "list.csv"}, {"--credit-card-file", "card"}}) {
        const auto input = content(name);
        expectFailure(driver(fax({"--cover", option, path(name), "--cover-preview", path("./") + name})), 1,
                      path("./") + name + ": the command reads this file; name another file for the picture");
        EXPECT_EQ(content(name), input);
    }

    // A document may bear the name of standard output.
    const auto here = fs::current_path();
    fs::current_path(folder);
    fs::rename("letter.ps", "-");
    EXPECT_EQ(driver(fax({"./-", "--cover", "--cover-preview", "-"})).status, 0);
    fs::current_path(here);
}

// --- In scripts ------------------------------------------------------------------------------------------

const std::string choosingCover = "call T40InvokeFaxDialog\nchoose \"LanFax Cover Sheet Option\" 1\n"
                                  "press \"LanFax Setup Cover Sheet Button\"\n"
                                  "tick \"Show Rcpt Info Checkbox\" on\npress \"LanFaxCover OK Button\"\n";
const std::string confirming = "press \"LanFax OK Button\"\n";

std::string adding(const std::string& name, const std::string& number)
{
    return "press \"AddFaxRcpt\"\ntype \"RecipientName\" \"" + name + "\"\ntype \"RecipientNumber\" \"" +
           number + "\"\npress \"LanFaxAddRcpt OK Button\"\n";
}

TEST_F(CoverPreviewJourney, AScriptDrawsThePageOfTheJobAsItStands)
{
    const auto letter = document("letter.ps", "Hello");
    const auto cover = [&](const std::string& name) { return "cover \"" + path(name) + "\"\n"; };
    const auto result =
        driver({"--now", "2024-03-05T14:07", "script", "-"},
               choosingCover + adding("Ann", "1") + adding("Bob", "2") + confirming + cover("1.png") +
                   cover("2.png") + "fax \"" + letter + "\" \"" + path("job") + "\"\n" + cover("3.png") +
                   "call T40InvokeFaxDialog\n" + adding("Cid", "3") + confirming + cover("4.png"));
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output.find_first_not_of("ok\n"), std::string::npos) << result.output;
    const auto first = content("1.png");
    EXPECT_TRUE(first == firstPage(path("job")));
    EXPECT_TRUE(content("2.png") == first);
    EXPECT_TRUE(content("3.png") == first);
    EXPECT_FALSE(content("4.png") == first);
}

TEST_F(CoverPreviewJourney, AScriptIsRefusedAPageThatIsNotToBeSent)
{
    const auto cover = "cover \"" + path("cover.png") + "\"\n";
    const auto expect = [&](const std::string& lines, const std::string& words) {
        const auto result = driver({"script", "-"}, lines + cover + "windows\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.output, Not(HasSubstr("windows"))) << "it went on";
        EXPECT_THAT(result.errors,
                    HasSubstr("standard input:" + std::to_string(std::ranges::count(lines, '\n') + 1) + ": " +
                              words));
        EXPECT_FALSE(exists("cover.png"));
    };
    expect("", "the fax has no recipients: add at least one");
    expect("call T40InvokeFaxDialog\n" + adding("Ann", "1") + confirming,
           "the fax has no cover sheet: choose one in the fax dialog");
    expect(choosingCover + confirming, "the fax has no recipients: add at least one");
    const auto toItsAnswers = driver({"script", "-"}, choosingCover + adding("Ann", "1") + confirming +
                                                          "cover /proc/self/fd/1\nwindows\n");
    EXPECT_EQ(toItsAnswers.status, 1);
    EXPECT_THAT(toItsAnswers.errors, HasSubstr("a script's answers stand on standard output"));
    expect(choosingCover + adding("Ann", "1") + adding("Ann", "1"), "a question is waiting");
    addEve();
    expect(choosingCover +
               "press \"AddPBFaxRcpt\"\nselect \"Fax PB List\" 1\npress \"Add Button\"\n"
               "press \"LanFaxRcptPB OK Button\"\n" +
               confirming,
           "Eve (555\";) cannot be sent a fax: ");
}

} // namespace
} // namespace journeys
