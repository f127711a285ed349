#include "DropDownEntries.h"

#include <algorithm>

void DropDownEntries::show(Entries entries)
{
    beginResetModel();
    own_.reset();
    entries_ = entries ? std::move(entries) : std::make_shared<const std::vector<QString>>();
    endResetModel();
}

void DropDownEntries::insert(const QString& text, int index)
{
    if (!own_)
        entries_ = own_ = std::make_shared<std::vector<QString>>(*entries_);
    beginInsertRows({}, index, index);
    own_->insert(own_->begin() + index, text);
    endInsertRows();
}

int DropDownEntries::firstThatBegins(const QString& text) const
{
    if (text.isEmpty())
        return -1;
    const auto first =
        std::find_if(entries_->begin(), entries_->end(), [&text](const QString& entry) {
            return entry.startsWith(text, Qt::CaseInsensitive);
        });
    return first == entries_->end() ? -1 : static_cast<int>(first - entries_->begin());
}

int DropDownEntries::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(entries_->size());
}

QVariant DropDownEntries::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return (*entries_)[static_cast<size_t>(index.row())];
}
