// Finds a record's fields in the order and with the limits of the component's own reader.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/record_fields.h"

#include "base/texts.h"
#include "base/translation.h"

#include <array>
#include <utility>

namespace quelm {

namespace {

constexpr std::size_t tagLength = 3;

/// What a user calls a field; the tag itself for one that nobody is asked for.
std::string fieldName(const std::string& tag)
{
    static constexpr std::array<std::pair<std::string_view, const char*>, 6> names{{
        {"nam", forTranslation("name")},
        {"fxn", forTranslation("number")},
        {"cmp", forTranslation("organization")},
        {"von", forTranslation("phone")},
        {"eml", forTranslation("email")},
        {"gen", forTranslation("member")},
    }};
    for (const auto& [known, name] : names)
        if (known == tag)
            return translated(name);
    return oneLine(tag);
}

} // namespace

bool RecordFields::next()
{
    // A field without any value is passed over.
    while (!problem_) {
        const auto start = rest_.find(".s");
        if (start == std::string_view::npos)
            return false;
        rest_.remove_prefix(start + 2);
        tag_ = rest_.substr(0, tagLength);
        // Looked for from the tag itself on, so that a value must not hold its own end.
        const auto end = rest_.find(".e" + tag_);
        if (end == std::string_view::npos) {
            problem_ = {FieldProblem::Kind::endless, tag_};
            return false;
        }
        const bool hasValue = end > tagLength;
        value_ = hasValue ? trimmed(rest_.substr(tagLength, end - tagLength)) : std::string_view();
        rest_.remove_prefix(end + tagLength + 1);
        if (hasValue && value_.empty())
            problem_ = {FieldProblem::Kind::blank, tag_};
        else if (hasValue)
            return true;
    }
    return false;
}

std::optional<FieldProblem> fieldProblem(std::string_view data)
{
    RecordFields fields(data);
    while (fields.next()) {
    }
    return fields.problem();
}

std::string described(const FieldProblem& problem)
{
    const std::string field = fieldName(problem.tag);
    return problem.kind == FieldProblem::Kind::blank ? localized("its field \"%s\" is blank", field)
                                                     : localized("its field \"%s\" has no end", field);
}

} // namespace quelm
