#pragma once

#include <atomic>

// A file layer under the engine that ends the process at a chosen call, as a kill or as a power cut
// does: before the call, after it, or in the middle of a write.
namespace cutvfs {

enum class Cut
{
    Kill,      // what was written stays, as the host keeps it
    ForgetAll, // what was not synced is gone, files and deletions without a synced folder included
    ForgetSome // each such write stays, goes, or stays up to a sector, by chance
};

// In a mapped file, for whoever looks after the process is gone.
struct Status
{
    std::atomic<int> armed;
    // Files with a transaction that began to write and is not committed yet.
    std::atomic<int> openTransactions;
    // Writes, syncs, cuts to length and deletions since it was armed.
    std::atomic<int> calls;
};

struct Plan
{
    int call = 0; // counted from 1 since it was armed; 0: never
    Cut cut = Cut::Kill;
    // Takes no notice of syncs, so that a test can show that it would see what they are for.
    bool deaf = false;
};

Status* map(const char* statusFile);
// Becomes the default layer of this process; before the first opening.
void install(Status* status, const Plan& plan, unsigned seed);

} // namespace cutvfs
