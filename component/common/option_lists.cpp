// The feature groups as the host's token lists.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/option_lists.h"

#include "host/calls.h"

const char optionsFeatures[] =
    ",LanFaxConfSheet,LanFax Cover Sheet Option,LanFax Setup Cover Sheet Button,LanFax Send Speed"
    ",LanFax Resolution,LanFax Cover Sheet Notes,LanFax Send Time,SendAtHr,SendAtMin,SendAtAmPm"
    ",LanFax Dialing Prefix,LanFax Dialing Prefix Info,LanFax Credit Card,LanFax Credit Card Info"
    ",LanFax Pref Current Cover Notes,Show Rcpt Info Checkbox,Show Rcpt Info,Cover Sheet Custom Text"
    ",Show Sender Info Checkbox,Sender Properties Button,Cover Sheet Size,Sender Fax Number"
    ",Sender Fax Name,Sender Fax Organization,Sender Fax Tel Number,Sender Fax Email Addr,";

const char preferencesFeatures[] =
    ",LanFax Default PB,LanFax Pref Duplicates,LanFax Pref Remove One,LanFax Pref Current List"
    ",LanFax Pref Current Cover Notes,LanFax Personal PB Name,LanFax Shared PB Name,";

const char coverSheetFeatures[] =
    ",Cover Sheet Custom Text,Sender Info,Show Rcpt Info Checkbox,Show Rcpt Info"
    ",Show Sender Info Checkbox,Cover Sheet Size,";

const char senderFeatures[] = ",Sender Fax Number,Sender Fax Name,Sender Fax Organization"
                              ",Sender Fax Tel Number,Sender Fax Email Addr,";

const char dialingOptionsFeatures[] =
    ",LanFax Dialing Prefix,LanFax Credit Card,LanFax Dialing Time,Show Rcpt Info Checkbox,Show Rcpt Info"
    ",Show Custom Text,Show Sender Info Checkbox,LanFax No Cover Sheet,LanFax Cover Sheet Option,";

int LanFaxOptionsTabDefaults() { return host::setFeaturesToDefaults(optionsFeatures); }

int LanFaxPrefsTabDefaults() { return host::setFeaturesToDefaults(preferencesFeatures); }

int SaveFaxCoverSheetSetupDialogOption() { return host::saveFeatures(coverSheetFeatures); }
