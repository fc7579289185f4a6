// What tests of the directory client share: a session as the component uses it, and its limits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DIRECTORY_DIRECTORY_FIXTURE_H
#define TESTS_DRIVER_DIRECTORY_DIRECTORY_FIXTURE_H

#include "driver/boundary/host_state.h"
#include "host/directory_client.h"
#include "tests/servers/listeners.h"
#include "tests/servers/slapd_server.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

class DirectoryTest : public testing::Test {
protected:
    DirectoryTest()
    {
        setBase(servers::SlapdServer::base());
        // Tests of what is in time choose shorter ones.
        settings.connectTimeout = std::chrono::seconds(5);
        settings.searchTimeout = std::chrono::seconds(10);
    }

    void setBase(std::string base) { session.setBaseServerPath(base.data()); }

    /// Opens the session at an address.
    bool open(std::string address)
    {
        session.setServerIP(address.data());
        return session.openSession();
    }
    /// Opens and binds, as the component does.
    bool connect(const std::string& address) { return open(address) && session.bindAnonymousSession(); }

    bool search(std::string filter = "(sn=*)")
    {
        for (std::string attribute :
             {"sn", "givenName", "facsimileTelephoneNumber", "telephonenumber", "mail"})
            session.appendAttribute(attribute.data());
        return session.requestSearch(filter, 2, nullptr, false);
    }

    static std::string valueOf(LDAPEntry& entry, std::string attribute)
    {
        std::string value = "left over";
        return entry.fetchValueByAttribute(attribute.data(), value) ? value : "(none)" + value;
    }

    /// The values of an attribute in the results that were not read yet.
    std::vector<std::string> read(const std::string& attribute = "sn")
    {
        std::vector<std::string> values;
        LDAPEntry entry;
        while (session.getNextEntry(entry))
            values.push_back(valueOf(entry, attribute));
        return values;
    }

    int count() { return session.getLastResponseItemCount(); }
    int code() { return session.getLastResponseCode(); }
    std::string trouble() const { return host.failures.last().directory; }

    /// The results of a search, or what went wrong: "(false) code".
    std::vector<std::string> found(const std::string& filter = "(sn=*)")
    {
        if (!search(filter))
            return {"(false) " + std::to_string(code())};
        return read();
    }

    /// What a server is started with that has these entries.
    static servers::SlapdSettings serving(std::vector<servers::DirectoryRecord> records)
    {
        servers::SlapdSettings slapd;
        slapd.records = std::move(records);
        return slapd;
    }

    /// How a message about the server at this address starts.
    static std::string named(const std::string& address) { return "the directory server " + address; }

    /// How long an action takes.
    template <class Action>
    static std::chrono::milliseconds timeOf(Action action)
    {
        const auto start = std::chrono::steady_clock::now();
        action();
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                     start);
    }

    using Names = std::vector<std::string>;

    static constexpr std::chrono::milliseconds shortTime{300};
    static constexpr std::chrono::milliseconds muchLonger{2300};

    TemporaryFolder folder;
    quelm::HostState host{folder.path(), "ann"};
    quelm::DirectorySettings& settings = host.directory;
    LogCapture log;
    LDAPSession session;
};

#endif
