// The driver features: option values that live in widgets and are kept between runs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_FEATURES_FEATURES_H
#define DRIVER_FEATURES_FEATURES_H

#include "driver/features/feature_file.h"
#include "driver/widgets/widget_tree.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {

/// Why what was kept could not be taken over.
struct FeatureTrouble {
    std::string name; ///< of the option; empty when none could be read
    std::string line; ///< what, where, what to do: for the user
    bool decides;     ///< what goes out depends on it: it is no preference
};

/// The features. A feature bears the name of a widget, and its value is what the widget holds: the
/// index of a radio group, combo box or tab set, a check box's 0 or 1, a spin box's number, a text
/// field's or label's text, a button's sensitivity. A radio item stands for its group.
///
/// Names in token lists (",A,B,C,") that name no such widget are passed over.
class Features {
public:
    explicit Features(WidgetTree& widgetTree) : tree_(widgetTree) {}

    /// The number that a feature has: an index, 0 or 1 of a box or radio item, a spin box's number,
    /// a list's selected row. Nothing for an unknown feature or one that is a text.
    std::optional<int> number(std::string_view name) const;

    /// These return how many features they acted on.
    int setDefaults(std::string_view tokenList);
    int save(std::string_view tokenList);
    /// A feature that was never saved stays as it is.
    int restore(std::string_view tokenList);

    using SavedValues = std::map<const Widget*, FeatureValue>;

    /// What `restore` returns to, and putting that back.
    [[nodiscard]] const SavedValues& savedValues() const { return saved_; }
    void setSavedValues(SavedValues values) { saved_ = std::move(values); }

    /// Values that stand in the place of defaults, by the names of their options: what an administrator
    /// configured. Called ahead of `setAllDefaults`. One that does not suit its widget is passed over;
    /// `troubles` names it.
    void configureDefaults(std::map<std::string, std::string> values) { configured_ = std::move(values); }

    /// Puts every option to its default; called once the dialogs are built.
    void setAllDefaults();

    /// Takes over the values that `file` keeps when `takeOver`, and keeps changed ones there from now
    /// on when `keepChanges`. A value that does not suit its widget is passed over. Of a damaged or
    /// unreadable file nothing is taken: the defaults stay, and the file is never written to. `troubles`
    /// names both.
    void load(const FeatureFile& file, bool takeOver, bool keepChanges);

    /// Takes over values by the names of their options, as `texts` gives them. One that does not suit its
    /// widget is passed over; `troubles` names it.
    void takeOver(const std::map<std::string, std::string>& values);

    /// What could not be taken over and was not set since. Nothing of it is logged here.
    const std::vector<FeatureTrouble>& troubles() const { return troubles_; }

    /// The user has set this option: what was kept of it does not matter any more.
    void settle(std::string_view name);

    /// The values of all options that are kept between runs, but for the number of a credit card.
    std::map<std::string, std::string> texts() const;

    /// Writes the options that changed since the last time to the file; when that fails, says so in
    /// the log, once for each reason, and tries again the next time.
    void keep();

private:
    std::optional<FeatureValue> presetOf(const Widget& widget) const;
    void takeValues(const std::map<std::string, std::string>& values, const std::string& source);
    bool isTroubled(std::string_view name) const;
    std::map<std::string, FeatureValue> keptValues() const;

    WidgetTree& tree_;
    std::map<std::string, std::string> configured_;
    std::map<const Widget*, FeatureValue> presets_; // those of `configured_` that suit
    SavedValues saved_;
    std::optional<FeatureFile> file_;             // where changes go
    std::map<std::string, FeatureValue> written_; // what the file, or the defaults, say
    std::string lastFailure_;
    std::vector<FeatureTrouble> troubles_;
};

} // namespace quelm

#endif
