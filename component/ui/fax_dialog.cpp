// The main fax dialog.
#include "ui/fax_dialog.h"

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
    {"LanFax Pref Duplicates", &Tarvik40Fax::promptOnDuplicates},
    {"LanFax Pref Remove One", &Tarvik40Fax::promptOnRemoveOne},
    {"LanFax Pref Current List", &Tarvik40Fax::alwaysUseCurrentList},
    {"LanFax Pref Current Cover Notes", &Tarvik40Fax::alwaysUseCurrentCoverNotes},
};

} // namespace

void T40InvokeFaxDialog()
{
    host::show("Lan Fax Window");
    host::setIndex("Lan Fax TabSet", 0);
    if (pBiDi) {
        host::setSensitive("LDAP PB Type", true);
        SynchronizeLDAPConnection();
        deviceInfoReady = 1;
    }
}

void T40LanFaxDialogOk()
{
    pFaxSession->faxCoverPage = host::featureValue("LanFax Cover Sheet Option", 0) != 0;
    if (pFaxSession->faxCoverPage) {
        host::TextBuffer notes;
        host::readText("LanFax Cover Sheet Notes", notes);
        pFaxSession->coverNotes = std::string(" (") + notes.c_str() + ") ";
    }
    takeOver("LanFax Dialing Prefix", "LanFax Dialing Prefix Info", pFaxSession->dialingPrefix);
    takeOver("LanFax Credit Card", "LanFax Credit Card Info", pFaxSession->creditCard);
    host::hide("Lan Fax Window");
}

void T40FaxDialogCancel() { host::hide("Lan Fax Window"); }

void T40LanFaxPreferencesCB(_GtkWidget*, GTKObject* object)
{
    bool value = false;
    if (!object || !object->getWidgetProperty(host::in("Value"), &value))
        return;
    const char* name = object->getObjectName();
    for (const Preference& preference : preferences) {
        if (name && preference.box == name) {
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
