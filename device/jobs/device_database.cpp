// Opens, checks and changes the device's database.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/device_database.h"

#include "base/sqlite/database_file.h"
#include "base/translation.h"
#include "device/jobs/device_steps.h"
#include "device/jobs/state_files.h"

#include <vector>

namespace quelm::device {
namespace {

// What makes an SQLite file a device's: its application number, its version and its tables.
constexpr std::int64_t ourApplication = 0x51584456; // "QXDV"
constexpr std::int64_t ourVersion = 1;
constexpr const char* markDatabase = "PRAGMA application_id=0x51584456; PRAGMA user_version=1";

// Texts of people and of senders are blobs: they may hold anything. Moments are milliseconds since 1970, 0
// for none. `drops_file` is 1 when a job's file is to be removed, because it holds a card, and 2 when that is
// so from the job's end on. What is asked for again and again has an index of the few rows that it is about.
const std::vector<std::string>& schema()
{
    static const std::vector<std::string> statements = {
        R"(CREATE TABLE job(number INTEGER PRIMARY KEY, state TEXT NOT NULL, received_at INTEGER NOT NULL,
          sender BLOB NOT NULL, form TEXT NOT NULL, title BLOB NOT NULL, is_fax INTEGER NOT NULL,
          cover_sheet INTEGER NOT NULL, confirmation INTEGER NOT NULL, resolution TEXT NOT NULL,
          speed TEXT NOT NULL, card BLOB NOT NULL, card_size INTEGER NOT NULL, size INTEGER NOT NULL,
          postscript_begin INTEGER NOT NULL, postscript_end INTEGER NOT NULL, pages INTEGER NOT NULL,
          problem BLOB NOT NULL, has_report INTEGER NOT NULL, drops_file INTEGER NOT NULL) STRICT)",
        R"(CREATE TABLE recipient(job INTEGER NOT NULL, position INTEGER NOT NULL, number BLOB NOT NULL,
          mailbox BLOB NOT NULL, line INTEGER NOT NULL, keys TEXT NOT NULL, state TEXT NOT NULL,
          attempts INTEGER NOT NULL, next_attempt INTEGER NOT NULL, result BLOB NOT NULL,
          code INTEGER NOT NULL, pages_sent INTEGER NOT NULL, last_call_at INTEGER NOT NULL,
          last_duration INTEGER NOT NULL, PRIMARY KEY(job, position)) STRICT, WITHOUT ROWID)",
        R"(CREATE TABLE remark(job INTEGER NOT NULL, is_refusal INTEGER NOT NULL, position INTEGER NOT NULL,
          line INTEGER NOT NULL, text BLOB NOT NULL, PRIMARY KEY(job, is_refusal, position)) STRICT,
          WITHOUT ROWID)",
        R"(CREATE TABLE call(number INTEGER PRIMARY KEY, job INTEGER NOT NULL, position INTEGER NOT NULL,
          attempt INTEGER NOT NULL, state TEXT NOT NULL, begun_at INTEGER NOT NULL,
          duration INTEGER NOT NULL, dialled TEXT NOT NULL, receiver TEXT NOT NULL, result BLOB NOT NULL,
          library_words BLOB NOT NULL, code INTEGER NOT NULL, pages_sent INTEGER NOT NULL,
          pages_kept INTEGER NOT NULL, bit_rate INTEGER NOT NULL, error_correction INTEGER NOT NULL,
          identity BLOB NOT NULL, fell_back INTEGER NOT NULL, repeated_frames INTEGER NOT NULL,
          damaged_rows INTEGER NOT NULL, mailbox BLOB NOT NULL) STRICT)",
        R"(CREATE INDEX job_to_render ON job(number) WHERE state = 'received')",
        R"(CREATE INDEX job_called ON job(number) WHERE state = 'calling')",
        R"(CREATE INDEX job_to_report ON job(number) WHERE confirmation = 1 AND has_report = 0)",
        R"(CREATE INDEX job_with_card ON job(number) WHERE drops_file = 1)",
        R"(CREATE INDEX recipient_waits ON recipient(job, position, next_attempt,
          keys) WHERE state = 'waiting' AND next_attempt > 0)",
        R"(CREATE INDEX recipient_next ON recipient(next_attempt) WHERE state = 'waiting' AND next_attempt > 0)",
        R"(CREATE INDEX recipient_called ON recipient(keys) WHERE state = 'calling')",
        R"(CREATE INDEX call_of_job ON call(job, number))",
        R"(CREATE INDEX call_open ON call(number) WHERE state = 'calling')",
    };
    return statements;
}

std::string damagedReason()
{
    return localized("it is damaged; restore it from a copy, or move the folder away and start anew");
}

} // namespace

DeviceDatabase::DeviceDatabase(const StateFolder& folder) : path_(folder.database())
{
    // SQLite would make it for everybody to read. The folder is locked: nobody has it open.
    makeStateFile(path_);
    guarded([this] { connect(); });
}

void DeviceDatabase::connect()
{
    database_ = sqlite::openDurable(path_);
    if (sqlite::schemaOf(database_).empty())
        prepareFile();
    if (sqlite::pragma(database_, "PRAGMA application_id") != ourApplication)
        failState(path_, localized("it is no database of a device; move it away"));
    if (sqlite::pragma(database_, "PRAGMA user_version") > ourVersion)
        failState(path_, localized("it was written by a newer version of this program; update the program"));
    sqlite::Statement check(database_, "PRAGMA quick_check(1)");
    if (sqlite::schemaOf(database_) != schema() || !check.step() || check.bytes(0) != "ok")
        failDamaged();
}

void DeviceDatabase::prepareFile()
{
    change([this] {
        const bool isNew = sqlite::pragma(database_, "PRAGMA application_id") == 0 &&
                           sqlite::pragma(database_, "PRAGMA user_version") == 0;
        if (!isNew)
            return;
        sqlite::run(database_, markDatabase);
        for (const std::string& statement : schema())
            sqlite::run(database_, statement.c_str());
        isNew_ = true;
    });
}

void DeviceDatabase::change(const std::function<void()>& change)
{
    guarded([&] {
        sqlite::inTransaction(database_, [&] {
            change();
            beforeDeviceStep("commit");
        });
    });
    beforeDeviceStep("go on behind the commit");
}

void DeviceDatabase::failDamaged() const { failState(path_, damagedReason()); }

void DeviceDatabase::fail(const sqlite::Failure& failure) const
{
    failState(path_, sqlite::reasonOf(failure, damagedReason()));
}

} // namespace quelm::device
