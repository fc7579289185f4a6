// Looks at the recipients that are added while a job is put together.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_RECIPIENT_WATCH_H
#define DRIVER_HANDOVER_RECIPIENT_WATCH_H

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace quelm {

class Driver;

/// Asked after each thing that a user does, it names the recipients and picks that came by it and cannot be
/// faxed to. Only those are looked at: a job of thousands stays quick to fill. When a dialog was closed and
/// nobody came, somebody may have been changed, and all are looked at.
///
/// A recipient whom nobody mends is refused when the job is written (`prepareHandover`).
class RecipientWatch {
public:
    /// `driver` outlives the watch. Its recipients of now count as added by the first thing that is done.
    explicit RecipientWatch(Driver& driver) : driver_(driver) {}

    /// A sentence for each recipient that is wrong and was not named before.
    [[nodiscard]] std::vector<std::string> newProblems();

    /// Throws quelm::Error with the first of them behind `origin`, which says where the recipient was given.
    void require(const std::string& origin);

private:
    Driver& driver_;
    std::size_t recipients_ = 0;
    std::size_t picks_ = 0;
    std::size_t windows_ = 0;
    std::set<std::string> named_;
};

} // namespace quelm

#endif
