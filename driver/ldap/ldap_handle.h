// The LDAP library's handle on one connection, and calls on it that keep their time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_LDAP_LDAP_HANDLE_H
#define DRIVER_LDAP_LDAP_HANDLE_H

#include "base/bounded_call.h"
#include "base/file_handle.h"
#include "driver/directory/directory_address.h"
#include "driver/directory/directory_entry.h"
#include "driver/directory/directory_query.h"

#include <ldap.h>

#include <memory>
#include <string>

namespace quelm {

/// The library's own errors are negative; the numbers that the LDAP interface gives them are 80 on.
int ldapResultCode(int libraryCode);

struct LdapMessageDeleter {
    void operator()(LDAPMessage* message) const { ldap_msgfree(message); }
};
using LdapMessage = std::unique_ptr<LDAPMessage, LdapMessageDeleter>;

/// Owns the library's handle and the connected socket below it. LDAP version 3; referrals are not
/// followed, aliases not resolved.
class LdapHandle {
public:
    /// Takes over `connected`, a non-blocking socket, also when it throws. The library's first use
    /// in a process looks up this machine's own name, which is waited for until the deadline.
    /// Throws DirectoryError.
    LdapHandle(FileHandle connected, const DirectoryAddress& server, Deadline deadline);
    /// Says goodbye to the server and closes the connection.
    ~LdapHandle();
    LdapHandle(const LdapHandle&) = delete;
    LdapHandle& operator=(const LdapHandle&) = delete;

    LDAP* get() const { return handle_; }

    /// Sets an option of this connection; false when the library refuses it.
    bool set(int option, const void* value) const;

    /// Sets TLS up with the options that were set; false when that failed or the deadline passed.
    bool installTls(Deadline deadline) const;

    /// The next message that answers request `id`, or null with the library's error in `error`,
    /// which is LDAP_TIMEOUT when none was there by the deadline.
    LdapMessage receive(int id, Deadline deadline, int& error) const;

    /// How a request ended. `error` is what the library said when it was to send it as `id`; the
    /// server's first answer is the last one, too.
    DirectoryOutcome outcomeOf(int error, int id, Deadline deadline) const;
    /// What the server's final answer says.
    DirectoryOutcome outcomeOf(LDAPMessage* answer) const;

    /// The attributes of a search's result, as far as they can be decoded: the first thousand, which is more
    /// than a person has.
    DirectoryEntry entryOf(LDAPMessage* result) const;

private:
    void setBlocking(bool blocking) const;

    LDAP* handle_ = nullptr;
    int socket_; ///< the library's, which closes it
};

} // namespace quelm

#endif
