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

/// Appends the members that a group's value ",uAnne,uBernard" names. A name begins behind ">" or, when no ">"
/// is left, behind "u", and ends at a comma: oddities of mixed lists, and of names with commas, included.
void appendMembers(std::string_view value, std::vector<std::string>& members);

/// A group as its record has it.
struct GroupRecord {
    std::string name;
    std::vector<std::string> members; ///< names of entries of the same phonebook
    /// The beginning of a name with a comma in it, which ends there for the component; empty when there is
    /// none. Directories have such names: "SURNAME, GIVEN NAME".
    std::string cutName;
};

/// Nothing for a record that is no group, or that the component cannot read.
[[nodiscard]] std::optional<GroupRecord> groupOf(const Record& record);

/// A sentence about the members of a group that the phonebook at `path` has no entry of: the component passes
/// them over in silence. `hasEntry` is asked for each by name. Nothing when all are there.
[[nodiscard]] std::optional<std::string>
missingMembersWarning(const GroupRecord& group, const std::string& path,
                      const std::function<bool(const std::string& name)>& hasEntry);

} // namespace quelm

#endif
