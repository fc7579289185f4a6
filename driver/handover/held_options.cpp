// Lays what the job holds over what the dialogs show.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/held_options.h"

#include "driver/core/driver.h"
#include "driver/handover/job_view.h"
#include "driver/widgets/widget_names.h"

#include <string>
#include <string_view>

namespace quelm {
namespace {

/// The note as it was typed: the component puts " (" and ") " around it.
std::string typedNote(std::string_view note)
{
    constexpr std::string_view opening = " (";
    constexpr std::string_view closing = ") ";
    if (note.size() < opening.size() + closing.size() || !note.starts_with(opening) ||
        !note.ends_with(closing))
        return std::string(note);
    note.remove_prefix(opening.size());
    note.remove_suffix(closing.size());
    return std::string(note);
}

} // namespace

OptionValues heldOptions(Driver& driver)
{
    OptionValues options = driver.optionValues();
    // An option that the component's dialogs lack stays away.
    const auto put = [&options](const char* name, const std::string& value) {
        if (const auto option = options.find(name); option != options.end())
            option->second = value;
    };
    const auto tick = [&put](const char* name, bool on) { put(name, on ? "1" : "0"); };
    FaxSession& session = driver.faxSession();
    const JobTexts texts = session.texts();
    const bool hasCover = session.coverPageChosen();
    tick(widget_names::lanFaxCoverSheetOption, hasCover);
    if (hasCover) {
        put(widget_names::lanFaxCoverSheetNotes, typedNote(texts.note));
        tick(widget_names::showRcptInfoCheckbox, texts.showsRecipients);
        tick(widget_names::showRcptInfo, texts.showsCustomText);
        put(widget_names::coverSheetCustomText, texts.customText);
        tick(widget_names::showSenderInfoCheckbox, texts.showsSender);
        for (const auto& field : senderTexts)
            put(field.widget, texts.*field.inJob);
    }
    tick(widget_names::lanFaxDialingPrefix, !texts.dialingPrefix.empty());
    if (!texts.dialingPrefix.empty())
        put(widget_names::lanFaxDialingPrefixInfo, texts.dialingPrefix);
    tick(widget_names::lanFaxCreditCard, !texts.creditCard.empty());
    return options;
}

} // namespace quelm
