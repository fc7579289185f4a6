// An ordered list of recipients with one shared walking cursor.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_RECIPIENT_LIST_H
#define MODEL_RECIPIENT_LIST_H

#include <cstddef>
#include <list>
#include <string>
#include <vector>

class Tarvik40FaxRecipient;

/// Recipients in the order in which they were added; nothing is ever sorted.
///
/// The list holds pointers. `removeFaxRecipient` and `removeAllFaxRecipients` destroy what they take
/// out; `clearAllFaxRecipients` and the destructor only forget. After `appendRecipientList` two
/// lists share recipients: one of them must be emptied with `clearAllFaxRecipients` before
/// anything destroys them, unless both are lists of the fax job, which sees to it. Never add a pointer twice.
///
/// A place may hold null: in the job's group member list where a recipient was that has been removed since.
/// Such a place counts, and a walk passes over it.
class __attribute__((visibility("default"))) Tarvik40FaxRecipientList {
public:
    Tarvik40FaxRecipientList();
    ~Tarvik40FaxRecipientList();
    Tarvik40FaxRecipientList(const Tarvik40FaxRecipientList&) = delete;
    Tarvik40FaxRecipientList& operator=(const Tarvik40FaxRecipientList&) = delete;

    /// Appends `recipient`, without looking for duplicates. False for null.
    bool addFaxRecipient(Tarvik40FaxRecipient* recipient);

    /// The recipient at position `n` from 0; the first one for a negative `n`, null at or beyond the
    /// size and where the place holds null. Asking for one position after the other takes time linear in
    /// the size, and quadratic once the list was handed out by `getListObject`.
    Tarvik40FaxRecipient* getFaxRecipientN(int n);

    /// Takes out and destroys the first entry that is this very object. False, and nothing changed,
    /// when there is none. Moves the cursor. Places of the job's group member list that held the
    /// recipient hold null from then on.
    bool removeFaxRecipient(Tarvik40FaxRecipient* recipient);

    /// Destroys every recipient and empties the list. Always true. Moves the cursor. What other lists of
    /// the job shared, they lose, the group member list with empty places.
    bool removeAllFaxRecipients();

    /// Empties the list without destroying anything.
    void clearAllFaxRecipients();

    /// The next recipient at or behind the cursor, which moves on behind it; null at the end. `restart`
    /// begins at the first. A walk is not to be interleaved with operations that move the cursor.
    Tarvik40FaxRecipient* walkFaxRecipientList(bool restart);

    /// Appends every pointer of `other`, in order; `other` is unchanged. False when it is null or empty.
    bool appendRecipientList(Tarvik40FaxRecipientList* other);

    /// The first recipient whose name immediately followed by its fax number as typed equals `key`,
    /// byte for byte; null when there is none. Moves the cursor.
    Tarvik40FaxRecipient* getFaxRecipientByKey(std::string& key);

    int recipientListSize();

    /// The underlying list. It may be kept and changed at any time: positions asked for afterwards are
    /// those of the changed list, and a walk goes on at the position that it had reached. What is put in is
    /// the list's as if it were added; what is taken out is the caller's, who sees to
    /// it that no other list holds it when it is destroyed.
    std::list<Tarvik40FaxRecipient*>& getListObject();

private:
    using Position = std::list<Tarvik40FaxRecipient*>::iterator;

    Position placeAt(std::ptrdiff_t n);
    void moveCursorTo(std::ptrdiff_t n);
    void forgetPositions();
    void leaveJoinedLists(const std::vector<Tarvik40FaxRecipient*>& leaving) const;

    // Hosts were built against the room that these take. None may be moved, taken out or put in between.
    std::list<Tarvik40FaxRecipient*> recipients;
    std::ptrdiff_t cursor; ///< a number: whoever changes the list leaves it of use
    Tarvik40FaxRecipient* lastRecipient = nullptr;

    // Where the last access ended, so that the next position is one step away. It holds while nobody but
    // this class changes the list: the number is negative when nothing is kept, or ever will be.
    Position lastPosition;
    int lastPositionNumber;
};

#endif
