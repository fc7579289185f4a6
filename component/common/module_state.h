// Module state that several subsystems share: handles of list widgets, and the message buffer.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMON_MODULE_STATE_H
#define COMMON_MODULE_STATE_H

#include "host/calls.h"

// All null until start-up looked them up; the host owns the widgets.
extern GTKObject* recipientListWidget;    ///< "LanFax Recipient List": the job's recipients
extern GTKObject* pbListWidget;           ///< "Fax PB List": rows of the current phonebook
extern GTKObject* curRecipientListWidget; ///< "Fax Cur Recipient List": picks of the phonebook dialog
extern GTKObject* groupListWidget;        ///< "LanFaxAddGroup Group List": members of a group being saved
extern GTKObject* searchStatusWidget;     ///< "Search Status": progress of a directory search

/// Receives every translated message; zeroed before each translation.
extern char messageBuffer[host::textBufferSize];

/// The kind of phonebook that the phonebook dialog shows, by the items of "Current PB Type".
extern int currentPBType;
inline constexpr int personalPhonebook = 0;
inline constexpr int sharedPhonebook = 1;
inline constexpr int directoryPhonebook = 2;

#endif
