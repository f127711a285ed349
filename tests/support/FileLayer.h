#pragma once

#include <atomic>
#include <string>

// The one file layer that the tests put under the engine. It ends the process at a chosen call, as
// a kill or as a power cut does: before the call, after it, or in the middle of a write. Or it
// refuses writes and locks (FailingDisk.h).
namespace filelayer {

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

enum class Refused
{
    Nothing,
    Writes, // as on a full disk
    Locks   // as of a file that another station holds
};

// Which calls are refused, to files whose path ends so.
struct Refusal
{
    Refused what = Refused::Nothing;
    std::string pathSuffix;
    bool journalsToo = false;
    int first = 1; // counted from 1
    int count = 1'000'000;
};

inline constexpr char Name[] = "tests";
// Known to the engine by that name; not the default.
void add();
void remove();
void refuse(const Refusal& refusal);
void disarm();
// Whether a call was refused since then.
bool hasRefused();

} // namespace filelayer
