// Tests of where a finished job goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/output.h"

#include "tests/driver/jobs/job_support.h"
#include "tests/support/two_users.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <thread>

namespace quelm::tests {
namespace {

class OutputTest : public JobTest {
protected:
    /// The destination for a job with a document of its own.
    std::unique_ptr<JobDestination> open(const std::string& output) const
    {
        return openOutput(output, Document::open(file("document.ps", "%!PS\nshowpage\n")));
    }

    std::string failure(const std::string& output) const
    {
        return errorLine([&] { open(output); });
    }
};

/// Sends standard output to `descriptor` for its life.
class StandardOutputTo {
public:
    explicit StandardOutputTo(int descriptor) : before_(::dup(STDOUT_FILENO))
    {
        ::dup2(descriptor, STDOUT_FILENO);
    }
    ~StandardOutputTo() { ::dup2(before_.get(), STDOUT_FILENO); }
    StandardOutputTo(const StandardOutputTo&) = delete;
    StandardOutputTo& operator=(const StandardOutputTo&) = delete;

private:
    FileHandle before_;
};

TEST_F(OutputTest, AFileAppearsOnDelivery)
{
    const auto destination = open(path("job.ps"));
    destination->sink().write("the ");
    destination->sink().write("job");
    EXPECT_EQ(contentOf(path("job.ps")), "(no file)");
    const auto receipt = destination->deliver();
    EXPECT_EQ(receipt.place, path("job.ps"));
    EXPECT_EQ(receipt.note, "");
    EXPECT_EQ(contentOf(path("job.ps")), "the job");
    EXPECT_EQ(namesInFolder(), (std::vector<std::string>{"document.ps", "job.ps"}));
}

TEST_F(OutputTest, AnExistingFileIsReplacedOnDeliveryOnly)
{
    const std::string name = file("job.ps", "before");
    {
        const auto undelivered = open(name);
        undelivered->sink().write("half a jo");
    }
    EXPECT_EQ(contentOf(name), "before");
    EXPECT_EQ(namesInFolder(), (std::vector<std::string>{"document.ps", "job.ps"}));
    const auto destination = open(name);
    destination->sink().write("the job");
    destination->deliver();
    EXPECT_EQ(contentOf(name), "the job");
}

TEST_F(OutputTest, TheDocumentItselfIsRefused)
{
    const std::string name = file("document.ps", "%!PS\nshowpage\n");
    std::filesystem::create_symlink(name, path("link.ps"));
    for (const std::string& output : {name, path("link.ps"), path("./document.ps")})
        EXPECT_EQ(failure(output), output + ": is the document itself; name another file for the fax job");
    EXPECT_EQ(contentOf(name), "%!PS\nshowpage\n");
}

TEST_F(OutputTest, PlacesThatCannotBeWrittenToAreRefusedAtOnce)
{
    EXPECT_EQ(failure(path(".")), path(".") + ": is a folder; name a file in it for the fax job");
    const std::string line = failure(path("missing/job.ps"));
    EXPECT_NE(line.find("missing\" does not exist"), std::string::npos) << line;
    EXPECT_EQ(namesInFolder(), std::vector<std::string>{"document.ps"});
}

TEST_F(OutputTest, StandardOutputGetsTheWholeJobOnDelivery)
{
    const FileHandle captured(::open(file("captured", "").c_str(), O_RDWR | O_CLOEXEC));
    const std::string large(std::size_t{1} << 20U, 'x');
    {
        const StandardOutputTo capture(captured.get());
        const auto destination = open("-");
        destination->sink().write("the job ");
        destination->sink().write(large);
        EXPECT_EQ(contentOf(path("captured")), "");
        destination->deliver();
    }
    EXPECT_EQ(contentOf(path("captured")), "the job " + large);
    EXPECT_EQ(namesInFolder(), (std::vector<std::string>{"captured", "document.ps"}));
}

TEST_F(OutputTest, AFullDiskBehindStandardOutputIsALine)
{
    const FileHandle full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    const auto destination = open("-");
    destination->sink().write("the job");
    const StandardOutputTo capture(full.get());
    EXPECT_EQ(certainLine([&] { destination->deliver(); }),
              "standard output: cannot be written: the disk is full; make room and try again");
}

TEST_F(OutputTest, AReaderOfStandardOutputThatWentAwayIsALine)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle written(ends[1]);
    ::close(ends[0]);
    const auto destination = open("-");
    destination->sink().write("the job");
    const StandardOutputTo capture(written.get());
    EXPECT_EQ(certainLine([&] { destination->deliver(); }),
              "standard output: cannot be written: the program that reads it has ended");
}

TEST_F(OutputTest, StandardOutputThatTookAPartIsInDoubt)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle written(ends[1]);
    FileHandle reader(ends[0]);
    const auto destination = open("-");
    destination->sink().write(std::string(std::size_t{1} << 20U, 'x'));
    std::thread leaving([&reader] {
        char byte = 0;
        EXPECT_EQ(::read(reader.get(), &byte, 1), 1);
        reader.close();
    });
    std::string line;
    {
        const StandardOutputTo capture(written.get());
        line = doubtLine([&] { destination->deliver(); });
    }
    leaving.join();
    EXPECT_EQ(line, "standard output: cannot be written: the program that reads it has ended");
}

TEST_F(OutputTest, WhatCountsABytesWayTellsDoubtFromCertainty)
{
    std::uint64_t sent = 0;
    EXPECT_EQ(certainLine([&] { sendCounting(sent, [] { throw Error("refused"); }); }), "refused");
    EXPECT_EQ(doubtLine([&] {
                  sendCounting(sent, [&] {
                      sent = 1;
                      throw Error("broken");
                  });
              }),
              "broken");
    EXPECT_EQ(doubtLine([&] { sendCounting(sent, [] { throw std::runtime_error("no memory"); }); }),
              "no memory")
        << "whatever it is";
    sendCounting(sent, [] {});
}

TEST_F(OutputTest, ADeviceIsWrittenToAndStaysADevice)
{
    const auto destination = open("/dev/full");
    destination->sink().write("the job");
    const std::string line = certainLine([&] { destination->deliver(); });
    EXPECT_NE(line.find("/dev/full"), std::string::npos) << line;
    EXPECT_NE(line.find("the disk is full"), std::string::npos) << line;
    struct stat status = {};
    ASSERT_EQ(::stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_F(OutputTest, AFifoGetsNothingOfAJobThatFails)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const FileHandle reader(::open(path("fifo").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    std::array<char, 100> bytes{};
    open(path("fifo"))->sink().write("half a jo");
    EXPECT_EQ(::read(reader.get(), bytes.data(), bytes.size()), 0);

    const auto destination = open(path("fifo"));
    destination->sink().write("the job");
    EXPECT_EQ(destination->deliver().place, path("fifo"));
    EXPECT_EQ(::read(reader.get(), bytes.data(), bytes.size()), 7);
}

TEST_F(OutputTest, AFifoThatNobodyReadsIsToldInOneLine)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const auto destination = openOutput(path("fifo"), Document::open(file("document.ps", "%!PS\nshowpage\n")),
                                        std::chrono::milliseconds(50));
    destination->sink().write("the job");
    EXPECT_EQ(certainLine([&] { destination->deliver(); }),
              path("fifo") +
                  ": no program reads this fifo; start the one that takes the job, and send it again");
}

class OutputAmongOthers : public TwoUsers {};

TEST_F(OutputAmongOthers, AJobDoesNotGoIntoTheFifoThatAStrangerPutIntoAFolderForEverybody)
{
    openFolder(folder / "shared");
    const auto document = Document::open(writeFile(folder / "document.ps", "%!PS\nshowpage\n"));
    for (const std::string name : {"shared/fifo", "elsewhere"})
        ASSERT_EQ(::mkfifo((folder / name).c_str(), 0600), 0);
    std::filesystem::create_symlink("../elsewhere", folder / "shared/link");
    for (const std::string name : {"shared/fifo", "shared/link"}) {
        giveTo(folder / name, attacker);
        const FileHandle reader(::open((folder / name).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        ASSERT_TRUE(reader.isOpen());
        const auto destination = openOutput(folder / name, document);
        destination->sink().write("the job");
        EXPECT_THAT(certainLine([&] { destination->deliver(); }),
                    testing::HasSubstr("in a folder for everybody"));
        char byte = 0;
        EXPECT_EQ(::read(reader.get(), &byte, 1), 0);
    }
}

TEST_F(OutputTest, AFifosReaderMayComeALittleLate)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const auto destination = open(path("fifo"));
    destination->sink().write("the job");
    FileHandle reader;
    // Asked for the first time before the fifo is opened, and again when nobody was there.
    int asked = 0;
    const auto come = [&] {
        if (++asked == 2)
            reader = FileHandle(::open(path("fifo").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        return false;
    };
    EXPECT_EQ(destination->deliver({{}, come}).place, path("fifo"));
    std::array<char, 100> bytes{};
    EXPECT_EQ(::read(reader.get(), bytes.data(), bytes.size()), 7);
}

TEST_F(OutputTest, WaitingForAFifosReaderCanBeCancelled)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const auto destination = open(path("fifo"));
    destination->sink().write("the job");
    int asked = 0;
    EXPECT_EQ(certainLine([&] {
                  destination->deliver({{}, [&] { return ++asked > 2; }});
              }),
              path("fifo") + ": the job was cancelled before anything of it went out");
}

TEST_F(OutputTest, AReaderThatStopsReadingCannotHoldUpACancellation)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const FileHandle reader(::open(path("fifo").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const int room = ::fcntl(reader.get(), F_SETPIPE_SZ, 65536);
    const auto destination = open(path("fifo"));
    destination->sink().write(std::string(100000, 'x'));
    std::uint64_t taken = 0;
    Transfer transfer;
    transfer.progress = [&](std::uint64_t done, std::uint64_t) { taken = done; };
    transfer.cancelled = [&] { return taken == static_cast<std::uint64_t>(room); };
    EXPECT_EQ(doubtLine([&] { destination->deliver(transfer); }),
              path("fifo") + ": the job was cancelled after 65536 of 100000 bytes");
}

TEST_F(OutputTest, AFifoGetsALongJobAsFastAsItIsRead)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const std::string job = bytesOfEveryValue(1000000);
    const auto destination = open(path("fifo"));
    destination->sink().write(job);
    std::string read;
    std::thread reader([&] { read = contentOf(path("fifo")); });
    std::uint64_t reported = 0;
    destination->deliver({[&](std::uint64_t done, std::uint64_t) { reported = done; }, {}});
    reader.join();
    EXPECT_EQ(read, job);
    EXPECT_EQ(reported, job.size());
}

TEST_F(OutputTest, AFifosReaderThatWentAwayIsALine)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    FileHandle reader(::open(path("fifo").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const auto destination = open(path("fifo"));
    destination->sink().write(std::string(100000, 'x'));
    const auto leave = [&](std::uint64_t, std::uint64_t) { reader.close(); };
    EXPECT_EQ(doubtLine([&] {
                  destination->deliver({leave, {}});
              }),
              path("fifo") + ": cannot be written: the program that reads it has ended");
}

/// Stands for a destination over a wire.
class FakeWire final : public SpooledDestination {
public:
    std::string sent;

private:
    Receipt send(int spool, std::uint64_t size, const Transfer& transfer) override
    {
        sent.resize(size);
        sent.resize(readFully(spool, sent.data(), size, 0, "the job"));
        transfer.report(sent.size(), size);
        return {"the wire", "it hums"};
    }
};

TEST_F(OutputTest, ADestinationOverAWireIsHandedTheWholeJob)
{
    FakeWire wire;
    wire.sink().write("the ");
    wire.sink().write("job");
    EXPECT_EQ(wire.sent, "");
    std::uint64_t reported = 0;
    const auto receipt = wire.deliver({[&](std::uint64_t done, std::uint64_t) { reported = done; }, {}});
    EXPECT_EQ(wire.sent, "the job");
    EXPECT_EQ(reported, 7U);
    EXPECT_EQ(receipt.place, "the wire");
    EXPECT_EQ(receipt.note, "it hums");
}

TEST_F(OutputTest, AJobThatIsTheUsersAloneHasNoOtherReader)
{
    const std::string before = file("out", "before");
    ASSERT_EQ(::chmod(before.c_str(), 0666), 0);
    const auto destination = openOutput(before);
    destination->sink().write("head, ");
    destination->restrictToOwner();
    destination->sink().write("secret");
    destination->deliver();
    struct stat status {};
    ASSERT_EQ(::stat(before.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_EQ(contentOf(before), "head, secret");
}

} // namespace
} // namespace quelm::tests
