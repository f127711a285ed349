#include "Collation.h"
#include "Faults.h"
#include "FindCriterion.h"
#include "RecordsetState.h"
#include "RowsView.h"

// The published table of moves: what is allowed at which end, and which flag a move sets that finds
// no row ("BOF, EOF Properties" of the desktop database reference).

void Recordset::MoveFirst()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.leaveRow();
    if (state.bof && state.eof && state.rows.count() == 0)
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    state.goTo(state.rows.first(), true, true);
}

void Recordset::MoveLast()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.leaveRow();
    if (state.bof && state.eof && state.rows.count() == 0)
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    state.goTo(state.rows.last(), true, true);
}

void Recordset::MoveNext()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.leaveRow();
    if (state.eof)
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    const int next = state.isGone ? state.place : state.place + 1;
    state.goTo(state.bof ? state.rows.first() : state.rows.atOrAfter(next), false, true);
}

void Recordset::MovePrevious()
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.leaveRow();
    if (state.bof)
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    state.goTo(state.eof ? state.rows.last() : state.rows.atOrBefore(state.place - 1), true, false);
}

// The published page "Find Method (ADO)"; a row that matches is found where it is the current one.
void Recordset::Find(const QString& criterion, int skip)
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    const bool stood = state.standsOnRow();
    state.leaveRow();
    const FindCriterion find = parseFind(criterion);
    const std::optional<int> field = state.database->field(state.table, find.field);
    if (!field)
        throw RuntimeError(RuntimeError::NoSuchItem);
    if (!stood)
        throw RuntimeError(RuntimeError::NoCurrentRecord);
    state.goTo(state.rows.search(state.place + skip, *field, folded(find.text).toStdString()),
               false, true);
}

int Recordset::AbsolutePosition() const
{
    const State& state = open();
    if (state.pending == State::Pending::NewRow || !state.standsOnRow())
        return 0;
    return state.rows.rowsBefore(state.place) + 1;
}

void Recordset::setAbsolutePosition(int position)
{
    faults::point(faults::Call::Recordset);
    State& state = open();
    state.leaveRow();
    if (position < 1 || position > state.rows.count())
        throw RuntimeError(RuntimeError::WrongArguments);
    state.stand(state.rows.placeOfNth(position - 1));
}

std::shared_ptr<const RowsView> Recordset::rowsNow() const
{
    return std::make_shared<RowsView>(open().rows);
}

bool Recordset::isOvertaken() const
{
    return rowKey() != 0 && open().overtaken == rowKey();
}

qint64 Recordset::rowKey() const
{
    const State& state = open();
    const bool isStored = state.pending != State::Pending::NewRow && state.standsOnRow();
    return isStored ? state.rows.row(state.place).id() : 0;
}

void Recordset::retakeVersion()
{
    State& state = open();
    state.requireRow();
    if (state.pending == State::Pending::NewRow)
        return;
    state.takeVersion();
    if (state.version().isNull())
        throw RuntimeError(RuntimeError::RowChanged);
}

std::vector<Value> Recordset::storedValues() const
{
    const State& state = open();
    state.requireNoNewRow();
    state.requireRow();
    PackedRow row;
    if (!state.database->storedRow(state.table, rowKey(), row))
        throw RuntimeError(RuntimeError::RowChanged);
    std::vector<Value> values;
    values.reserve(static_cast<size_t>(fieldCount()));
    for (int field = 0; field < fieldCount(); ++field)
        values.push_back(toValue(row.view().cell(field), state.kind(field)));
    return values;
}
