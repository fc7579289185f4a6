// Which of a few words somebody may have meant by another.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_NEAREST_WORD_H
#define BASE_COMMAND_LINE_NEAREST_WORD_H

#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// The one of `possible` that `given` is most like, small and capital letters being the same: by letters that
/// are missing, too many, others, or exchanged with their neighbour, at most one in three; or as the only one
/// that begins like it. The first of several that are alike near; nothing when none is near. Dashes at the
/// beginning do not count.
std::optional<std::string> nearestWord(const std::string& given, const std::vector<std::string>& possible);

} // namespace quelm

#endif
