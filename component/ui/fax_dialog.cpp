// The main fax dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/fax_dialog.h"

#include "common/widget_names.h"
#include "directory/device_directory.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

#include <string_view>

namespace {

/// Takes a ticked option's text over. An unticked box leaves the job as it was: what was
/// taken over once stays until another text replaces it.
void takeOver(const char* box, const char* field, std::string& out)
{
    bool ticked = false;
    host::TextBuffer text;
    if (host::readTicked(box, ticked) && ticked && host::readText(field, text))
        out = text.c_str();
}

struct Preference {
    std::string_view box;
    bool Tarvik40Fax::*field;
};

constexpr Preference preferences[] = {
    {widget_names::lanFaxPrefDuplicates, &Tarvik40Fax::promptOnDuplicates},
    {widget_names::lanFaxPrefRemoveOne, &Tarvik40Fax::promptOnRemoveOne},
    {widget_names::lanFaxPrefCurrentList, &Tarvik40Fax::alwaysUseCurrentList},
    {widget_names::lanFaxPrefCurrentCoverNotes, &Tarvik40Fax::alwaysUseCurrentCoverNotes},
};

} // namespace

void T40InvokeFaxDialog()
{
    host::show(widget_names::lanFaxWindow);
    host::setIndex(widget_names::lanFaxTabSet, 0);
    if (pBiDi != nullptr) {
        host::setSensitive(widget_names::ldapPbType, true);
        SynchronizeLDAPConnection();
        deviceInfoReady = 1;
    }
}

void T40LanFaxDialogOk()
{
    pFaxSession->faxCoverPage = host::featureValue(widget_names::lanFaxCoverSheetOption, 0) != 0;
    if (pFaxSession->faxCoverPage) {
        host::TextBuffer notes;
        host::readText(widget_names::lanFaxCoverSheetNotes, notes);
        pFaxSession->coverNotes = std::string(" (") + notes.c_str() + ") ";
    }
    takeOver(widget_names::lanFaxDialingPrefix, widget_names::lanFaxDialingPrefixInfo,
             pFaxSession->dialingPrefix);
    takeOver(widget_names::lanFaxCreditCard, widget_names::lanFaxCreditCardInfo, pFaxSession->creditCard);
    host::hide(widget_names::lanFaxWindow);
}

void T40FaxDialogCancel() { host::hide(widget_names::lanFaxWindow); }

void T40LanFaxPreferencesCB(_GtkWidget*, GTKObject* object)
{
    bool value = false;
    if (object == nullptr || !object->getWidgetProperty(host::in("Value"), &value))
        return;
    const char* name = object->getObjectName();
    for (const Preference& preference : preferences) {
        if (name != nullptr && preference.box == name) {
            pFaxSession->*preference.field = value;
            return;
        }
    }
}

int Tarvik40Fax::CheckFaxInfo()
{
    if (recipientList.recipientListSize() > 0)
        return 1;
    T40InvokeFaxDialog();
    return 0;
}
