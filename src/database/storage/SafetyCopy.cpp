#include "SafetyCopy.h"

#include "Database.h"
#include "FileFormat.h"
#include "FileRights.h"
#include "Patience.h"
#include "RuntimeError.h"
#include "SqliteHandle.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Pages that are copied, and steps of the engine's machine that run, between two ticks.
constexpr int PagesAtOnce = 512;
constexpr int StepsAtOnce = 200'000;

// A station that writes all the time leaves the file free for moments only: the lock is asked for
// at short and even intervals.
constexpr unsigned long Pause = 1; // milliseconds

int waitForLock(void* clock, int /*asked*/)
{
    QThread::msleep(Pause);
    return static_cast<QElapsedTimer*>(clock)->elapsed() < Patience::limit();
}

int tickOfEngine(void* tick)
{
    (*static_cast<Tick*>(tick))();
    return 0;
}

void removeFile(const QString& path)
{
    // A journal left alone would be taken for that of the next file of its name.
    QFile::remove(path + u"-journal"_s);
    QFile::remove(path);
}

// Nobody else reads the shop's data in it, from its first byte on. The engine fills an empty file
// as it would fill a new one.
void makeClosed(const QString& path, Rights rights)
{
    QFile empty(path);
    if (!empty.open(QIODevice::NewOnly))
        throw RuntimeError(RuntimeError::PathFileAccess);
    setRights(empty.handle(), QFileInfo(path).absolutePath(), rights);
}

// Brings a file, or a folder's names, to the disk. Some network drives know no sync.
void bringToDisk(const QString& path)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return;
    const bool failed = fsync(file) != 0 && errno != EINVAL && errno != ENOTSUP;
    close(file);
    if (failed)
        throw RuntimeError(RuntimeError::DiskFull);
}

void requireFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (!info.isDir())
        throw RuntimeError(RuntimeError::PathNotFound);
    if (!info.isWritable())
        throw RuntimeError(RuntimeError::PermissionDenied);
}

void copyContent(SqliteHandle& target, SqliteHandle& source, const Tick& tick)
{
    sqlite3_backup* copying = sqlite3_backup_init(target.get(), "main", source.get(), "main");
    if (!copying)
        target.raise(sqlite3_extended_errcode(target.get()));
    int code = SQLITE_OK;
    while (code == SQLITE_OK) {
        code = sqlite3_backup_step(copying, PagesAtOnce);
        if (tick)
            tick();
    }
    const int finished = sqlite3_backup_finish(copying);
    if (code != SQLITE_DONE)
        target.raise(code);
    if (finished != SQLITE_OK)
        target.raise(finished);
}

// Whole, ours, not of a later making, and with the tables of a main file.
void requireWholeMainFile(SqliteHandle& file)
{
    const qint64 format = file.integer("PRAGMA application_id");
    if ((format != fileformat::Plain && format != fileformat::Marked) ||
        file.integer("PRAGMA user_version") > fileformat::Version ||
        file.integer("SELECT count(*) FROM sqlite_master WHERE name='Cliente'") == 0)
        file.raise(SQLITE_NOTADB);
    SqliteStatement check(file, "PRAGMA integrity_check(1)");
    if (!check.step() || check.column(0).text != "ok")
        file.raise(SQLITE_CORRUPT);
}

enum class Check
{
    Whole,
    None // what lies in a damaged file is worth keeping, too
};

void copyDurably(SqliteHandle& source, const QString& path, Check check, const Tick& tick,
                 Rights rights = Rights::OfOwner)
{
    requireFolder(QFileInfo(path).absolutePath());
    if (QFileInfo(path).isDir())
        throw RuntimeError(RuntimeError::PathFileAccess);
    const QString partial = path + u".parcial"_s;
    removeFile(partial);
    try {
        {
            makeClosed(partial, rights);
            SqliteHandle target(partial, SqliteHandle::Mode::Create, Database::vfs());
            copyContent(target, source, tick);
            if (check == Check::Whole)
                requireWholeMainFile(target);
        }
        bringToDisk(partial);
        QFile::remove(path + u"-journal"_s);
        if (rename(QFile::encodeName(partial).constData(), QFile::encodeName(path).constData()))
            throw RuntimeError(RuntimeError::PathFileAccess);
        bringToDisk(QFileInfo(path).absolutePath());
    } catch (const RuntimeError&) {
        removeFile(partial);
        throw;
    }
}

bool isDatabase(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(16) == QByteArray("SQLite format 3", 16);
}

} // namespace

ExclusiveFile::ExclusiveFile(const QString& path, Tick tick) : tick_(std::move(tick))
{
    // The former owner's handle gives way; what it had read is no longer true afterwards.
    Database::dropIdle();
    handle_ = std::make_unique<SqliteHandle>(path, SqliteHandle::Mode::Existing, Database::vfs());
    // Compacting attaches the new file by itself.
    sqlite3_limit(handle_->get(), SQLITE_LIMIT_ATTACHED, 1);
    if (tick_)
        sqlite3_progress_handler(handle_->get(), StepsAtOnce, tickOfEngine, &tick_);
    QElapsedTimer clock;
    clock.start();
    sqlite3_busy_handler(handle_->get(), waitForLock, &clock);
    handle_->execute("PRAGMA synchronous=EXTRA; BEGIN EXCLUSIVE");
    // Only now: a handle in this mode keeps even a reader's lock while it waits for more, and would
    // wait for a writer that waits for it.
    handle_->execute("PRAGMA locking_mode=EXCLUSIVE; COMMIT");
    sqlite3_busy_handler(handle_->get(), nullptr, nullptr);
    const qint64 format = handle_->integer("PRAGMA application_id");
    if (format != fileformat::Plain && format != fileformat::Marked)
        handle_->raise(SQLITE_NOTADB);
}

ExclusiveFile::~ExclusiveFile() = default;

void ExclusiveFile::compactTo(const QString& path)
{
    requireFolder(QFileInfo(path).absolutePath());
    removeFile(path);
    makeClosed(path, Rights::OfOwner);
    {
        SqliteStatement compact(*handle_, "VACUUM INTO ?1");
        const std::string name = QFile::encodeName(path).toStdString();
        compact.bind(1, Cell::ofText(name));
        compact.step();
    }
    SqliteHandle compacted(path, SqliteHandle::Mode::Existing, Database::vfs());
    compacted.execute(("PRAGMA application_id=" + std::to_string(fileformat::Marked)).c_str());
}

void ExclusiveFile::takeOver(const QString& path)
{
    SqliteHandle source(path, SqliteHandle::Mode::Existing, Database::vfs());
    copyContent(*handle_, source, tick_);
}

void ExclusiveFile::copyTo(const QString& path)
{
    copyDurably(*handle_, path, Check::Whole, tick_);
}

void ExclusiveFile::keepAs(const QString& path)
{
    copyDurably(*handle_, path, Check::None, tick_);
}

void restoreFromCopy(const QString& copy, const QString& live, const QString& before,
                     const Tick& tick)
{
    if (!QFileInfo(copy).isFile())
        throw RuntimeError(RuntimeError::FileNotFound);
    {
        SqliteHandle source(copy, SqliteHandle::Mode::Existing, Database::vfs());
        requireWholeMainFile(source);
        if (!QFile::exists(live) || !isDatabase(live)) {
            Database::dropIdle();
            copyDurably(source, live, Check::Whole, tick, Rights::OfGroup);
            return;
        }
    }
    ExclusiveFile file(live, tick);
    file.keepAs(before);
    file.takeOver(copy);
}
