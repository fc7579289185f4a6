// The cover sheet dialog and the sender dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/cover_sheet_dialog.h"

#include "common/option_lists.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

namespace {

constexpr const char* coverSheetWindow = widget_names::coverSheetSetupWindow;
constexpr const char* senderWindow = widget_names::senderInformationWindow;

struct SenderField {
    const char* widget;
    std::string Tarvik40Fax::*field;
};

constexpr SenderField senderFields[] = {
    {widget_names::senderFaxNumber, &Tarvik40Fax::senderFaxNumber},
    {widget_names::senderFaxName, &Tarvik40Fax::senderName},
    {widget_names::senderFaxOrganization, &Tarvik40Fax::senderOrganization},
    {widget_names::senderFaxTelNumber, &Tarvik40Fax::senderPhone},
    {widget_names::senderFaxEmailAddr, &Tarvik40Fax::senderEmail},
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
    host::setWidgetText(widget_names::senderInfo, summary.c_str());
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
    host::readTicked(widget_names::showRcptInfoCheckbox, pFaxSession->showRecipientInfo);
    host::readTicked(widget_names::showSenderInfoCheckbox, pFaxSession->showSenderInfo);
    host::readTicked(widget_names::showCustomText, pFaxSession->showCustomText);
    if (pFaxSession->showCustomText) {
        host::TextBuffer text;
        host::readText(widget_names::coverSheetCustomText, text);
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
    host::setSensitive(widget_names::senderInfo, true);
    T40UpdateCoverSheetSenderInfoSummary();
    host::saveFeatures(senderFeatures);
    host::hide(senderWindow);
}

void T40FaxSenderSetupCancel()
{
    host::restoreFeatures(senderFeatures);
    host::hide(senderWindow);
}
