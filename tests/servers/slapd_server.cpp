// Writes slapd's configuration and data, and runs it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/slapd_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace servers {

namespace {

/// LDIF takes any bytes in base64.
std::string base64(std::string_view bytes)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string result;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t offset = 0; offset < 3; ++offset) {
            group <<= 8U;
            if (at + offset < bytes.size())
                group |= static_cast<unsigned char>(bytes[at + offset]);
        }
        const std::size_t bytesHere = std::min<std::size_t>(3, bytes.size() - at);
        for (std::size_t digit = 0; digit < 4; ++digit)
            result += digit <= bytesHere ? digits[(group >> (18U - 6U * digit)) & 0x3FU] : '=';
    }
    return result;
}

/// The folder of slapd's loadable backends.
std::string moduleFolder()
{
    for (const char* folder : {"/usr/lib/ldap", "/usr/lib/openldap", "/usr/lib64/openldap"})
        if (std::filesystem::exists(std::filesystem::path(folder) / "back_mdb.so"))
            return folder;
    throw std::runtime_error("slapd's module back_mdb is not installed");
}

std::string schemaFolder()
{
    for (const char* folder : {"/etc/ldap/schema", "/etc/openldap/schema"})
        if (std::filesystem::exists(std::filesystem::path(folder) / "inetorgperson.schema"))
            return folder;
    throw std::runtime_error("slapd's schema files are not installed");
}

bool accepts(const std::string& socketPath)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path)
        throw std::runtime_error("the temporary folder's path is too long for a socket: " + socketPath);
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size() + 1);
    const int trial = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected =
        trial >= 0 && connect(trial, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(trial);
    return connected;
}

/// A value as it stands in an entry's name.
std::string escaped(std::string_view value)
{
    std::string result;
    for (const char character : value) {
        if (std::string_view(",+\"\\<>;=#").find(character) != std::string_view::npos)
            result += '\\';
        result += character;
    }
    const std::size_t end = result.find_last_not_of(' ');
    return end == std::string::npos ? result : result.substr(0, end + 1);
}

} // namespace

DirectoryRecord person(const std::string& surname, const std::string& givenName, const std::string& fax,
                       const std::string& phone, const std::string& mail, int number)
{
    const std::string name = surname + " " + givenName + (number == 0 ? "" : " " + std::to_string(number));
    DirectoryRecord record{"cn=" + escaped(name) + ",dc=example",
                           {{"objectClass", "inetOrgPerson"}, {"cn", name}, {"sn", surname}}};
    const std::pair<const char*, const std::string&> optional[] = {{"givenName", givenName},
                                                                   {"facsimileTelephoneNumber", fax},
                                                                   {"telephoneNumber", phone},
                                                                   {"mail", mail}};
    for (const auto& [attribute, value] : optional)
        if (!value.empty())
            record.attributes.emplace_back(attribute, value);
    return record;
}

std::vector<DirectoryRecord> persons(int count)
{
    std::vector<DirectoryRecord> result;
    for (int number = 1; number <= count; ++number) {
        std::string text = std::to_string(number);
        text.insert(0, 4 - std::min<std::size_t>(4, text.size()), '0');
        result.push_back(person("Surname" + text, "Given" + text, "+49 30 " + text));
    }
    return result;
}

SlapdServer::SlapdServer(const SlapdSettings& settings)
{
    std::filesystem::create_directory(folder_ / "data");
    configure(settings);
    fill(settings);
    // The socket in our own folder tells our server from any other that took the port first.
    for (int attempt = 0; !server_; ++attempt) {
        plainPort_ = unusedPort(Transport::tcp);
        do {
            securePort_ = settings.certificate ? unusedPort(Transport::tcp) : 0;
        } while (securePort_ == plainPort_);
        try {
            start();
        } catch (const std::runtime_error&) {
            constexpr int mostAttempts = 3;
            if (attempt + 1 == mostAttempts)
                throw;
        }
    }
}

void SlapdServer::configure(const SlapdSettings& settings) const
{
    std::ofstream file(folder_ / "slapd.conf");
    for (const char* schema : {"core", "cosine", "inetorgperson"})
        file << "include \"" << schemaFolder() << "/" << schema << ".schema\"\n";
    file << "pidfile \"" << folder_ / "slapd.pid"
         << "\"\n"
         << "modulepath \"" << moduleFolder() << "\"\nmoduleload back_mdb\n"
         << "sizelimit " << (settings.sizeLimit == 0 ? "unlimited" : std::to_string(settings.sizeLimit))
         << "\n";
    if (!settings.anonymousBind)
        file << "disallow bind_anon\n";
    if (settings.certificate)
        file << "TLSCertificateFile \"" << settings.certificate->certificate << "\"\n"
             << "TLSCertificateKeyFile \"" << settings.certificate->key << "\"\n";
    file << settings.configuration << "\n"
         << "database mdb\nsuffix \"" << base() << "\"\ndirectory \"" << folder_ / "data"
         << "\"\n"
         << "maxsize 67108864\ndbnosync\n";
}

void SlapdServer::fill(const SlapdSettings& settings) const
{
    std::ofstream file(folder_ / "data.ldif");
    file << "dn: " << base()
         << "\nobjectClass: dcObject\nobjectClass: organization\ndc: example\no: Example\n\n";
    for (const DirectoryRecord& record : settings.records) {
        file << "dn:: " << base64(record.name) << "\n";
        for (const auto& [attribute, value] : record.attributes)
            file << attribute << ":: " << base64(value) << "\n";
        file << "\n";
    }
    file.close();
    runProgram({{systemProgram("slapadd"), "-q", "-f", folder_ / "slapd.conf", "-l", folder_ / "data.ldif"},
                folder_ / "slapadd.log",
                {}});
}

void SlapdServer::start()
{
    const std::string socketPath = folder_ / "ldapi";
    std::string encoded;
    for (const char character : socketPath)
        encoded += character == '/' ? "%2F" : std::string(1, character);
    std::string urls;
    for (const std::string host : {"127.0.0.1", "[::1]"}) {
        if (host != "127.0.0.1" && !hasIpv6())
            continue;
        urls += "ldap://" + host + ":" + std::to_string(plainPort_) + " ";
        if (securePort_ != 0)
            urls += "ldaps://" + host + ":" + std::to_string(securePort_) + " ";
    }
    // slapd begins to listen in the order of the addresses: when the socket takes connections, all do.
    urls += "ldapi://" + encoded;
    std::filesystem::remove(socketPath);
    server_.reset();
    // A debug level, 0 too, keeps it in the foreground.
    server_ = std::make_unique<ServerProcess>(
        ServerCommand{{systemProgram("slapd"), "-f", folder_ / "slapd.conf", "-h", urls, "-d", "0"},
                      folder_ / "slapd.log",
                      {}},
        [&] { return accepts(socketPath); });
}

bool hasIpv6()
{
    const int trial = socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_addr = in6addr_loopback;
    const bool bound =
        trial >= 0 && bind(trial, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(trial);
    return bound;
}

} // namespace servers
