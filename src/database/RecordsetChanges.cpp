#include "Faults.h"
#include "RecordsetState.h"

// Additions, edits and deletions. The published pages "AddNew", "Update", "CancelUpdate" and
// "Delete Method (ADO Recordset)" of the desktop database reference; other than there, a new row
// that stands pending is never written by a move: it was left to neither Update nor CancelUpdate by
// mistake.

void Recordset::AddNew()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.requireUpdatable();
    state.leaveRow();
    state.pending = State::Pending::NewRow;
}

void Recordset::Update()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    if (state.pending == State::Pending::None && (state.bof || state.eof))
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    state.update();
}

void Recordset::CancelUpdate()
{
    faults::point(faults::Call::Recordset);
    open().endPending();
}

void Recordset::Delete()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.requireUpdatable();
    state.requireNoNewRow();
    state.requireRow();
    state.endPending();
    state.remove();
}

void Recordset::State::write(int field, const Value& value)
{
    requireUpdatable();
    requireRow();
    if (pending == Pending::None) {
        pending = Pending::Edit;
        EventTransactions::instance().editBegan(this);
    }
    written[field] = toCell(value, kind(field));
}

PackedRow Recordset::State::withPending(RowView row) const
{
    const int count = static_cast<int>(fields().size());
    PackedRow result;
    result.begin(row.isNull() ? 0 : row.id(), count);
    for (int field = 0; field < count; ++field) {
        const auto value = written.find(field);
        result.add(value != written.end() ? value->second.view()
                   : row.isNull()         ? Cell::null()
                                          : row.cell(field));
    }
    return result;
}

void Recordset::State::requireNoRefusedNull(RowView row) const
{
    for (int field = 0; field < row.fieldCount(); ++field)
        if (fields()[static_cast<std::size_t>(field)].refusesNull && row.cell(field).isNull())
            throw RuntimeError(RuntimeError::MultipleStep);
}

void Recordset::State::update()
{
    switch (pending) {
    case Pending::None:
        return;
    case Pending::NewRow:
        insertPending();
        return;
    case Pending::Edit:
        try {
            writeEdit();
        } catch (const RuntimeError&) {
            endPending();
            throw;
        }
        endPending();
        return;
    }
}

void Recordset::State::insertPending()
{
    auto row = std::make_shared<PackedRow>(withPending({}));
    requireNoRefusedNull(row->view());
    database->insert(table, *row);
    uncertain |= database->isWriting();
    version = *row;
    versionExists = true;
    place = rows.add(std::move(row));
    bof = false;
    eof = false;
    endPending();
}

void Recordset::State::writeEdit()
{
    const RowView before = rows.row(place);
    std::vector<int> changed;
    for (const auto& [field, value] : written)
        if (!(value.view() == before.cell(field)))
            changed.push_back(field);
    if (changed.empty())
        return;

    auto row = std::make_shared<PackedRow>(withPending(before));
    requireNoRefusedNull(row->view());
    if (!versionExists)
        throw RuntimeError(RuntimeError::RowChanged);
    PackedRow stored;
    database->update(table, version.view(), row->view(), changed, stored);
    uncertain |= database->isWriting();
    version = std::move(stored);
    rows.replace(place, std::move(row));
}

void Recordset::State::remove()
{
    if (!versionExists)
        throw RuntimeError(RuntimeError::RowChanged);
    database->remove(table, version.view());
    uncertain |= database->isWriting();
    rows.remove(place);
    versionExists = false;
}

void Recordset::State::endPending()
{
    if (pending == Pending::Edit)
        EventTransactions::instance().editEnded(this);
    pending = Pending::None;
    written.clear();
}

void Recordset::State::dropEdit()
{
    if (pending == Pending::Edit)
        endPending();
}
