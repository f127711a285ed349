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
    case Cell::Type::Null: return true;
    case Cell::Type::Integer: return cell.integer == 0;
    case Cell::Type::Real: return cell.real == 0;
    case Cell::Type::Text: return cell.text.empty() || cell.text == "0" || cell.text == "0,00";
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
    open().updateCurrent();
}

void Recordset::UpdateMerged()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    if (state.pending == State::Pending::Edit && state.wouldOverwrite()) {
        state.endPending();
        throw RuntimeError(RuntimeError::RowChanged);
    }
    state.updateCurrent();
}

bool Recordset::wouldOverwrite()
{
    State& state = open();
    if (state.pending != State::Pending::Edit)
        return false;
    const bool would = state.wouldOverwrite();
    state.isRetaken = false;
    return would;
}

void Recordset::CancelUpdate()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.endPending();
    if (state.showStored())
        state.stepToNeighbour();
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

void Recordset::State::updateCurrent()
{
    if (pending == Pending::None && (bof || eof))
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    update();
}

void Recordset::State::update()
{
    switch (pending) {
    case Pending::None: return;
    case Pending::NewRow: insertPending(); return;
    case Pending::Edit: try { writeEdit();
        } catch (const RuntimeError& error) {
            if (error.number() == RuntimeError::RowChanged)
                noteOvertaken();
            endPending();
            throw;
        }
        endPending();
        // A version that was taken anew serves one Update, or work of others that nobody saw could
        // be deleted with it.
        isRetaken = false;
        return;
    }
}

bool Recordset::State::wouldOverwrite()
{
    takeVersion();
    const RowView stored = version();
    const RowView before = rows.row(place);
    bool would = stored.isNull();
    for (auto value = written.begin(); !stored.isNull() && value != written.end();) {
        const Cell shownCell = before.cell(value->first);
        const Cell storedCell = stored.cell(value->first);
        const Cell newCell = value->second.view();
        const bool byOther = !(storedCell == shownCell);
        if (byOther && shownCell.isNull() && meansNothing(newCell)) {
            value = written.erase(value);
            continue;
        }
        would |= byOther && !(newCell == shownCell) && !(newCell == storedCell);
        ++value;
    }
    if (would)
        noteOvertaken();
    return would;
}

void Recordset::State::noteOvertaken()
{
    overtaken = rows.row(place).id();
    isRetaken = false;
}

// Where the file cannot be read now it is tried again the next time; and not within a piece, which
// would take it back again where it is undone.
bool Recordset::State::showStored()
{
    if (overtaken == 0 || !kept.empty())
        return false;
    const std::optional<int> marked = rows.placeOf(overtaken);
    auto row = std::make_shared<PackedRow>();
    bool exists = false;
    try {
        exists = database->storedRow(table, overtaken, *row);
    } catch (const RuntimeError&) {
        return false;
    }
    overtaken = 0;
    if (!marked)
        return false;
    if (exists)
        rows.replace(*marked, std::move(row));
    else
        rows.remove(*marked);
    return !exists && *marked == place;
}

void Recordset::State::insertPending()
{
    auto row = std::make_shared<PackedRow>(withPending({}));
    requireNoRefusedNull(row->view());
    database->insert(table, *row);
    uncertain |= database->isWriting();
    stand(rows.add(std::move(row)));
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
    const RowView wanted = version();
    if (wanted.isNull())
        throw RuntimeError(RuntimeError::RowChanged);
    database->update(table, wanted, row->view(), changed);
    uncertain |= database->isWriting();
    rows.replace(place, std::move(row));
}

void Recordset::State::remove()
{
    const RowView wanted = version();
    try {
        if (wanted.isNull())
            throw RuntimeError(RuntimeError::RowChanged);
        database->remove(table, wanted);
    } catch (const RuntimeError& error) {
        if (error.number() == RuntimeError::RowChanged) {
            noteOvertaken();
            mustShowStored = true;
        }
        throw;
    }
    uncertain |= database->isWriting();
    rows.remove(place);
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
