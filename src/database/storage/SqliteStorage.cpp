#include "SqliteStorage.h"

#include "FileFormat.h"

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

FieldKind kindOf(std::string_view declared)
{
    for (const FieldKind kind :
         {FieldKind::Money, FieldKind::Number, FieldKind::YesNo, FieldKind::Date})
        if (declared == fileformat::declaredType(kind))
            return kind;
    return FieldKind::Text;
}

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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
    SqliteStatement list(handle_,
                         "SELECT name FROM sqlite_master WHERE type='table' ORDER BY rowid");
    while (list.step()) {
        const std::string table(list.column(0).text);
        hasListTable_ |= table == "_lista";
        hasMarkTable_ |= table == "_lista_concluida";
        if (table.front() == fileformat::InternalPrefix || table.starts_with("sqlite_"))
            continue;
        TableDefinition definition{toQString(table), {}};
        SqliteStatement fields(
            handle_, "SELECT name, type, \"notnull\" FROM pragma_table_info(?1) WHERE pk=0");
        fields.bind(1, Cell::ofText(table));
        while (fields.step())
            definition.fields.push_back({toQString(fields.column(0).text),
                                         kindOf(fields.column(1).text),
                                         fields.column(2).integer != 0});
        tables_.push_back(std::move(definition));
        names_.push_back(quoted(table));
    }
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
    SqliteStatement state(handle_, "SELECT id, geracao FROM _lista");
    if (!state.step())
        return std::nullopt;
    return ListState{std::string(state.column(0).text), state.column(1).integer};
}

void SqliteStorage::setListGeneration(qint64 generation)
{
    SqliteStatement change(handle_, "UPDATE _lista SET geracao=?1");
    change.bind(1, Cell::ofInteger(generation));
    change.step();
}

std::optional<qint64> SqliteStorage::finishedGeneration(const std::string& list)
{
    if (!hasMarkTable_)
        return std::nullopt;
    SqliteStatement mark(handle_, "SELECT geracao FROM _lista_concluida WHERE lista=?1");
    mark.bind(1, Cell::ofText(list));
    if (!mark.step())
        return std::nullopt;
    return mark.column(0).integer;
}

void SqliteStorage::markFinished(const ListState& list)
{
    SqliteStatement mark(handle_, "INSERT OR REPLACE INTO _lista_concluida VALUES(?1, ?2)");
    mark.bind(1, Cell::ofText(list.id));
    mark.bind(2, Cell::ofInteger(list.generation));
    mark.step();
}
