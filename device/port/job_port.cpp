// Serves the senders of jobs, all on one thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/job_port.h"

#include "base/duration_text.h"
#include "base/error.h"
#include "base/net/listening_sockets.h"
#include "base/net/socket_address.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "device/port/job_keeper.h"
#include "device/port/sender_bounds.h"
#include "device/port/sender_connection.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace quelm::device {
namespace {

using Clock = SenderConnection::Clock;

/// How long no connection is taken when the system has no room for one.
constexpr std::chrono::milliseconds breathing{200};
/// How many new connections are taken before those that are there have their turn.
constexpr int acceptedAtOnce = 16;

FileHandle makeBell()
{
    FileHandle bell(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!bell.isOpen())
        throw Error(localized("jobs cannot be waited for: %s", systemReason(errno)));
    return bell;
}

bool isWithoutRoom(int error)
{
    return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

/// The host alone: of the port nobody can make anything.
std::string hostOf(const SocketAddress& address)
{
    const auto text = numericText(address);
    return text.substr(0, text.rfind(':'));
}

} // namespace

struct JobPort::State {
    State(const StateFolder& folder, DeviceLog& log, JobPortSettings wanted)
        : settings(std::move(wanted)), incoming(folder.incoming()),
          sockets(listenOn(settings.addresses, settings.port)), bell(makeBell()),
          keeper(log,
                 {settings.mostWaitingJobs, settings.now, [this](const Verdict& verdict) { bring(verdict); }})
    {
        for (const auto& listening : sockets)
            addresses.push_back(listening.address);
        thread = std::jthread([this](const std::stop_token& stop) { serve(stop); });
    }
    ~State()
    {
        thread.request_stop();
        ring();
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void ring() const
    {
        const std::uint64_t once = 1;
        [[maybe_unused]] const auto written = ::write(bell.get(), &once, sizeof once);
    }

    /// On the keeper's threads.
    void bring(const Verdict& verdict)
    {
        {
            const std::lock_guard lock(mutex);
            verdicts.push_back(verdict);
        }
        ring();
    }

    // All below is done on the port's own thread.
    void serve(const std::stop_token& stop);
    void waitForEvents();
    [[nodiscard]] int timeLeft() const;
    void takeVerdicts();
    void readAll();
    void acceptAll();
    void acceptFrom(const ListeningSocket& listening);
    [[nodiscard]] bool makeRoom(const std::string& newcomer);
    void turnAway(const std::string& from);
    void tellTurnedAway();
    void dropLate();
    void endAll();

    void handle(Senders::iterator connection, SenderConnection::Event event);
    void drop(Senders::iterator connection, const std::string& why);
    void closeOrDrop(Senders::iterator connection, const std::string& why);
    void endOrTake(Senders::iterator connection, const std::string& why);
    void remove(Senders::iterator connection);
    void say(const std::string& line) const
    {
        if (settings.tell)
            settings.tell(line);
    }

    JobPortSettings settings;
    std::filesystem::path incoming;
    std::vector<ListeningSocket> sockets;
    std::vector<std::string> addresses;
    FileHandle bell;

    Senders connections; ///< by their tickets
    std::atomic<std::size_t> openCount{0};
    std::uint64_t lastTicket = 0;
    std::size_t turnedAway = 0; ///< and not told yet
    std::string lastTurnedAway;
    Clock::time_point quietUntil;                ///< until then it is not told
    std::optional<Clock::time_point> noneBefore; ///< until then no connection is taken
    std::vector<pollfd> polled;
    std::vector<std::uint64_t> polledTickets; ///< of what stands behind the bell and the listening sockets

    std::mutex mutex;
    std::vector<Verdict> verdicts;

    JobKeeper keeper;
    std::jthread thread; // last: it uses what stands above
};

void JobPort::State::serve(const std::stop_token& stop)
{
    while (true) {
        if (stop.stop_requested()) {
            sockets.clear();
            endAll();
            if (connections.empty())
                return;
        }
        waitForEvents();
        takeVerdicts();
        readAll();
        dropLate();
        acceptAll();
        tellTurnedAway();
    }
}

void JobPort::State::waitForEvents()
{
    polled.clear();
    polledTickets.clear();
    polled.push_back({bell.get(), POLLIN, 0});
    if (noneBefore && Clock::now() >= *noneBefore)
        noneBefore.reset();
    for (const auto& listening : sockets)
        polled.push_back({noneBefore ? -1 : listening.socket.get(), POLLIN, 0});
    for (const auto& [ticket, connection] : connections)
        if (!connection.isWaiting()) { // a sender that went away meanwhile would be reported over and over
            polled.push_back({connection.descriptor(), POLLIN, 0});
            polledTickets.push_back(ticket);
        }
    if (::poll(polled.data(), polled.size(), timeLeft()) < 0)
        for (auto& one : polled)
            one.revents = 0;
    std::uint64_t rung = 0;
    [[maybe_unused]] const auto taken = ::read(bell.get(), &rung, sizeof rung);
}

int JobPort::State::timeLeft() const
{
    auto next = noneBefore;
    if (turnedAway > 0 && (!next || quietUntil < *next))
        next = quietUntil;
    for (const auto& [ticket, connection] : connections)
        if (!connection.isWaiting())
            next = std::min(next.value_or(Clock::time_point::max()), endOf(connection, settings));
    if (!next)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count();
    constexpr long long longest = 60'000;
    return static_cast<int>(std::clamp<long long>(left, 0, longest));
}

void JobPort::State::takeVerdicts()
{
    std::vector<Verdict> brought;
    {
        const std::lock_guard lock(mutex);
        brought.swap(verdicts);
    }
    for (const auto& verdict : brought) {
        say(verdict.line);
        if (verdict.job != 0 && settings.taken)
            settings.taken(verdict.job);
        // It is there: no connection ends that waits for a verdict.
        const auto connection = connections.find(verdict.ticket);
        if (verdict.isKept)
            connection->second.closeInOrder();
        remove(connection);
    }
}

void JobPort::State::readAll()
{
    const auto first = polled.size() - polledTickets.size();
    for (std::size_t i = 0; i < polledTickets.size(); ++i)
        if (const auto connection = connections.find(polledTickets[i]);
            polled[first + i].revents != 0 && connection != connections.end())
            handle(connection, connection->second.read());
}

void JobPort::State::acceptAll()
{
    for (std::size_t i = 0; i < sockets.size(); ++i)
        if (polled[1 + i].revents != 0)
            acceptFrom(sockets[i]);
}

void JobPort::State::acceptFrom(const ListeningSocket& listening)
{
    for (int taken = 0; taken < acceptedAtOnce; ++taken) {
        SocketAddress sender;
        sender.size = sizeof sender.storage;
        FileHandle socket(::accept4(listening.socket.get(), reinterpret_cast<sockaddr*>(&sender.storage),
                                    &sender.size, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (!socket.isOpen()) {
            // The connection stays in the system's queue, and would be reported over and over.
            if (isWithoutRoom(errno))
                noneBefore = Clock::now() + breathing;
            return;
        }
        SenderConnection connection(std::move(socket), hostOf(sender), incoming, settings.largestJob);
        if (connections.size() < settings.mostConnections || makeRoom(connection.from())) {
            connections.emplace(++lastTicket, std::move(connection));
            openCount = connections.size();
        } else {
            turnAway(connection.from());
        }
    }
}

bool JobPort::State::makeRoom(const std::string& newcomer)
{
    const auto least = leastWorthy(connections, settings, newcomer);
    if (least == connections.end())
        return false;
    endOrTake(least,
              localized("another sender needed its place, after %d bytes of it", least->second.jobSize()));
    return connections.size() < settings.mostConnections;
}

void JobPort::State::turnAway(const std::string& from)
{
    ++turnedAway;
    lastTurnedAway = from;
    tellTurnedAway();
}

/// Once in a while: a crowd of senders would drown all else that is told.
void JobPort::State::tellTurnedAway()
{
    if (turnedAway == 0 || Clock::now() < quietUntil)
        return;
    auto line = "job from " + lastTurnedAway + ": not kept: " +
                localized("%d senders are connected, which is the most that this device serves",
                          settings.mostConnections);
    if (turnedAway > 1)
        line += " (and " + std::to_string(turnedAway - 1) + " more)";
    say(line);
    turnedAway = 0;
    quietUntil = Clock::now() + settings.quiet;
}

void JobPort::State::dropLate()
{
    for (auto one = connections.begin(); one != connections.end();) {
        const auto connection = one++;
        const auto& sender = connection->second;
        if (sender.isWaiting() || Clock::now() < endOf(sender, settings))
            continue;
        if (Clock::now() - sender.lastHeard() >= settings.patience)
            // Translators: %s is a duration: "30 s".
            endOrTake(connection, localized("the sender sent nothing for %s, after %d bytes of it",
                                            durationText(settings.patience), sender.jobSize()));
        else
            endOrTake(connection,
                      localized("the sender is too slow: %d bytes of it came in %s", sender.jobSize(),
                                durationText(std::chrono::duration_cast<std::chrono::milliseconds>(
                                    Clock::now() - sender.begun()))));
    }
}

void JobPort::State::endAll()
{
    for (auto one = connections.begin(); one != connections.end();)
        if (const auto connection = one++; !connection->second.isWaiting())
            closeOrDrop(connection,
                        localized("the device stops, after %d bytes of it", connection->second.jobSize()));
}

void JobPort::State::handle(Senders::iterator connection, SenderConnection::Event event)
{
    switch (event) {
    case SenderConnection::Event::none:
        return;
    case SenderConnection::Event::job:
        return keeper.keep(connection->first, connection->second.takeJob(), connection->second.from());
    case SenderConnection::Event::end:
        connection->second.closeInOrder();
        return remove(connection);
    case SenderConnection::Event::broken:
        return drop(connection, connection->second.problem());
    }
}

/// Resets the connection within a job.
void JobPort::State::drop(Senders::iterator connection, const std::string& why)
{
    if (!why.empty())
        say("job from " + connection->second.from() + ": not kept: " + why);
    remove(connection);
}

/// Ends a connection that the sender does not end: in order when no job is left.
void JobPort::State::closeOrDrop(Senders::iterator connection, const std::string& why)
{
    if (connection->second.isWithinJob())
        return drop(connection, why);
    connection->second.closeInOrder();
    remove(connection);
}

/// Ends a connection that lasts too long. A job that says its own end is taken, as if its sender had ended.
void JobPort::State::endOrTake(Senders::iterator connection, const std::string& why)
{
    if (connection->second.hasWholeJob())
        return handle(connection, SenderConnection::Event::job);
    closeOrDrop(connection, why);
}

void JobPort::State::remove(Senders::iterator connection)
{
    connections.erase(connection);
    openCount = connections.size();
}

JobPort::JobPort(const StateFolder& folder, DeviceLog& log, JobPortSettings settings)
    : state_(std::make_unique<State>(folder, log, std::move(settings)))
{
}

JobPort::~JobPort() = default;

std::vector<std::string> JobPort::addresses() const { return state_->addresses; }

bool JobPort::isIdle() const { return state_->openCount == 0; }

} // namespace quelm::device
