// Picking phonebook entries and whole groups in the phonebook dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_PHONEBOOK_PICKS_H
#define UI_PHONEBOOK_PICKS_H

#include "phonebook/record_format.h"

#include <cstdint>

struct _GtkDialog;

// A group is expanded member by member, and a question about a duplicate interrupts it. Where it
// stands meanwhile:
extern LegacyDBRecipient pendingGroupRecord; ///< the member being added
extern std::string pendingGroupText;         ///< the members not yet handled, the present one first
extern std::int32_t pendingGroupCursor;      ///< length of the present member's name in bytes
extern bool groupExpansionStart;             ///< the next expansion starts a new group

/// Picks the members of `group`, or goes on with the group that a question interrupted. Stops while
/// a question is on the screen. Members that the phonebook does not hold are passed over.
void ProcessGroupMemberList(LegacyDBRecipient& group);

/// Adds the pending member to the picks, without showing it.
void T40AddFaxRecipientFromGroup();

/// Answers to the duplicate questions: for an entry, and for a group's member.
void DupAddPBRcptResponseCB(_GtkDialog* dialog, int response);
void DupAddPBGroupResponseCB(_GtkDialog* dialog, int response);

#pragma GCC visibility push(default)
extern "C" {
/// Picks the selected row, after a question if it is a duplicate.
void T40AddFaxRecipientFromPBTest();

/// Picks the selected row: an entry, or every member of a group.
void T40AddFaxRecipientFromPB();
}
#pragma GCC visibility pop

#endif
