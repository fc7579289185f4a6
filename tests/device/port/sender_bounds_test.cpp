// Which sender gives its place to another, and how long one is waited for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/sender_bounds.h"

#include "tests/device/port/sample_jobs.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace quelm::device {
namespace {

using namespace std::chrono_literals;

/// Whoever compares two senders does it within this time.
constexpr auto longTime = 1h;

class SenderBoundsTest : public testing::Test {
protected:
    SenderBoundsTest() { settings.youth = settings.silence = longTime; }

    /// A sender of that address, whose bytes have been read.
    std::uint64_t add(const std::string& from, const std::string& bytes)
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        FileHandle sender(ends[1]);
        EXPECT_EQ(::write(sender.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        const auto added = senders.emplace(
            senders.size() + 1, SenderConnection(FileHandle(ends[0]), from, folder.path(), 1'000'000));
        EXPECT_EQ(added.first->second.read(), SenderConnection::Event::none);
        others.push_back(std::move(sender));
        return added.first->first;
    }

    /// The ticket of the one that gives way to a newcomer from "new"; 0 for none.
    std::uint64_t leastWorthyOf(const std::string& newcomer = "new")
    {
        const auto least = leastWorthy(senders, settings, newcomer);
        return least == senders.end() ? 0 : least->first;
    }

    TemporaryFolder folder;
    JobPortSettings settings;
    Senders senders;
    std::vector<FileHandle> others;
};

TEST_F(SenderBoundsTest, NobodyGivesWayWithoutAReason)
{
    add("a", "%!");
    EXPECT_EQ(leastWorthyOf(), 0U);
    senders.clear();
    EXPECT_EQ(leastWorthyOf(), 0U);
}

TEST_F(SenderBoundsTest, OfThoseThatAreSlowTheSlowestGivesWay)
{
    settings.youth = 0ms;
    settings.slowRate = 1e12;
    const std::string some = "%!" + std::string(5000, '%');
    add("a", some);
    const auto slowest = add("b", "%!");
    add("c", some);
    EXPECT_EQ(leastWorthyOf(), slowest);
}

TEST_F(SenderBoundsTest, OneThatIsSlowGivesWayBeforeOneThatIsSilent)
{
    settings.youth = settings.silence = 0ms;
    settings.slowRate =
        5000; // two bytes in a millisecond are fewer, these are more for a quarter of a minute
    add("a", "%!" + std::string(80'000, '%'));
    const auto slow = add("b", "%!");
    EXPECT_EQ(leastWorthyOf(), slow);
    senders.erase(slow);
    EXPECT_EQ(leastWorthyOf(), 1U) << "it is silent";
}

TEST_F(SenderBoundsTest, OneThatIsYoungIsNotSlowYet)
{
    settings.slowRate = 1e12;
    add("a", "%!");
    EXPECT_EQ(leastWorthyOf(), 0U);
}

TEST_F(SenderBoundsTest, HalfOfThePlacesAreNotTooManyForOneAddress)
{
    settings.mostConnections = 4;
    add("a", "%!");
    add("a", "%!");
    add("b", "%!");
    add("b", "%!");
    EXPECT_EQ(leastWorthyOf("b"), 0U);
    EXPECT_EQ(leastWorthyOf("new"), 0U);
    senders.erase(4);
    add("a", "%!");
    EXPECT_NE(leastWorthyOf("b"), 0U);
    EXPECT_NE(leastWorthyOf("b"), 3U) << "of the other address";
    EXPECT_EQ(leastWorthyOf("a"), 0U) << "its own";
}

TEST_F(SenderBoundsTest, AJobThatWaitsForItsVerdictStays)
{
    settings.youth = settings.silence = 0ms;
    settings.slowRate = 1e12;
    const auto waiting = add("a", test::pjlJob());
    EXPECT_EQ(leastWorthyOf(), waiting);
    const auto job = senders.at(waiting).takeJob();
    EXPECT_EQ(leastWorthyOf(), 0U);
}

TEST_F(SenderBoundsTest, EachByteIsWorthTimeUpToTheNextSilence)
{
    settings.patience = 10s;
    settings.leastRate = 1;
    const auto& few = senders.at(add("a", "%!")); // worth two seconds
    EXPECT_EQ(endOf(few, settings), few.lastHeard() + 10s);
    settings.leastRate = 1e9;
    EXPECT_GE(endOf(few, settings), few.begun() + 10s);
    EXPECT_LE(endOf(few, settings), few.begun() + 10s + 1us);
    const auto& whole = senders.at(add("b", test::pjlJob()));
    EXPECT_EQ(endOf(whole, settings), whole.lastHeard() + 10s) << "nothing of it is waited for";
}

} // namespace
} // namespace quelm::device
