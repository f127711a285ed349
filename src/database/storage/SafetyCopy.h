#pragma once

#include <QString>

#include <functional>
#include <memory>

class SqliteHandle;

// One database file in this program's hand alone, for a backup or a restore: from its making to its
// end no other station, and no other handle, reads or writes the file. Everything goes through the
// engine, so that a power cut at any moment leaves the live file whole, with its old or its new
// content. Errors are -2147467259 with the engine's text; 76, 70 and 61 for a folder that is
// missing, closed or full.
class ExclusiveFile
{
public:
    // An error where the lock is not had within five seconds, and for a missing or foreign file.
    explicit ExclusiveFile(const QString& path);
    ~ExclusiveFile();
    ExclusiveFile(const ExclusiveFile&) = delete;
    ExclusiveFile& operator=(const ExclusiveFile&) = delete;

    // The content without its gaps, in the form that is marked as encrypted, in a file of that
    // name; one that is left over from an earlier time is replaced.
    void compactTo(const QString& path);
    // The whole content of the other file, which is checked meanwhile, takes the place of this
    // one's in one transaction.
    void takeOver(const QString& path);
    // A copy that is written under a temporary name beside the target, brought to the disk, found
    // whole and renamed: the target is the old copy or the new one, never half of one. Readable by
    // its owner only.
    void copyTo(const QString& path);

private:
    friend void restoreFromCopy(const QString&, const QString&, const QString&);

    std::unique_ptr<SqliteHandle> handle_;
    bool isChecked_ = false; // what it took over was
};

// Puts the content of a copy into the live file, after the copy was checked whole: error 53 where
// it is missing, -2147467259 where it is damaged, of another program, of a later making, or no main
// file. What stood in the live file lies in `before` by then. A live file that is no database is
// replaced by a new file.
void restoreFromCopy(const QString& copy, const QString& live, const QString& before);
