#include "Database.h"

#include "TransactionKeeper.h"

#include <algorithm>

std::optional<int> Database::table(const QString& name) const
{
    const auto& all = tables();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    return std::nullopt;
}

std::optional<int> Database::field(int table, const QString& name) const
{
    const auto& fields = tables()[static_cast<std::size_t>(table)].fields;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    return std::nullopt;
}

Database::Database(std::unique_ptr<Storage> storage)
    : storage_(std::move(storage)), tables_(storage_->tables().size())
{
}

Database::Table& Database::at(int table)
{
    return tables_[static_cast<std::size_t>(table)];
}

void Database::forgetImages()
{
    for (Table& table : tables_) {
        table.image.reset();
        table.changes.clear();
    }
    ++foreignWrites_;
}

void Database::lookAfresh()
{
    const quint64 counter = storage_->changeCounter();
    if (counter_ != counter)
        forgetImages();
    counter_ = counter;
}

void Database::requireUsable()
{
    // What this program has not finished writing is its own.
    if (!storage_->isWriting())
        storage_->changeCounter();
}

Database::Stamp Database::stamp(int table) const
{
    return {foreignWrites_, tables_[static_cast<std::size_t>(table)].ownWrites};
}

Database::Stamp Database::stampNow(int table)
{
    lookAfresh();
    return stamp(table);
}

std::shared_ptr<const TableImage> Database::image(int table)
{
    lookAfresh();
    Table& known = at(table);
    if (!known.image) {
        auto block = std::make_shared<RowBlock>(tables()[static_cast<std::size_t>(table)]);
        storage_->readTable(table, [&block](const PackedRow& row) { block->append(row.bytes()); });
        block->finish();
        known.image = std::make_shared<TableImage>(std::move(block));
        known.changes.clear();
    } else if (!known.changes.empty()) {
        std::vector<RowChange> changes;
        for (auto& [id, row] : known.changes)
            changes.push_back({id, std::move(row)});
        std::sort(changes.begin(), changes.end(),
                  [](const RowChange& left, const RowChange& right) { return left.id < right.id; });
        known.changes.clear();
        known.image = known.image->with(changes);
    }
    return known.image;
}

bool Database::storedRow(int table, qint64 id, PackedRow& row)
{
    lookAfresh();
    const Table& known = at(table);
    if (!known.image)
        return storage_->readRow(table, id, row);
    if (const auto change = known.changes.find(id); change != known.changes.end()) {
        if (change->second)
            row.assign(change->second->view());
        return change->second != nullptr;
    }
    const std::optional<quint32> position = known.image->find(id);
    if (position)
        row.assign(known.image->row(*position));
    return position.has_value();
}

// One write: begins the transaction where none is open, and ends it where no event does.
class Database::WriteStep
{
public:
    explicit WriteStep(Database& database)
        : database_(database), opens_(!database.storage_->isWriting())
    {
        TransactionKeeper& keeper = TransactionKeeper::current();
        keeper.raiseIfFailed();
        // The engine has undone the transaction by itself, under a read that failed.
        if (opens_ && keeper.has(database)) {
            const RuntimeError lost(RuntimeError::EngineFault);
            keeper.fail(lost);
            throw lost;
        }
        run([this] {
            if (opens_)
                database_.storage_->beginWrite();
        });
    }
    WriteStep(const WriteStep&) = delete;
    WriteStep& operator=(const WriteStep&) = delete;

    template <class Work> void run(const Work& work)
    {
        try {
            work();
        } catch (const StorageFault& fault) {
            TransactionKeeper& keeper = TransactionKeeper::current();
            const bool isKept = keeper.has(database_);
            keeper.fail(fault);
            if (!isKept)
                database_.rollback();
            throw;
        } catch (const RuntimeError&) {
            // Nothing was written by this step: what the event wrote before stays, and the lock is
            // given back where this step took it.
            if (opens_)
                database_.storage_->rollback();
            throw;
        }
    }

    void finish()
    {
        TransactionKeeper& keeper = TransactionKeeper::current();
        if (keeper.joins()) {
            keeper.take(database_.shared_from_this());
            return;
        }
        try {
            database_.commit();
        } catch (const RuntimeError&) {
            database_.rollback();
            throw;
        }
    }

private:
    Database& database_;
    bool opens_;
};

void Database::insert(int table, PackedRow& row)
{
    WriteStep step(*this);
    step.run([&] {
        // With each line, so that two copies of one list that go on apart are two sales; but a list
        // that may be booked already keeps the name that tells it.
        if (storage_->isList() && (listChecked_ || storage_->isEmpty(table)))
            storage_->renameSale();
        row.setId(storage_->insert(table, row.view()));
    });
    noteChange(table, row.view().id(), std::make_shared<PackedRow>(row));
    step.finish();
}

void Database::requireVersion(int table, RowView version)
{
    PackedRow now;
    if (!storage_->readRow(table, version.id(), now) || !(now.view() == version))
        throw RuntimeError(RuntimeError::RowChanged);
}

void Database::update(int table, RowView version, RowView changed, const std::vector<int>& fields)
{
    WriteStep step(*this);
    step.run([&] {
        requireVersion(table, version);
        storage_->update(table, changed, fields);
    });
    auto row = std::make_shared<PackedRow>();
    row->begin(version.id(), version.fieldCount());
    for (int field = 0; field < version.fieldCount(); ++field) {
        const bool isChanged = std::find(fields.begin(), fields.end(), field) != fields.end();
        row->add((isChanged ? changed : version).cell(field));
    }
    noteChange(table, version.id(), std::move(row));
    step.finish();
}

void Database::remove(int table, RowView version)
{
    WriteStep step(*this);
    const qint64 id = version.id();
    step.run([&] {
        requireVersion(table, version);
        storage_->remove(table, id);
    });
    noteChange(table, id, nullptr);
    step.finish();
}

void Database::noteChange(int table, qint64 id, std::shared_ptr<const PackedRow> row)
{
    Table& known = at(table);
    ++known.ownWrites;
    hasChanges_ = true;
    if (known.image)
        known.changes[id] = std::move(row);
}

void Database::commit()
{
    storage_->commit();
    hasChanges_ = false;
    letKeptGo();
    tellWitnesses(&TransactionWitness::transactionEnded, true);
}

void Database::rollback()
{
    storage_->rollback();
    hasChanges_ = false;
    if (kept_.empty()) {
        forgetImages();
        tellWitnesses(&TransactionWitness::transactionEnded, false);
        return;
    }
    for (; kept_.size() > 1; kept_.pop_back())
        tellWitnesses(&TransactionWitness::pieceEnded);
    restore(kept_.front());
}

void Database::takeLock()
{
    storage_->beginWrite();
    try {
        lookAfresh();
    } catch (const RuntimeError&) {
        storage_->rollback();
        throw;
    }
    keep();
}

void Database::beginPart()
{
    storage_->beginPart();
    keep();
}

void Database::endPart()
{
    storage_->endPart();
    kept_.pop_back();
    tellWitnesses(&TransactionWitness::pieceEnded);
}

void Database::undoPart()
{
    storage_->undoPart();
    restore(kept_.back());
}

void Database::keep()
{
    kept_.push_back(tables_);
    tellWitnesses(&TransactionWitness::pieceBegan);
}

void Database::restore(Tables& kept)
{
    // The numbers of own writes go on: none stands for two states.
    for (std::size_t i = 0; i < kept.size(); ++i)
        kept[i].ownWrites = tables_[i].ownWrites + 1;
    tables_ = std::move(kept);
    kept_.pop_back();
    tellWitnesses(&TransactionWitness::pieceUndone);
}

void Database::letKeptGo()
{
    for (; !kept_.empty(); kept_.pop_back())
        tellWitnesses(&TransactionWitness::pieceEnded);
}

template <class... Arguments>
void Database::tellWitnesses(void (TransactionWitness::*what)(Arguments...), Arguments... arguments)
{
    for (TransactionWitness* witness : witnesses_)
        (witness->*what)(arguments...);
}
