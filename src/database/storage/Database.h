#pragma once

#include "Storage.h"
#include "TableImage.h"

#include <QString>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

// Shows rows of the file, and hears of what becomes of its transactions, whoever wrote in them.
class TransactionWitness
{
public:
    virtual void transactionEnded(bool committed) = 0;
    // A piece begins: what is shown now is kept. It ends: what was kept is let go, or stands again.
    // The latter are also told to witnesses that came within the piece and have kept nothing.
    virtual void pieceBegan() = 0;
    virtual void pieceEnded() = 0;
    virtual void pieceUndone() = 0;

protected:
    ~TransactionWitness() = default;
};

// One database file in use: the engine handle that all connections on it share, and the images of
// its tables, kept while nobody else writes the file.
class Database : public std::enable_shared_from_this<Database>
{
public:
    // The pooled one, opened where there is none. Error -2147467259 with the engine's text.
    static std::shared_ptr<Database> open(const QString& path);
    // Closes the pooled files that no connection uses.
    static void dropIdle();
    // The engine's file layer for files opened from now on, null for its own.
    static void setVfsForTests(const char* vfs);
    static const char* vfs();

    explicit Database(std::unique_ptr<Storage> storage);

    const std::vector<TableDefinition>& tables() const { return storage_->tables(); }
    // Without regard to case.
    std::optional<int> table(const QString& name) const;
    std::optional<int> field(int table, const QString& name) const;

    // The errors of opening the file, where it is locked, cut or overwritten by now.
    void requireUsable();

    // Another one whenever anyone has written the table, or the file from elsewhere.
    struct Stamp
    {
        quint64 foreign = 0;
        quint64 own = 0;
        bool operator==(const Stamp&) const = default;
    };
    // As of the last look into the file, or after another one.
    Stamp stamp(int table) const;
    Stamp stampNow(int table);

    // The table as it stands, this program's own writes included.
    std::shared_ptr<const TableImage> image(int table);
    // The stored row, false where there is none any more.
    bool storedRow(int table, qint64 id, PackedRow& row);

    // The following write in the transaction of the running event, or in one of their own.
    // The row's id is set to the new one.
    void insert(int table, PackedRow& row);
    // Writes the fields named. Error -2147217864 where the stored row is not the given version any
    // more.
    void update(int table, RowView version, RowView changed, const std::vector<int>& fields);
    void remove(int table, RowView version);

    bool isWriting() const { return storage_->isWriting(); }
    // Whether rows were written that are not durable yet; a lock alone writes none.
    bool hasChanges() const { return hasChanges_; }
    void commit();
    // What was shown when the lock was taken stands again; where it was taken by a write, all is
    // read anew.
    void rollback();

    // Takes the write lock, and looks afresh under it.
    void takeLock();
    bool isLocked() const { return !kept_.empty(); }
    // Parts of what is written under the lock, which can be undone by themselves.
    void beginPart();
    void endPart();
    void undoPart();
    // Before a rollback after which all is to be read anew.
    void letKeptGo();

    void watch(TransactionWitness* witness) { witnesses_.push_back(witness); }
    void unwatch(TransactionWitness* witness) { std::erase(witnesses_, witness); }

    Storage& storage() { return *storage_; }
    // A sale list is looked at for its mark at the first opening, and after a failed commit.
    bool listIsChecked() const { return listChecked_; }
    void setListChecked(bool checked) { listChecked_ = checked; }
    void forgetImages();

private:
    struct Table
    {
        std::shared_ptr<const TableImage> image;
        // Written since the image was made, by id.
        std::unordered_map<qint64, std::shared_ptr<const PackedRow>> changes;
        quint64 ownWrites = 0;
    };
    class WriteStep;
    using Tables = std::vector<Table>;

    Table& at(int table);
    void lookAfresh();
    void requireVersion(int table, RowView version);
    void noteChange(int table, qint64 id, std::shared_ptr<const PackedRow> row);
    void keep();
    // What was kept last, or first where all of it is undone.
    void restore(Tables& kept);
    template <class... Arguments>
    void tellWitnesses(void (TransactionWitness::*what)(Arguments...), Arguments... arguments);

    std::unique_ptr<Storage> storage_;
    Tables tables_;
    std::vector<Tables> kept_; // one for the lock and one for each part
    std::optional<quint64> counter_;
    quint64 foreignWrites_ = 0;
    bool listChecked_ = false;
    bool hasChanges_ = false;
    std::vector<TransactionWitness*> witnesses_;
};
