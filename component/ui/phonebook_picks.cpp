// Picks from a phonebook: entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/phonebook_picks.h"

#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "phonebook/phonebook_state.h"
#include "ui/duplicate_question.h"
#include "ui/question_response.h"

#include <algorithm>
#include <memory>

// Destroyed in the reverse order at unload: the text first, then the record.
LegacyDBRecipient pendingGroupRecord;
std::string pendingGroupText;
std::int32_t pendingGroupCursor = 0;
bool groupExpansionStart = true;

namespace {

constexpr const char* phonebookList = widget_names::faxPbList;

int selectedRow()
{
    int row = -1;
    host::readInteger(phonebookList, row);
    return row;
}

/// Row i of the list shows record i + 1. Without a selection that is record 0, which does not exist.
bool decodeRow(int row, LegacyDBRecipient& out)
{
    ClearLegacyDBRecipientInfo(out);
    LegacyDBRecord* record = currentPBIterator != nullptr ? currentPBIterator->getRecordN(row + 1) : nullptr;
    return record != nullptr && ParseLegacyPBEntry(record, out);
}

/// Adds a single recipient with the record's data to the picks, which own it.
void pick(LegacyDBRecipient& record)
{
    auto recipient = std::make_unique<Tarvik40FaxRecipient>();
    recipient->setRecipientType(SINGLE_RECIPIENT);
    recipient->setRecipientData("RecipientName", record.name);
    recipient->setRecipientData("RecipientFaxNumber", record.faxNumber);
    recipient->cleanseFaxNumber();
    recipient->setRecipientData("RecipientOrganization", record.company);
    recipient->setRecipientData("RecipientPhone", record.voiceNumber);
    recipient->setRecipientData("RecipientEmail", record.email);
    recipient->setRecipientData("RecipientMailbox", record.faxMailbox);
    if (pFaxSession->addFaxRecipient(recipient.get(), true))
        recipient.release();
}

/// Takes the present member's name off the front of the pending text.
void dropPendingMember()
{
    pendingGroupText.erase(0, static_cast<std::size_t>(std::max(pendingGroupCursor, 0)));
}

/// Moves to the next member. False when there is none with a comma behind its name.
bool findPendingMember()
{
    const std::size_t comma = pendingGroupText.find(',');
    if (comma != pendingGroupText.npos)
        pendingGroupText.erase(0, comma + 1);
    pendingGroupCursor = static_cast<std::int32_t>(pendingGroupText.find(','));
    return !pendingGroupText.empty() && pendingGroupCursor >= 0;
}

/// Decodes the present member's own record.
bool decodePendingMember()
{
    std::string key = "u" + pendingGroupText.substr(0, static_cast<std::size_t>(pendingGroupCursor));
    LegacyDBRecord* record =
        currentPBIterator != nullptr ? currentPBIterator->getRecordByKey(key.data()) : nullptr;
    if (record == nullptr)
        return false;
    ClearLegacyDBRecipientInfo(pendingGroupRecord);
    return ParseLegacyPBEntry(record, pendingGroupRecord);
}

} // namespace

void T40AddFaxRecipientFromPBTest()
{
    groupExpansionStart = true; // gives up an expansion that still waits for an answer
    const int row = selectedRow();
    if (currentPBIterator == nullptr || currentPBDatabase == nullptr)
        return;
    int count = 0;
    if (!currentPBDatabase->getNumberOfRecords(count) || row > count)
        return;
    LegacyDBRecipient record;
    if (!decodeRow(row, record))
        return;
    if (!TestForDuplicateRecipient(questionResponse(DupAddPBRcptResponseCB), record.name.data(),
                                   record.faxNumber.data()))
        T40AddFaxRecipientFromPB();
}

void DupAddPBRcptResponseCB(_GtkDialog*, int response) { finishQuestion(response, T40AddFaxRecipientFromPB); }

void T40AddFaxRecipientFromPB()
{
    LegacyDBRecipient record;
    if (!decodeRow(selectedRow(), record))
        return;
    if (record.type == SINGLE_RECIPIENT)
        pick(record);
    else if (record.type == GROUP_RECIPIENT)
        ProcessGroupMemberList(record);
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
}

void ProcessGroupMemberList(LegacyDBRecipient& group)
{
    if (groupExpansionStart) {
        pendingGroupText = group.groupMembers;
        groupExpansionStart = false;
    }
    while (!pendingGroupText.empty() && findPendingMember()) {
        if (decodePendingMember()) {
            if (TestForDuplicateRecipient(questionResponse(DupAddPBGroupResponseCB),
                                          pendingGroupRecord.name.data(),
                                          pendingGroupRecord.faxNumber.data()))
                return;
            T40AddFaxRecipientFromGroup();
        }
        dropPendingMember();
        pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
    }
    groupExpansionStart = true;
}

void T40AddFaxRecipientFromGroup() { pick(pendingGroupRecord); }

void DupAddPBGroupResponseCB(_GtkDialog*, int response)
{
    finishQuestion(response, T40AddFaxRecipientFromGroup);
    dropPendingMember();
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
    LegacyDBRecipient unused;
    ClearLegacyDBRecipientInfo(unused);
    ProcessGroupMemberList(unused);
}
