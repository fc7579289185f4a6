// Fills a directory and runs slapd on it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/sample_directory.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/net/connector.h"
#include "base/net/listening_sockets.h"
#include "base/net/look_up.h"
#include "base/net/network_address.h"
#include "base/process.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "device/agent/directory_process.h"
#include "device/agent/sample_people.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace quelm::device {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr const char* sampleBase = "dc=example";

/// Where a server on loopback can listen now.
std::vector<std::string> freePlaces(std::uint16_t port)
{
    std::vector<std::string> places;
    for (const ListeningSocket& bound : listenOn({"127.0.0.1", "::1"}, port))
        places.push_back(bound.address);
    return places;
}

bool takesConnections(const std::string& place)
{
    const HostAnswer found = lookUp(parseNetworkAddress(place), SOCK_STREAM, Deadline());
    ConnectLimits limits;
    limits.each = 1s;
    return connectToAny(found.addresses, limits).kind == ConnectResult::Kind::connected;
}

/// The first of `folders` that holds `file`, with it; empty when none does.
std::string findIn(const std::vector<std::string>& folders, const std::string& file)
{
    std::error_code ignored;
    for (const std::string& folder : folders)
        if (fs::exists(fs::path(folder) / file, ignored))
            return fs::path(folder) / file;
    return {};
}

std::string required(const std::string& found)
{
    if (found.empty())
        throw Error(localized(
            "there is no directory server on this machine; install slapd, the server of OpenLDAP, or do "
            "without --with-directory"));
    return found;
}

/// A path as the server's configuration takes any.
std::string quoted(const std::string& path)
{
    std::string text = "\"";
    for (const char character : path) {
        if (character == '"' || character == '\\')
            text += '\\';
        text += character;
    }
    return text + "\"";
}

void write(const std::string& path, std::string_view content)
{
    AtomicFile file(path);
    file.restrictToOwner();
    file.write(content);
    file.commit();
}

/// The last line of a file in which a program complains; empty when it does not.
std::string lastLine(const fs::path& file)
{
    try {
        constexpr std::size_t enough = std::size_t{1} << 20U;
        const std::string content = readTextFile(file, enough);
        const std::string_view text = trimmed(content);
        constexpr std::size_t most = 300;
        return shownText(text.substr(text.rfind('\n') + 1), most);
    } catch (const Error&) {
        return {};
    }
}

} // namespace

struct SampleDirectory::State {
    fs::path folder;
    std::vector<std::string> places; ///< where the server listens
    std::unique_ptr<DirectoryProcess> server;

    std::string at(const char* file) const { return folder / file; }

    /// Everything of an earlier server goes.
    void empty() const
    {
        std::error_code failure;
        fs::remove_all(folder, failure);
        constexpr mode_t ownersAlone = 0700;
        for (const fs::path& made : {folder, folder / "data"})
            if (::mkdir(made.c_str(), ownersAlone) != 0)
                throw Error(localized("%s: cannot be written: %s", made.string(), systemReason(errno)));
    }

    void fill(const std::string& slapadd) const
    {
        std::string lines;
        for (const char* schema : {"core", "cosine", "inetorgperson"})
            lines += "include " +
                     quoted(required(findIn({"/etc/ldap/schema", "/etc/openldap/schema"},
                                            std::string(schema) + ".schema"))) +
                     "\n";
        lines += "pidfile " + quoted(at("slapd.pid")) + "\n";
        // Where the module is none it is part of the program.
        const std::string module =
            findIn({"/usr/lib/ldap", "/usr/lib/openldap", "/usr/lib64/openldap"}, "back_mdb.so");
        if (!module.empty())
            lines += "modulepath " + quoted(fs::path(module).parent_path()) + "\nmoduleload back_mdb\n";
        lines += "sizelimit unlimited\naccess to * by * read\ndatabase mdb\nsuffix \"" +
                 std::string(sampleBase) + "\"\ndirectory " + quoted(at("data")) +
                 "\nmaxsize 67108864\ndbnosync\nindex objectClass eq\nindex sn,cn eq,sub\n";
        write(at("slapd.conf"), lines);
        write(at("people.ldif"), sampleLdif(sampleBase));
        ProcessRequest request;
        request.arguments = {slapadd, "-q", "-f", at("slapd.conf"), "-l", at("people.ldif")};
        request.environment = environment();
        if (const ProcessResult result = runProcess(request); result.exitStatus != 0)
            throw Error(localized("the sample directory could not be filled: %s",
                                  messageLine(std::string(trimmed(result.errors)))));
    }

    /// Nothing of the user's has a say.
    static std::vector<std::string> environment()
    {
        return {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C", "LDAPNOINIT=1"};
    }

    std::string urls() const
    {
        std::string all;
        for (const std::string& place : places)
            all += "ldap://" + place + "/ ";
        return all;
    }

    /// True once our server has its port, and not another program, and takes connections there.
    bool isReady() const
    {
        return lastLine(folder / "slapd.pid") == std::to_string(server->id()) &&
               takesConnections(places.front());
    }

    /// False when it ended at once.
    bool start(const std::string& slapd)
    {
        // A debug level, 0 too, keeps it in the foreground.
        server = std::make_unique<DirectoryProcess>(
            std::vector<std::string>{slapd, "-f", at("slapd.conf"), "-h", urls(), "-d", "0"}, environment(),
            at("slapd.log"));
        constexpr int interval = 5; // milliseconds
        for (const auto deadline = Clock::now() + 20s; server->isRunning(); ::poll(nullptr, 0, interval)) {
            if (isReady())
                return true;
            if (Clock::now() > deadline)
                throw Error(
                    localized("the directory server slapd does not begin to serve; see %s", at("slapd.log")));
        }
        return false;
    }
};

std::vector<std::string> SampleDirectory::programFolders()
{
    return {"/usr/sbin", "/usr/local/sbin", "/sbin", "/usr/libexec", "/usr/lib/openldap"};
}

SampleDirectory::SampleDirectory(const std::string& folder, std::uint16_t port,
                                 const std::vector<std::string>& programs)
    : state_(std::make_unique<State>())
{
    const std::string slapd = required(findIn(programs, "slapd"));
    const std::string slapadd = required(findIn(programs, "slapadd"));
    state_->folder = fs::absolute(folder);
    state_->empty();
    state_->fill(slapadd);
    // Somebody else may take the port between its choice and the server's start.
    for (int attemptsLeft = port == 0 ? 3 : 1; attemptsLeft > 0; --attemptsLeft) {
        state_->places = freePlaces(port);
        if (state_->start(slapd))
            return;
    }
    throw Error(
        localized("the directory server slapd did not start: %s", lastLine(state_->folder / "slapd.log")));
}

SampleDirectory::~SampleDirectory() = default;

DirectorySettings SampleDirectory::settings() const
{
    DirectorySettings settings;
    settings.server = addresses().front();
    settings.base = sampleBase;
    return settings;
}

std::vector<std::string> SampleDirectory::addresses() const { return state_->places; }

pid_t SampleDirectory::process() const { return state_->server->id(); }

} // namespace quelm::device
