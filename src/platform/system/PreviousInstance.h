#pragma once

#include <QString>

// The mark of a running program: a lock on the installation folder itself, which every user of this
// computer meets and which need not be writable. No file is made, so that nobody can plant another
// one in its place. The system gives the lock back when the process ends, also when it is killed.
class InstanceLock
{
public:
    explicit InstanceLock(const QString& installationFolder);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // True where a living holder has it already. A folder that cannot be opened counts as free: the
    // shop must be able to work.
    bool heldByAnother() const { return heldByAnother_; }

private:
    int folder_ = -1;
    bool heldByAnother_ = false;
};

// True when another living process on this computer runs the program from the same installation
// folder. Taken once at the first call and held until the process ends; a killed process leaves no
// trace.
bool previousInstance();
