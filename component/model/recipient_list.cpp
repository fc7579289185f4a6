// The recipient list: insertion order, one cursor, and who destroys what.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/recipient_list.h"

#include "model/recipient.h"
#include "model/recipient_key.h"

#include <iterator>

Tarvik40FaxRecipientList::Tarvik40FaxRecipientList() : cursor(recipients.end()) {}

Tarvik40FaxRecipientList::~Tarvik40FaxRecipientList() = default;

bool Tarvik40FaxRecipientList::addFaxRecipient(Tarvik40FaxRecipient* recipient)
{
    if (recipient == nullptr)
        return false;
    recipients.push_back(recipient);
    return true;
}

Tarvik40FaxRecipient* Tarvik40FaxRecipientList::getFaxRecipientN(int n)
{
    lastRecipient = nullptr;
    if (n < 0)
        n = 0;
    if (n >= recipientListSize())
        return nullptr;
    if (lastPositionNumber < 0 || n < lastPositionNumber) {
        lastPosition = recipients.begin();
        lastPositionNumber = 0;
    }
    std::advance(lastPosition, n - lastPositionNumber);
    lastPositionNumber = n;
    lastRecipient = *lastPosition;
    return lastRecipient;
}

bool Tarvik40FaxRecipientList::removeFaxRecipient(Tarvik40FaxRecipient* recipient)
{
    for (cursor = recipients.begin(); cursor != recipients.end(); ++cursor) {
        if (*cursor == recipient) {
            cursor = recipients.erase(cursor);
            lastPositionNumber = -1;
            delete recipient;
            return true;
        }
    }
    return false;
}

bool Tarvik40FaxRecipientList::removeAllFaxRecipients()
{
    for (Tarvik40FaxRecipient* recipient : recipients)
        delete recipient;
    clearAllFaxRecipients();
    return true;
}

void Tarvik40FaxRecipientList::clearAllFaxRecipients()
{
    recipients.clear();
    cursor = recipients.end();
    lastPositionNumber = -1;
}

Tarvik40FaxRecipient* Tarvik40FaxRecipientList::walkFaxRecipientList(bool restart)
{
    if (restart)
        cursor = recipients.begin();
    return cursor == recipients.end() ? nullptr : *cursor++;
}

bool Tarvik40FaxRecipientList::appendRecipientList(Tarvik40FaxRecipientList* other)
{
    if (other == nullptr || other->recipients.empty())
        return false;
    // Sized first, so that a list can be appended to itself.
    auto from = other->getListObject().begin();
    for (auto left = other->recipients.size(); left > 0; --left, ++from)
        recipients.push_back(*from);
    return true;
}

Tarvik40FaxRecipient* Tarvik40FaxRecipientList::getFaxRecipientByKey(std::string& key)
{
    for (cursor = recipients.begin(); cursor != recipients.end(); ++cursor)
        if (hasRecipientKey(**cursor, key))
            return *cursor;
    return nullptr;
}

int Tarvik40FaxRecipientList::recipientListSize() { return static_cast<int>(recipients.size()); }

std::list<Tarvik40FaxRecipient*>& Tarvik40FaxRecipientList::getListObject() { return recipients; }
