#pragma once

#include <QString>

// The mark of a running program: a lock on a small file among the temporary ones of this
// computer, named after the installation folder, which need not be writable. The system gives the
// lock back when the process ends, also when it is killed.
class InstanceLock
{
public:
    explicit InstanceLock(const QString& installationFolder);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // True where a living holder has it already. A file that cannot be made at all counts as free:
    // the shop must be able to work.
    bool heldByAnother() const { return heldByAnother_; }

private:
    int file_ = -1;
    bool heldByAnother_ = false;
};

// True when another living process on this computer runs the program from the same installation
// folder. Taken once at the first call and held until the process ends; a killed process leaves no
// trace.
bool previousInstance();
