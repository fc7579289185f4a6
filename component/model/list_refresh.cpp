// Shows a recipient list in its widget.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/list_refresh.h"

#include "common/list_cells.h"
#include "common/module_state.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "model/fax_job.h"
#include "model/listed_texts.h"
#include "model/recipient.h"

#include <array>

GTKObject* listItemFactory = nullptr;

namespace {

/// Six texts and a closing null. A group shows its name alone.
using Row = std::array<const char*, 7>;

Row rowFor(Tarvik40FaxRecipient& recipient)
{
    Row row;
    row.fill(pEmptyString);
    row.back() = nullptr;
    const auto texts = listedTexts(recipient);
    const std::size_t filled = recipient.getRecipientType() == GROUP_RECIPIENT ? 1 : texts.size();
    for (std::size_t column = 0; column < filled; ++column)
        row[column] = listCell(*texts[column]);
    return row;
}

/// Nothing is selected after a refresh, and a group can be saved of any recipients there are.
void setButtonsBesideTheJobsList(bool listIsEmpty)
{
    int selectedRow = -1;
    // Hosts expect the read; nothing depends on it.
    host::readInteger(widget_names::lanFaxRecipientList, selectedRow);
    host::setSensitive(widget_names::lanFaxDetailsButton, false);
    host::setSensitive(widget_names::lanFaxSaveEntryButton, false);
    host::setSensitive(widget_names::lanFaxRemoveButton, false);
    if (listIsEmpty) {
        host::setSensitive(widget_names::lanFaxSaveGroupButton, false);
        host::setSensitive(widget_names::lanFaxSaveEntryButton, false);
    } else {
        host::setSensitive(widget_names::lanFaxSaveGroupButton, true);
    }
}

} // namespace

void Tarvik40Fax::updatePBEntryList(int list)
{
    GTKObject* widget = recipientListWidget;
    Tarvik40FaxRecipientList* recipients = &recipientList;
    switch (list) {
    case PB_ENTRY_LIST:
        return; // a phonebook's rows are filled from its records
    case CUR_RECIPIENT_LIST:
        widget = curRecipientListWidget;
        recipients = &tmpRecipientList;
        break;
    case GROUP_MEMBER_LIST:
        widget = groupListWidget;
        recipients = &groupMemberList;
        break;
    default:
        setButtonsBesideTheJobsList(recipientList.recipientListSize() == 0);
    }
    if (listItemFactory == nullptr)
        listItemFactory = new GTKObject; // kept until the process ends
    if (widget == nullptr)
        return;
    widget->clearListItems();
    for (int n = 0; n < recipients->recipientListSize(); ++n) {
        Tarvik40FaxRecipient* recipient = recipients->getFaxRecipientN(n);
        if (recipient == nullptr && list == GROUP_MEMBER_LIST)
            continue; // was removed from the job since
        if (recipient == nullptr || !host::addListRow(*listItemFactory, widget, rowFor(*recipient).data()))
            return;
    }
}
