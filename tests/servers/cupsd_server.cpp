// Writes a print server's configuration, and a device that keeps what it is given.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/cupsd_server.h"

#include "tests/servers/loopback.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace servers {

namespace {

namespace fs = std::filesystem;

/// True when something listens there.
bool accepts(const sockaddr* address, socklen_t size)
{
    const int trial = socket(address->sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool accepted = trial >= 0 && connect(trial, address, size) == 0;
    close(trial);
    return accepted;
}

bool servesPort(int port)
{
    const sockaddr_in address = loopback(port);
    return accepts(reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

bool servesSocket(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return accepts(reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

/// The driver of a queue: PostScript goes through the filter "mark".
constexpr const char* driverDescription = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "MARK.PPD"
*Manufacturer: "Test"
*Product: "(Test)"
*ModelName: "Test"
*ShortNickName: "Test"
*NickName: "Test"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: False
*DefaultColorSpace: Gray
*cupsFilter: "application/vnd.cups-postscript 0 mark"
*cupsFilter: "application/postscript 0 mark"
)ppd";

std::string printerSection(const PrinterQueue& queue)
{
    const std::string kind = queue.isDefault ? "DefaultPrinter" : "Printer";
    std::string text = "<" + kind + " " + queue.name + ">\n";
    if (!queue.description.empty())
        text += "Info " + queue.description + "\n";
    text += "DeviceURI keep:/" + queue.name + "\n";
    text +=
        queue.pausedWith.empty() ? "State Idle\n" : "State Stopped\nStateMessage " + queue.pausedWith + "\n";
    text += std::string("Accepting ") + (queue.accepting ? "Yes" : "No") + "\n";
    text += queue.banners ? "JobSheets standard standard\n" : "JobSheets none none\n";
    if (!queue.holds.empty())
        text += "Option job-hold-until " + queue.holds + "\n";
    if (!queue.onlyFor.empty())
        text += "AllowUser " + queue.onlyFor + "\n";
    return text + "Shared No\nErrorPolicy stop-printer\nOpPolicy default\n</" + kind + ">\n";
}

} // namespace

CupsdServer::CupsdServer(const CupsdSettings& settings) : number_(unusedPort(Transport::tcp))
{
    configure(settings);
    ServerCommand command;
    command.arguments = {systemProgram("cupsd"), "-f", "-c",
                         folder_ / "cupsd.conf", "-s", folder_ / "cups-files.conf"};
    command.outputFile = folder_ / "log";
    server_ = std::make_unique<ServerProcess>(
        command, [this] { return servesPort(number_) && servesSocket(socketPath()); });
}

void CupsdServer::configure(const CupsdSettings& settings) const
{
    for (const auto* name : {"root", "cache", "state", "spool", "temporary", "kept", "bin/backend",
                             "bin/daemon", "bin/filter", "data/banners", "root/ppd"})
        fs::create_directories(folder_ / name);
    fs::create_symlink("/usr/lib/cups/daemon/cups-exec", folder_ / "bin/daemon/cups-exec");

    // The device of all queues. Its permissions make the server run it as its own user, root included.
    const std::string device =
        writeFile(folder_ / "bin/backend/keep", "#!/bin/sh\n"
                                                "[ $# -gt 0 ] || exit 0\n"
                                                "cd '" +
                                                    (folder_ / "kept") +
                                                    "' || exit 1\n"
                                                    "printf %s \"$2\" >user$1\n"
                                                    "printf %s \"$3\" >title$1\n"
                                                    "cat -- \"${6:--}\" >content$1.part\n"
                                                    "mv content$1.part content$1\n");
    fs::permissions(device, fs::perms::owner_all);

    std::string files = "ServerRoot " + (folder_ / "root") + "\nCacheDir " + (folder_ / "cache") +
                        "\nStateDir " + (folder_ / "state") + "\nRequestRoot " + (folder_ / "spool") +
                        "\nTempDir " + (folder_ / "temporary") + "\nServerBin " + (folder_ / "bin") +
                        "\nDataDir " + (folder_ / "data") + "\nServerKeychain " + (folder_ / "root/ssl") +
                        "\nAccessLog " + (folder_ / "log") + "\nErrorLog " + (folder_ / "log") +
                        "\nPageLog " + (folder_ / "log") + "\nPrintcap\n";
    if (geteuid() == 0) // the server wants another user for what is not its own
        files += "User lp\nGroup lp\nSystemGroup root\nLogFileGroup root\n";
    writeFile(folder_ / "cups-files.conf", files);

    const std::string guard = settings.guarded.empty()
                                  ? ""
                                  : "<Limit " + settings.guarded +
                                        ">\nAuthType Basic\nRequire valid-user\nOrder deny,allow\n</Limit>\n";
    writeFile(folder_ / "cupsd.conf",
              "LogLevel debug\nMaxLogSize 0\nBrowsing No\nWebInterface No\n" +
                  std::string(settings.forgetsJobs ? "PreserveJobHistory No\n" : "") + "Listen " + address() +
                  "\nListen " + socketPath() +
                  "\n"
                  "<Location />\nOrder allow,deny\n</Location>\n"
                  "<Policy default>\n" +
                  guard +
                  "<Limit Cancel-Job>\nRequire user @OWNER\nOrder deny,allow\n</Limit>\n"
                  "<Limit All>\nOrder deny,allow\n</Limit>\n"
                  "</Policy>\n");
    // What a driver makes of PostScript.
    const std::string filter =
        writeFile(folder_ / "bin/filter/mark", "#!/bin/sh\necho marked\ncat -- \"${6:--}\"\n");
    fs::permissions(filter, fs::perms::owner_all);
    writeFile(folder_ / "data/banners/standard", "%!PS-Adobe-3.0\n% a banner\nshowpage\n");
    fs::create_symlink("/usr/share/cups/mime", folder_ / "data/mime");

    std::string printers;
    for (const auto& queue : settings.queues) {
        printers += printerSection(queue);
        if (queue.filters)
            writeFile(folder_ / ("root/ppd/" + queue.name + ".ppd"), driverDescription);
    }
    writeFile(folder_ / "root/printers.conf", printers);
}

std::string CupsdServer::keptBy(int job, const std::string& what) const
{
    return folder_ / ("kept/" + what + std::to_string(job));
}

bool CupsdServer::wasPrinted(int job) const { return fs::exists(keptBy(job, "user")); }

PrintedJob CupsdServer::printed(int job) const
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!fs::exists(keptBy(job, "content"))) {
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("the print server did not print:\n" + contentOf(folder_ / "log"));
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return {contentOf(keptBy(job, "user")), contentOf(keptBy(job, "title")),
            contentOf(keptBy(job, "content"))};
}

} // namespace servers
