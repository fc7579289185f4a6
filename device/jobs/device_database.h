// The device's database: opened, checked, and changed in transactions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_DEVICE_DATABASE_H
#define DEVICE_JOBS_DEVICE_DATABASE_H

#include "base/sqlite/sqlite.h"
#include "device/jobs/state_folder.h"

#include <functional>
#include <string>

namespace quelm::device {

/// One connection, which one thread at a time uses. Operations throw quelm::Error.
class DeviceDatabase {
public:
    /// Opens the database, or makes it. Throws when it is damaged, none of a device's or a later version's;
    /// it is left as it is then.
    explicit DeviceDatabase(const StateFolder& folder);

    /// Runs `change`, and makes what it did durable. When it throws, nothing of it stays.
    void change(const std::function<void()>& change);

    /// Runs `action`, whose failures of the database become errors in words.
    template <class Action>
    auto guarded(Action action)
    {
        try {
            return action();
        } catch (const sqlite::Failure& failure) {
            fail(failure);
        }
    }

    sqlite::Statement statement(std::string_view text) { return {database_, text}; }

    /// Whether it was missing or empty, and was made.
    bool isNew() const { return isNew_; }

    /// Throws that the database is damaged.
    [[noreturn]] void failDamaged() const;

private:
    void connect();
    void prepareFile();
    [[noreturn]] void fail(const sqlite::Failure& failure) const;

    std::filesystem::path path_;
    sqlite::Database database_;
    bool isNew_ = false;
};

} // namespace quelm::device

#endif
