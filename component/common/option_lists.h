// The groups of host features that dialogs reset, snapshot and restore, and the operations on them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMON_OPTION_LISTS_H
#define COMMON_OPTION_LISTS_H

// Token lists of feature names. They hold more than the options in the user's sense, and one name
// ("LanFax Dialing Time") that is no widget's: hosts go by these very lists.
extern const char optionsFeatures[];
extern const char preferencesFeatures[];
extern const char coverSheetFeatures[];
extern const char senderFeatures[];
extern const char dialingOptionsFeatures[]; ///< kept as data; no operation uses it

#pragma GCC visibility push(default)
extern "C" {
/// "Defaults" on the options tab. Also resets the sender fields, the cover sheet's settings and the
/// sensitivity of two buttons. The result is the host's.
int LanFaxOptionsTabDefaults();

/// "Defaults" on the preferences tab. Also resets the names of both phonebooks.
int LanFaxPrefsTabDefaults();

/// Snapshots the cover sheet features, so that Cancel can return to them.
int SaveFaxCoverSheetSetupDialogOption();
}
#pragma GCC visibility pop

#endif
