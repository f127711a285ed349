#pragma once

#include "SqliteHandle.h"
#include "Storage.h"

#include <map>
#include <memory>

// Storage in one file of the engine, with a rollback journal and EXTRA synchronisation: the file
// may lie on a network drive, and a power cut must leave it whole.
class SqliteStorage : public Storage
{
public:
    SqliteStorage(const QString& path, const char* vfs);

    const std::vector<TableDefinition>& tables() const override { return tables_; }
    quint64 changeCounter() override;

    void readTable(int table, const std::function<void(const PackedRow&)>& take) override;
    bool readRow(int table, qint64 id, PackedRow& row) override;

    void beginWrite() override;
    bool isWriting() const override { return handle_.inTransaction(); }
    void commit() override;
    void rollback() noexcept override;
    void beginPart() override;
    void endPart() override;
    void undoPart() override;

    qint64 insert(int table, RowView row) override;
    void update(int table, RowView row, const std::vector<int>& fields) override;
    void remove(int table, qint64 id) override;
    bool isEmpty(int table) override;
    void removeAll(int table) override;

    bool isList() const override { return hasListTable_; }
    std::optional<ListState> listState() override;
    void renameSale() override;
    void finishList() override;
    bool isFinished(const SaleName& sale) override;
    void markFinished(const ListState& list) override;

    // A check of the whole file by the engine; an error where it is damaged.
    void requireWhole();

private:
    void readSchema();
    // Whether the file has the table; an error where it has another one of that name.
    bool hasTable(const TableDefinition& table);
    void setListState(const ListState& list);
    // Prepared once, kept for the next use.
    SqliteStatement& statement(const std::string& sql);
    const std::string& name(int table) const { return names_[static_cast<std::size_t>(table)]; }
    int fieldCount(int table) const;
    void pack(SqliteStatement& statement, int fields, PackedRow& row) const;

    SqliteHandle handle_;
    std::vector<TableDefinition> tables_;
    std::vector<std::string> names_; // quoted
    bool hasListTable_ = false;
    bool hasMarkTable_ = false;
    std::map<std::string, std::unique_ptr<SqliteStatement>> statements_;
};
