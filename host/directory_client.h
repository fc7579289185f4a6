// The host's directory client: one LDAP session and the entries that it finds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_DIRECTORY_CLIENT_H
#define HOST_DIRECTORY_CLIENT_H

#include <string>

#pragma GCC visibility push(default)

/// One entry of a search result: attribute names with their values.
class __attribute__((visibility("default"))) LDAPEntry {
public:
    LDAPEntry();
    ~LDAPEntry();
    LDAPEntry(const LDAPEntry&) = delete;
    LDAPEntry& operator=(const LDAPEntry&) = delete;

    /// Stores the first value (UTF-8) of the attribute in `value`. Names match without regard
    /// to case. An entry that lacks the attribute empties `value` and answers false.
    bool fetchValueByAttribute(char* attribute, std::string& value);

    /// Empties the entry, so that it can receive the next result.
    void clearAttributeValue();

    struct Impl;

private:
    friend class LDAPSession;
    Impl* impl;
};

/// One session with a directory server. Calls return when the server answered or the host's
/// time limit ran out; none throws.
class __attribute__((visibility("default"))) LDAPSession {
public:
    LDAPSession();
    ~LDAPSession();
    LDAPSession(const LDAPSession&) = delete;
    LDAPSession& operator=(const LDAPSession&) = delete;

    /// The server, as the device gives it: "host", "host:port" or an "ldap://" or "ldaps://"
    /// address. The text is copied.
    void setServerIP(char* address);

    /// The entry below which searches look. The text is copied.
    void setBaseServerPath(char* base);

    /// Connects to the server; an open session is opened anew. False when it was not reached.
    bool openSession();

    /// Binds without credentials.
    bool bindAnonymousSession();

    /// Adds a name to the attributes that searches ask for. A name that stands there already
    /// is not added again.
    void appendAttribute(char* attribute);

    /// Searches with an LDAP filter. `scope` 2 is the whole subtree below the base; a null
    /// `attributes` asks for the appended ones. False when the search could not be made or
    /// timed out.
    bool requestSearch(std::string& filter, int scope, char** attributes, bool flag);

    /// Fills `entry` with the next result, in the directory's order. False when there is none,
    /// and the entry is then empty.
    bool getNextEntry(LDAPEntry& entry);

    /// The number of entries that the last search found.
    int getLastResponseItemCount();

    /// The LDAP result code of the last search; 4 stands for an exceeded size limit.
    int getLastResponseCode();

    struct Impl;

private:
    Impl* impl;
};

#pragma GCC visibility pop

#endif
