#include "SqliteStorage.h"

#include "FileFormat.h"

#include <QUuid>

using namespace Qt::Literals::StringLiterals;

namespace {

std::string quoted(const std::string& name)
{
    std::string result = "\"";
    for (const char c : name) {
        result += c;
        if (c == '"')
            result += c;
    }
    return result + '"';
}

SaleName freshSale()
{
    return {QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString(), 0};
}

} // namespace

SqliteStorage::SqliteStorage(const QString& path, const char* vfs)
    : handle_(path, SqliteHandle::Mode::Existing, vfs)
{
    const qint64 format = handle_.integer("PRAGMA application_id");
    const bool isKnown = format == fileformat::Plain || format == fileformat::Marked;
    if (!isKnown || handle_.integer("PRAGMA user_version") > fileformat::Version)
        handle_.raise(SQLITE_NOTADB);
    handle_.execute(
        "PRAGMA synchronous=EXTRA; PRAGMA temp_store=MEMORY; PRAGMA trusted_schema=OFF");
    readSchema();
}

void SqliteStorage::readSchema()
{
    SqliteStatement list(handle_, "SELECT name FROM sqlite_master WHERE type='table'");
    while (list.step()) {
        hasListTable_ |= list.column(0).text == "_lista";
        hasMarkTable_ |= list.column(0).text == "_lista_concluida";
    }
    for (const TableDefinition& table :
         hasListTable_ ? schema::saleListFile() : schema::mainFile()) {
        if (!hasTable(table))
            continue;
        tables_.push_back(table);
        names_.push_back(quoted(table.name.toStdString()));
    }
}

// Recordsets go by position, and the id stands behind the fields.
bool SqliteStorage::hasTable(const TableDefinition& table)
{
    SqliteStatement columns(handle_, "SELECT name, type, \"notnull\", pk, hidden "
                                     "FROM pragma_table_xinfo(?1)");
    const std::string name = table.name.toStdString();
    columns.bind(1, Cell::ofText(name));
    if (!columns.step())
        return false;
    const auto require = [&](std::string_view column, std::string_view type, bool refusesNull,
                             bool isKey) {
        const bool fits = columns.column(0).text == column && columns.column(1).text == type &&
                          (columns.column(2).integer != 0 || !refusesNull) &&
                          (columns.column(3).integer != 0) == isKey &&
                          columns.column(4).integer == 0;
        if (!fits)
            handle_.raise(SQLITE_NOTADB);
        return columns.step();
    };
    bool isMore = true;
    for (const FieldDefinition& field : table.fields) {
        if (!isMore)
            handle_.raise(SQLITE_NOTADB);
        isMore = require(field.name.toStdString(), fileformat::declaredType(field.kind),
                         field.refusesNull, false);
    }
    if (!isMore || require(fileformat::IdColumn, "INTEGER", false, true))
        handle_.raise(SQLITE_NOTADB);
    return true;
}

void SqliteStorage::requireWhole()
{
    SqliteStatement check(handle_, "PRAGMA quick_check(1)");
    if (!check.step() || check.column(0).text != "ok")
        handle_.raise(SQLITE_CORRUPT);
}

SqliteStatement& SqliteStorage::statement(const std::string& sql)
{
    std::unique_ptr<SqliteStatement>& kept = statements_[sql];
    if (!kept)
        kept = std::make_unique<SqliteStatement>(handle_, sql);
    return *kept;
}

int SqliteStorage::fieldCount(int table) const
{
    return static_cast<int>(tables_[static_cast<std::size_t>(table)].fields.size());
}

quint64 SqliteStorage::changeCounter()
{
    handle_.requireJournalPlace();
    SqliteStatement& counter = statement("PRAGMA data_version");
    const StatementReset reset(counter);
    counter.step();
    return static_cast<quint64>(counter.column(0).integer);
}

// Columns are those of SELECT *: the fields, then the id.
void SqliteStorage::pack(SqliteStatement& statement, int fields, PackedRow& row) const
{
    row.begin(statement.column(fields).integer, fields);
    for (int field = 0; field < fields; ++field)
        row.add(statement.column(field));
}

void SqliteStorage::readTable(int table, const std::function<void(const PackedRow&)>& take)
{
    SqliteStatement rows(handle_, "SELECT * FROM " + name(table) + " ORDER BY rowid");
    const int fields = fieldCount(table);
    PackedRow row;
    while (rows.step()) {
        pack(rows, fields, row);
        take(row);
    }
}

bool SqliteStorage::readRow(int table, qint64 id, PackedRow& row)
{
    SqliteStatement& one = statement("SELECT * FROM " + name(table) + " WHERE rowid=?1");
    const StatementReset reset(one);
    one.bind(1, Cell::ofInteger(id));
    if (!one.step())
        return false;
    pack(one, fieldCount(table), row);
    return true;
}

void SqliteStorage::beginWrite()
{
    handle_.requireJournalPlace();
    handle_.execute("BEGIN IMMEDIATE");
}

void SqliteStorage::commit()
{
    handle_.execute("COMMIT");
}

void SqliteStorage::rollback() noexcept
{
    // What the engine has rolled back by itself needs no second time.
    if (handle_.inTransaction())
        sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteStorage::beginPart()
{
    handle_.execute("SAVEPOINT part");
}

void SqliteStorage::endPart()
{
    handle_.execute("RELEASE part");
}

void SqliteStorage::undoPart()
{
    handle_.execute("ROLLBACK TO part; RELEASE part");
}

qint64 SqliteStorage::insert(int table, RowView row)
{
    std::string sql = "INSERT INTO " + name(table) + " VALUES(";
    for (int field = 0; field < row.fieldCount(); ++field)
        sql += "?,";
    SqliteStatement& insertion = statement(sql + "NULL)");
    const StatementReset reset(insertion);
    for (int field = 0; field < row.fieldCount(); ++field)
        insertion.bind(field + 1, row.cell(field));
    insertion.step();
    return handle_.lastId();
}

void SqliteStorage::update(int table, RowView row, const std::vector<int>& fields)
{
    const auto& definitions = tables_[static_cast<std::size_t>(table)].fields;
    std::string sql = "UPDATE " + name(table) + " SET ";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const QString& field = definitions[static_cast<std::size_t>(fields[i])].name;
        sql += quoted(field.toStdString());
        sql += i + 1 < fields.size() ? "=?," : "=?";
    }
    SqliteStatement change(handle_, sql + " WHERE rowid=?");
    int parameter = 0;
    for (const int field : fields)
        change.bind(++parameter, row.cell(field));
    change.bind(++parameter, Cell::ofInteger(row.id()));
    change.step();
}

void SqliteStorage::remove(int table, qint64 id)
{
    SqliteStatement& removal = statement("DELETE FROM " + name(table) + " WHERE rowid=?1");
    const StatementReset reset(removal);
    removal.bind(1, Cell::ofInteger(id));
    removal.step();
}

bool SqliteStorage::isEmpty(int table)
{
    SqliteStatement any(handle_, "SELECT 1 FROM " + name(table) + " LIMIT 1");
    return !any.step();
}

void SqliteStorage::removeAll(int table)
{
    handle_.execute(("DELETE FROM " + name(table)).c_str());
}

std::optional<ListState> SqliteStorage::listState()
{
    if (!hasListTable_)
        return std::nullopt;
    SqliteStatement names(handle_, "SELECT id, geracao FROM _lista ORDER BY rowid");
    const auto read = [&names] {
        return SaleName{std::string(names.column(0).text), names.column(1).integer};
    };
    ListState state;
    if (names.step()) {
        state.sale = read();
        if (names.step())
            state.finished = read();
    }
    return state;
}

void SqliteStorage::setListState(const ListState& list)
{
    handle_.execute("DELETE FROM _lista");
    SqliteStatement& name = statement("INSERT INTO _lista(id, geracao) VALUES(?1, ?2)");
    const auto write = [&name](const SaleName& sale) {
        const StatementReset reset(name);
        name.bind(1, Cell::ofText(sale.id));
        name.bind(2, Cell::ofInteger(sale.generation));
        name.step();
    };
    write(list.sale);
    if (list.finished)
        write(*list.finished);
}

void SqliteStorage::renameSale()
{
    ListState list = listState().value_or(ListState());
    list.sale = freshSale();
    setListState(list);
}

void SqliteStorage::finishList()
{
    ListState list = listState().value_or(ListState());
    list.finished = std::exchange(list.sale, freshSale());
    setListState(list);
}

bool SqliteStorage::isFinished(const SaleName& sale)
{
    if (!hasMarkTable_)
        return false;
    SqliteStatement mark(handle_, "SELECT 1 FROM _lista_concluida WHERE lista=?1 AND geracao=?2");
    mark.bind(1, Cell::ofText(sale.id));
    mark.bind(2, Cell::ofInteger(sale.generation));
    return mark.step();
}

void SqliteStorage::markFinished(const ListState& list)
{
    if (list.finished) {
        SqliteStatement former(handle_, "DELETE FROM _lista_concluida WHERE lista=?1");
        former.bind(1, Cell::ofText(list.finished->id));
        former.step();
    }
    SqliteStatement mark(handle_, "INSERT OR REPLACE INTO _lista_concluida VALUES(?1, ?2)");
    mark.bind(1, Cell::ofText(list.sale.id));
    mark.bind(2, Cell::ofInteger(list.sale.generation));
    mark.step();
}
