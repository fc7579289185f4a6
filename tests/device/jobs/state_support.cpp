// What the tests of a device's memory share: a state of their own, and jobs to put into it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/jobs/state_support.h"

#include "base/error.h"
#include "device/jobs/device_steps.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace quelm::device::tests {

namespace fs = std::filesystem;

ReceivedJob faxFor(const std::vector<std::string>& numbers)
{
    ReceivedJob reading;
    reading.form = JobForm::dsc;
    reading.title = "A letter";
    reading.isFax = true;
    reading.speed = Speed::upTo14400;
    for (std::size_t at = 0; at < numbers.size(); ++at)
        reading.destinations.push_back({numbers[at], "", at + 3});
    reading.postScriptEnd = 14;
    reading.size = 14;
    return reading;
}

StateTest::InMemory::InMemory()
{
    constexpr const char* inMemory = "/dev/shm";
    if (::access(inMemory, W_OK | X_OK) == 0)
        ::setenv("TMPDIR", inMemory, 1);
}

StateTest::StateTest() { ::setenv("TMPDIR", outer.path().c_str(), 1); }

StateTest::~StateTest()
{
    setDeviceStepHook({});
    close();
}

void StateTest::open()
{
    close();
    folder = std::make_unique<StateFolder>(path);
    log = std::make_unique<DeviceLog>(*folder);
}

void StateTest::close()
{
    log.reset();
    folder.reset();
}

int StateTest::add(const ReceivedJob& reading, std::string_view bytes)
{
    const std::string spooled = folder->incoming() / "spooled";
    writeFile(spooled, std::string(bytes));
    return log->addJob(reading, spooled, "127.0.0.1", noon);
}

int StateTest::addRendered(const ReceivedJob& reading, int pages, std::string_view bytes)
{
    const int job = add(reading, bytes);
    writeFile(folder->pagesFile(job), "pages of job " + std::to_string(job));
    log->setRendered(job, pages, noon);
    return job;
}

DueCall StateTest::begin(Moment now)
{
    auto due = log->beginCall(now);
    if (!due)
        throw Error("nobody's turn has come");
    return *due;
}

bool StateTest::endSent(const DueCall& due, const std::string& receiver, std::string_view pages)
{
    CallRecord call = due.call;
    call.receiver = receiver;
    call.result = "sent";
    call.pagesSent = 1;
    if (!receiver.empty())
        writeFile(folder->incomingCall(call.number), std::string(pages));
    return log->endCall(call, true, {});
}

std::string StateTest::recipientsOf(int job)
{
    std::string text;
    const JobRecord record = *log->job(job);
    for (const RecipientRecord& recipient : record.recipients) {
        constexpr const char* words[] = {"waiting", "calling", "sent", "failed"};
        text += text.empty() ? "" : ", ";
        text += words[static_cast<int>(recipient.state)];
        text += " " + std::to_string(recipient.attempts);
    }
    return text;
}

bool StateTest::keeps(std::string_view text) const
{
    return std::ranges::any_of(fs::recursive_directory_iterator(path), [&](const fs::directory_entry& entry) {
        return entry.is_regular_file() && contentOf(entry.path()).find(text) != std::string::npos;
    });
}

std::vector<std::string> StateTest::files() const
{
    std::vector<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        const std::string name = entry.path().lexically_relative(path);
        if (entry.is_regular_file() && name != "lock" && !name.starts_with("device.db"))
            found.push_back(name);
    }
    std::ranges::sort(found);
    return found;
}

bool isKilledAt(int count, const std::function<void()>& action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        setDeviceStepHook([&count](const char*) {
            if (count-- == 0)
                ::kill(::getpid(), SIGKILL);
        });
        try {
            action();
        } catch (...) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    const bool isKilled = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    EXPECT_TRUE(isKilled || status == 0) << status;
    return isKilled;
}

bool failsAt(int count, const std::function<void()>& action, std::string& line)
{
    bool hasFailed = false;
    setDeviceStepHook([&](const char* step) {
        // Nothing can fail there.
        if (std::string_view(step) == "go on behind the commit" || count-- != 0)
            return;
        hasFailed = true;
        throw Error(std::string("no room to ") + step);
    });
    line.clear();
    try {
        action();
    } catch (const Error& error) {
        line = error.what();
    }
    setDeviceStepHook({});
    return hasFailed;
}

} // namespace quelm::device::tests
