#pragma once

#include "Database.h"
#include "FileLayer.h"
#include "Patience.h"

#include <string>

// A disk that is full for every file whose path ends with the given text, from the moment on in
// which it is armed; or from the n-th write after it to those files or their journals, for good or
// for so many writes. Or files of which the n-th lock asked for is not to be had.
class FailingDisk
{
public:
    FailingDisk()
    {
        filelayer::add();
        Database::dropIdle();
        Database::setVfsForTests(filelayer::Name);
    }
    ~FailingDisk()
    {
        empty();
        Database::setVfsForTests(nullptr);
        Database::dropIdle();
        filelayer::remove();
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    void fillFor(const std::string& pathSuffix)
    {
        filelayer::refuse({filelayer::Refused::Writes, pathSuffix});
    }
    void fillFrom(int write, const std::string& pathSuffix, int refusals = 1'000'000)
    {
        filelayer::refuse({filelayer::Refused::Writes, pathSuffix, true, write, refusals});
    }
    void lockFrom(int request, const std::string& pathSuffix, int refusals = 1'000'000)
    {
        Patience::setLimitForTests(0);
        filelayer::refuse({filelayer::Refused::Locks, pathSuffix, false, request, refusals});
    }
    void empty()
    {
        filelayer::disarm();
        Patience::setLimitForTests(std::nullopt);
    }
    // Whether a call was refused since it was armed.
    static bool refused() { return filelayer::hasRefused(); }
};
