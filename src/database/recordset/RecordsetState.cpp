#include "RecordsetState.h"

#include "ListMark.h"

using namespace Qt::Literals::StringLiterals;

Recordset::State::State(std::shared_ptr<Connection> usedConnection, SelectStatement statement,
                        CursorType cursorType, LockType lockType)
    : connection(std::move(usedConnection)), database(connection->database()),
      select(std::move(statement)), cursor(cursorType), lock(lockType)
{
    const std::optional<int> found = database->table(select.table);
    if (!found)
        throw RuntimeError(
            RuntimeError::NoSuchTable,
            u"Não foi possível encontrar a tabela ou consulta de entrada '%1'."_s.arg(
                select.table));
    table = *found;
    definition = &database->tables()[static_cast<std::size_t>(table)];
    for (auto [name, position] :
         {std::pair(&select.orderField, &orderField), std::pair(&select.likeField, &likeField)}) {
        if (!*name)
            continue;
        *position = database->field(table, **name);
        if (!*position)
            throw RuntimeError(RuntimeError::MissingParameter);
    }
    if (likeField)
        pattern.emplace(select.pattern);
    load();
    goTo(rows.first(), true, true);
    database->watch(this);
}

Recordset::State::~State()
{
    EventTransactions::instance().editEnded(this);
    database->unwatch(this);
}

void Recordset::State::load()
{
    finishMarkedList(*database);
    const std::shared_ptr<const TableImage> image = database->image(table);
    rows = RecordsetRows(image, likeField ? image->search(*likeField, *pattern)
                                          : image->order(orderField));
    shown = database->stamp(table);
    uncertain = database->isWriting();
    mustReload = false;
}

void Recordset::State::reload()
{
    if (pending == Pending::Edit)
        endPending();
    if (bof || eof) {
        load();
        return;
    }
    const RecordsetRows before = rows;
    const int wanted = standsOnRow() ? place : -1;
    load();
    // The current row, or the first one behind it that is still there.
    std::optional<int> former = before.atOrAfter(place);
    std::optional<int> now;
    while (former && !(now = rows.placeOf(before.row(*former).id())))
        former = before.atOrAfter(*former + 1);
    stand(now.value_or(rows.end()));
    isGone = former != wanted;
}

void Recordset::State::recover()
{
    if (mustReload) {
        reload();
        if (isGone)
            stepToNeighbour();
    }
    if (mustShowStored && kept.empty()) {
        if (showStored())
            stepToNeighbour();
        mustShowStored = overtaken != 0;
    }
}

void Recordset::State::refreshDynamic()
{
    if (cursor == CursorType::Dynamic && database->stampNow(table) != shown)
        reload();
}

void Recordset::State::requireRow() const
{
    if (pending != Pending::NewRow && !standsOnRow())
        throw RuntimeError(RuntimeError::NoCurrentRecord);
}

void Recordset::State::requireNoNewRow() const
{
    if (pending == Pending::NewRow)
        throw RuntimeError(RuntimeError::NotAllowedInContext);
}

void Recordset::State::requireUpdatable() const
{
    if (lock == LockType::ReadOnly)
        throw RuntimeError(RuntimeError::NotSupported);
}

void Recordset::State::leaveRow()
{
    requireNoNewRow();
    if (pending == Pending::Edit)
        update();
    showStored();
    refreshDynamic();
}

void Recordset::State::stand(int newPlace)
{
    place = newPlace;
    bof = false;
    eof = false;
    isGone = false;
    isRetaken = false;
}

void Recordset::State::goTo(std::optional<int> newPlace, bool atBof, bool atEof)
{
    if (newPlace) {
        stand(*newPlace);
        return;
    }
    isGone = false;
    bof = bof || atBof;
    eof = eof || atEof;
}

void Recordset::State::stepToNeighbour()
{
    std::optional<int> neighbour = rows.atOrAfter(place);
    if (!neighbour)
        neighbour = rows.atOrBefore(place - 1);
    goTo(neighbour, true, true);
}

RowView Recordset::State::version() const
{
    if (!isRetaken)
        return rows.row(place);
    return retaken ? retaken->view() : RowView();
}

void Recordset::State::takeVersion()
{
    auto row = std::make_shared<PackedRow>();
    const bool exists = database->storedRow(table, rows.row(place).id(), *row);
    retaken = exists ? std::move(row) : nullptr;
    isRetaken = true;
}

Cell Recordset::State::cell(int field) const
{
    if (pending != Pending::None) {
        if (const auto value = written.find(field); value != written.end())
            return value->second.view();
        if (pending == Pending::NewRow)
            return Cell::null();
    }
    return rows.row(place).cell(field);
}

void Recordset::State::transactionEnded(bool committed)
{
    if (!committed) {
        mustReload |= uncertain;
        isRetaken = false;
    }
    uncertain = false;
}

void Recordset::State::pieceBegan()
{
    kept.push_back(*this);
}

void Recordset::State::pieceEnded()
{
    if (!kept.empty())
        kept.pop_back();
}

void Recordset::State::pieceUndone()
{
    // Opened within the piece: there is nothing to go back to.
    if (kept.empty()) {
        mustReload = true;
        return;
    }
    dropEdit();
    static_cast<RecordsetStanding&>(*this) = std::move(kept.back());
    kept.pop_back();
    dropEdit();
}
