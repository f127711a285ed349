#include "SafetyCopy.h"

#include "Database.h"
#include "FileFormat.h"
#include "FileRights.h"
#include "LargePieces.h"
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

#include <algorithm>
#include <future>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

// A station that writes all the time leaves the file free for moments only: the lock is asked for
// at short and even intervals.
constexpr unsigned long Pause = 1; // milliseconds

int waitForLock(void* clock, int /*asked*/)
{
    QThread::msleep(Pause);
    return static_cast<QElapsedTimer*>(clock)->elapsed() < Patience::limit();
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

// Brings a folder's names to the disk. Some network drives know no sync.
void bringToDisk(const QString& folder)
{
    const int file = open(QFile::encodeName(folder).constData(), O_RDONLY | O_CLOEXEC);
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

// A file that is walked through from its first page to its last.
class WalkedFile : public SqliteHandle
{
public:
    explicit WalkedFile(const QString& path, Mode mode = Mode::Existing)
        : SqliteHandle(path, mode, inLargePieces(Database::vfs()))
    {
    }
};

// All of the source in place of all of the target, in one transaction. Whoever asks for a word
// before what stood there is given up gets it from `allow`, which throws.
void copyContent(
    SqliteHandle& target, SqliteHandle& source, const std::function<void()>& allow = [] {})
{
    constexpr int AllPages = -1;
    target.execute("PRAGMA synchronous=EXTRA");
    const auto finish = [](sqlite3_backup* copying) { sqlite3_backup_finish(copying); };
    std::unique_ptr<sqlite3_backup, decltype(finish)> copying(
        sqlite3_backup_init(target.get(), "main", source.get(), "main"), finish);
    if (!copying)
        target.raise(sqlite3_extended_errcode(target.get()));
    int code = sqlite3_backup_step(copying.get(), 0);
    if (code == SQLITE_OK)
        code = sqlite3_backup_step(copying.get(), sqlite3_backup_remaining(copying.get()) - 1);
    if (code == SQLITE_OK) {
        allow();
        code = sqlite3_backup_step(copying.get(), AllPages);
    }
    const int finished = sqlite3_backup_finish(copying.release());
    if (code != SQLITE_DONE)
        target.raise(code);
    if (finished != SQLITE_OK)
        target.raise(finished);
}

// Ours, not of a later making, and with the tables of a main file.
void requireMainFile(SqliteHandle& file)
{
    const qint64 format = file.integer("PRAGMA application_id");
    if ((format != fileformat::Plain && format != fileformat::Marked) ||
        file.integer("PRAGMA user_version") > fileformat::Version ||
        file.integer("SELECT count(*) FROM sqlite_master WHERE name='Cliente'") == 0)
        file.raise(SQLITE_NOTADB);
}

void requireWhole(SqliteHandle& file)
{
    SqliteStatement check(file, "PRAGMA integrity_check(1)");
    if (!check.step() || check.column(0).text != "ok")
        file.raise(SQLITE_CORRUPT);
}

// Looks whether a file is a whole main file. The long part of it goes on beside other work; the
// file stands still as long as this lives.
class WholeCheck
{
public:
    explicit WholeCheck(const QString& path) : file_(path)
    {
        file_.execute("BEGIN");
        requireMainFile(file_);
        result_ = std::async(std::launch::async, [this] { requireWhole(file_); });
    }

    // To be asked before anything of value is given up for the file.
    void require() { result_.get(); }

private:
    WalkedFile file_;
    std::future<void> result_;
};

// The bytes of a database file that stands still: in the engine's hands, so that its locks stay,
// but past its pages.
class FileBytes
{
public:
    static constexpr qint64 Piece = 65536;

    explicit FileBytes(SqliteHandle& file) : file_(file)
    {
        sqlite3_file_control(file.get(), "main", SQLITE_FCNTL_FILE_POINTER, &layer_);
        require(layer_->pMethods->xFileSize(layer_, &size_));
    }

    qint64 size() const { return size_; }
    std::vector<char> piece(qint64 at) const
    {
        std::vector<char> bytes(static_cast<std::size_t>(std::min(Piece, size_ - at)));
        require(layer_->pMethods->xRead(layer_, bytes.data(), static_cast<int>(bytes.size()), at));
        return bytes;
    }
    void append(const std::vector<char>& bytes)
    {
        require(
            layer_->pMethods->xWrite(layer_, bytes.data(), static_cast<int>(bytes.size()), size_));
        size_ += static_cast<qint64>(bytes.size());
    }
    void sync() { require(layer_->pMethods->xSync(layer_, SQLITE_SYNC_FULL)); }

private:
    void require(int code) const
    {
        if (code != SQLITE_OK)
            file_.raise(code);
    }

    SqliteHandle& file_;
    sqlite3_file* layer_ = nullptr;
    qint64 size_ = 0;
};

// Goes with whoever holds it.
struct Temporary
{
    QString path;

    explicit Temporary(const QString& name) : path(name) { removeFile(path); }
    ~Temporary() { removeFile(path); }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
};

// A copy under a temporary name beside its place. It goes again if it is not put in its place.
class DurableCopy
{
public:
    DurableCopy(SqliteHandle& source, const QString& path, Rights rights = Rights::OfOwner)
        : source_(source), path_(path)
    {
        requireFolder(QFileInfo(path).absolutePath());
        if (QFileInfo(path).isDir())
            throw RuntimeError(RuntimeError::PathFileAccess);
        makeClosed(partial_.path, rights);
        target_ = std::make_unique<WalkedFile>(partial_.path);
    }

    void write()
    {
        const FileBytes meant(source_);
        FileBytes written(*target_);
        for (qint64 at = 0; at < meant.size(); at += FileBytes::Piece)
            written.append(meant.piece(at));
        written.sync();
    }
    // Reads again what was written.
    void requireSame()
    {
        const FileBytes meant(source_);
        const FileBytes written(*target_);
        for (qint64 at = 0; at < meant.size(); at += FileBytes::Piece)
            if (written.piece(at) != meant.piece(at))
                target_->raise(SQLITE_CORRUPT);
    }
    void requireWholeMainFile()
    {
        requireMainFile(*target_);
        requireWhole(*target_);
    }
    void putInPlace()
    {
        target_.reset();
        QFile::remove(path_ + u"-journal"_s);
        if (rename(QFile::encodeName(partial_.path).constData(),
                   QFile::encodeName(path_).constData()))
            throw RuntimeError(RuntimeError::PathFileAccess);
        bringToDisk(QFileInfo(path_).absolutePath());
    }

private:
    SqliteHandle& source_;
    QString path_;
    Temporary partial_{path_ + u".parcial"_s};
    std::unique_ptr<WalkedFile> target_;
};

bool isDatabase(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(16) == QByteArray("SQLite format 3", 16);
}

} // namespace

ExclusiveFile::ExclusiveFile(const QString& path)
{
    // The former owner's handle gives way; what it had read is no longer true afterwards.
    Database::dropIdle();
    handle_ = std::make_unique<WalkedFile>(path);
    // Compacting attaches the new file by itself.
    sqlite3_limit(handle_->get(), SQLITE_LIMIT_ATTACHED, 1);
    QElapsedTimer clock;
    clock.start();
    sqlite3_busy_handler(handle_->get(), waitForLock, &clock);
    // In memory up to 128 MiB: each part that does not fit waits for the disk once more.
    handle_->execute("PRAGMA cache_size=-131072; BEGIN EXCLUSIVE");
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
    // A power cut leaves nothing of it that anybody asks for: it need not reach the disk.
    handle_->execute("PRAGMA synchronous=OFF");
    {
        SqliteStatement compact(*handle_, "VACUUM INTO ?1");
        const std::string name = QFile::encodeName(path).toStdString();
        compact.bind(1, Cell::ofText(name));
        compact.step();
    }
    if (handle_->integer("PRAGMA application_id") == fileformat::Marked)
        return;
    WalkedFile compacted(path);
    compacted.execute(("PRAGMA application_id=" + std::to_string(fileformat::Marked)).c_str());
}

void ExclusiveFile::takeOver(const QString& path)
{
    WholeCheck check(path);
    WalkedFile content(path);
    copyContent(*handle_, content, [&] { check.require(); });
    isChecked_ = true;
}

void ExclusiveFile::copyTo(const QString& path)
{
    DurableCopy copy(*handle_, path);
    copy.write();
    copy.requireSame();
    if (!isChecked_)
        copy.requireWholeMainFile();
    copy.putInPlace();
}

void restoreFromCopy(const QString& copy, const QString& live, const QString& before)
{
    if (!QFileInfo(copy).isFile())
        throw RuntimeError(RuntimeError::FileNotFound);
    WholeCheck check(copy);
    WalkedFile content(copy);
    if (!QFile::exists(live) || !isDatabase(live)) {
        Database::dropIdle();
        DurableCopy whole(content, live, Rights::OfGroup);
        whole.write();
        whole.requireSame();
        check.require();
        whole.putInPlace();
        return;
    }
    ExclusiveFile file(live);
    // What lies in a damaged file is worth keeping, too. It is written beside the pages that are
    // made ready, of which none reaches the live file before it is allowed.
    file.handle_->execute("PRAGMA cache_spill=OFF");
    WalkedFile present(live);
    DurableCopy kept(present, before);
    std::future<void> written = std::async(std::launch::async, [&kept] { kept.write(); });
    copyContent(*file.handle_, content, [&] {
        check.require();
        written.get();
        kept.putInPlace();
    });
}
