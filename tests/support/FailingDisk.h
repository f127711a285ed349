#pragma once

#include "Database.h"

#include <sqlite3.h>

#include <map>
#include <string>

// A disk that is full for every file whose path ends with the given text, from the moment on in
// which it is armed; or from the n-th write after it to those files or their journals, for good or
// for so many writes.
class FailingDisk
{
public:
    FailingDisk()
    {
        sqlite3_vfs* usual = sqlite3_vfs_find(nullptr);
        layer() = *usual;
        layer().zName = "failing";
        layer().xOpen = open;
        sqlite3_vfs_register(&layer(), 0);
        Database::dropIdle();
        Database::setVfsForTests("failing");
    }
    ~FailingDisk()
    {
        Database::setVfsForTests(nullptr);
        suffix().clear();
        Database::dropIdle();
        sqlite3_vfs_unregister(&layer());
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    void fillFor(const std::string& pathSuffix)
    {
        suffix() = pathSuffix;
        journalsToo() = false;
        writesLeft() = 0;
        refusalsLeft() = 1'000'000;
    }
    void fillFrom(int write, const std::string& pathSuffix, int refusals = 1'000'000)
    {
        refusalsLeft() = refusals;
        suffix() = pathSuffix;
        journalsToo() = true;
        writesLeft() = write - 1;
    }
    void empty() { suffix().clear(); }
    // Whether a write was refused since it was armed.
    static bool refused() { return writesLeft() < 0; }

private:
    struct Opened
    {
        std::string path;
        const sqlite3_io_methods* usual = nullptr;
        sqlite3_io_methods methods{};
    };

    static sqlite3_vfs& layer()
    {
        static sqlite3_vfs vfs;
        return vfs;
    }
    static std::string& suffix()
    {
        static std::string text;
        return text;
    }
    static bool& journalsToo()
    {
        static bool too = false;
        return too;
    }
    static int& refusalsLeft()
    {
        static int left = 0;
        return left;
    }
    static int& writesLeft()
    {
        static int left = 0;
        return left;
    }
    static std::map<sqlite3_file*, Opened>& files()
    {
        static std::map<sqlite3_file*, Opened> opened;
        return opened;
    }

    static int open(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* outFlags)
    {
        sqlite3_vfs* usual = sqlite3_vfs_find("unix");
        const int code = usual->xOpen(usual, path, file, flags, outFlags);
        if (code == SQLITE_OK && path) {
            Opened& opened = files()[file];
            opened = {path, file->pMethods, *file->pMethods};
            opened.methods.xWrite = write;
            file->pMethods = &opened.methods;
        }
        return code;
    }
    static bool isMeant(const std::string& path)
    {
        return !suffix().empty() && (path.ends_with(suffix()) ||
                                     (journalsToo() && path.ends_with(suffix() + "-journal")));
    }
    static int write(sqlite3_file* file, const void* data, int count, sqlite3_int64 offset)
    {
        const Opened& opened = files()[file];
        if (isMeant(opened.path) && --writesLeft() < 0 && --refusalsLeft() >= 0)
            return SQLITE_FULL;
        return opened.usual->xWrite(file, data, count, offset);
    }
};
