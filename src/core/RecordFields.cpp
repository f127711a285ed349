#include "RecordFields.h"

#include "Format.h"
#include "GridRows.h"
#include "RecordForms.h"
#include "RuntimeError.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class ShownRows : public GridRows
{
public:
    ShownRows(std::shared_ptr<const RowsView> rows, std::vector<GridField> columns)
        : rows_(std::move(rows)), columns_(std::move(columns)), count_(rows_->count())
    {
    }
    void keep(const IsMeant& isMeant)
    {
        for (int row = 0; row < rows_->count(); ++row)
            if (isMeant(*rows_, row))
                kept_.emplace_back(row);
        count_ = static_cast<int>(kept_.size());
    }

    int count() const override { return count_; }
    QString text(int row, int column) const override
    {
        if (column >= static_cast<int>(columns_.size()))
            return {};
        const GridField& field = columns_[static_cast<size_t>(column)];
        if (!kept_.empty())
            row = kept_[static_cast<size_t>(row)];
        return field.shown(rows_->value(row, field.position));
    }

private:
    std::shared_ptr<const RowsView> rows_;
    std::vector<GridField> columns_;
    int count_;
    std::vector<int> kept_;
};

// The row as it lies in the file now; nothing for a new row, and for one that cannot be had, which
// is the update's to tell.
std::vector<Value> storedNow(const ObjectVariable<Recordset>& table)
try {
    return table->storedValues();
} catch (const RuntimeError&) {
    return {};
}

// Another station wrote the field, and the box still reads as it was filled.
bool isAnothersAlone(const BoxField& field, const ObjectVariable<Recordset>& table,
                     const std::vector<Value>& stored)
{
    const Value before = table->Fields(field.position);
    if (stored[static_cast<size_t>(field.position)] == before)
        return false;
    const QString shown = field.shown(before);
    const QString text = field.box.text();
    const int limit = field.box.maxLength();
    return text == shown || (limit > 0 && text == shown.left(limit));
}

} // namespace

QString asText(const Value& value)
{
    return value.textOrEmpty();
}

QString asMoney(const Value& value)
{
    return value.isNull() ? u"0,00"_s : Format(value, formats::Money);
}

QString asPhone(const Value& value)
{
    return Format(value, formats::Phone);
}

// The variable is asked anew for each field: a box may fire an event that replaces the recordset.
void showFields(const ObjectVariable<Recordset>& table, const std::vector<BoxField>& fields)
{
    for (const BoxField& field : fields)
        field.box.setText(field.shown(table->Fields(field.position)));
}

void storeFields(const ObjectVariable<Recordset>& table, const std::vector<BoxField>& fields)
{
    const std::vector<Value> stored = storedNow(table);
    for (const BoxField& field : fields) {
        if (!stored.empty() && isAnothersAlone(field, table, stored))
            continue;
        const QString text = field.box.text();
        table->Fields(field.position) = text.isEmpty() ? field.storedWhenEmpty : text;
    }
}

int firstWithText(const ControlArray<TextBox>& boxes, int index, std::initializer_list<int> among)
{
    for (const int other : among)
        if (sameText(boxes(index), boxes(other)))
            return other;
    return -1;
}

void setHeadings(FlexGrid& grid, const std::vector<GridField>& columns)
{
    int column = 0;
    for (const GridField& field : columns) {
        grid.setColWidth(column, field.twips);
        grid.setTextMatrix(0, column++, field.heading);
    }
}

int refillGrid(FlexGrid& grid, const ObjectVariable<Recordset>& table,
               const std::vector<GridField>& columns, const IsMeant& isMeant)
{
    const auto rows = std::make_shared<ShownRows>(table->rowsNow(), columns);
    if (isMeant)
        rows->keep(isMeant);
    grid.showRows(rows);
    return rows->count();
}

void emptyGrid(FlexGrid& grid)
{
    grid.showRows(nullptr);
}
