#pragma once

#include "PackedRow.h"
#include "Schema.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// Room for packed rows, in large pieces that never move. Pieces given up are kept for the next
// arena: a table read anew after each foreign change would else pay for fresh memory each time.
class RowArena
{
public:
    RowArena() = default;
    ~RowArena();
    RowArena(const RowArena&) = delete;
    RowArena& operator=(const RowArena&) = delete;

    const char* store(std::string_view bytes);

private:
    std::vector<std::unique_ptr<char[]>> pieces_;
    std::vector<std::unique_ptr<char[]>> longRows_;
    std::size_t free_ = 0;
    std::size_t next_ = 0;
};

// Positions of rows in the order of a field.
using RowOrder = std::vector<quint32>;

// The folded texts of one field, one after another, for searching. A Null is a byte that no text
// contains, and another such byte ends each text, so that no match reaches into the next one.
struct FoldedColumn
{
    static constexpr char Null = '\xfe';
    static constexpr char End = '\xff';

    std::string_view text(std::size_t row) const
    {
        return std::string_view(bytes).substr(begins[row], begins[row + 1] - begins[row] - 1);
    }

    // Appends the rows that contain the text until there are so many.
    void search(const std::string& needle, RowOrder& found, std::size_t most) const;

    std::string bytes;
    std::vector<quint32> begins; // one more than rows
};

// The rows of a table as they were read in one go, by ascending id. They never change; orders and
// folded texts are made when they are first asked for.
class RowBlock
{
public:
    explicit RowBlock(TableDefinition table) : table_(std::move(table)) {}

    // While it is being filled.
    void append(std::string_view rowBytes) { rows_.push_back(arena_.store(rowBytes)); }
    void finish() { rows_.shrink_to_fit(); }

    std::size_t size() const { return rows_.size(); }
    RowView row(std::size_t index) const
    {
        return {rows_[index], static_cast<int>(table_.fields.size())};
    }
    const TableDefinition& table() const { return table_; }

    const RowOrder& order(int field) const;
    const FoldedColumn& folded(int field) const;
    // The rows that contain the text, up to so many. Kept until another text is asked for: a save
    // looks for its number several times over.
    const RowOrder& fewContaining(int field, const std::string& needle, std::size_t most) const;

private:
    struct Search
    {
        int field = -1;
        std::string needle;
        std::size_t most = 0;
        RowOrder found;
    };

    TableDefinition table_; // rows may outlive the file from which they were read
    RowArena arena_;
    std::vector<const char*> rows_;
    mutable std::map<int, RowOrder> orders_;
    mutable std::map<int, FoldedColumn> folded_;
    mutable Search lastSearch_;
};
