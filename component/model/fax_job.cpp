// The fax job's parameters and its three recipient lists.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/fax_job.h"

#include "common/widget_names.h"
#include "host/calls.h"
#include "model/joined_lists.h"
#include "model/recipient.h"

namespace {

constexpr const char* faxParameterKeys = ",flFaxCoverPage,CurrentFaxRecipientIndex,PDLMode,";
constexpr int coverPageKey = 1;
constexpr int currentIndexKey = 2;
constexpr int pdlModeKey = 3;

constexpr const char* pdlModes = ",DSC,PJL,";
constexpr int pjlMode = 2;

int parameterKey(const char* key)
{
    return key != nullptr ? host::tokenNumber(faxParameterKeys, key, true) : 0;
}

} // namespace

Tarvik40Fax::Tarvik40Fax() { joinLists(recipientList, tmpRecipientList, groupMemberList); }

bool Tarvik40Fax::getFaxParameter(char* key, void* out)
{
    if (out == nullptr)
        return false;
    switch (parameterKey(key)) {
    case coverPageKey:
        *static_cast<bool*>(out) = faxCoverPage;
        return true;
    case currentIndexKey:
        host::readInteger(widget_names::faxPbList, *static_cast<int*>(out));
        return true;
    default:
        return false; // "PDLMode" can be set, not read
    }
}

bool Tarvik40Fax::setFaxParameter(char* key, void* value)
{
    if (parameterKey(key) == pdlModeKey) {
        const auto* mode = static_cast<const char*>(value);
        const bool pjl = mode != nullptr && host::tokenNumber(pdlModes, mode, false) == pjlMode;
        pdlMode = pjl ? PDL_MODE_PJL : PDL_MODE_DSC;
        attributePrefix = pjl ? "@PJL COMMENT " : "%%";
    }
    return true;
}

Tarvik40FaxRecipientList* Tarvik40Fax::listFor(int list)
{
    switch (list) {
    case RECIPIENT_LIST:
        return &recipientList;
    case CUR_RECIPIENT_LIST:
        return &tmpRecipientList;
    case GROUP_MEMBER_LIST:
        return &groupMemberList;
    default:
        return nullptr;
    }
}

bool Tarvik40Fax::addFaxRecipient(Tarvik40FaxRecipient* recipient, bool toTmp)
{
    return (toTmp ? tmpRecipientList : recipientList).addFaxRecipient(recipient);
}

Tarvik40FaxRecipient* Tarvik40Fax::getCurrentFaxRecipient(int list)
{
    if (list != RECIPIENT_LIST && list != CUR_RECIPIENT_LIST)
        return nullptr;
    const char* widget =
        list == RECIPIENT_LIST ? widget_names::lanFaxRecipientList : widget_names::faxCurRecipientList;
    int row = -1;
    // Without a selected row, or one that can be read, nothing may be removed, shown or edited by accident.
    return host::readInteger(widget, row) && row >= 0 ? getFaxRecipientN(row, list) : nullptr;
}

Tarvik40FaxRecipient* Tarvik40Fax::getFaxRecipientN(int n, int list)
{
    switch (list) {
    case RECIPIENT_LIST:
        return recipientList.getFaxRecipientN(n);
    case CUR_RECIPIENT_LIST:
        return tmpRecipientList.getFaxRecipientN(n);
    default:
        return nullptr;
    }
}

int Tarvik40Fax::getRecipientListCount(int list)
{
    // The phonebook's rows are not held here; hosts get the job's count in their place.
    if (list == PB_ENTRY_LIST)
        list = RECIPIENT_LIST;
    Tarvik40FaxRecipientList* chosen = listFor(list);
    return chosen != nullptr ? chosen->recipientListSize() : 0;
}

bool Tarvik40Fax::removeFaxRecipient(Tarvik40FaxRecipient* recipient, bool fromTmp)
{
    return (fromTmp ? tmpRecipientList : recipientList).removeFaxRecipient(recipient);
}

bool Tarvik40Fax::removeFaxRecipientN(int n, bool fromTmp)
{
    return removeFaxRecipient(getFaxRecipientN(n, fromTmp ? CUR_RECIPIENT_LIST : RECIPIENT_LIST), fromTmp);
}

bool Tarvik40Fax::isFaxRecipientAlreadyInList(std::string& key)
{
    return !key.empty() && (recipientList.getFaxRecipientByKey(key) != nullptr ||
                            tmpRecipientList.getFaxRecipientByKey(key) != nullptr);
}

bool Tarvik40Fax::removeAllFaxRecipients(int list)
{
    Tarvik40FaxRecipientList* chosen = listFor(list);
    return chosen != nullptr && chosen->removeAllFaxRecipients();
}

void Tarvik40Fax::clearAllFaxRecipients(int list)
{
    if (Tarvik40FaxRecipientList* chosen = listFor(list))
        chosen->clearAllFaxRecipients();
}

void Tarvik40Fax::appendTmpFaxRecipientList()
{
    if (recipientList.appendRecipientList(&tmpRecipientList))
        updatePBEntryList(RECIPIENT_LIST);
    tmpRecipientList.clearAllFaxRecipients();
    updatePBEntryList(CUR_RECIPIENT_LIST);
}

bool Tarvik40Fax::assembleGroupMemberListData(std::string& out)
{
    out.clear();
    Tarvik40FaxRecipient* member = groupMemberList.walkFaxRecipientList(true);
    if (member == nullptr)
        return false;
    for (; member != nullptr; member = groupMemberList.walkFaxRecipientList(false))
        if (const char* name = member->getRecipientData("RecipientName"))
            out.append(",u").append(name);
    return true;
}

void Tarvik40Fax::setGroupRecipientList(bool clear)
{
    if (clear)
        groupMemberList.clearAllFaxRecipients();
    else
        groupMemberList.appendRecipientList(&recipientList);
    updatePBEntryList(GROUP_MEMBER_LIST);
}
