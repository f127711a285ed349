#include "RowBlock.h"

#include "ByteSearch.h"
#include "OrderKey.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t PieceSize = 262'144; // bytes
constexpr std::size_t MostSparePieces = 512;

std::vector<std::unique_ptr<char[]>>& sparePieces()
{
    // Never destroyed: images may outlive it at the end of the program.
    static auto& pieces = *new std::vector<std::unique_ptr<char[]>>;
    return pieces;
}

// What is quickly seen of a field: texts of digits alone, as all codes are, compare as they stand,
// and mostly lie in order already.
struct CodeColumn
{
    bool areCodes = true;
    bool ascend = true;
};

CodeColumn lookAtCodes(const RowBlock& block, int field)
{
    CodeColumn column;
    Cell before;
    for (std::size_t i = 0; i < block.size() && column.areCodes; ++i) {
        const Cell cell = block.row(i).cell(field);
        column.areCodes =
            cell.isNull() || (cell.type == Cell::Type::Text &&
                              std::all_of(cell.text.begin(), cell.text.end(),
                                          [](char c) { return c >= '0' && c <= '9'; }));
        column.ascend =
            column.ascend && before.text <= cell.text && before.isNull() >= cell.isNull();
        before = cell;
    }
    return column;
}

RowOrder inRowOrder(std::size_t rows)
{
    RowOrder order(rows);
    std::iota(order.begin(), order.end(), 0U);
    return order;
}

// Sorts row positions by their keys; rows of equal keys stay in the order of their ids.
template <class Key> RowOrder sorted(const std::vector<Key>& keys)
{
    RowOrder order = inRowOrder(keys.size());
    if (!std::is_sorted(keys.begin(), keys.end()))
        std::stable_sort(order.begin(), order.end(),
                         [&keys](quint32 left, quint32 right) { return keys[left] < keys[right]; });
    return order;
}

} // namespace

RowArena::~RowArena()
{
    for (std::unique_ptr<char[]>& piece : pieces_)
        if (sparePieces().size() < MostSparePieces)
            sparePieces().push_back(std::move(piece));
}

const char* RowArena::store(std::string_view bytes)
{
    const std::size_t size = bytes.size();
    // A row longer than a piece stands alone.
    if (size > PieceSize) {
        longRows_.push_back(std::make_unique_for_overwrite<char[]>(size));
        std::memcpy(longRows_.back().get(), bytes.data(), size);
        return longRows_.back().get();
    }
    if (size > free_) {
        if (sparePieces().empty()) {
            pieces_.push_back(std::make_unique_for_overwrite<char[]>(PieceSize));
        } else {
            pieces_.push_back(std::move(sparePieces().back()));
            sparePieces().pop_back();
        }
        free_ = PieceSize;
        next_ = 0;
    }
    char* place = pieces_.back().get() + next_;
    std::memcpy(place, bytes.data(), size);
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
    const CodeColumn codes =
        kind == FieldKind::Text ? lookAtCodes(*this, field) : CodeColumn{false};
    if (codes.areCodes && codes.ascend) {
        order = inRowOrder(size());
    } else if (codes.areCodes) {
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

// One run over all of it; a hit skips to the next row.
void FoldedColumn::search(const std::string& needle, RowOrder& found, std::size_t most) const
{
    const auto rows = static_cast<quint32>(begins.size() - 1);
    if (needle.empty()) {
        for (quint32 position = 0; position < rows && found.size() < most; ++position)
            if (bytes[begins[position]] != Null)
                found.push_back(position);
        return;
    }
    const auto nextHit = [&](std::size_t from) { return findBytes(bytes, needle, from); };
    quint32 position = 0;
    std::size_t hit = nextHit(0);
    while (hit != std::string::npos && found.size() < most) {
        while (begins[position + 1] <= hit)
            ++position;
        found.push_back(position);
        hit = nextHit(begins[position + 1]);
    }
}

const RowOrder& RowBlock::fewContaining(int field, const std::string& needle,
                                        std::size_t most) const
{
    Search& last = lastSearch_;
    if (last.field != field || last.needle != needle || last.most != most) {
        last = {field, needle, most, {}};
        folded(field).search(needle, last.found, most);
    }
    return last.found;
}
