// Tests of processes that are killed ahead of each system call that changes a file of the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox.h"
#include "tests/driver/outbox/outbox_support.h"

#include <gmock/gmock.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

/// What makes, changes, names or removes a file, or makes that durable.
bool changesFiles(std::uint64_t call)
{
    constexpr std::array<std::uint64_t, 10> calls{SYS_write,     SYS_pwrite64, SYS_ftruncate, SYS_fsync,
                                                  SYS_fdatasync, SYS_renameat, SYS_renameat2, SYS_unlinkat,
                                                  SYS_linkat,    SYS_mkdirat};
    return std::ranges::find(calls, call) != calls.end() || call == SYS_unlink || call == SYS_rename;
}

/// Lets a stopped process go on to its next system call, or back from it; false when it has ended.
bool isAtNextStop(pid_t child)
{
    constexpr int systemCallStop = SIGTRAP | 0x80;
    int signal = 0;
    for (;;) {
        int status = 0;
        if (::ptrace(PTRACE_SYSCALL, child, nullptr, signal) != 0 || ::waitpid(child, &status, 0) != child ||
            !WIFSTOPPED(status)) {
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
            return false;
        }
        if (WSTOPSIG(status) == systemCallStop)
            return true;
        signal = WSTOPSIG(status);
    }
}

/// Runs `action` in a process that is killed ahead of its call number `count` that changes files; false when
/// it came to its end before.
bool isKilledAt(int count, const std::function<void()>& action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        ::_exit(errorLine(action).empty() ? 0 : 1);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL), 0);
    while (isAtNextStop(child)) {
        __ptrace_syscall_info call{};
        EXPECT_GT(::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof call, &call), 0);
        if (call.op != PTRACE_SYSCALL_INFO_ENTRY || !changesFiles(call.entry.nr) || count-- > 0)
            continue;
        ::kill(child, SIGKILL);
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return true;
    }
    return false;
}

class KilledProcessTest : public OutboxTest {
protected:
    /// For each call of `action` that changes files: kills a process at it, in the outbox as it is now, then
    /// looks.
    void killAtEachCall(const std::function<void()>& action, const std::function<void()>& look,
                        int leastCalls)
    {
        fs::rename(outboxFolder, path("before"));
        int count = 0;
        for (bool isKilled = true; isKilled && !HasFailure(); ++count) {
            fs::remove_all(outboxFolder);
            fs::copy(path("before"), outboxFolder, fs::copy_options::recursive);
            isKilled = isKilledAt(count, action);
            SCOPED_TRACE("killed at call " + std::to_string(count));
            look();
        }
        EXPECT_GE(count, leastCalls);
    }

    const std::string stream = streamWithCard(Pdl::dsc, "4929 1111");
};

TEST_F(KilledProcessTest, AJobIsPutInWholeOrNotAtAll)
{
    open();
    killAtEachCall(
        [&] {
            Outbox outbox = open();
            put(outbox, draftFor(FileTarget{path("fax.ps")}), stream);
        },
        [&] {
            Outbox outbox = open();
            if (outbox.jobs().empty())
                put(outbox, draftFor(FileTarget{path("fax.ps")}), stream);
            EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "jobs/1", "jobs/1/card", "jobs/1/lock",
                                                            "jobs/1/stream", "log.db", "new"));
            EXPECT_EQ(outbox.handOver(1, noon).state, OutboxState::handedOver);
            EXPECT_EQ(contentOf(path("fax.ps")), stream);
        },
        20);
}

TEST_F(KilledProcessTest, AFilesJobIsThereOrWaitsAndTheFileIsWholeOrAsItWas)
{
    {
        Outbox outbox = open();
        put(outbox, draftFor(FileTarget{path("fax.ps")}), stream);
    }
    file("fax.ps", "before");
    killAtEachCall([&] { open().handOver(1, noon); },
                   [&] {
                       Outbox outbox = open();
                       outbox.settleOrphans(noon);
                       const bool isThere = outbox.job(1).state == OutboxState::handedOver;
                       EXPECT_EQ(contentOf(path("fax.ps")), isThere ? stream : "before");
                       if (!isThere) {
                           EXPECT_EQ(outbox.job(1).state, OutboxState::waiting);
                           EXPECT_EQ(outbox.handOver(1, noon).state, OutboxState::handedOver);
                       }
                       EXPECT_FALSE(keeps("4929 1111"));
                       EXPECT_THAT(namesInFolder(), ElementsAre("before", "fax.ps", "state"));
                       file("fax.ps", "before");
                   },
                   40);
}

} // namespace
} // namespace quelm::tests
