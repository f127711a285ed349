#pragma once

#include "Like.h"
#include "RowBlock.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

// A row as this program left it; without a row it was deleted.
struct RowChange
{
    qint64 id = 0;
    std::shared_ptr<const PackedRow> row;
};

// A table as it stood at one moment: a block of rows, and over it what this program wrote since the
// block was read. It never changes, so that recordsets can share it; the next state is another
// image over the same block.
class TableImage
{
public:
    explicit TableImage(std::shared_ptr<const RowBlock> block);

    std::shared_ptr<const TableImage> with(const std::vector<RowChange>& changes) const;

    // Row positions run from 0 to here; those of deleted rows hold none.
    quint32 end() const { return static_cast<quint32>(block_->size() + appended_.size()); }
    RowView row(quint32 position) const
    {
        if (position < block_->size())
            return replaced_.empty() ? block_->row(position) : blockRow(position);
        const auto& row = appended_[position - block_->size()];
        return row ? row->view() : RowView();
    }
    std::optional<quint32> find(qint64 id) const;

    // All rows; by id where no field is given. Null where that means every position up to end().
    std::shared_ptr<const RowOrder> order(std::optional<int> field) const;
    // Those rows whose field matches, by id.
    std::shared_ptr<const RowOrder> search(int field, const LikePattern& pattern) const;

    // The rows whose field contains the text, in no order; nothing where they are more than so
    // many.
    std::optional<RowOrder> fewContaining(int field, const std::string& needle,
                                          std::size_t most) const;
    // Whether the field contains the text, which is folded and in UTF-8. A Null contains none.
    bool contains(quint32 position, int field, const std::string& needle) const;

    const TableDefinition& table() const { return block_->table(); }

private:
    TableImage(const TableImage&) = default;

    FieldKind kindOf(int field) const
    {
        return table().fields[static_cast<std::size_t>(field)].kind;
    }

    RowView blockRow(quint32 position) const;
    bool isBlockRow(quint32 position) const;
    void apply(const RowChange& change);
    void applyToOrders(const TableImage& before, const std::vector<RowChange>& changes);
    std::shared_ptr<RowBlock> merged() const;
    std::string keyOf(quint32 position, int field) const;
    // Where the row stands among those of the order, or would.
    RowOrder::const_iterator placeIn(const RowOrder& order, quint32 position, int field) const;

    std::shared_ptr<const RowBlock> block_;
    std::unordered_map<quint32, std::shared_ptr<const PackedRow>> replaced_;
    std::vector<std::shared_ptr<const PackedRow>> appended_;
    mutable std::unordered_map<int, std::shared_ptr<const RowOrder>> orders_;
    mutable std::shared_ptr<const RowOrder> byId_;
};
