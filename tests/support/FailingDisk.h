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
        layer_ = *usual;
        layer_.zName = "failing";
        layer_.xOpen = open;
        sqlite3_vfs_register(&layer_, 0);
        Database::dropIdle();
        Database::setVfsForTests("failing");
    }
    ~FailingDisk()
    {
        Database::setVfsForTests(nullptr);
        suffix_.clear();
        Database::dropIdle();
        sqlite3_vfs_unregister(&layer_);
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    void fillFor(const std::string& pathSuffix)
    {
        fillFrom(1, pathSuffix);
        journalsToo_ = false;
    }
    void fillFrom(int write, const std::string& pathSuffix, int refusals = 1'000'000)
    {
        suffix_ = pathSuffix;
        journalsToo_ = true;
        writesLeft_ = write - 1;
        refusalsLeft_ = refusals;
    }
    void empty() { suffix_.clear(); }
    // Whether a write was refused since it was armed.
    static bool refused() { return writesLeft_ < 0; }

private:
    struct Opened
    {
        std::string path;
        const sqlite3_io_methods* usual = nullptr;
        sqlite3_io_methods methods{};
    };

    inline static sqlite3_vfs layer_;
    inline static std::map<sqlite3_file*, Opened> files_;
    inline static std::string suffix_;
    inline static bool journalsToo_ = false;
    inline static int writesLeft_ = 0;
    inline static int refusalsLeft_ = 0;

    static int open(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* outFlags)
    {
        sqlite3_vfs* usual = sqlite3_vfs_find("unix");
        const int code = usual->xOpen(usual, path, file, flags, outFlags);
        if (code == SQLITE_OK && path) {
            Opened& opened = files_[file];
            opened = {path, file->pMethods, *file->pMethods};
            opened.methods.xWrite = write;
            file->pMethods = &opened.methods;
        }
        return code;
    }
    static bool isMeant(const std::string& path)
    {
        return !suffix_.empty() &&
               (path.ends_with(suffix_) || (journalsToo_ && path.ends_with(suffix_ + "-journal")));
    }
    static int write(sqlite3_file* file, const void* data, int count, sqlite3_int64 offset)
    {
        const Opened& opened = files_[file];
        if (isMeant(opened.path) && --writesLeft_ < 0 && --refusalsLeft_ >= 0)
            return SQLITE_FULL;
        return opened.usual->xWrite(file, data, count, offset);
    }
};
