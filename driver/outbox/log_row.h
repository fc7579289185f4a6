// A job as a row of the outbox's log.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_LOG_ROW_H
#define DRIVER_OUTBOX_LOG_ROW_H

#include "base/sqlite/sqlite.h"
#include "driver/outbox/outbox_job.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quelm {

/// A job as the log has it.
struct LogRow : OutboxJob {
    /// What a job's file was handed over as: no file yet, a device or fifo, or an inode.
    static constexpr std::int64_t noFile = 0;
    static constexpr std::int64_t specialFile = -1;

    std::string document; ///< the name of the kept document; empty for none
    std::string token;    ///< of the last handing over: in the name of a queue's job, or of a file
    OutboxState before = OutboxState::waiting; ///< what it was ahead of its last handing over
    bool isBegun = false; ///< its destination may have been opened in the last handing over
    std::int64_t inode = noFile;
    std::uint64_t cardAt = 0;   ///< where in the stream the card's line stands or stood
    std::uint64_t cardSize = 0; ///< and its bytes, which are not in the file with the stream
    bool holdsCard = false;     ///< the file with the card's line may be there
    bool holdsStream = false;   ///< the file with the stream may be there, though the job does not have it
};

/// The definition of the table, with its number first and then the columns of `rowColumns`.
extern const char* const rowTable;

/// The columns behind the number: "state, kind, ...", with "?2, ?3, ..." and "state = ?2, ...".
[[nodiscard]] std::string rowColumns();
[[nodiscard]] std::string rowParameters();
[[nodiscard]] std::string rowAssignments();

/// A statement with a row's values, which stay with it until it was carried out.
class BoundRow {
public:
    BoundRow(sqlite::Statement& statement, const LogRow& row);

private:
    std::string recipients_;
    std::string options_;
};

/// Reads a row of "number" and `rowColumns`; nothing when it is not one that this program wrote.
[[nodiscard]] std::optional<LogRow> readRow(const sqlite::Statement& statement);

} // namespace quelm

#endif
