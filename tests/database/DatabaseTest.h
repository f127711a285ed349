#pragma once

#include "ErrorOf.h"
#include "FormTest.h"
#include "Recordset.h"

#include <QFile>
#include <QWidget>

#include <sqlite3.h>

#include <memory>

// Another program on a file, which it locks at once.
class OtherStation
{
public:
    explicit OtherStation(const QString& file, const char* begin = "BEGIN EXCLUSIVE")
    {
        sqlite3_open(file.toUtf8().constData(), &handle_);
        code_ = tell(begin);
    }
    ~OtherStation() { sqlite3_close(handle_); }
    OtherStation(const OtherStation&) = delete;
    OtherStation& operator=(const OtherStation&) = delete;

    bool hasLock() const { return code_ == SQLITE_OK; }
    int tell(const char* statement)
    {
        return sqlite3_exec(handle_, statement, nullptr, nullptr, nullptr);
    }

private:
    sqlite3* handle_ = nullptr;
    int code_ = 0;
};

// A fresh installation, recordsets on it, and statements of other stations beside them.
class DatabaseTest : public FormTest
{
protected:
    static std::shared_ptr<Connection> connect(const QString& file)
    {
        auto connection = std::make_shared<Connection>();
        connection->Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + file);
        return connection;
    }

    std::unique_ptr<Recordset> open(const QString& sql, CursorType cursor = CursorType::Static,
                                    LockType lock = LockType::Optimistic, const QString& file = {})
    {
        auto recordset = std::make_unique<Recordset>();
        recordset->Open(sql, connect(file.isEmpty() ? mainFile() : file), cursor, lock);
        return recordset;
    }
    std::unique_ptr<Recordset> openList()
    {
        return open(u"SELECT * FROM Pecas order by CODIGO"_s, CursorType::Static,
                    LockType::Optimistic, listFile());
    }

    static void lay(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    // Suppliers with these names, each with its code as long as the list.
    void addSuppliers(const QStringList& names)
    {
        int code = 0;
        for (const QString& name : names)
            mainSql(u"INSERT INTO FORNECEDOR(NOMEEMPRESA, CODIGO) VALUES(%1, '%2')"_s.arg(
                name.isNull() ? u"NULL"_s
                              : u"'"_s + QString(name).replace(u"'"_s, u"''"_s) + u"'"_s,
                QString::number(++code)));
    }

    // The column from the current row on, a Null as "NULL".
    static QStringList column(Recordset& recordset, int field = 0)
    {
        QStringList values;
        for (; !recordset.eof(); recordset.MoveNext())
            values += recordset.Fields(field).isNull() ? u"NULL"_s : recordset.Fields(field).text();
        return values;
    }

    QStringList stored(const QString& expression, const QString& table = u"FORNECEDOR"_s) const
    {
        return sql(mainFile(), u"SELECT %1 FROM %2 ORDER BY rowid"_s.arg(expression, table));
    }

    QStringList names() const { return stored(u"NOMEEMPRESA"_s); }
    static void add(Recordset& table, const QString& text)
    {
        table.AddNew();
        set(table, 0, text);
    }
    static void set(Recordset& table, int field, const Value& value)
    {
        table.Fields(field) = value;
        table.Update();
    }

    const QString suppliers_ = u"SELECT * FROM FORNECEDOR"_s;

    // As a button would: one outermost event.
    void event(const std::function<void()>& handler) { gate::run(form_, OnError::Silent, handler); }

private:
    Form form_{u"Teste"_s, [] { return std::make_unique<QWidget>(); }};
};
