// Closed, full and piped streams: what is done stays done, and nothing waits for ever.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <future>

namespace journeys {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class StreamsJourney : public Journey {
public:
    StreamsJourney() { EXPECT_EQ(phonebook({"add", "Ann", "1"}).status, 0); }

    Result phonebook(Arguments arguments, Request request = {}) const
    {
        arguments.insert(arguments.begin(), "phonebook");
        request.arguments = std::move(arguments);
        return driver(request);
    }
    Result withoutOutput(const Arguments& arguments) const
    {
        Request request;
        request.withoutStreams = {STDOUT_FILENO};
        return phonebook(arguments, request);
    }
    Result onFullDisk(const Arguments& arguments) const
    {
        Request request;
        request.outputFile = "/dev/full";
        return phonebook(arguments, request);
    }
    std::string list() const { return phonebook({"list"}).output; }
};

TEST_F(StreamsJourney, WhatIsDoneSucceedsAlsoWhenItCannotBeTold)
{
    const auto csv = file("in.csv", "name,number\nBob,2\n");
    int count = 0;
    for (const auto& run : {&StreamsJourney::withoutOutput, &StreamsJourney::onFullDisk}) {
        const auto name = "Zoe " + std::to_string(++count);
        for (const Arguments& arguments : {Arguments{"add", name, "7"},
                                           {"add-group", name, "Ann"},
                                           {"remove", "[" + name + "]"},
                                           {"import", csv},
                                           {"export", path(name + ".csv")}}) {
            const auto result = (this->*run)(arguments);
            EXPECT_EQ(result.status, 0) << arguments[0];
            EXPECT_EQ(result.errors, "") << arguments[0];
        }
        EXPECT_THAT(content(name + ".csv"), HasSubstr("\n" + name + ",7,"));
        EXPECT_THAT(content(name + ".csv"), HasSubstr("\nBob,2,"));
        EXPECT_THAT(content(name + ".csv"), Not(HasSubstr("group,")));
    }
    EXPECT_EQ(list(), "Ann    1\nZoe 1  7\nBob    2\nZoe 2  7\n");
}

TEST_F(StreamsJourney, WhatIsAskedForFailsWhenItCannotBeWritten)
{
    for (const Arguments& arguments :
         {Arguments{"list"}, {"show", "Ann"}, {"export", "-", "--format", "csv"}}) {
        const auto closed = withoutOutput(arguments);
        EXPECT_EQ(closed.status, 1) << arguments[0];
        EXPECT_EQ(closed.errors,
                  "quelm-driver: standard output: cannot be written: the program was started without it\n");
        const auto full = onFullDisk(arguments);
        EXPECT_EQ(full.status, 1) << arguments[0];
        EXPECT_EQ(full.errors,
                  "quelm-driver: standard output: cannot be written: the disk is full; make room and "
                  "try again\n");
    }
}

TEST_F(StreamsJourney, NoPhonebookTakesThePlaceOfAMissingStream)
{
    Request request;
    request.withoutStreams = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    EXPECT_EQ(phonebook({"add", "Bob", "2"}, request).status, 0);
    EXPECT_EQ(phonebook({"add", "Bob", "3"}, request).status, 1) << "it is there already";
    request.withoutStreams = {STDIN_FILENO};
    EXPECT_EQ(phonebook({"import", "-"}, request).errors,
              "quelm-driver: standard input: cannot be read: the program was started without it\n");
    EXPECT_EQ(list(), "Ann  1\nBob  2\n");
}

TEST_F(StreamsJourney, ATerminalIsShownWhatAFileIsGiven)
{
    const std::string organization = "\u202eAcme \u05d0\u05d1";
    EXPECT_EQ(phonebook({"add", "Bob", "2", "--organization", organization}).status, 0);
    EXPECT_THAT(phonebook({"export", "-", "--format", "csv"}).output, HasSubstr("," + organization + ","));
    Request request;
    request.outputIsTerminal = true;
    EXPECT_THAT(phonebook({"export", "-", "--format", "csv"}, request).output,
                HasSubstr(",\\u{202e}Acme \u05d0\u05d1,"));
}

TEST_F(StreamsJourney, AnUnknownWordIsNamedInOneHarmlessLine)
{
    for (const Arguments& arguments : {Arguments{"--\u009b31m\u202e\n" + std::string(100000, 'x')},
                                       {"list", std::string(100000, 'x') + "\n"}}) {
        const auto result = phonebook(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.errors, EndsWith(" --help\n"));
        EXPECT_LT(result.errors.size(), 1100U);
        for (const auto* bad : {"\u009b", "\u202e", "\nx"})
            EXPECT_THAT(result.errors, Not(HasSubstr(bad)));
    }
}

TEST_F(StreamsJourney, AConfigurationMayComeThroughAPipe)
{
    Request request;
    request.arguments = {"--config", "/dev/fd/0", "attributes", "--to", "Ann=1"};
    request.input = "[job]\npdl=pjl\n";
    EXPECT_THAT(driver(request).output, HasSubstr("@PJL COMMENT"));
    request.input = "[job]\npdl=dsc\n";
    EXPECT_THAT(driver(request).output, Not(HasSubstr("@PJL COMMENT")));
    request.input = "[job]\nbogus=1\n";
    EXPECT_THAT(driver(request).errors, HasSubstr("\"/dev/fd/0\" has an unknown key \"bogus\""));
}

TEST_F(StreamsJourney, AFifoThatNobodyWritesOrReadsIsNotWaitedForForEver)
{
    const auto fifo = path("fifo.csv");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const auto other = path("other.csv");
    ASSERT_EQ(::mkfifo(other.c_str(), 0600), 0);
    // At the same time, for each takes its five seconds.
    auto writing = std::async(std::launch::async, [&] { return phonebook({"export", other}); });
    const auto read = phonebook({"import", fifo});
    EXPECT_EQ(read.status, 1);
    EXPECT_EQ(read.errors, "quelm-driver: " + fifo +
                               ": cannot be read: no program writes to this fifo; start the one that does, "
                               "and try again\n");
    const auto written = writing.get();
    EXPECT_EQ(written.status, 1);
    EXPECT_EQ(written.errors, "quelm-driver: \"" + other +
                                  "\" cannot be written: no program reads this fifo; start the one that "
                                  "does, and try again\n");
}

} // namespace
} // namespace journeys
