// An ordered list of recipients with one shared walking cursor.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_RECIPIENT_LIST_H
#define MODEL_RECIPIENT_LIST_H

#include <list>
#include <string>

class Tarvik40FaxRecipient;

/// Recipients in the order in which they were added; nothing is ever sorted.
///
/// The list holds pointers. `removeFaxRecipient` and `removeAllFaxRecipients` destroy what they take
/// out; `clearAllFaxRecipients` and the destructor only forget. After `appendRecipientList` two
/// lists share recipients: one of them must be emptied with `clearAllFaxRecipients` before
/// anything destroys them. Never add a pointer twice.
class __attribute__((visibility("default"))) Tarvik40FaxRecipientList {
public:
    Tarvik40FaxRecipientList();
    ~Tarvik40FaxRecipientList();
    Tarvik40FaxRecipientList(const Tarvik40FaxRecipientList&) = delete;
    Tarvik40FaxRecipientList& operator=(const Tarvik40FaxRecipientList&) = delete;

    /// Appends `recipient`, without looking for duplicates. False for null.
    bool addFaxRecipient(Tarvik40FaxRecipient* recipient);

    /// The recipient at position `n` from 0; the first one for a negative `n`, null at or beyond the
    /// size. Asking for one position after the other takes time linear in the size, not
    /// quadratic.
    Tarvik40FaxRecipient* getFaxRecipientN(int n);

    /// Takes out and destroys the first entry that is this very object. False, and nothing changed,
    /// when there is none. Moves the cursor.
    bool removeFaxRecipient(Tarvik40FaxRecipient* recipient);

    /// Destroys every recipient and empties the list. Always true. Moves the cursor.
    bool removeAllFaxRecipients();

    /// Empties the list without destroying anything.
    void clearAllFaxRecipients();

    /// The recipient at the cursor, which moves on by one; null at the end. `restart` begins at the
    /// first. A walk is not to be interleaved with operations that move the cursor.
    Tarvik40FaxRecipient* walkFaxRecipientList(bool restart);

    /// Appends every pointer of `other`, in order; `other` is unchanged. False when it is null or empty.
    bool appendRecipientList(Tarvik40FaxRecipientList* other);

    /// The first recipient whose name immediately followed by its fax number as typed equals `key`,
    /// byte for byte; null when there is none. Moves the cursor.
    Tarvik40FaxRecipient* getFaxRecipientByKey(std::string& key);

    int recipientListSize();

    /// The underlying list, for `appendRecipientList`. Whoever changes it calls
    /// `clearAllFaxRecipients` or restarts the walk afterwards.
    std::list<Tarvik40FaxRecipient*>& getListObject();

private:
    using Position = std::list<Tarvik40FaxRecipient*>::iterator;

    std::list<Tarvik40FaxRecipient*> recipients;
    Position cursor;
    Tarvik40FaxRecipient* lastRecipient = nullptr;

    // Where the last positional access ended, so that the next position is one step away.
    // Null position number -1: unknown.
    Position lastPosition;
    int lastPositionNumber = -1;
};

#endif
