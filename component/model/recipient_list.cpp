// The recipient list: insertion order, one cursor, and who destroys what.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/recipient_list.h"

#include "model/joined_lists.h"
#include "model/recipient.h"
#include "model/recipient_key.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace {

// The cursor at the end. A number of its own, so that a walk that ended stays there whoever is added.
constexpr std::ptrdiff_t theEnd = std::numeric_limits<std::ptrdiff_t>::max();

// Numbers of no position.
constexpr int nothingKept = -1;
constexpr int handedOut = -2; // the host may change the list behind our back, now or later

struct JoinedLists {
    Tarvik40FaxRecipientList* recipients;
    Tarvik40FaxRecipientList* picks;
    Tarvik40FaxRecipientList* members;

    bool hold(const Tarvik40FaxRecipientList* list) const
    {
        return list == recipients || list == picks || list == members;
    }
};

/// Those of every job there is, as lists have no room to say it themselves. Null when there was none, and
/// when the component is unloaded or the process ends, which a host's job may outlive.
std::vector<JoinedLists>* everyJoinedLists = nullptr;

struct AtUnload {
    ~AtUnload() { delete std::exchange(everyJoinedLists, nullptr); }
} atUnload;

} // namespace

void joinLists(Tarvik40FaxRecipientList& recipients, Tarvik40FaxRecipientList& picks,
               Tarvik40FaxRecipientList& members)
{
    if (everyJoinedLists == nullptr)
        everyJoinedLists = new std::vector<JoinedLists>;
    everyJoinedLists->push_back({&recipients, &picks, &members});
}

Tarvik40FaxRecipientList::Tarvik40FaxRecipientList() : cursor(theEnd), lastPositionNumber(nothingKept) {}

Tarvik40FaxRecipientList::~Tarvik40FaxRecipientList()
{
    if (everyJoinedLists != nullptr)
        std::erase_if(*everyJoinedLists, [this](const JoinedLists& lists) { return lists.hold(this); });
}

/// The place at position `n`, which the list has.
Tarvik40FaxRecipientList::Position Tarvik40FaxRecipientList::placeAt(std::ptrdiff_t n)
{
    if (lastPositionNumber == handedOut)
        return std::next(recipients.begin(), n);
    if (lastPositionNumber == nothingKept || n < lastPositionNumber) {
        lastPosition = recipients.begin();
        lastPositionNumber = 0;
    }
    std::advance(lastPosition, n - lastPositionNumber);
    lastPositionNumber = static_cast<int>(n);
    return lastPosition;
}

void Tarvik40FaxRecipientList::moveCursorTo(std::ptrdiff_t n)
{
    cursor = n < std::ssize(recipients) ? n : theEnd;
}

/// After a removal. A walk that is not restarted has ended.
void Tarvik40FaxRecipientList::forgetPositions()
{
    cursor = theEnd;
    if (lastPositionNumber != handedOut)
        lastPositionNumber = nothingKept;
}

/// Ahead of destroying the recipients, which are sorted.
void Tarvik40FaxRecipientList::leaveJoinedLists(const std::vector<Tarvik40FaxRecipient*>& leaving) const
{
    const auto leaves = [&leaving](Tarvik40FaxRecipient* recipient) {
        return std::ranges::binary_search(leaving, recipient);
    };
    if (everyJoinedLists == nullptr)
        return;
    for (const JoinedLists& lists : *everyJoinedLists) {
        if (!lists.hold(this))
            continue;
        for (Tarvik40FaxRecipientList* owner : {lists.recipients, lists.picks})
            if (owner != this && std::erase_if(owner->recipients, leaves) > 0)
                owner->forgetPositions();
        if (lists.members != this)
            std::ranges::replace_if(lists.members->recipients, leaves, nullptr);
    }
}

bool Tarvik40FaxRecipientList::addFaxRecipient(Tarvik40FaxRecipient* recipient)
{
    if (recipient == nullptr)
        return false;
    recipients.push_back(recipient);
    return true;
}

Tarvik40FaxRecipient* Tarvik40FaxRecipientList::getFaxRecipientN(int n)
{
    n = std::max(n, 0);
    lastRecipient = n < recipientListSize() ? *placeAt(n) : nullptr;
    return lastRecipient;
}

bool Tarvik40FaxRecipientList::removeFaxRecipient(Tarvik40FaxRecipient* recipient)
{
    const auto place = std::ranges::find(recipients, recipient);
    const auto position = std::distance(recipients.begin(), place);
    forgetPositions();
    if (place == recipients.end())
        return false;
    recipients.erase(place);
    moveCursorTo(position);
    if (recipient != nullptr)
        leaveJoinedLists({recipient});
    delete recipient;
    return true;
}

bool Tarvik40FaxRecipientList::removeAllFaxRecipients()
{
    // Each once: a group that was filled twice holds everybody twice.
    std::vector<Tarvik40FaxRecipient*> leaving(recipients.begin(), recipients.end());
    std::erase(leaving, nullptr);
    std::ranges::sort(leaving);
    leaving.erase(std::unique(leaving.begin(), leaving.end()), leaving.end());
    clearAllFaxRecipients();
    leaveJoinedLists(leaving);
    for (Tarvik40FaxRecipient* recipient : leaving)
        delete recipient;
    return true;
}

void Tarvik40FaxRecipientList::clearAllFaxRecipients()
{
    recipients.clear();
    forgetPositions();
}

Tarvik40FaxRecipient* Tarvik40FaxRecipientList::walkFaxRecipientList(bool restart)
{
    if (restart)
        cursor = 0;
    while (cursor < std::ssize(recipients)) {
        Tarvik40FaxRecipient* recipient = *placeAt(cursor);
        moveCursorTo(cursor + 1);
        if (recipient != nullptr)
            return recipient;
    }
    return nullptr;
}

bool Tarvik40FaxRecipientList::appendRecipientList(Tarvik40FaxRecipientList* other)
{
    if (other == nullptr || other->recipients.empty())
        return false;
    // Sized first, so that a list can be appended to itself.
    auto from = other->recipients.begin();
    for (auto left = other->recipients.size(); left > 0; --left, ++from)
        recipients.push_back(*from);
    return true;
}

Tarvik40FaxRecipient* Tarvik40FaxRecipientList::getFaxRecipientByKey(std::string& key)
{
    const auto found = std::ranges::find_if(recipients, [&key](const Tarvik40FaxRecipient* recipient) {
        return recipient != nullptr && hasRecipientKey(*recipient, key);
    });
    moveCursorTo(std::distance(recipients.begin(), found));
    return found != recipients.end() ? *found : nullptr;
}

int Tarvik40FaxRecipientList::recipientListSize() { return static_cast<int>(recipients.size()); }

std::list<Tarvik40FaxRecipient*>& Tarvik40FaxRecipientList::getListObject()
{
    lastPositionNumber = handedOut;
    return recipients;
}
