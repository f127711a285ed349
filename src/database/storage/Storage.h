#pragma once

#include "PackedRow.h"
#include "RuntimeError.h"
#include "Schema.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

// A failure after which the transaction in progress is lost: full disk, I/O error, torn file.
class StorageFault : public RuntimeError
{
public:
    using RuntimeError::RuntimeError;
};

// Names a sale, from its latest line to its booking. The number serves files of former times, whose
// lists kept one name for all their sales.
struct SaleName
{
    std::string id;
    qint64 generation = 0;
    bool operator==(const SaleName&) const = default;
};

// What a sale list knows of itself.
struct ListState
{
    SaleName sale;
    std::optional<SaleName> finished; // the sale before it, booked and done with
};

// What recordsets ask of an engine, and nothing more, so that another engine can stand behind them.
// Tables are named by their index in tables(). Every operation may throw RuntimeError -2147467259
// with the engine's text.
class Storage
{
public:
    virtual ~Storage() = default;

    virtual const std::vector<TableDefinition>& tables() const = 0;

    // Another value than before where somebody else has written since; own writes do not count.
    virtual quint64 changeCounter() = 0;

    // All rows by ascending id.
    virtual void readTable(int table, const std::function<void(const PackedRow&)>& take) = 0;
    // False where there is no such row.
    virtual bool readRow(int table, qint64 id, PackedRow& row) = 0;

    // Takes the write lock at once; an error where it is not had within the time-out.
    virtual void beginWrite() = 0;
    virtual bool isWriting() const = 0;
    virtual void commit() = 0;
    virtual void rollback() noexcept = 0;
    // A part of the transaction that can be undone by itself; parts nest.
    virtual void beginPart() = 0;
    virtual void endPart() = 0;
    virtual void undoPart() = 0;

    // The following need a transaction. insert answers the new id, which was never used before.
    virtual qint64 insert(int table, RowView row) = 0;
    virtual void update(int table, RowView row, const std::vector<int>& fields) = 0;
    virtual void remove(int table, qint64 id) = 0;
    virtual bool isEmpty(int table) = 0;
    virtual void removeAll(int table) = 0;

    // Whether the file is a sale list, not the shared file; asks nothing of the file.
    virtual bool isList() const = 0;
    // Of a sale list; nothing for every other file.
    virtual std::optional<ListState> listState() = 0;
    // The sale gets a name that no copy of the file can have. It is done with.
    virtual void renameSale() = 0;
    virtual void finishList() = 0;
    // Of the shared file: whether it knows the sale as booked; and that it shall, and forget the
    // sale before it.
    virtual bool isFinished(const SaleName& sale) = 0;
    virtual void markFinished(const ListState& list) = 0;
};
