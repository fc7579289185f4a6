// Checks entries and groups by the rules of the component's dialogs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/entry_check.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/record_codec.h"
#include "driver/store/name_checks.h"

#include <glib.h>

#include <algorithm>
#include <variant>

namespace quelm {
namespace {

// What the component's dialogs hand to the host's checks, and the greatest lengths of their fields.
constexpr const char* nameMarks = "- .";
constexpr const char* numberMarks = "- ( ) /";
constexpr long nameLength = 31;
constexpr long numberLength = 46;
constexpr long textLength = 59;

using Problem = std::optional<std::string>;

// `what` names the field: a text marked for translation.

Problem tooLong(const char* what, const std::string& text, long most)
{
    const long length = g_utf8_strlen(text.data(), static_cast<gssize>(text.size()));
    if (length <= most)
        return std::nullopt;
    return localizedCount("%s has %d character; %d are possible", "%s has %d characters; %d are possible",
                          static_cast<unsigned long>(length), translated(what), length, most);
}

Problem problemWithNameOf(const char* what, const std::string& name)
{
    if (name.empty())
        return localized("%s is missing", translated(what));
    if (auto problem = problemWithName(name, nameMarks))
        return problem;
    return tooLong(what, name, nameLength);
}

Problem problemWithNumber(const char* what, const std::string& number)
{
    if (!isUtf8(number))
        return localized("%s is not UTF-8", translated(what));
    if (auto problem = problemWithPhoneNumber(number, numberMarks))
        return translated(what) + ": " + *problem;
    return tooLong(what, number, numberLength);
}

Problem problemWithText(const char* what, const std::string& text)
{
    if (!isUtf8(text))
        return localized("%s is not UTF-8", translated(what));
    if (hasControlCharacter(text))
        return localized("%s holds a line break or control character", translated(what));
    return tooLong(what, text, textLength);
}

/// The record's fields end at marks that a text must not hold.
template <typename Content>
Problem unlessKept(const Content& content)
{
    const auto kept = decodeRecord(encodeRecord(content));
    const auto* same = std::get_if<Content>(&kept);
    if (same != nullptr && *same == content)
        return std::nullopt;
    return localized("\"%s\" cannot be kept: a text holds a mark of the record format, such as \".enam\"",
                     content.name);
}

} // namespace

Problem problemWithEntryName(const std::string& name)
{
    // Translators: the subject of sentences such as: %s is missing.
    return problemWithNameOf(forTranslation("the name"), name);
}

Problem problemWith(const PhonebookEntry& entry)
{
    Problem problem = problemWithEntryName(entry.name);
    if (!problem && entry.number.empty())
        problem = localized("%s is missing", localized("the fax number"));
    if (!problem)
        problem = problemWithNumber(forTranslation("the fax number"), entry.number);
    if (!problem)
        problem = problemWithText(forTranslation("the organization"), entry.organization);
    if (!problem && !entry.phone.empty())
        problem = problemWithNumber(forTranslation("the phone number"), entry.phone);
    if (!problem)
        problem = problemWithText(forTranslation("the e-mail address"), entry.email);
    return problem ? problem : unlessKept(entry);
}

Problem problemWith(const PhonebookGroup& group)
{
    if (auto problem = problemWithNameOf(forTranslation("the group's name"), group.name))
        return problem;
    if (group.members.empty())
        return localized("the group has no member");
    const auto notText = std::ranges::find_if_not(group.members, isUtf8);
    if (notText != group.members.end())
        return localized("the name of a member is not UTF-8");
    if (std::ranges::any_of(group.members, hasControlCharacter))
        return localized("%s holds a line break or control character", localized("the name of a member"));
    return unlessKept(group);
}

std::string acceptableName(std::string_view name, std::size_t room)
{
    auto mended = mendedName(name, nameMarks);
    // A mark of the record format begins with a dot.
    if (unlessKept(PhonebookEntry{mended, "1", "", "", ""}))
        std::ranges::replace(mended, '.', ' ');
    const auto most = nameLength - static_cast<long>(std::min<std::size_t>(room, nameLength - 1));
    if (g_utf8_strlen(mended.data(), static_cast<gssize>(mended.size())) > most) {
        const char* end = g_utf8_offset_to_pointer(mended.c_str(), most);
        while (end > mended.c_str() && g_unichar_ismark(g_utf8_get_char(end)) != FALSE)
            end = g_utf8_prev_char(end); // a letter stays with its accents
        mended.resize(static_cast<std::size_t>(end - mended.c_str()));
    }
    mended = trimmed(mended);
    return problemWithEntryName(mended) ? "" : mended;
}

} // namespace quelm
