#pragma once

#include <QString>

#include <memory>
#include <vector>

class Database;
class Recordset;

// A connection to one database file. Many connections share one pooled engine handle a file, so
// that opening costs microseconds; the first opening reads the header and the schema.
class Connection
{
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // "Provider = Microsoft.Jet.OLEDB.4.0;Data Source = " followed by a native or classic path; the
    // data source runs to the end of the text. Never creates a file. Error 3705 where it is open
    // already; -2147467259 with the engine's text where the file is missing, locked, foreign or
    // truncated; 76 for a drive letter that is not mapped. User, password and options are accepted
    // and serve nothing.
    void Open(const QString& connectionString, const QString& user = {},
              const QString& password = {}, int options = -1);
    // Closes the recordsets that are open on it, throwing their pending changes away. Error 3704
    // where it is not open.
    void Close();
    bool isOpen() const { return database_ != nullptr; }

    const std::shared_ptr<Database>& database() const { return database_; }

private:
    friend class Recordset;
    std::shared_ptr<Database> database_;
    std::vector<Recordset*> recordsets_;
};
