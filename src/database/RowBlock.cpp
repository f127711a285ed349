#include "RowBlock.h"

#include "OrderKey.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t PieceSize = 256 * 1024;

// Texts of digits alone, as all codes are, compare as they stand.
bool allDigitsOrNull(const RowBlock& block, int field)
{
    for (std::size_t i = 0; i < block.size(); ++i) {
        const Cell cell = block.row(i).cell(field);
        if (cell.isNull())
            continue;
        if (cell.type != Cell::Type::Text ||
            !std::all_of(cell.text.begin(), cell.text.end(),
                         [](char c) { return c >= '0' && c <= '9'; }))
            return false;
    }
    return true;
}

// Sorts row positions by their keys; rows of equal keys stay in the order of their ids.
template <class Key> RowOrder sorted(const std::vector<Key>& keys)
{
    RowOrder order(keys.size());
    std::iota(order.begin(), order.end(), 0U);
    if (!std::is_sorted(keys.begin(), keys.end()))
        std::stable_sort(order.begin(), order.end(),
                         [&keys](quint32 left, quint32 right) { return keys[left] < keys[right]; });
    return order;
}

} // namespace

const char* RowArena::store(RowView row)
{
    const std::size_t size = row.size();
    if (size > free_) {
        const std::size_t piece = std::max(size, PieceSize);
        pieces_.push_back(std::make_unique_for_overwrite<char[]>(piece));
        free_ = piece;
        next_ = 0;
    }
    char* place = pieces_.back().get() + next_;
    std::memcpy(place, row.bytes(), size);
    next_ += size;
    free_ -= size;
    return place;
}

const RowOrder& RowBlock::order(int field) const
{
    const auto known = orders_.find(field);
    if (known != orders_.end())
        return known->second;

    RowOrder order;
    const FieldKind kind = table_.fields[static_cast<std::size_t>(field)].kind;
    if (kind == FieldKind::Text && allDigitsOrNull(*this, field)) {
        // Null before the empty text, and both before all digits.
        std::vector<std::pair<bool, std::string_view>> keys;
        keys.reserve(size());
        for (std::size_t i = 0; i < size(); ++i) {
            const Cell cell = row(i).cell(field);
            keys.emplace_back(!cell.isNull(), cell.text);
        }
        order = sorted(keys);
    } else {
        std::vector<std::string> keys;
        keys.reserve(size());
        for (std::size_t i = 0; i < size(); ++i)
            keys.push_back(orderKey(row(i).cell(field), kind));
        order = sorted(keys);
    }
    return orders_.emplace(field, std::move(order)).first->second;
}

const FoldedColumn& RowBlock::folded(int field) const
{
    const auto known = folded_.find(field);
    if (known != folded_.end())
        return known->second;

    FoldedColumn column;
    const FieldKind kind = table_.fields[static_cast<std::size_t>(field)].kind;
    column.begins.reserve(size() + 1);
    for (std::size_t i = 0; i < size(); ++i) {
        column.begins.push_back(static_cast<quint32>(column.bytes.size()));
        const Cell cell = row(i).cell(field);
        if (cell.isNull())
            column.bytes += FoldedColumn::Null;
        else
            appendFolded(column.bytes, cell, kind);
        column.bytes += FoldedColumn::End;
    }
    column.begins.push_back(static_cast<quint32>(column.bytes.size()));
    column.bytes.shrink_to_fit();
    return folded_.emplace(field, std::move(column)).first->second;
}
