// Makes networks with the tools of the system.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/office_network.h"

#include <filesystem>
#include <system_error>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using Arguments = std::vector<std::string>;

std::string networkOf(const std::string& process) { return "/proc/" + process + "/ns/net"; }

Arguments inside(const servers::ServerProcess& holder, const Arguments& arguments)
{
    Arguments all{servers::systemProgram("nsenter"), "--net=" + networkOf(std::to_string(holder.id()))};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

} // namespace

OfficeNetwork::OfficeNetwork(int desks, const std::string& logFile) : log_(logFile), server_(hold())
{
    const auto ip = servers::systemProgram("ip");
    run(atServer({ip, "link", "set", "lo", "up"}));
    run(atServer({ip, "link", "add", "office", "type", "bridge"}));
    for (const char* address : {server, firstDevice, secondDevice})
        run(atServer({ip, "address", "add", std::string(address) + "/24", "dev", "office"}));
    run(atServer({ip, "link", "set", "office", "up"}));
    for (int desk = 0; desk < desks; ++desk) {
        desks_.push_back(hold());
        const auto cable = "desk" + std::to_string(desk);
        run(atServer({ip, "link", "add", cable, "type", "veth", "peer", "name", "eth0", "netns",
                      std::to_string(desks_.back()->id())}));
        run(atServer({ip, "link", "set", cable, "master", "office", "up"}));
        run(atDesk(desk,
                   {ip, "address", "add", "10.77.0." + std::to_string(101 + desk) + "/24", "dev", "eth0"}));
        run(atDesk(desk, {ip, "link", "set", "lo", "up"}));
        run(atDesk(desk, {ip, "link", "set", "eth0", "up"}));
    }
}

OfficeNetwork::Holder OfficeNetwork::hold() const
{
    servers::ServerCommand command;
    command.arguments = {servers::systemProgram("unshare"), "--net", servers::systemProgram("sleep"),
                         "infinity"};
    command.outputFile = log_;
    auto holder = std::make_unique<servers::ServerProcess>(command, [] { return true; });
    // It begins in this process's network.
    const auto own = fs::read_symlink(networkOf("self"));
    std::error_code ended;
    while (holder->running() && fs::read_symlink(networkOf(std::to_string(holder->id())), ended) == own) {
    }
    return holder;
}

void OfficeNetwork::run(const Arguments& arguments) const { servers::runProgram({arguments, log_, {}}); }

Arguments OfficeNetwork::atServer(const Arguments& arguments) const { return inside(*server_, arguments); }

Arguments OfficeNetwork::atDesk(int desk, const Arguments& arguments) const
{
    return inside(*desks_.at(static_cast<std::size_t>(desk)), arguments);
}

} // namespace journeys
