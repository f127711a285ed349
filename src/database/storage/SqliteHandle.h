#pragma once

#include "PackedRow.h"

#include <sqlite3.h>

#include <QString>

#include <string>

class Patience;

// One open database file of the engine, with a rollback journal; a file or journal that is none,
// but a pipe or a device, is an error and never waited for. Errors come as RuntimeError -2147467259
// with a Portuguese text; StorageFault where the transaction in progress is lost with them.
class SqliteHandle
{
public:
    // Never creates the file, unless told so. A file that this user may only read opens for
    // reading.
    enum class Mode
    {
        Existing,
        Create
    };
    SqliteHandle(const QString& path, Mode mode, const char* vfs);
    ~SqliteHandle();
    SqliteHandle(const SqliteHandle&) = delete;
    SqliteHandle& operator=(const SqliteHandle&) = delete;

    // Error where something else than a file lies where the journal will.
    void requireJournalPlace() const;

    void execute(const char* sql);
    qint64 integer(const char* sql);
    bool inTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }
    qint64 lastId() const { return sqlite3_last_insert_rowid(handle_); }

    [[noreturn]] void raise(int code) const;
    // The file was read or locked, and need not be asked in vain any more.
    void answered();
    sqlite3* get() const { return handle_; }

private:
    void requireRollbackMode();

    QString path_;
    Patience& patience_;
    sqlite3* handle_ = nullptr;
};

// A prepared statement, to be reset after each use (StatementReset).
class SqliteStatement
{
public:
    SqliteStatement(SqliteHandle& handle, const std::string& sql);
    ~SqliteStatement() { sqlite3_finalize(statement_); }
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    // Parameters and columns from 1 and from 0, as the engine counts them.
    void bind(int parameter, const Cell& cell);
    bool step();
    void reset();
    Cell column(int column) const;

private:
    SqliteHandle& handle_;
    sqlite3_stmt* statement_ = nullptr;
};

// Leaves no statement half read, whichever way its user goes.
class StatementReset
{
public:
    explicit StatementReset(SqliteStatement& statement) : statement_(statement) {}
    ~StatementReset() { statement_.reset(); }
    StatementReset(const StatementReset&) = delete;
    StatementReset& operator=(const StatementReset&) = delete;

private:
    SqliteStatement& statement_;
};
