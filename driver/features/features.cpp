// Defaults, snapshots and keeping of features.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/features/features.h"

#include "base/error.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/widgets/widget_label.h"
#include "driver/widgets/widget_names.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <system_error>

namespace quelm {

namespace {

/// Defaults that the dialog definition does not imply.
struct Default {
    std::string_view name;
    int value;
};
constexpr std::array<Default, 3> defaults{{
    {widget_names::lanFaxSendSpeed, 2},
    {widget_names::lanFaxPrefDuplicates, 1},
    {widget_names::lanFaxPrefRemoveOne, 1},
}};

/// The options of the fax, cover sheet and sender dialogs, which are kept between runs. What the other
/// dialogs hold belongs to one recipient or search, and read-only fields only show what the
/// component knows.
constexpr std::array<std::string_view, 29> keptNames{{
    widget_names::lanFaxConfSheet,
    widget_names::lanFaxCoverSheetOption,
    widget_names::lanFaxSendSpeed,
    widget_names::lanFaxResolution,
    widget_names::lanFaxCoverSheetNotes,
    widget_names::lanFaxSendTime,
    widget_names::sendAtHr,
    widget_names::sendAtMin,
    widget_names::sendAtAmPm,
    widget_names::lanFaxDialingPrefix,
    widget_names::lanFaxDialingPrefixInfo,
    widget_names::lanFaxCreditCard,
    widget_names::lanFaxCreditCardInfo,
    widget_names::lanFaxDefaultPb,
    widget_names::lanFaxSharedPbName,
    widget_names::lanFaxPrefDuplicates,
    widget_names::lanFaxPrefRemoveOne,
    widget_names::lanFaxPrefCurrentList,
    widget_names::lanFaxPrefCurrentCoverNotes,
    widget_names::showRcptInfoCheckbox,
    widget_names::showRcptInfo,
    widget_names::coverSheetCustomText,
    widget_names::showSenderInfoCheckbox,
    widget_names::coverSheetSize,
    widget_names::senderFaxNumber,
    widget_names::senderFaxName,
    widget_names::senderFaxOrganization,
    widget_names::senderFaxTelNumber,
    widget_names::senderFaxEmailAddr,
}};

/// Those that decide how the dialogs behave, and not what a device is sent.
constexpr std::array<std::string_view, 6> preferences{
    widget_names::lanFaxDefaultPb,       widget_names::lanFaxSharedPbName,
    widget_names::lanFaxPrefDuplicates,  widget_names::lanFaxPrefRemoveOne,
    widget_names::lanFaxPrefCurrentList, widget_names::lanFaxPrefCurrentCoverNotes,
};

/// What the boundary's texts have room for, without the terminator.
constexpr std::size_t longestPath = 4095;

/// The widget in which the feature `name` lives, null when there is none.
Widget* home(const WidgetTree& tree, std::string_view name)
{
    Widget* widget = tree.find(name);
    return widget != nullptr && widget->kind() == WidgetKind::radioButtonItem ? widget->parent() : widget;
}

std::optional<FeatureValue> valueOf(const Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::checkBox:
        return widget.flag() ? 1 : 0;
    case WidgetKind::radioButton:
    case WidgetKind::comboBoxMain:
    case WidgetKind::spinBox:
    case WidgetKind::notebookSet:
        return widget.number();
    case WidgetKind::textEntry:
    case WidgetKind::label:
        return widget.text();
    case WidgetKind::button:
        return widget.sensitive() ? 1 : 0;
    default:
        return std::nullopt;
    }
}

/// False, and nothing changed, when the number is out of the widget's range.
bool setValue(Widget& widget, const FeatureValue& value)
{
    if (const auto* text = std::get_if<std::string>(&value)) {
        widget.setText(*text);
        return true;
    }
    const int number = std::get<int>(value);
    if (widget.hasNumber())
        return widget.setNumber(number);
    if (widget.kind() == WidgetKind::button) {
        widget.setSensitive(number != 0);
        return true;
    }
    widget.setFlag(number != 0);
    return number == 0 || number == 1;
}

std::optional<FeatureValue> defaultOf(const Widget& widget)
{
    for (const Default& entry : defaults)
        if (entry.name == widget.name())
            return entry.value;
    const std::string* text = widget.attribute("Text");
    const std::string* sensitivity = widget.attribute("Sensitivity");
    switch (widget.kind()) {
    case WidgetKind::textEntry:
    case WidgetKind::label:
        return text == nullptr ? std::string() : *text;
    case WidgetKind::button:
        return sensitivity != nullptr && *sensitivity == "false" ? 0 : 1;
    case WidgetKind::spinBox:
        return widget.initialNumber();
    default:
        return valueOf(widget) ? std::optional<FeatureValue>(0) : std::nullopt;
    }
}

template <class Action>
int forEachFeature(const WidgetTree& tree, std::string_view tokenList, Action action)
{
    int count = 0;
    while (!tokenList.empty()) {
        const std::size_t end = tokenList.find(',');
        Widget* widget = home(tree, tokenList.substr(0, end));
        if (widget != nullptr && action(*widget))
            ++count;
        tokenList = end == std::string_view::npos ? std::string_view() : tokenList.substr(end + 1);
    }
    return count;
}

/// A path means the same from wherever the next driver is started.
bool isAbsolutePath(const std::string& kept)
{
    return kept.starts_with('/') && kept.size() <= longestPath && !hasControlCharacter(kept);
}

/// Puts a kept text into a widget; false when it does not suit.
bool takeKept(Widget& widget, const std::string& kept)
{
    if (widget.name() == widget_names::lanFaxSharedPbName && !kept.empty() && !isAbsolutePath(kept))
        return false;
    if (widget.kind() == WidgetKind::textEntry) {
        const bool oneLine = kept.find_first_of("\r\n") == std::string::npos;
        const auto length = static_cast<std::size_t>(g_utf8_strlen(kept.c_str(), -1));
        if (!oneLine || length > widget.maximumLength())
            return false;
        widget.setText(kept);
        return true;
    }
    int number = 0;
    const auto [end, failure] = std::from_chars(kept.data(), kept.data() + kept.size(), number);
    if (failure != std::errc() || end != kept.data() + kept.size())
        return false;
    if (widget.hasFlag() && number != 0 && number != 1)
        return false;
    return setValue(widget, number);
}

} // namespace

std::optional<int> Features::number(std::string_view name) const
{
    const Widget* widget = tree_.find(name);
    if (widget == nullptr)
        return std::nullopt;
    if (widget->hasFlag())
        return widget->flag() ? 1 : 0;
    return widget->hasNumber() ? std::optional<int>(widget->number()) : std::nullopt;
}

int Features::setDefaults(std::string_view tokenList)
{
    return forEachFeature(tree_, tokenList, [this](Widget& widget) {
        const std::optional<FeatureValue> value = presetOf(widget);
        if (!value || !setValue(widget, *value))
            return false;
        settle(widget.name());
        return true;
    });
}

int Features::save(std::string_view tokenList)
{
    return forEachFeature(tree_, tokenList, [this](Widget& widget) {
        const std::optional<FeatureValue> value = valueOf(widget);
        if (value)
            saved_[&widget] = *value;
        return value.has_value();
    });
}

int Features::restore(std::string_view tokenList)
{
    return forEachFeature(tree_, tokenList, [this](Widget& widget) {
        const auto found = saved_.find(&widget);
        return found != saved_.end() && setValue(widget, found->second);
    });
}

void Features::setAllDefaults()
{
    // All other defaults are what widgets are built with.
    for (const Default& entry : defaults)
        if (Widget* widget = tree_.find(entry.name))
            setValue(*widget, entry.value);
    presets_.clear();
    takeValues(configured_, localized("the configuration"));
    for (const auto& [name, value] : configured_)
        if (const Widget* widget = tree_.find(name); widget != nullptr && !isTroubled(name))
            if (const auto preset = valueOf(*widget))
                presets_[widget] = *preset;
    written_ = keptValues();
}

std::optional<FeatureValue> Features::presetOf(const Widget& widget) const
{
    const auto preset = presets_.find(&widget);
    return preset == presets_.end() ? defaultOf(widget) : preset->second;
}

bool Features::isTroubled(std::string_view name) const
{
    return std::ranges::find(troubles_, name, &FeatureTrouble::name) != troubles_.end();
}

void Features::load(const FeatureFile& source, bool takeOver, bool keepChanges)
{
    std::map<std::string, std::string> values;
    try {
        values = source.read(); // also when they are not wanted: a damaged file is not written to
    } catch (const Error& error) {
        troubles_.push_back({"", error.what(), true});
        return;
    }
    if (!takeOver)
        values.clear();
    takeValues(values, source.path());
    written_ = keptValues();
    if (keepChanges)
        file_ = source;
}

void Features::takeValues(const std::map<std::string, std::string>& values, const std::string& source)
{
    for (const std::string_view name : keptNames) {
        const auto kept = values.find(std::string(name));
        Widget* widget = tree_.find(name);
        if (kept == values.end() || widget == nullptr)
            continue;
        // What was said of a value that this one replaces does not matter any more.
        std::erase_if(troubles_, [name](const auto& trouble) { return trouble.name == name; });
        if (takeKept(*widget, kept->second))
            continue;
        // The number of a credit card is nobody's to read.
        const std::string shown =
            name == widget_names::lanFaxCreditCardInfo ? "..." : shownText(kept->second);
        const bool decides = std::ranges::find(preferences, name) == preferences.end();
        troubles_.push_back(
            {kept->first,
             // Translators: a value, what the fax dialog calls its option, and the file that keeps it.
             localized("the value \"%s\" of \"%s\" in %s does not suit and is passed over; set it anew in "
                       "the fax dialog, or remove it from the file",
                       shown, labelText(*widget), source),
             decides});
    }
}

void Features::takeOver(const std::map<std::string, std::string>& values)
{
    takeValues(values, localized("the outbox"));
}

void Features::settle(std::string_view name)
{
    // What is set to the value that it has by now is to be written all the same, over the one that does not
    // suit.
    if (std::erase_if(troubles_, [name](const FeatureTrouble& trouble) { return trouble.name == name; }) > 0)
        written_.erase(std::string(name));
}

std::map<std::string, std::string> Features::texts() const
{
    std::map<std::string, std::string> texts;
    for (const auto& [name, value] : keptValues()) {
        const auto* number = std::get_if<int>(&value);
        if (name != widget_names::lanFaxCreditCardInfo)
            texts.emplace(name, number != nullptr ? std::to_string(*number) : std::get<std::string>(value));
    }
    return texts;
}

void Features::keep()
{
    if (!file_)
        return;
    const std::map<std::string, FeatureValue> now = keptValues();
    std::map<std::string, FeatureValue> changed;
    for (const auto& [name, value] : now) {
        const auto before = written_.find(name);
        if (before == written_.end() || before->second != value)
            changed.emplace(name, value);
    }
    if (changed.empty())
        return;
    try {
        // What failed lately may go on failing: an action of the user is not held up every time.
        file_->write(changed, lastFailure_.empty());
        written_ = now;
        lastFailure_.clear();
    } catch (const Error& error) {
        if (lastFailure_ != error.what()) {
            lastFailure_ = error.what();
            log(Severity::error, lastFailure_);
        }
    }
}

std::map<std::string, FeatureValue> Features::keptValues() const
{
    std::map<std::string, FeatureValue> values;
    for (const std::string_view name : keptNames) {
        const Widget* widget = tree_.find(name);
        std::optional<FeatureValue> value = widget == nullptr ? std::nullopt : valueOf(*widget);
        if (!value)
            continue;
        // The next driver may be started elsewhere.
        auto* path = name == widget_names::lanFaxSharedPbName ? std::get_if<std::string>(&*value) : nullptr;
        std::error_code failure; // of a work folder that is gone: the next start passes the path over then
        if (path != nullptr && !path->empty() && path->front() != '/')
            if (const auto whole = std::filesystem::absolute(*path, failure); !failure)
                *path = whole.string();
        values.emplace(name, *std::move(value));
    }
    return values;
}

} // namespace quelm
