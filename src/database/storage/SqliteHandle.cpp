#include "SqliteHandle.h"

#include "FileIdentity.h"
#include "Patience.h"
#include "Storage.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

int waitForBusyFile(void* patience, int asked)
{
    return static_cast<Patience*>(patience)->wait(asked) ? 1 : 0;
}

struct EngineText
{
    QString text;
    bool losesTransaction = false;
};

EngineText engineText(int code, const QString& path)
{
    switch (code & 0xff) {
    case SQLITE_CORRUPT:
        return {
            u"O banco de dados '%1' está danificado. Restaure a última cópia de segurança."_s.arg(
                path),
            true};
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
        return {u"Formato de banco de dados '%1' não reconhecido."_s.arg(path), true};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {u"Não foi possível usar '%1'; o arquivo já está sendo usado."_s.arg(path)};
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {u"Não é possível atualizar. O banco de dados '%1' é somente leitura."_s.arg(path)};
    case SQLITE_CANTOPEN: return {u"Não foi possível abrir o arquivo '%1'."_s.arg(path), true};
    case SQLITE_FULL:
        return {u"Não há espaço suficiente no disco para gravar '%1'."_s.arg(path), true};
    case SQLITE_IOERR: return {u"Erro de disco ou de rede ao usar '%1'."_s.arg(path), true};
    default:
        return {u"O banco de dados '%1' não pôde ser usado (%2: %3)."_s.arg(path).arg(code).arg(
                    QString::fromUtf8(sqlite3_errstr(code))),
                true};
    }
}

} // namespace

SqliteHandle::SqliteHandle(const QString& path, Mode mode, const char* vfs)
    : path_(path), patience_(Patience::of(path))
{
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE |
                      (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0);
    // One thread: the engine needs no locks of its own.
    const int code =
        sqlite3_open_v2(path.toUtf8().constData(), &handle_, flags | SQLITE_OPEN_NOMUTEX, vfs);
    if (code != SQLITE_OK) {
        sqlite3_close_v2(handle_);
        handle_ = nullptr;
        raise(code);
    }
    sqlite3_busy_handler(handle_, waitForBusyFile, &patience_);
    // Two files that share a transaction name each other by path, which a share seen under two
    // paths does not survive.
    sqlite3_limit(handle_, SQLITE_LIMIT_ATTACHED, 0);
    try {
        requireJournalPlace();
        requireRollbackMode();
    } catch (const RuntimeError&) {
        sqlite3_close_v2(handle_);
        throw;
    }
}

SqliteHandle::~SqliteHandle()
{
    sqlite3_close_v2(handle_);
}

void SqliteHandle::requireJournalPlace() const
{
    const char* journal = sqlite3_filename_journal(sqlite3_db_filename(handle_, "main"));
    if (journal && *journal && isOtherThanFile(journal))
        raise(SQLITE_CANTOPEN);
}

// Read past the engine, which would open the other kinds of journal when it meets their mark.
void SqliteHandle::requireRollbackMode()
{
    constexpr std::size_t WriteVersion = 18;
    constexpr std::size_t ReadVersion = 19;
    constexpr char Rollback = 1;
    sqlite3_file* file = nullptr;
    std::array<char, 100> header{};
    sqlite3_file_control(handle_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (!file || !file->pMethods || file->pMethods->xRead(file, header.data(), 100, 0) != SQLITE_OK)
        return; // too short, or not to be read: the engine tells
    if (header[WriteVersion] > Rollback || header[ReadVersion] > Rollback)
        raise(SQLITE_NOTADB);
}

void SqliteHandle::answered()
{
    patience_.answered();
}

void SqliteHandle::raise(int code) const
{
    const EngineText engine = engineText(code, path_);
    if (engine.losesTransaction)
        throw StorageFault(RuntimeError::EngineFault, engine.text);
    throw RuntimeError(RuntimeError::EngineFault, engine.text);
}

void SqliteHandle::execute(const char* sql)
{
    const int code = sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        raise(code);
    answered();
}

qint64 SqliteHandle::integer(const char* sql)
{
    SqliteStatement statement(*this, sql);
    return statement.step() ? statement.column(0).integer : 0;
}

SqliteStatement::SqliteStatement(SqliteHandle& handle, const std::string& sql) : handle_(handle)
{
    const int code = sqlite3_prepare_v2(handle.get(), sql.data(), static_cast<int>(sql.size()),
                                        &statement_, nullptr);
    if (code != SQLITE_OK)
        handle.raise(code);
}

void SqliteStatement::bind(int parameter, const Cell& cell)
{
    int code = SQLITE_OK;
    switch (cell.type) {
    case Cell::Type::Null: code = sqlite3_bind_null(statement_, parameter); break;
    case Cell::Type::Integer: code = sqlite3_bind_int64(statement_, parameter, cell.integer); break;
    case Cell::Type::Real: code = sqlite3_bind_double(statement_, parameter, cell.real); break;
    case Cell::Type::Text:
        code = sqlite3_bind_text64(statement_, parameter, cell.text.data(), cell.text.size(),
                                   SQLITE_STATIC, SQLITE_UTF8);
        break;
    }
    if (code != SQLITE_OK)
        handle_.raise(code);
}

bool SqliteStatement::step()
{
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        sqlite3_reset(statement_);
        handle_.raise(code);
    }
    handle_.answered();
    return code == SQLITE_ROW;
}

void SqliteStatement::reset()
{
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

Cell SqliteStatement::column(int column) const
{
    // Asked once, since each question for a column costs a check of the whole statement; the value
    // stays good until the next step, and the program has one thread.
    sqlite3_value* value = sqlite3_column_value(statement_, column);
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL: return Cell::null();
    case SQLITE_INTEGER: return Cell::ofInteger(sqlite3_value_int64(value));
    case SQLITE_FLOAT: return Cell::ofReal(sqlite3_value_double(value));
    default: {
        const void* text = sqlite3_value_blob(value);
        const auto length = static_cast<std::size_t>(sqlite3_value_bytes(value));
        return Cell::ofText({static_cast<const char*>(text), text ? length : 0});
    }
    }
}
