// Tests of the writers that the component writes a fax job through.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/pdl_writers.h"

#include "base/file_io.h"
#include "tests/driver/jobs/job_support.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace quelm::tests {
namespace {

TEST(SinkPdlWriterTest, WritesWhatItIsGiven)
{
    StringSink sink;
    SinkPdlWriter writer(sink);
    EXPECT_TRUE(writer.writeText("%%A;\r\n"));
    writer.writeString(std::string("b\0c", 3));
    EXPECT_EQ(sink.text, std::string("%%A;\r\nb\0c", 9));
    EXPECT_EQ(writer.size(), 9U);
    EXPECT_TRUE(writer.endsInsideLine());
    EXPECT_TRUE(writer.writeText("\n"));
    EXPECT_FALSE(writer.endsInsideLine());
    EXPECT_NO_THROW(writer.rethrowFailure());
}

TEST(SinkPdlWriterTest, KeepsTheFirstFailureAndDropsWhatFollows)
{
    FailingSink sink(4);
    SinkPdlWriter writer(sink);
    EXPECT_TRUE(writer.writeText("abc"));
    EXPECT_NO_THROW(writer.writeString("too long"));
    EXPECT_FALSE(writer.writeText("d")) << "there would be room, but the job has a hole";
    EXPECT_EQ(writer.size(), 3U);
    EXPECT_EQ(errorLine([&] { writer.rethrowFailure(); }), "the paper ran out");
}

TEST(SinkPdlWriterTest, RefusesANullText)
{
    StringSink sink;
    SinkPdlWriter writer(sink);
    EXPECT_FALSE(writer.writeText(nullptr));
}

TEST(DescriptorPdlWriterTest, WritesEachTextWithOneWrite)
{
    // A sequenced socket keeps apart what was written apart.
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
    const FileHandle reader(ends[0]);
    FileHandle written(ends[1]);
    DescriptorPdlWriter writer(written.get(), "standard output");
    writer.writeString("%%QLMbegin\r\n");
    EXPECT_TRUE(writer.writeText(""));
    writer.writeString("%%A;\r\n%%B;\r\n");
    EXPECT_TRUE(writer.writeText("%%C;\r\n"));
    written.close();

    std::vector<std::string> texts;
    std::array<char, 100> text{};
    for (ssize_t size = 0; (size = ::read(reader.get(), text.data(), text.size())) > 0;)
        texts.emplace_back(text.data(), static_cast<std::size_t>(size));
    EXPECT_EQ(texts, (std::vector<std::string>{"%%QLMbegin\r\n", "%%A;\r\n%%B;\r\n", "%%C;\r\n"}));
}

TEST(DescriptorPdlWriterTest, AReaderThatWentAwayIsAFailureNotASignal)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle written(ends[1]);
    ::close(ends[0]);
    DescriptorPdlWriter writer(written.get(), "standard output");
    EXPECT_FALSE(writer.writeText("%%A;\r\n"));
    EXPECT_EQ(errorLine([&] { writer.rethrowFailure(); }),
              "standard output: cannot be written: the program that reads it has ended");
    struct sigaction present = {};
    ::sigaction(SIGPIPE, nullptr, &present);
    EXPECT_EQ(present.sa_handler, SIG_DFL) << "the signal means again what it meant before";
}

TEST(DescriptorPdlWriterTest, AFullDiskIsAFailure)
{
    const FileHandle full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    DescriptorPdlWriter writer(full.get(), "standard output");
    writer.writeString("%%A;\r\n");
    EXPECT_EQ(errorLine([&] { writer.rethrowFailure(); }),
              "standard output: cannot be written: the disk is full; make room and try again");
}

} // namespace
} // namespace quelm::tests
