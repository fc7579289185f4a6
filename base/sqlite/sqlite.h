// SQLite handles that close themselves, and its failures as exceptions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_SQLITE_SQLITE_H
#define BASE_SQLITE_SQLITE_H

#include <sqlite3.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quelm::sqlite {

/// A failed call: SQLite's extended result code, the system's error number (0 for none) and
/// SQLite's own text.
struct Failure {
    int code;
    int systemError;
    std::string text;

    int primaryCode() const { return code & 0xFF; }
};

struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Closer>;

[[noreturn]] inline void fail(sqlite3* database, int code)
{
    const bool known = database != nullptr;
    throw Failure{code, known ? sqlite3_system_errno(database) : 0,
                  known ? sqlite3_errmsg(database) : sqlite3_errstr(code)};
}

/// Opens a file with SQLITE_OPEN_... flags. `path` is absolute, so that no part of it is a command
/// to SQLite. `layer` names the file layer to open it with; null for SQLite's own.
inline Database open(const std::string& path, int flags, const char* layer = nullptr)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_EXRESCODE, layer);
    Database database(opened);
    if (code != SQLITE_OK)
        fail(database.get(), code);
    return database;
}

/// Runs statements that have no result.
inline void run(const Database& database, const char* statements)
{
    const int code = sqlite3_exec(database.get(), statements, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(database.get(), code);
}

/// A prepared statement. It holds its locks from the first `step` to `reset`.
class Statement {
public:
    Statement(const Database& database, std::string_view text)
    {
        sqlite3_stmt* prepared = nullptr;
        const int code = sqlite3_prepare_v3(database.get(), text.data(), static_cast<int>(text.size()),
                                            SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
        if (code != SQLITE_OK)
            fail(database.get(), code);
        statement_.reset(prepared);
    }

    /// Binds bytes that stay valid until the statement was reset.
    void bind(int parameter, std::string_view bytes)
    {
        // A null address would bind NULL.
        const char* address = bytes.empty() ? "" : bytes.data();
        check(sqlite3_bind_blob64(statement_.get(), parameter, address, bytes.size(), SQLITE_STATIC));
    }

    /// Binds a text, valid as long.
    void bindText(int parameter, std::string_view text)
    {
        const char* address = text.empty() ? "" : text.data();
        check(sqlite3_bind_text64(statement_.get(), parameter, address, text.size(), SQLITE_STATIC,
                                  SQLITE_UTF8));
    }

    void bindNumber(int parameter, std::int64_t number)
    {
        check(sqlite3_bind_int64(statement_.get(), parameter, number));
    }

    /// Moves to the next row; false when there is none left.
    bool step()
    {
        const int code = sqlite3_step(statement_.get());
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            fail(sqlite3_db_handle(statement_.get()), code);
        return code == SQLITE_ROW;
    }

    void reset()
    {
        sqlite3_reset(statement_.get());
        sqlite3_clear_bindings(statement_.get());
    }

    /// Of a text or bytes; empty for NULL.
    std::string bytes(int column) const
    {
        const void* address = sqlite3_column_blob(statement_.get(), column);
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
        return address == nullptr ? std::string() : std::string(static_cast<const char*>(address), size);
    }

    std::int64_t number(int column) const { return sqlite3_column_int64(statement_.get(), column); }

private:
    void check(int code) const
    {
        if (code != SQLITE_OK)
            fail(sqlite3_db_handle(statement_.get()), code);
    }

    std::unique_ptr<sqlite3_stmt, Closer> statement_;
};

} // namespace quelm::sqlite

#endif
