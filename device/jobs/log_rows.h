// The rows of the device's database as records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_LOG_ROWS_H
#define DEVICE_JOBS_LOG_ROWS_H

#include "device/jobs/device_database.h"
#include "device/jobs/job_records.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm::device {

/// The words of the database, which stay the same in every language.
[[nodiscard]] std::string_view wordOf(JobState state);
[[nodiscard]] std::string_view wordOf(RecipientState state);
[[nodiscard]] std::string_view wordOf(CallState state);

[[nodiscard]] std::int64_t milliseconds(Moment moment);
/// Nothing for 0.
[[nodiscard]] std::optional<Moment> momentOf(std::int64_t milliseconds);

/// Binds the parameters of a statement in their order. Texts stay the caller's.
class Parameters {
public:
    explicit Parameters(sqlite::Statement& statement) : statement_(statement) {}
    Parameters& text(std::string_view text)
    {
        statement_.bindText(next_++, text);
        return *this;
    }
    Parameters& bytes(std::string_view bytes)
    {
        statement_.bind(next_++, bytes);
        return *this;
    }
    Parameters& number(std::int64_t number)
    {
        statement_.bindNumber(next_++, number);
        return *this;
    }

private:
    sqlite::Statement& statement_;
    int next_ = 1;
};

/// Adds a job with its recipients, of which one that is refused has none, and remarks. `keys` are those of
/// its destinations.
void insertJob(DeviceDatabase& database, const JobRecord& job, const std::vector<std::string>& keys);

/// The job of that number; nothing when there is none.
[[nodiscard]] std::optional<JobRecord> selectJob(DeviceDatabase& database, int number);

/// How fast a job that is there may be sent.
[[nodiscard]] Speed selectSpeed(DeviceDatabase& database, int job);

/// The calls that a condition is true of, which has two numbers as its parameters: "job = ?1 ... LIMIT ?2".
[[nodiscard]] std::vector<CallRecord> selectCalls(DeviceDatabase& database, const std::string& condition,
                                                  int first, int second);

/// Adds a call.
void insertCall(DeviceDatabase& database, const CallRecord& call);
/// Writes all of a call that is there.
void updateCall(DeviceDatabase& database, const CallRecord& call);

} // namespace quelm::device

#endif
