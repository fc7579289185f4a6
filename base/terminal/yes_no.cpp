// The words for yes and no, in English and in the user's language.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/yes_no.h"

#include "base/translation.h"

#include <string>

namespace quelm {
namespace {

/// What an answer means in the user's language, or else in English.
enum class Meaning { yes, no, unclear };

Meaning meaningOf(std::string_view answer)
{
    // Translators: the first letter, as it stands in "[y/n]" behind questions.
    if (answer == localized("y") || answer == localized("yes"))
        return Meaning::yes;
    // Translators: the first letter, as it stands in "[y/n]" behind questions.
    if (answer == localized("n") || answer == localized("no"))
        return Meaning::no;
    if (answer == "y" || answer == "yes")
        return Meaning::yes;
    return answer == "n" || answer == "no" ? Meaning::no : Meaning::unclear;
}

} // namespace

bool isYes(std::string_view answer) { return meaningOf(answer) == Meaning::yes; }

bool isNo(std::string_view answer) { return meaningOf(answer) == Meaning::no; }

} // namespace quelm
