#pragma once

#include <QAbstractListModel>

#include <memory>
#include <vector>

// The list of a drop-down: entries that several lists may share, or its own once it changed them.
class DropDownEntries : public QAbstractListModel
{
    Q_OBJECT

public:
    using Entries = std::shared_ptr<const std::vector<QString>>;

    using QAbstractListModel::QAbstractListModel;

    void show(Entries entries);
    void insert(const QString& text, int index);
    // The first entry that begins with the text, upper and lower case alike; -1 where there is
    // none, and for an empty text.
    int firstThatBegins(const QString& text) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    Entries entries_ = std::make_shared<const std::vector<QString>>();
    std::shared_ptr<std::vector<QString>> own_; // the same, where nobody shares them
};
