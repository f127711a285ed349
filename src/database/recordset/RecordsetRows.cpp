#include "RecordsetRows.h"

#include "OrderKey.h"

#include <algorithm>

RecordsetRows::RecordsetRows(std::shared_ptr<const TableImage> image,
                             std::shared_ptr<const RowOrder> order)
    : image_(std::move(image)), order_(std::move(order)),
      imageRows_(static_cast<int>(order_ ? order_->size() : image_->end())),
      lastHint_(imageRows_ - 1)
{
}

RowView RecordsetRows::row(int place) const
{
    if (place >= imageRows_)
        return added_[asIndex(place - imageRows_)]->view();
    if (!edited_.empty())
        if (const auto edited = edited_.find(place); edited != edited_.end())
            return edited->second->view();
    return image_->row(imagePosition(place));
}

std::optional<int> RecordsetRows::atOrAfter(int place) const
{
    place = std::max(place, firstHint_);
    while (place < end() && isDeleted(place))
        ++place;
    return place < end() ? std::optional(place) : std::nullopt;
}

std::optional<int> RecordsetRows::atOrBefore(int place) const
{
    place = std::min(place, lastHint_);
    while (place >= 0 && isDeleted(place))
        --place;
    return place >= 0 ? std::optional(place) : std::nullopt;
}

std::optional<int> RecordsetRows::placeOf(qint64 id) const
{
    for (std::size_t i = 0; i < added_.size(); ++i)
        if (const int place = imageRows_ + static_cast<int>(i);
            added_[i]->view().id() == id && !isDeleted(place))
            return place;
    const std::optional<quint32> position = image_ ? image_->find(id) : std::nullopt;
    return position ? placeAt(*position) : std::nullopt;
}

std::optional<int> RecordsetRows::placeAt(quint32 position) const
{
    int place = static_cast<int>(position);
    if (order_) {
        const auto found = std::find(order_->begin(), order_->end(), position);
        if (found == order_->end())
            return std::nullopt;
        place = static_cast<int>(found - order_->begin());
    }
    return isDeleted(place) ? std::nullopt : std::optional(place);
}

int RecordsetRows::rowsBefore(int place) const
{
    if (deletedCount_ == 0)
        return place;
    return static_cast<int>(std::count(deleted_.begin(), deleted_.begin() + place, false));
}

int RecordsetRows::placeOfNth(int n) const
{
    if (deletedCount_ == 0)
        return n;
    int place = *first();
    while (n-- > 0)
        place = *atOrAfter(place + 1);
    return place;
}

// Mostly a number is looked for that one row holds, or none: those rows are found in one run over
// the field's texts. A text that many rows hold is met soon, row by row.
std::optional<int> RecordsetRows::search(int from, int field, const std::string& needle) const
{
    constexpr std::size_t Few = 8;
    const std::optional<RowOrder> few = image_->fewContaining(field, needle, Few);
    if (!few)
        return searchRows(from, end(), field, needle);

    std::optional<int> first = searchRows(std::max(from, imageRows_), end(), field, needle);
    const auto take = [&](std::optional<int> place) {
        if (place && *place >= from && (!first || *place < *first))
            first = place;
    };
    for (const quint32 position : *few)
        if (const std::optional<int> place = placeAt(position); place && !edited_.contains(*place))
            take(place);
    for (const auto& [place, row] : edited_)
        take(searchRows(place, place + 1, field, needle));
    return first;
}

std::optional<int> RecordsetRows::searchRows(int from, int until, int field,
                                             const std::string& needle) const
{
    const FieldKind kind = image_->table().fields[asIndex(field)].kind;
    for (std::optional<int> place = atOrAfter(from); place && *place < until;
         place = atOrAfter(*place + 1)) {
        if (*place < imageRows_ && (edited_.empty() || !edited_.contains(*place))) {
            if (image_->contains(imagePosition(*place), field, needle))
                return place;
        } else if (cellContains(row(*place).cell(field), kind, needle)) {
            return place;
        }
    }
    return std::nullopt;
}

int RecordsetRows::add(std::shared_ptr<const PackedRow> row)
{
    added_.push_back(std::move(row));
    if (!deleted_.empty())
        deleted_.push_back(false);
    lastHint_ = end() - 1;
    return lastHint_;
}

void RecordsetRows::replace(int place, std::shared_ptr<const PackedRow> row)
{
    if (place >= imageRows_)
        added_[asIndex(place - imageRows_)] = std::move(row);
    else
        edited_[place] = std::move(row);
}

void RecordsetRows::remove(int place)
{
    if (deleted_.empty())
        deleted_.resize(asIndex(end()));
    deleted_[asIndex(place)] = true;
    ++deletedCount_;
    firstHint_ = atOrAfter(firstHint_).value_or(end());
    lastHint_ = atOrBefore(lastHint_).value_or(-1);
}
