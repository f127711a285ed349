#include "Database.h"

#include "DailyCheck.h"
#include "FileIdentity.h"
#include "SqliteStorage.h"

#include <QDir>
#include <QFileInfo>

#include <map>

using namespace Qt::Literals::StringLiterals;

namespace {

struct PooledFile
{
    QString path;
    std::shared_ptr<Database> database;

    bool isIdle() const { return database.use_count() == 1; }
};

struct Pool
{
    std::map<FileIdentity, PooledFile> files;
    const char* vfs = nullptr;
};

Pool& pool()
{
    static Pool thePool;
    return thePool;
}

[[noreturn]] void raiseMissing(const QString& path)
{
    const QFileInfo info(path);
    const bool validPlace = !path.isEmpty() && !info.isDir() && info.dir().exists();
    throw RuntimeError(
        RuntimeError::EngineFault,
        validPlace
            ? u"Não foi possível encontrar o arquivo '%1'."_s.arg(path)
            : u"'%1' não é um caminho válido. Verifique se o nome do caminho está escrito "
              "corretamente e se o computador que guarda o arquivo está ligado."_s.arg(path));
}

} // namespace

std::shared_ptr<Database> Database::open(const QString& path)
{
    const std::optional<FileIdentity> identity = fileIdentity(path);
    if (!identity)
        raiseMissing(path);
    auto& files = pool().files;
    const auto known = files.find(*identity);
    if (known != files.end()) {
        try {
            known->second.database->requireUsable();
            return known->second.database;
        } catch (const RuntimeError&) {
            if (known->second.isIdle())
                files.erase(known);
            throw;
        }
    }

    // A file that was replaced or removed underneath leaves its former one behind.
    std::erase_if(files, [](const auto& entry) {
        return entry.second.isIdle() && fileIdentity(entry.second.path) != entry.first;
    });
    auto storage = std::make_unique<SqliteStorage>(path, pool().vfs);
    if (!dailycheck::wasDone(path, *identity)) {
        storage->requireWhole();
        dailycheck::note(path, *identity);
    }
    auto database = std::make_shared<Database>(std::move(storage));
    files.emplace(*identity, PooledFile{path, database});
    return database;
}

void Database::dropIdle()
{
    std::erase_if(pool().files, [](const auto& entry) { return entry.second.isIdle(); });
}

void Database::setVfsForTests(const char* vfs)
{
    pool().vfs = vfs;
}

const char* Database::vfs()
{
    return pool().vfs;
}
