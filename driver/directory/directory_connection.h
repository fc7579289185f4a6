// One connection to a directory server: connecting, TLS, binding and searching, each in its time.
#ifndef DRIVER_DIRECTORY_DIRECTORY_CONNECTION_H
#define DRIVER_DIRECTORY_DIRECTORY_CONNECTION_H

#include <memory>
#include <string>
#include <vector>

#include "base/bounded_call.h"
#include "base/error.h"
#include "driver/directory/directory_address.h"
#include "driver/directory/directory_entry.h"
#include "driver/directory/directory_settings.h"

namespace quelm {

/// LDAP result codes that the driver acts on or makes itself. Those from 80 on are the client's own.
namespace ldap_code {
inline constexpr int success = 0;
inline constexpr int timeLimitExceeded = 3;
inline constexpr int sizeLimitExceeded = 4;
inline constexpr int noSuchObject = 32;
inline constexpr int serverDown = 81;
inline constexpr int timeout = 85;
inline constexpr int filterError = 87;
inline constexpr int parameterError = 89;
inline constexpr int connectError = 91;
} // namespace ldap_code

/// What went wrong on a connection, as a whole line for the user, with the LDAP result code.
class DirectoryError : public Error {
public:
    DirectoryError(int resultCode, const std::string& line) : Error(line), code(resultCode) {}

    const int code;
};

/// What to search for.
struct DirectoryQuery {
    std::string base;   ///< the name (DN) of the entry below which to look; empty for the root
    std::string filter; ///< an LDAP filter, "(sn=Smi*)"
    int scope = 2;      ///< 0 the base itself, 1 the level below it, 2 the whole subtree
    std::vector<std::string> attributes; ///< what to ask for; empty for all attributes
    bool namesOnly = false;              ///< asks for the attributes' names without their values
};

/// How a search ended.
struct DirectoryOutcome {
    int code = 0;        ///< the LDAP result code
    std::string message; ///< what the server, or the library, says of it; may be empty
};

class LdapHandle;

/// An established connection. Every call returns by its deadline, also when the server stops in the
/// middle of an answer, and none raises SIGPIPE. LDAP version 3; referrals are not followed. What
/// ldap.conf, an ldaprc file or the environment say about servers, limits and trust is overruled.
class DirectoryConnection {
public:
    /// Connects. With an "ldaps" address, or when the settings ask for StartTLS, TLS is there when
    /// this returns, with a certificate that a trusted authority issued for the server's name
    /// ("localhost" stands for this machine's full name, as the LDAP library has it). Throws
    /// DirectoryError otherwise: a server that refuses TLS is not talked to in plain.
    DirectoryConnection(DirectoryAddress address, const DirectorySettings& settings, Deadline deadline);
    ~DirectoryConnection();
    DirectoryConnection(const DirectoryConnection&) = delete;
    DirectoryConnection& operator=(const DirectoryConnection&) = delete;

    /// Binds without credentials. Throws DirectoryError when that is refused or not answered.
    void bindAnonymously(Deadline deadline);

    /// Searches, and adds the entries to `found` in the order in which they come, at most
    /// `sizeLimit`; when the server sends more, the code is 4. What came before a failure stays in
    /// `found`. Never throws for what a server does.
    DirectoryOutcome search(const DirectoryQuery& query, int sizeLimit, Deadline deadline,
                            std::vector<DirectoryEntry>& found);

    /// False once the connection is of no more use: the server hung up or said that it will, or an
    /// answer was given up.
    bool isUsable();

    const DirectoryAddress& address() const { return server; }

private:
    void requestTls(Deadline deadline);
    void setUpTls(const DirectorySettings& settings, Deadline deadline);

    DirectoryAddress server;
    std::unique_ptr<LdapHandle> handle;
    bool usable = true;
};

} // namespace quelm

#endif
