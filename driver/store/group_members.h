// The members of a phonebook's group, as the component finds them in its record.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_GROUP_MEMBERS_H
#define DRIVER_STORE_GROUP_MEMBERS_H

#include "driver/store/record.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What becomes of members whose names have a comma. Directories have such names: "SURNAME, GIVEN NAME".
struct CutNames {
    std::vector<std::string> names; ///< what is left of each: "SURNAME"
    std::vector<std::string> rests; ///< what is taken for a name behind the comma
};

/// Appends the members that a group's value ",uAnne,uBernard" names. A name begins behind ">" or, when no ">"
/// is left, behind "u", and ends at a comma: oddities of mixed lists, and of names with commas, included.
/// Those stand among `cuts`, too.
void appendMembers(std::string_view value, std::vector<std::string>& members, CutNames& cuts);

/// A group as its record has it.
struct GroupRecord {
    std::string name;
    std::vector<std::string> members; ///< names of entries of the same phonebook
    CutNames cuts;
};

/// Nothing for a record that is no group, or that the component cannot read.
[[nodiscard]] std::optional<GroupRecord> groupOf(const Record& record);

/// Sentences about the members of a group whom it does not reach: those that the phonebook at `path` has no
/// entry of, whom the component passes over in silence, and those whose names it cuts, which may be another's
/// then. `hasEntry` is asked for each by name. None when all are reached.
[[nodiscard]] std::vector<std::string>
groupWarnings(const GroupRecord& group, const std::string& path,
              const std::function<bool(const std::string& name)>& hasEntry);

} // namespace quelm

#endif
