// The host's record database, in whose files phonebooks are kept.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_RECORD_DATABASE_H
#define HOST_RECORD_DATABASE_H

#include <cstddef>
#include <cstdint>

#pragma GCC visibility push(default)

/// One record: a key and a data text, both NUL-terminated. Host and component exchange it as a
/// plain structure. In a record that the component saves, both texts are valid during
/// `saveRecord` only and the database copies them; in a record that an iterator hands out,
/// they belong to the database. The lengths are in bytes, without terminators, in 16 bits: a
/// reader goes by the terminators.
struct LegacyDBRecord {
    std::uint16_t recordLength; ///< `keyLength` + `dataLength`, added in 16 bits
    std::uint16_t keyLength;
    std::uint16_t dataLength;
    char* key;
    char* data;
};

static_assert(offsetof(LegacyDBRecord, recordLength) == 0);
static_assert(offsetof(LegacyDBRecord, keyLength) == 2);
static_assert(offsetof(LegacyDBRecord, dataLength) == 4);
static_assert(offsetof(LegacyDBRecord, key) == 8);
static_assert(offsetof(LegacyDBRecord, data) == 8 + sizeof(char*));

/// One file of records. Created with `new` and destroyed with `delete` by the component.
/// Records keep their order of insertion; saving a record under a key that exists replaces
/// that record in its place. No operation throws; each answers false when it failed, and a
/// file that is no record database is refused and left as it is.
class __attribute__((visibility("default"))) QuelmLegacyDatabase {
public:
    QuelmLegacyDatabase();
    ~QuelmLegacyDatabase();
    QuelmLegacyDatabase(const QuelmLegacyDatabase&) = delete;
    QuelmLegacyDatabase& operator=(const QuelmLegacyDatabase&) = delete;

    /// Opens an existing file; mode "r" to read, "r+" to read and write.
    bool openDatabase(char* path, char* mode);

    /// Creates a file and opens it to read and write. With `flags` 2 an existing file is never
    /// overwritten: it makes the call fail.
    bool createDatabase(char* path, int flags);

    /// Reads the file again, so that records that others saved are seen.
    bool reopenDatabase();

    /// Closes the file. The object may be opened again.
    bool closeDatabase();

    /// Stores a copy of the record in the open database, not yet in its file.
    bool saveRecord(LegacyDBRecord* record);

    /// Writes what was saved to the file, durably. On false the file holds what it held before.
    bool serializeDatabase();

    /// The number of records. On false `count` is untouched.
    bool getNumberOfRecords(int& count);

    struct Impl;

private:
    friend class QuelmLegacyDatabaseIterator;
    Impl* impl;
};

/// Walks the records of an open database, which outlives it. A record that it hands out
/// stays valid until the iterator's next call or the next change of the database.
class __attribute__((visibility("default"))) QuelmLegacyDatabaseIterator {
public:
    explicit QuelmLegacyDatabaseIterator(QuelmLegacyDatabase* database);
    ~QuelmLegacyDatabaseIterator();
    QuelmLegacyDatabaseIterator(const QuelmLegacyDatabaseIterator&) = delete;
    QuelmLegacyDatabaseIterator& operator=(const QuelmLegacyDatabaseIterator&) = delete;

    /// The first record (true) or the one after the record handed out last; null at the end.
    LegacyDBRecord* getNextRecord(bool first);

    /// The record at position `n`, counted from 1; null when there is none.
    LegacyDBRecord* getRecordN(int n);

    /// The record with that key; null when there is none.
    LegacyDBRecord* getRecordByKey(char* key);

    struct Impl;

private:
    Impl* impl;
};

#pragma GCC visibility pop

#endif
