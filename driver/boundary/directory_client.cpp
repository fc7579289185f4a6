// What host/directory_client.h declares: the client of the device's directory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/directory_client.h"

#include "base/log.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"
#include "driver/directory/directory_session.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace {

using quelm::atBoundary;

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

/// As configured for the driver; as built in where no driver runs.
quelm::DirectorySettings settings()
{
    const quelm::HostState* host = quelm::HostState::current();
    return host != nullptr ? host->directory : quelm::DirectorySettings{};
}

/// Keeps what a session reports with the driver that lives; without one it is logged.
class Report : public quelm::DirectoryReport {
public:
    void failed(const std::string& line) override
    {
        if (auto* host = quelm::HostState::current())
            host->failures.directoryFailed(line);
        else
            noticed(line);
    }
    void succeeded() override
    {
        if (auto* host = quelm::HostState::current())
            host->failures.directoryAnswered();
    }
    void searched(quelm::SearchExtent extent) override
    {
        if (auto* host = quelm::HostState::current())
            host->failures.directorySearched(extent);
    }
    void noticed(const std::string& line) override { quelm::log(quelm::Severity::warning, line); }
};

/// Runs an action on the directory; what it throws beside the errors that it reports itself, such as
/// the system's refusal of a thread, is a trouble too.
template <class Action>
bool attempt(Action action) noexcept
{
    return atBoundary(false, [&] {
        try {
            return action();
        } catch (const std::exception& error) {
            Report().failed(quelm::localized("the directory cannot be asked (%s); try again", error.what()));
            return false;
        }
    });
}

} // namespace

struct LDAPEntry::Impl {
    quelm::DirectoryEntry entry;
};

struct LDAPSession::Impl {
    Report report;
    quelm::DirectorySession session{report};
    std::vector<std::string> attributes;
};

LDAPEntry::LDAPEntry() : impl(new Impl) {}

LDAPEntry::~LDAPEntry() { delete impl; }

bool LDAPEntry::fetchValueByAttribute(char* attribute, std::string& value)
{
    value.clear();
    return atBoundary(false, [&] {
        const std::string* found = impl->entry.find(textOf(attribute));
        if (found == nullptr)
            return false;
        value = *found;
        return true;
    });
}

void LDAPEntry::clearAttributeValue() { impl->entry = {}; }

LDAPSession::LDAPSession() : impl(new Impl) {}

LDAPSession::~LDAPSession() { delete impl; }

void LDAPSession::setServerIP(char* address)
{
    attempt([&] {
        impl->session.setAddress(textOf(address));
        return true;
    });
}

void LDAPSession::setBaseServerPath(char* base)
{
    attempt([&] {
        impl->session.setBase(textOf(base));
        return true;
    });
}

bool LDAPSession::openSession()
{
    return attempt([&] { return impl->session.open(settings()); });
}

bool LDAPSession::bindAnonymousSession()
{
    return attempt([&] { return impl->session.bind(settings()); });
}

void LDAPSession::appendAttribute(char* attribute)
{
    attempt([&] {
        const std::string name = textOf(attribute);
        // Searches append the same names again and again, in whatever case.
        const bool known = std::ranges::any_of(
            impl->attributes, [&](const std::string& other) { return quelm::sameAttribute(other, name); });
        if (!known && !name.empty())
            impl->attributes.push_back(name);
        return true;
    });
}

bool LDAPSession::requestSearch(std::string& filter, int scope, char** attributes, bool flag)
{
    return attempt([&] {
        quelm::DirectoryQuery query;
        query.filter = filter;
        query.scope = scope;
        query.namesOnly = flag;
        if (attributes == nullptr)
            query.attributes = impl->attributes;
        for (char** name = attributes; name != nullptr && *name != nullptr; ++name)
            query.attributes.emplace_back(*name);
        return impl->session.search(std::move(query), settings());
    });
}

bool LDAPSession::getNextEntry(LDAPEntry& entry)
{
    entry.clearAttributeValue();
    return attempt([&] {
        auto next = impl->session.next();
        if (!next)
            return false;
        entry.impl->entry = std::move(*next);
        return true;
    });
}

int LDAPSession::getLastResponseItemCount() { return static_cast<int>(impl->session.count()); }

int LDAPSession::getLastResponseCode() { return impl->session.code(); }
