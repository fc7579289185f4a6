// The host's driver features: the option values that it keeps for the dialogs' widgets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_FEATURES_H
#define HOST_FEATURES_H

#pragma GCC visibility push(default)

// A feature bears the name of the option widget that it is bound to. A token list names several:
// ",A,B,C," with a comma before every name and after the last one; names may contain blanks.
// A name in a token list that the host does not know is passed over.

extern "C" {
/// Stores the feature's current value in `*value`: the 0-based index of the chosen item for a
/// radio group or combo box, 0 or 1 for a check box, the number for a spin box. An unknown feature leaves
/// `*value` untouched. The component ignores the result.
float GetFeatureOptValue(char* feature, int* value);

/// Sets every named feature, and the widget bound to it, to its default. The result goes back
/// to the host unchanged.
int SetFeaturesWithDefaultValue(char* tokenList);

/// Records the current value of every named feature as the one to return to.
int SaveFeaturesWithCurrentValue(char* tokenList);

/// Puts every named feature, and its widget, back to the value last recorded for it.
int RestoreFeaturesWithCurrentValue(char* tokenList);
}

#pragma GCC visibility pop

#endif
