#include "FileLayer.h"

#include <sqlite3.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t SectorSize = 512;

// A write, or without bytes a cut to a length.
struct Change
{
    std::size_t at = 0;
    std::string bytes;

    void applyTo(std::string& content) const
    {
        if (bytes.empty() || content.size() < at + bytes.size())
            content.resize(at + bytes.size());
        content.replace(at, bytes.size(), bytes);
    }
};

// One file as the medium holds it for certain, and what happened to it since.
struct Medium
{
    std::string path;
    bool exists = false;
    bool entrySynced = false; // the folder's entry, on the medium
    std::string synced;
    std::vector<Change> pending;
    bool isJournal = false;
    bool isWriting = false; // a journal with content
    // A deleted file of this name, as long as the folder was not synced since.
    std::optional<std::string> former;
};

struct Layer
{
    sqlite3_vfs* base = nullptr;
    sqlite3_vfs own{};
    const sqlite3_io_methods* baseMethods = nullptr; // alike in each, but for the locks
    // For each table of the layer below: files that only one handle uses have one without locks.
    std::map<const sqlite3_io_methods*, sqlite3_io_methods> ownMethods;
    filelayer::Status* status = nullptr; // null where nothing is to be cut off
    filelayer::Plan plan;
    filelayer::Refusal refusal;
    int refusals = 0;
    std::mt19937 random;
    std::map<std::string, Medium> files;
    std::recursive_mutex one; // a restore writes two files at once
};

Layer layer;

// Behind what the layer below keeps of a file; null for files that the engine has for itself.
Medium*& mediumOf(sqlite3_file* file)
{
    return *reinterpret_cast<Medium**>(reinterpret_cast<char*>(file) + layer.base->szOsFile);
}

bool isRefused(filelayer::Refused what, const Medium* medium)
{
    const std::lock_guard alone(layer.one);
    filelayer::Refusal& refusal = layer.refusal;
    if (refusal.what != what || !medium)
        return false;
    const std::string& path = medium->path;
    const bool isMeant = path.ends_with(refusal.pathSuffix) ||
                         (refusal.journalsToo && path.ends_with(refusal.pathSuffix + "-journal"));
    if (!isMeant || --refusal.first > 0 || layer.refusals == refusal.count)
        return false;
    ++layer.refusals;
    return true;
}

bool forgets()
{
    return layer.status && layer.plan.cut != filelayer::Cut::Kill;
}

void note(sqlite3_file* file, Change change)
{
    if (Medium* medium = mediumOf(file); medium && forgets())
        medium->pending.push_back(std::move(change));
}

void settleSome(Medium& medium)
{
    for (Change& change : medium.pending) {
        const auto fate = layer.random() % 3;
        if (fate == 0)
            continue;
        if (const auto sectors = change.bytes.size() / SectorSize; fate == 1 && sectors > 1)
            change.bytes.resize((1 + layer.random() % (sectors - 1)) * SectorSize);
        change.applyTo(medium.synced);
    }
}

void forget(const std::string& path, Medium& medium)
{
    bool stays = medium.entrySynced;
    if (layer.plan.cut == filelayer::Cut::ForgetSome) {
        settleSome(medium);
        if (medium.exists != medium.entrySynced)
            stays = layer.random() % 2 == 0;
    }
    if (stays || medium.former)
        std::ofstream(path, std::ios::binary) << (stays ? medium.synced : *medium.former);
    else
        unlink(path.c_str());
}

// A call that changes something, with the cut before, in or after it.
template <class Work, class Half = void (*)()>
int changing(
    const Work& work, const Half& half = [] {})
{
    const std::lock_guard alone(layer.one);
    if (!layer.status || !layer.status->armed || ++layer.status->calls != layer.plan.call)
        return work();
    const auto moment = layer.random() % 3;
    if (moment == 1)
        half();
    else if (moment == 2)
        work();
    if (forgets())
        for (auto& [path, medium] : layer.files)
            forget(path, medium);
    raise(SIGKILL);
    return SQLITE_IOERR;
}

void syncFolder()
{
    for (auto& [path, medium] : layer.files) {
        medium.entrySynced = medium.exists;
        medium.former.reset();
    }
}

int doWrite(sqlite3_file* file, const void* data, int size, sqlite3_int64 at)
{
    Medium* medium = mediumOf(file);
    if (isRefused(filelayer::Refused::Writes, medium))
        return SQLITE_FULL;
    if (layer.status && medium && medium->isJournal && !medium->isWriting) {
        medium->isWriting = true;
        ++layer.status->openTransactions;
    }
    const auto write = [&](int length) {
        const std::string bytes(static_cast<const char*>(data), static_cast<std::size_t>(length));
        const int code = layer.baseMethods->xWrite(file, data, length, at);
        if (code == SQLITE_OK && length > 0)
            note(file, {static_cast<std::size_t>(at), bytes});
        return code;
    };
    return changing([&] { return write(size); }, [&] { write(size / 2); });
}

int doLock(sqlite3_file* file, int level)
{
    const std::lock_guard alone(layer.one);
    if (isRefused(filelayer::Refused::Locks, mediumOf(file)))
        return SQLITE_BUSY;
    const auto own =
        std::find_if(layer.ownMethods.begin(), layer.ownMethods.end(),
                     [&](const auto& methods) { return &methods.second == file->pMethods; });
    return own->first->xLock(file, level);
}

int doTruncate(sqlite3_file* file, sqlite3_int64 size)
{
    return changing([&] {
        const int code = layer.baseMethods->xTruncate(file, size);
        if (code == SQLITE_OK)
            note(file, {static_cast<std::size_t>(size), {}});
        return code;
    });
}

int doSync(sqlite3_file* file, int flags)
{
    return changing([&] {
        const int code = layer.baseMethods->xSync(file, flags);
        Medium* medium = mediumOf(file);
        if (code != SQLITE_OK || !medium || layer.plan.deaf)
            return code;
        for (const Change& change : medium->pending)
            change.applyTo(medium->synced);
        medium->pending.clear();
        // The layer below syncs the folder with the first sync of a new journal.
        if (!medium->entrySynced)
            syncFolder();
        return code;
    });
}

int doDelete(sqlite3_vfs*, const char* path, int syncsFolder)
{
    return changing([&] {
        const int code = layer.base->xDelete(layer.base, path, syncsFolder);
        const auto known = layer.files.find(path);
        if (code != SQLITE_OK || known == layer.files.end())
            return code;
        known->second.exists = false;
        if (std::exchange(known->second.isWriting, false))
            --layer.status->openTransactions;
        if (syncsFolder && !layer.plan.deaf)
            syncFolder();
        return code;
    });
}

int doOpen(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* outFlags)
{
    const std::lock_guard alone(layer.one);
    mediumOf(file) = nullptr;
    if (path && (flags & (SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_MAIN_JOURNAL))) {
        Medium& medium = layer.files[path];
        medium.path = path;
        mediumOf(file) = &medium;
    }
    if (Medium* known = mediumOf(file); known && layer.status) {
        Medium& medium = *known;
        if (!std::filesystem::exists(path)) {
            auto former = medium.entrySynced ? std::optional(medium.synced) : medium.former;
            medium = {};
            medium.path = path;
            medium.former = std::move(former);
        } else if (!medium.exists) {
            // Read before the engine opens it, whose locks this would drop.
            std::ifstream content(path, std::ios::binary);
            medium.exists = medium.entrySynced = true;
            medium.synced = {std::istreambuf_iterator<char>(content), {}};
        }
        medium.isJournal = flags & SQLITE_OPEN_MAIN_JOURNAL;
    }
    const int code = layer.base->xOpen(layer.base, path, file, flags, outFlags);
    if (code != SQLITE_OK)
        return code;
    if (mediumOf(file))
        mediumOf(file)->exists = true;
    layer.baseMethods = file->pMethods;
    sqlite3_io_methods& own = layer.ownMethods[file->pMethods];
    own = *file->pMethods;
    own.iVersion = 1;
    own.xWrite = doWrite;
    own.xLock = doLock;
    own.xTruncate = doTruncate;
    own.xSync = doSync;
    file->pMethods = &own;
    return code;
}

// As given: two stations may know one folder under two paths, which the layer below sees through.
int doFullPathname(sqlite3_vfs*, const char* path, int size, char* full)
{
    sqlite3_snprintf(size, full, "%s", path);
    return SQLITE_OK;
}

// A name that was given by the program itself, past the engine.
void noteRename(const std::string& from, const std::string& to, std::optional<std::string> former)
{
    const auto known = layer.files.find(from);
    if (known == layer.files.end())
        return;
    Medium moved = known->second;
    moved.path = to;
    moved.entrySynced = false;
    moved.former = std::move(former);
    layer.files[to] = std::move(moved);
    known->second.exists = false;
}

void prepare()
{
    layer.base = sqlite3_vfs_find(nullptr);
    layer.own = *layer.base;
    layer.own.zName = filelayer::Name;
    layer.own.szOsFile += static_cast<int>(sizeof(Medium*));
    layer.own.xOpen = doOpen;
}

} // namespace

filelayer::Status* filelayer::map(const char* statusFile)
{
    const int file = open(statusFile, O_RDWR | O_CREAT, 0600);
    if (file < 0 || ftruncate(file, sizeof(Status)) != 0)
        std::abort();
    void* mapped = mmap(nullptr, sizeof(Status), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (mapped == MAP_FAILED)
        std::abort();
    return static_cast<Status*>(mapped);
}

void filelayer::install(Status* status, const Plan& plan, unsigned seed)
{
    layer.status = status;
    layer.plan = plan;
    layer.random.seed(seed);
    prepare();
    layer.own.xDelete = doDelete;
    layer.own.xFullPathname = doFullPathname;
    sqlite3_vfs_register(&layer.own, 1);
}

void filelayer::add()
{
    prepare();
    sqlite3_vfs_register(&layer.own, 0);
}

void filelayer::remove()
{
    layer.refusal = {};
    sqlite3_vfs_unregister(&layer.own);
}

void filelayer::refuse(const Refusal& refusal)
{
    layer.refusal = refusal;
    layer.refusals = 0;
}

void filelayer::disarm()
{
    layer.refusal.what = Refused::Nothing;
}

bool filelayer::hasRefused()
{
    return layer.refusals > 0;
}

// In place of the host's own, for the calls that the program makes past the engine.
extern "C" int rename(const char* from, const char* to) noexcept
{
    return changing([&] {
        std::optional<std::string> former;
        if (std::ifstream content(to, std::ios::binary); content && layer.status)
            former.emplace(std::istreambuf_iterator<char>(content),
                           std::istreambuf_iterator<char>());
        const auto result = static_cast<int>(syscall(SYS_rename, from, to));
        if (result == 0)
            noteRename(from, to, std::move(former));
        return result;
    });
}

extern "C" int fsync(int file)
{
    return changing([&] {
        const auto result = static_cast<int>(syscall(SYS_fsync, file));
        struct stat kind
        {
        };
        if (result == 0 && fstat(file, &kind) == 0 && S_ISDIR(kind.st_mode) && !layer.plan.deaf)
            syncFolder();
        return result;
    });
}
