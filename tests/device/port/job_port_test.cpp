// What a sender's job becomes at the device's port, and how the sender is answered.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/port/job_port_fixture.h"
#include "tests/device/port/sample_jobs.h"
#include "tests/servers/slapd_server.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace quelm::device {
namespace {

using namespace std::chrono_literals;
using servers::DeviceEnding;
using servers::JobSender;
using servers::sendJob;
using test::dscJob;
using test::pjlJob;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

using JobPortTest = JobPortFixture;

TEST_F(JobPortTest, AJobIsKeptBeforeItsSenderIsTold)
{
    open();
    EXPECT_EQ(send(dscJob()), DeviceEnding::closed);
    EXPECT_EQ(kept(1), dscJob());
    const auto job = log.job(1);
    ASSERT_TRUE(job);
    EXPECT_EQ(job->state, JobState::received);
    EXPECT_EQ(job->receivedAt, noon);
    EXPECT_EQ(job->from, "127.0.0.1");
    EXPECT_EQ(job->reading.size, dscJob().size());
    EXPECT_THAT(job->recipients, SizeIs(1));
    EXPECT_THAT(takenJobs(), ElementsAre(1));
    EXPECT_THAT(told(),
                ElementsAre("job 1: received from 127.0.0.1, " + std::to_string(dscJob().size()) + " bytes"));
    EXPECT_THAT(incoming(), IsEmpty());
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
}

TEST_F(JobPortTest, NobodyElseMayReadAJobThatComes)
{
    const auto before = ::umask(0);
    open();
    JobSender sender(address());
    sender.send(dscJob().substr(0, 100));
    waitUntilIncoming({100});
    ::umask(before);
    for (const auto& entry : fs::directory_iterator(folder.incoming()))
        EXPECT_EQ(entry.status().permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(JobPortTest, AJobComesByteByByte)
{
    open();
    for (const auto& job : {dscJob(), pjlJob()}) {
        JobSender sender(address());
        for (const char byte : job)
            ASSERT_TRUE(sender.send({&byte, 1}));
        sender.end();
        EXPECT_EQ(sender.waitForEnding(), DeviceEnding::closed);
        EXPECT_EQ(sender.answer(), "");
    }
    EXPECT_EQ(kept(1), dscJob());
    EXPECT_EQ(kept(2), pjlJob());
}

TEST_F(JobPortTest, AConnectionBringsOneJobOrNone)
{
    open();
    auto wrong = pjlJob("2");
    wrong.replace(wrong.find("RESOLUTION 0"), 12, "RESOLUTION 9");
    // Whatever is wrong with the second, the sender sends all again: nothing of it may be kept.
    for (const auto& second : {pjlJob("2"), wrong, dscJob("2"), std::string("x"), std::string("\x1b%-1")})
        EXPECT_EQ(send(pjlJob("1") + second), DeviceEnding::reset) << second;
    EXPECT_TRUE(soon([&] { return told().size() == 5; }));
    for (const auto& line : told())
        EXPECT_EQ(line,
                  "job from 127.0.0.1: not kept: something follows it on its connection, which brings one "
                  "job; send the next over another connection");
    EXPECT_THAT(takenJobs(), IsEmpty());
    EXPECT_THAT(log.jobs(0, 10), IsEmpty());
    EXPECT_THAT(incoming(), IsEmpty());
}

TEST_F(JobPortTest, BlanksAndUelBehindAJobAreNoOther)
{
    open();
    const std::string behind = "\r\n \x04" + test::endOfLanguage + test::endOfLanguage + "\n";
    EXPECT_EQ(send(pjlJob("1") + behind), DeviceEnding::closed);
    JobSender sender(address());
    sender.send(pjlJob("2"));
    for (const char byte : behind)
        ASSERT_TRUE(sender.send({&byte, 1}));
    sender.end();
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::closed);
    EXPECT_EQ(kept(1), pjlJob("1"));
    EXPECT_EQ(kept(2), pjlJob("2"));
}

TEST_F(JobPortTest, AJobThatSaysItsEndIsKeptThoughItsSenderStays)
{
    settings.patience = 50ms;
    open();
    JobSender sender(address());
    sender.send(pjlJob());
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::closed);
    EXPECT_EQ(kept(1), pjlJob());
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
}

TEST_F(JobPortTest, ASenderThatClosesWithoutWaitingHasItsJobKept)
{
    open();
    JobSender sender(address());
    sender.send(dscJob());
    sender.close();
    EXPECT_TRUE(soon([&] { return !takenJobs().empty(); }));
    EXPECT_EQ(kept(1), dscJob());
}

TEST_F(JobPortTest, JobsComeOverIpv6)
{
    open();
    const auto addresses = port->addresses();
    ASSERT_THAT(addresses, SizeIs(servers::hasIpv6() ? 2 : 1));
    if (!servers::hasIpv6())
        return;
    EXPECT_THAT(addresses[1], MatchesRegex("\\[::1\\]:[0-9]+"));
    EXPECT_EQ(sendJob(addresses[1], dscJob()), DeviceEnding::closed);
    EXPECT_EQ(log.job(1)->from, "[::1]");
}

TEST_F(JobPortTest, ARefusedJobIsRememberedWithoutItsBytesAndItsSenderIsReset)
{
    open();
    auto job = dscJob();
    job.replace(job.find("%%OID_ATT_FAX_DESTINATION"),
                job.find("%%QLMbegin") - job.find("%%OID_ATT_FAX_DESTINATION"), "");
    EXPECT_EQ(send(job), DeviceEnding::reset);
    EXPECT_TRUE(soon([&] { return takenJobs() == std::vector{1}; }));
    EXPECT_EQ(log.job(1)->state, JobState::refused);
    EXPECT_FALSE(fs::exists(folder.jobFile(1)));
    EXPECT_THAT(incoming(), IsEmpty());
    EXPECT_THAT(told(), ElementsAre(MatchesRegex("job 1: refused: .+")));
}

TEST_F(JobPortTest, AJobThatEndsTooEarlyIsRefused)
{
    open();
    for (const auto& job : {dscJob(), pjlJob()})
        EXPECT_EQ(send(job.substr(0, job.size() - 20)), DeviceEnding::reset);
    EXPECT_TRUE(soon([&] { return takenJobs().size() == 2; }));
    EXPECT_EQ(log.job(1)->state, JobState::refused);
    EXPECT_EQ(log.job(2)->state, JobState::refused);
}

TEST_F(JobPortTest, ASenderThatBreaksOffHasNoJob)
{
    open();
    JobSender sender(address());
    sender.send(dscJob());
    waitUntilIncoming({dscJob().size()});
    sender.breakOff();
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_THAT(told(), ElementsAre("job from 127.0.0.1: not kept: the sender broke off after " +
                                    std::to_string(dscJob().size()) + " bytes of it"));
    EXPECT_THAT(log.jobs(0, 10), IsEmpty());
    EXPECT_THAT(incoming(), IsEmpty());
}

TEST_F(JobPortTest, AConnectionWithoutAJobIsNoJob)
{
    open();
    EXPECT_EQ(send(""), DeviceEnding::closed);
    EXPECT_EQ(send("\r\n" + test::endOfLanguage), DeviceEnding::closed);
    JobSender(address()).breakOff();
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_THAT(log.jobs(0, 10), IsEmpty());
    EXPECT_THAT(incoming(), IsEmpty());
}

/// A device in a process of its own, which can be killed.
class KilledJobPort : public JobPortFixture {
protected:
    /// Starts it with a folder of its own, and returns where it listens.
    std::string start()
    {
        int ends[2];
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        process = ::fork();
        if (process == 0) {
            const StateFolder own(files / "own");
            DeviceLog ownLog(own);
            const JobPort served(own, ownLog, settings);
            const auto line = served.addresses().front();
            static_cast<void>(::write(ends[1], line.data(), line.size() + 1));
            while (true)
                ::pause();
        }
        ::close(ends[1]);
        std::string line;
        for (char byte = 1; byte != 0;)
            if (::read(ends[0], &byte, 1) == 1 && byte != 0)
                line += byte;
        ::close(ends[0]);
        return line;
    }
    void kill()
    {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }

    pid_t process = 0;
};

TEST_F(KilledJobPort, NoSenderTakesItsEndForAnAcknowledgement)
{
    const auto place = start();
    JobSender complete(place);
    complete.send(dscJob());
    const auto arrived = [&] {
        std::uintmax_t bytes = 0;
        for (const auto& entry : fs::directory_iterator(files / "own/incoming"))
            bytes += entry.file_size();
        return bytes == dscJob().size();
    };
    EXPECT_TRUE(soon(arrived)) << "all of it was read, so that nothing but the port's own word is missing";
    kill();
    EXPECT_EQ(complete.waitForEnding(), DeviceEnding::reset);
}

TEST_F(JobPortTest, ItsEndBreaksOffWhatIsNotWhole)
{
    open();
    JobSender half(address());
    half.send(dscJob().substr(0, 100));
    waitUntilIncoming({100});
    port.reset();
    EXPECT_EQ(half.waitForEnding(), DeviceEnding::reset);
    EXPECT_EQ(told().back(), "job from 127.0.0.1: not kept: the device stops, after 100 bytes of it");
    EXPECT_THAT(incoming(), IsEmpty());
}

TEST_F(JobPortTest, ItsEndAcknowledgesNothingThatIsNotKept)
{
    for (int round = 0; round < 20; ++round) {
        open();
        JobSender sender(address());
        sender.send(dscJob(std::to_string(round)));
        sender.end();
        port.reset();
        const auto jobs = log.jobs(0, 1);
        const bool isKept = !jobs.empty() && jobs[0].recipients[0].number == std::to_string(round);
        EXPECT_TRUE(isKept || sender.waitForEnding() == DeviceEnding::reset);
    }
    EXPECT_THAT(incoming(), IsEmpty());
}

} // namespace
} // namespace quelm::device
