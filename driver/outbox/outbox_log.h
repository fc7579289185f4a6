// The outbox's log: what became of each job, in SQLite.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_LOG_H
#define DRIVER_OUTBOX_OUTBOX_LOG_H

#include "base/sqlite/sqlite.h"
#include "driver/outbox/log_row.h"
#include "driver/outbox/outbox_folder.h"

#include <cstdint>
#include <ctime>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// Operations throw quelm::Error.
class OutboxLog {
public:
    /// Opens the log, or makes it. Throws when it is damaged, none of ours or a later version's; it is left
    /// as it is then.
    explicit OutboxLog(const OutboxFolder& folder);

    /// Runs `change`, which alone writes to the log meanwhile, and makes what it did durable. When it throws,
    /// nothing of it stays.
    void transaction(const std::function<void()>& change);

    /// Adds a row, within a transaction; its number.
    int add(const LogRow& row);
    /// Writes all of a row that is there.
    void update(const LogRow& row);
    void remove(int number);

    /// Throws JobUnavailable when there is no such job, and Error when its row is damaged.
    [[nodiscard]] LogRow find(int number);
    /// By their numbers. Damaged rows are left out, and told of in the log once.
    [[nodiscard]] std::vector<LogRow> all();
    /// Those in a state, alike.
    [[nodiscard]] std::vector<LogRow> inState(OutboxState state);
    /// Those that ended at `moment` or before, are being handed over, or may have files that should go;
    /// alike.
    [[nodiscard]] std::vector<LogRow> toSweep(std::time_t moment);
    /// Notes that the clock was looked at `now`, and says what it showed the last time; nothing when nobody
    /// looked before, that is less than a day ago, which is not noted, or later than `now`.
    [[nodiscard]] std::optional<std::time_t> lookAtClock(std::time_t now);
    /// All numbers, of damaged rows too.
    [[nodiscard]] std::set<std::int64_t> numbers();

private:
    void connect();
    void prepareFile();
    std::vector<LogRow> select(const std::string& condition, std::string_view text, std::int64_t number);
    template <class Action>
    auto guarded(Action action);

    std::string path_;
    sqlite::Database database_;
    bool toldOfDamage_ = false;
};

} // namespace quelm

#endif
