// The table of the component's callbacks. It declares them itself: a host knows names, not headers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/component_callbacks.h"

// Those that take nothing. Their results, where they have any, are nobody's.
#define CALLBACKS_WITHOUT_RESULT(X)                                                                          \
    X(InvokePersonalSelectFileDialog)                                                                        \
    X(InvokeSharedSelectFileDialog)                                                                          \
    X(LDAPInfoClose)                                                                                         \
    X(LDAPMoreInfoCB)                                                                                        \
    X(OpenPersonalPB)                                                                                        \
    X(OpenSharedPB)                                                                                          \
    X(PBSearch)                                                                                              \
    X(PersonalSelectFileDialogCancel)                                                                        \
    X(PersonalSelectFileDialogOk)                                                                            \
    X(SetCurrentPBType)                                                                                      \
    X(SharedSelectFileDialogCancel)                                                                          \
    X(SharedSelectFileDialogOk)                                                                              \
    X(SynchronizeLDAPConnection)                                                                             \
    X(T40AddFaxRecLDAP)                                                                                      \
    X(T40AddFaxRecipientFromPB)                                                                              \
    X(T40AddFaxRecipientFromPBTest)                                                                          \
    X(T40AddFaxRecipientTest)                                                                                \
    X(T40AddRcptFromPBDialogCancel)                                                                          \
    X(T40AddRcptFromPBDialogOk)                                                                              \
    X(T40CancelFaxRecipientDialog)                                                                           \
    X(T40EditFaxRecipient)                                                                                   \
    X(T40FaxCoverSheetSetupDialogCancel)                                                                     \
    X(T40FaxCoverSheetSetupDialogOk)                                                                         \
    X(T40FaxDialogCancel)                                                                                    \
    X(T40FaxRcptPropsCancel)                                                                                 \
    X(T40FaxRcptPropsOk)                                                                                     \
    X(T40FaxSenderSetupCancel)                                                                               \
    X(T40FaxSenderSetupInvoke)                                                                               \
    X(T40FaxSenderSetupOk)                                                                                   \
    X(T40HideFaxRecipientErrorDialog)                                                                        \
    X(T40InvokeFaxDialog)                                                                                    \
    X(T40LanFaxDialogOk)                                                                                     \
    X(T40RemoveAllFaxRecipients)                                                                             \
    X(T40RemoveFaxRecipientTest)                                                                             \
    X(T40RemoveMultipleFaxRecipients)                                                                        \
    X(T40RemoveSingleFaxRecipient)                                                                           \
    X(T40RemoveSingleFaxRecipientTest)                                                                       \
    X(T40RemoveTmpFaxRecipient)                                                                              \
    X(T40RemoveTmpFaxRecipientTest)                                                                          \
    X(T40SaveEntry)                                                                                          \
    X(T40SaveGroup)                                                                                          \
    X(T40SaveGroupCancel)                                                                                    \
    X(T40SaveGroupOk)                                                                                        \
    X(T40SelectFaxRecipient)                                                                                 \
    X(T40SelectTmpFaxRecipient)                                                                              \
    X(T40ShowAddRcptFromPBDialog)                                                                            \
    X(T40ShowFaxCoverSheetSetupDialog)                                                                       \
    X(T40ShowFaxRecipientDialog)                                                                             \
    X(T40UpdateCoverSheetSenderInfoSummary)                                                                  \
    X(T40ViewPBRcptProperties)

#define CALLBACKS_WITH_RESULT(X)                                                                             \
    X(LanFaxOptionsTabDefaults)                                                                              \
    X(LanFaxPrefsTabDefaults)                                                                                \
    X(SaveFaxCoverSheetSetupDialogOption)                                                                    \
    X(T40AddFaxRecipient)

extern "C" {
#define DECLARE(name) void name();
CALLBACKS_WITHOUT_RESULT(DECLARE)
#undef DECLARE
#define DECLARE(name) int name();
CALLBACKS_WITH_RESULT(DECLARE)
#undef DECLARE
void T40LanFaxPreferencesCB(_GtkWidget* widget, GTKObject* object);
}

const std::map<std::string, fake::WidgetCallback>& componentCallbacks()
{
#define ENTRY(name) {#name, [](_GtkWidget*, GTKObject*) { name(); }},
    static const std::map<std::string, fake::WidgetCallback> callbacks = {
        CALLBACKS_WITHOUT_RESULT(ENTRY) CALLBACKS_WITH_RESULT(ENTRY) //
        {"T40LanFaxPreferencesCB", T40LanFaxPreferencesCB},
    };
#undef ENTRY
    return callbacks;
}
