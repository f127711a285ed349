#include "TableImage.h"

#include "FieldValues.h"
#include "OrderKey.h"

#include <algorithm>
#include <set>

namespace {

// More changes than this are merged into a block of their own.
constexpr std::size_t MostChanges = 512;

} // namespace

TableImage::TableImage(std::shared_ptr<const RowBlock> block) : block_(std::move(block)) {}

RowView TableImage::blockRow(quint32 position) const
{
    const auto replaced = replaced_.find(position);
    if (replaced == replaced_.end())
        return block_->row(position);
    return replaced->second ? replaced->second->view() : RowView();
}

bool TableImage::isBlockRow(quint32 position) const
{
    return position < block_->size() && (replaced_.empty() || !replaced_.contains(position));
}

std::optional<quint32> TableImage::find(qint64 id) const
{
    // Ids ascend in the block, and those given out later are higher still.
    std::size_t low = 0;
    std::size_t high = block_->size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (block_->row(middle).id() < id)
            low = middle + 1;
        else
            high = middle;
    }
    if (low < block_->size() && block_->row(low).id() == id) {
        const auto position = static_cast<quint32>(low);
        return row(position).isNull() ? std::nullopt : std::optional(position);
    }
    for (std::size_t i = 0; i < appended_.size(); ++i)
        if (appended_[i] && appended_[i]->view().id() == id)
            return static_cast<quint32>(block_->size() + i);
    return std::nullopt;
}

std::shared_ptr<const TableImage> TableImage::with(const std::vector<RowChange>& changes) const
{
    std::shared_ptr<TableImage> next(new TableImage(*this));
    next->orders_.clear();
    next->byId_.reset();
    for (const RowChange& change : changes)
        next->apply(change);
    if (next->replaced_.size() + next->appended_.size() > MostChanges)
        return std::make_shared<TableImage>(next->merged());
    next->applyToOrders(*this, changes);
    return next;
}

void TableImage::apply(const RowChange& change)
{
    const std::optional<quint32> position = find(change.id);
    if (!position) {
        if (change.row)
            appended_.push_back(change.row);
    } else if (*position < block_->size()) {
        replaced_[*position] = change.row;
    } else {
        appended_[*position - block_->size()] = change.row;
    }
}

std::shared_ptr<RowBlock> TableImage::merged() const
{
    auto block = std::make_shared<RowBlock>(block_->table());
    for (quint32 position = 0; position < end(); ++position)
        if (const RowView view = row(position); !view.isNull())
            block->append({view.bytes(), view.size()});
    block->finish();
    return block;
}

std::string TableImage::keyOf(quint32 position, int field) const
{
    return orderKey(row(position).cell(field), kindOf(field));
}

RowOrder::const_iterator TableImage::placeIn(const RowOrder& order, quint32 position,
                                             int field) const
{
    const std::string key = keyOf(position, field);
    return std::partition_point(order.begin(), order.end(), [&](quint32 other) {
        const std::string otherKey = keyOf(other, field);
        return otherKey != key ? otherKey < key : other < position;
    });
}

// The orders that were in use are carried over: the changed rows are taken out of their places and
// put in again at their new ones.
void TableImage::applyToOrders(const TableImage& before, const std::vector<RowChange>& changes)
{
    std::set<quint32> gone;
    std::set<quint32> come;
    for (const RowChange& change : changes) {
        if (const auto position = before.find(change.id))
            gone.insert(*position);
        if (const auto position = find(change.id))
            come.insert(*position);
    }
    for (const auto& [field, order] : before.orders_) {
        auto next = std::make_shared<RowOrder>();
        next->reserve(order->size() + come.size());
        *next = *order;
        for (const quint32 position : gone)
            next->erase(before.placeIn(*next, position, field));
        for (const quint32 position : come)
            next->insert(placeIn(*next, position, field), position);
        orders_.emplace(field, std::move(next));
    }
}

std::shared_ptr<const RowOrder> TableImage::order(std::optional<int> field) const
{
    if (!field) {
        const auto isHole = [](const auto& row) { return !row; };
        const bool holes = std::any_of(replaced_.begin(), replaced_.end(),
                                       [](const auto& entry) { return !entry.second; }) ||
                           std::any_of(appended_.begin(), appended_.end(), isHole);
        if (!holes)
            return nullptr;
        if (!byId_) {
            auto order = std::make_shared<RowOrder>();
            for (quint32 position = 0; position < end(); ++position)
                if (!row(position).isNull())
                    order->push_back(position);
            byId_ = std::move(order);
        }
        return byId_;
    }

    std::shared_ptr<const RowOrder>& known = orders_[*field];
    if (known)
        return known;
    const RowOrder& blockOrder = block_->order(*field);
    if (replaced_.empty() && appended_.empty()) {
        known = std::shared_ptr<const RowOrder>(block_, &blockOrder);
        return known;
    }
    auto order = std::make_shared<RowOrder>();
    order->reserve(end());
    std::copy_if(blockOrder.begin(), blockOrder.end(), std::back_inserter(*order),
                 [this](quint32 position) { return isBlockRow(position); });
    for (quint32 position = 0; position < end(); ++position)
        if (!isBlockRow(position) && !row(position).isNull())
            order->insert(placeIn(*order, position, *field), position);
    known = std::move(order);
    return known;
}

std::shared_ptr<const RowOrder> TableImage::search(int field, const LikePattern& pattern) const
{
    auto found = std::make_shared<RowOrder>();
    if (!pattern.isSubstring()) {
        for (quint32 position = 0; position < end(); ++position) {
            const RowView view = row(position);
            if (!view.isNull() && !view.cell(field).isNull() &&
                pattern.matches(toDisplayText(view.cell(field), kindOf(field))))
                found->push_back(position);
        }
        return found;
    }

    const std::string needle = pattern.literal().toStdString();
    block_->folded(field).search(needle, *found, block_->size());
    if (!replaced_.empty()) {
        std::erase_if(*found, [this](quint32 position) { return !isBlockRow(position); });
        for (const auto& [position, replacement] : replaced_)
            if (contains(position, field, needle))
                found->push_back(position);
        std::sort(found->begin(), found->end());
    }
    for (auto position = static_cast<quint32>(block_->size()); position < end(); ++position)
        if (contains(position, field, needle))
            found->push_back(position);
    return found;
}

std::optional<RowOrder> TableImage::fewContaining(int field, const std::string& needle,
                                                  std::size_t most) const
{
    RowOrder found = block_->fewContaining(field, needle, most + 1);
    if (found.size() > most)
        return std::nullopt;
    std::erase_if(found, [this](quint32 position) { return !isBlockRow(position); });
    const auto take = [&](quint32 position) {
        if (contains(position, field, needle))
            found.push_back(position);
    };
    for (const auto& [position, replacement] : replaced_)
        take(position);
    for (auto position = static_cast<quint32>(block_->size()); position < end(); ++position)
        take(position);
    if (found.size() > most)
        return std::nullopt;
    return found;
}

bool TableImage::contains(quint32 position, int field, const std::string& needle) const
{
    if (isBlockRow(position)) {
        const std::string_view text = block_->folded(field).text(position);
        return (text.empty() || text.front() != FoldedColumn::Null) &&
               text.find(needle) != std::string_view::npos;
    }
    const RowView view = row(position);
    return !view.isNull() && cellContains(view.cell(field), kindOf(field), needle);
}
