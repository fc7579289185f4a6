// Records what the device's memory makes durable, and in which order.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_JOBS_MADE_DURABLE_H
#define TESTS_DEVICE_JOBS_MADE_DURABLE_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quelm::device::tests {

/// While it lives, all that any thread of this process has written through is recorded, and the steps of the
/// device's memory between. One at a time, and no other hook for steps meanwhile.
class MadeDurable {
public:
    explicit MadeDurable(const std::filesystem::path& root);
    ~MadeDurable();
    MadeDurable(const MadeDurable&) = delete;
    MadeDurable& operator=(const MadeDurable&) = delete;

    /// The paths below the root, "." for itself, that were written through behind the first step `from` (the
    /// beginning when empty) and ahead of the first step `to` behind it (the end when empty). A step that did
    /// not come is a failure.
    [[nodiscard]] std::vector<std::string> between(std::string_view from, std::string_view to) const;
};

} // namespace quelm::device::tests

#endif
