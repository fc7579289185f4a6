// The cover sheet dialog and the sender dialog.
#include "ui/cover_sheet_dialog.h"

#include "common/option_lists.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

namespace {

constexpr const char* coverSheetWindow = "Cover Sheet Setup Window";
constexpr const char* senderWindow = "Sender Information Window";

struct SenderField {
    const char* widget;
    std::string Tarvik40Fax::*field;
};

constexpr SenderField senderFields[] = {
    {"Sender Fax Number", &Tarvik40Fax::senderFaxNumber},
    {"Sender Fax Name", &Tarvik40Fax::senderName},
    {"Sender Fax Organization", &Tarvik40Fax::senderOrganization},
    {"Sender Fax Tel Number", &Tarvik40Fax::senderPhone},
    {"Sender Fax Email Addr", &Tarvik40Fax::senderEmail},
};

} // namespace

void T40UpdateCoverSheetSenderInfoSummary()
{
    std::string summary;
    host::TextBuffer text; // one for all: a field that cannot be read repeats the one before it
    for (const SenderField& sender : senderFields) {
        host::readText(sender.widget, text);
        pFaxSession->*sender.field = text.c_str();
        summary.append(text.c_str()).append("&#13;");
    }
    host::setWidgetText("Sender Info", summary.c_str());
}

void T40ShowFaxCoverSheetSetupDialog()
{
    T40UpdateCoverSheetSenderInfoSummary();
    SaveFaxCoverSheetSetupDialogOption();
    host::saveFeatures(senderFeatures);
    host::show(coverSheetWindow);
}

void T40FaxCoverSheetSetupDialogOk()
{
    host::hide(coverSheetWindow);
    host::readTicked("Show Rcpt Info Checkbox", pFaxSession->showRecipientInfo);
    host::readTicked("Show Sender Info Checkbox", pFaxSession->showSenderInfo);
    host::readTicked("Show Custom Text", pFaxSession->showCustomText);
    if (pFaxSession->showCustomText) {
        host::TextBuffer text;
        host::readText("Cover Sheet Custom Text", text);
        pFaxSession->customText = text.c_str();
    }
}

void T40FaxCoverSheetSetupDialogCancel()
{
    host::restoreFeatures(senderFeatures);
    host::restoreFeatures(coverSheetFeatures);
    host::hide(coverSheetWindow);
}

void T40FaxSenderSetupInvoke() { host::show(senderWindow); }

void T40FaxSenderSetupOk()
{
    // The snapshot is taken here, so that cancelling the cover sheet dialog afterwards returns to
    // these fields and not to those that it opened with.
    host::saveFeatures(senderFeatures);
    host::setSensitive("Sender Info", true);
    T40UpdateCoverSheetSenderInfoSummary();
    host::saveFeatures(senderFeatures);
    host::hide(senderWindow);
}

void T40FaxSenderSetupCancel()
{
    host::restoreFeatures(senderFeatures);
    host::hide(senderWindow);
}
