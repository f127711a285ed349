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
    shown = database->stamp(table, Database::Look::OnceAnEvent);
    uncertain = database->isWriting();
    mustReload = false;
}

void Recordset::State::reload()
{
    const bool stood = !bof && !eof;
    const qint64 id = stood ? rows.row(place).id() : 0;
    if (pending == Pending::Edit)
        endPending();
    load();
    if (stood)
        goTo(rows.placeOf(id), false, true);
}

void Recordset::State::recover()
{
    if (mustReload)
        reload();
    else if (mustRetake && lock == LockType::Optimistic && !bof && !eof && !rows.isDeleted(place))
        takeVersion(Database::Look::Now);
    mustRetake = false;
}

void Recordset::State::refreshDynamic()
{
    if (cursor == CursorType::Dynamic && database->stamp(table, Database::Look::Now) != shown)
        reload();
}

void Recordset::State::requireRow() const
{
    if (!hasCurrentRow() || (pending != Pending::NewRow && rows.isDeleted(place)))
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
    if (lock == LockType::Optimistic)
        takeVersion(Database::Look::OnceAnEvent);
}

void Recordset::State::goTo(std::optional<int> newPlace, bool atBof, bool atEof)
{
    if (newPlace) {
        stand(*newPlace);
        return;
    }
    bof = bof || atBof;
    eof = eof || atEof;
}

void Recordset::State::takeVersion(Database::Look look)
{
    const RowView row = rows.row(place);
    versionExists = database->storedRow(table, row.id(), version, look);
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
    if (!committed)
        (uncertain ? mustReload : mustRetake) = true;
    uncertain = false;
}
