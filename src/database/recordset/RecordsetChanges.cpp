#include "Faults.h"
#include "RecordsetState.h"

// Additions, edits and deletions. The published pages "AddNew", "Update", "CancelUpdate" and
// "Delete Method (ADO Recordset)" of the desktop database reference; other than there, a new row
// that stands pending is never written by a move: it was left to neither Update nor CancelUpdate by
// mistake.

namespace {

// What a Null is written as where a form shows it empty.
bool meansNothing(const Cell& cell)
{
    switch (cell.type) {
    case Cell::Type::Null:
        return true;
    case Cell::Type::Integer:
        return cell.integer == 0;
    case Cell::Type::Real:
        return cell.real == 0;
    case Cell::Type::Text:
        return cell.text.empty() || cell.text == "0" || cell.text == "0,00";
    }
    return false;
}

} // namespace

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

void Recordset::UpdateMerged()
{
    State& state = open();
    if (state.pending == State::Pending::Edit && state.wouldOverwrite()) {
        state.endPending();
        throw RuntimeError(RuntimeError::RowChanged);
    }
    Update();
}

bool Recordset::wouldOverwrite()
{
    State& state = open();
    return state.pending == State::Pending::Edit && state.wouldOverwrite();
}

void Recordset::CancelUpdate()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.endPending();
    state.showStored();
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

bool Recordset::State::wouldOverwrite()
{
    takeVersion(Database::Look::Now);
    isOvertaken = !versionExists;
    const RowView shownRow = rows.row(place);
    for (auto value = written.begin(); versionExists && value != written.end();) {
        const Cell before = shownRow.cell(value->first);
        const Cell stored = version.view().cell(value->first);
        const Cell now = value->second.view();
        const bool byOther = !(stored == before);
        if (byOther && before.isNull() && meansNothing(now)) {
            value = written.erase(value);
            continue;
        }
        isOvertaken |= byOther && !(now == before) && !(now == stored);
        ++value;
    }
    return isOvertaken;
}

void Recordset::State::showStored()
{
    if (!std::exchange(isOvertaken, false) || bof || eof)
        return;
    takeVersion(Database::Look::Now);
    if (versionExists)
        rows.replace(place, std::make_shared<PackedRow>(version));
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
