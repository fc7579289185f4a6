// Opens, reopens and searches, and says what went wrong.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_session.h"

#include "base/module.h"
#include "base/texts.h"
#include "driver/directory/directory_messages.h"

#include <algorithm>
#include <utility>

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

milliseconds bounded(milliseconds limit)
{
    return std::clamp<milliseconds>(limit, milliseconds(1), std::chrono::hours(1));
}

/// A name that is typed as "Sm*" becomes "(sn=Sm**)", which is no filter but clear. A star that is
/// part of a name never stands there as such.
std::string withoutDoubledStars(const std::string& filter)
{
    std::string result;
    for (const char character : filter)
        if (character != '*' || !result.ends_with('*'))
            result += character;
    return result;
}

/// Why no server needs to be asked, as a result code.
int refusalOf(const DirectoryQuery& query)
{
    constexpr int subtree = 2;
    if (query.scope < 0 || query.scope > subtree)
        return ldap_code::parameterError;
    // The library takes an empty filter, and ends one at a NUL, which would then find others.
    if (query.filter.empty() || query.filter.find('\0') != std::string::npos)
        return ldap_code::filterError;
    return ldap_code::success;
}

} // namespace

void DirectorySession::setAddress(const std::string& text)
{
    connection_.reset();
    addressText_ = text;
}

void DirectorySession::setBase(const std::string& text) { base_ = std::string(trimmed(text)); }

void DirectorySession::connect(const DirectorySettings& settings, Deadline deadline)
{
    connection_.reset();
    const auto address = parseDirectoryAddress(addressText_);
    if (!address)
        throw DirectoryError(ldap_code::parameterError, directory_messages::noAddress(addressText_));
    connection_ = part<DirectoryLibrary>().connect(*address, settings, deadline);
}

bool DirectorySession::open(const DirectorySettings& settings)
{
    const auto start = Clock::now();
    const milliseconds limit = bounded(settings.connectTimeout);
    try {
        connect(settings, start + limit);
    } catch (const DirectoryError& error) {
        report_.failed(error.what());
        return false;
    }
    leftForBind_ = limit - std::chrono::floor<milliseconds>(Clock::now() - start);
    report_.succeeded();
    return true;
}

bool DirectorySession::bind(const DirectorySettings& settings)
{
    binds_ = true;
    if (connection_ == nullptr)
        return false; // what went wrong was said when it was opened
    const milliseconds limit = std::exchange(leftForBind_, bounded(settings.connectTimeout));
    try {
        connection_->bindAnonymously(Clock::now() + limit);
    } catch (const DirectoryError& error) {
        connection_.reset();
        report_.failed(error.what());
        return false;
    }
    report_.succeeded();
    return true;
}

DirectoryOutcome DirectorySession::attempt(const DirectoryQuery& query, const DirectorySettings& settings,
                                           Deadline deadline)
{
    const bool reused = connection_ != nullptr && connection_->isUsable();
    const auto openAnew = [&] {
        const Deadline ready = std::min(deadline, Clock::now() + bounded(settings.connectTimeout));
        connect(settings, ready);
        if (binds_)
            connection_->bindAnonymously(ready);
    };
    if (!reused)
        openAnew();
    const int limit = std::max(1, settings.sizeLimit);
    DirectoryOutcome outcome = connection_->search(query, limit, deadline, results_);
    // A server that was restarted without a goodbye is noticed only now.
    if (reused && results_.empty() && outcome.code == ldap_code::serverDown) {
        openAnew();
        outcome = connection_->search(query, limit, deadline, results_);
    }
    return outcome;
}

bool DirectorySession::search(DirectoryQuery query, const DirectorySettings& settings)
{
    results_.clear();
    position_ = 0;
    report_.searched(SearchExtent::none);
    query.base = base_;
    query.filter = withoutDoubledStars(query.filter);
    if (const int refusal = refusalOf(query); refusal != ldap_code::success) {
        lastCode_ = refusal;
        report_.failed(directory_messages::noSearch(query));
        return false;
    }
    const Deadline deadline = Clock::now() + bounded(settings.searchTimeout);
    try {
        const DirectoryOutcome outcome = attempt(query, settings, deadline);
        return conclude(outcome, query, settings);
    } catch (const DirectoryError& error) {
        connection_.reset();
        lastCode_ = error.code;
        report_.failed(error.what());
        return false;
    }
}

bool DirectorySession::conclude(const DirectoryOutcome& outcome, const DirectoryQuery& query,
                                const DirectorySettings& settings)
{
    lastCode_ = outcome.code;
    const std::string server = connection_->address().shown();
    if (!connection_->isUsable())
        connection_.reset();
    if (outcome.code == ldap_code::success || outcome.code == ldap_code::sizeLimitExceeded) {
        report_.succeeded();
        report_.searched(outcome.code == ldap_code::success ? SearchExtent::whole : SearchExtent::upToLimit);
        if (outcome.code != ldap_code::success && count() < static_cast<std::size_t>(settings.sizeLimit))
            report_.noticed(directory_messages::serversLimit(server, count()));
        return true;
    }
    report_.failed(directory_messages::searchFailed(server, outcome, query, settings, count()));
    if (results_.empty())
        return false;
    report_.searched(SearchExtent::upToFailure);
    return true;
}

std::optional<DirectoryEntry> DirectorySession::next()
{
    if (position_ == results_.size())
        return std::nullopt;
    return std::move(results_[position_++]);
}

} // namespace quelm
