#pragma once

#include "TableImage.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

// The rows that one recordset shows, in its order: those of the image that it was opened on, with
// its own edits and deletions over them and its own additions behind them. Places count from 0 and
// stay; a deleted row keeps its place and is passed over.
class RecordsetRows
{
public:
    RecordsetRows() = default;
    RecordsetRows(std::shared_ptr<const TableImage> image, std::shared_ptr<const RowOrder> order);

    // Behind the last place.
    int end() const { return imageRows_ + static_cast<int>(added_.size()); }
    // Rows that are not deleted.
    int count() const { return end() - deletedCount_; }
    bool hasDeleted() const { return deletedCount_ > 0; }
    const TableDefinition& table() const { return image_->table(); }
    bool isDeleted(int place) const { return deletedCount_ > 0 && deleted_[asIndex(place)]; }
    RowView row(int place) const;

    // The nearest row that is not deleted, from the place itself on or back.
    std::optional<int> atOrAfter(int place) const;
    std::optional<int> atOrBefore(int place) const;
    std::optional<int> first() const { return atOrAfter(0); }
    std::optional<int> last() const { return atOrBefore(end() - 1); }
    std::optional<int> placeOf(qint64 id) const;

    // How many rows stand before the place, and the place of the n-th row from 0.
    int rowsBefore(int place) const;
    int placeOfNth(int n) const;

    // The first place from the given one whose field contains the folded text.
    std::optional<int> search(int from, int field, const std::string& needle) const;

    int add(std::shared_ptr<const PackedRow> row);
    void replace(int place, std::shared_ptr<const PackedRow> row);
    void remove(int place);

private:
    std::optional<int> searchRows(int from, int until, int field, const std::string& needle) const;
    // Of a row of the image; none where it is not among the rows, or deleted.
    std::optional<int> placeAt(quint32 position) const;
    static std::size_t asIndex(int place) { return static_cast<std::size_t>(place); }
    quint32 imagePosition(int place) const
    {
        return order_ ? (*order_)[asIndex(place)] : static_cast<quint32>(place);
    }

    std::shared_ptr<const TableImage> image_;
    std::shared_ptr<const RowOrder> order_; // null: all positions of the image
    int imageRows_ = 0;
    std::unordered_map<int, std::shared_ptr<const PackedRow>> edited_;
    std::vector<std::shared_ptr<const PackedRow>> added_;
    std::vector<bool> deleted_;
    int deletedCount_ = 0;
    // No row that is not deleted lies before the one or behind the other: emptying a whole table
    // row by row does not walk over the same gap again and again.
    int firstHint_ = 0;
    int lastHint_ = 0;
};
