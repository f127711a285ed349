#include "Database.h"
#include "EventTransactions.h"
#include "FaultLog.h"
#include "GateFrames.h"

#include <algorithm>
#include <utility>

// The pieces of OnePiece.h: a transaction of their own, or a part of one whose locks are held.

namespace {

RuntimeError lostAndTold()
{
    return RuntimeError(RuntimeError::EngineFault).told();
}

// Counts a running piece for as long as it stands.
class Running
{
public:
    explicit Running(int& pieces) : pieces_(pieces) { ++pieces_; }
    ~Running() { --pieces_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    int& pieces_;
};

} // namespace

bool EventTransactions::holdsLocks() const
{
    return std::any_of(writing_.begin(), writing_.end(),
                       [](const auto& file) { return file->isLocked(); });
}

void EventTransactions::lock(std::vector<std::shared_ptr<Database>> files)
{
    std::erase_if(files, [this](const auto& file) { return has(*file); });
    std::stable_partition(files.begin(), files.end(),
                          [](const auto& file) { return !file->storage().isList(); });
    const std::size_t before = writing_.size();
    try {
        for (const auto& file : files) {
            file->takeLock();
            writing_.push_back(file);
        }
    } catch (const RuntimeError&) {
        for (; writing_.size() > before; writing_.pop_back())
            writing_.back()->rollback();
        throw;
    }
}

void EventTransactions::takeLocks(const std::vector<std::shared_ptr<Database>>& files)
{
    if (commitPerStatement_)
        return;
    raiseIfFailed();
    if (pieces_ == 0 && !holdsLocks() && !commitNow())
        throw lostAndTold();
    // There is no rest of the event to hold them for: asked for, and given back.
    const bool outside = !joins();
    lock(files);
    if (outside)
        undo();
}

void EventTransactions::runPiece(const std::vector<std::shared_ptr<Database>>& files,
                                 const std::function<void()>& work)
try {
    if (commitPerStatement_)
        work();
    else if (pieces_ > 0 || holdsLocks())
        runPart(files, work);
    else
        runWhole(files, work);
} catch (const RuntimeError& error) {
    // A form may be silent about it; support is to see it.
    if (!error.wasTold())
        faultlog::note(faultlog::Kind::RefusedWrite, runningForm(), error);
    throw;
}

void EventTransactions::runWhole(const std::vector<std::shared_ptr<Database>>& files,
                                 const std::function<void()>& work)
{
    raiseIfFailed();
    if (!commitNow())
        throw lostAndTold();
    if (!gate::inEvent())
        ++serial_; // it waits for a busy file as an event does
    std::optional<QString> lost;
    try {
        const Running running(pieces_);
        lock(files);
        work();
        raiseIfFailed();
        lost = commitAll();
    } catch (...) {
        undo();
        if (!gate::inEvent())
            failure_.reset();
        throw;
    }
    if (lost) {
        tell(*lost);
        throw lostAndTold();
    }
}

void EventTransactions::runPart(const std::vector<std::shared_ptr<Database>>& files,
                                const std::function<void()>& work)
{
    raiseIfFailed();
    lock(files);
    const std::size_t count = writing_.size();
    for (const auto& file : writing_)
        file->beginPart();
    try {
        const Running running(pieces_);
        work();
        raiseIfFailed();
    } catch (...) {
        undoParts(count);
        throw;
    }
    for (std::size_t i = 0; i < count; ++i)
        writing_[i]->endPart();
}

// All of it is gone already where a full disk or an I/O error undid the event.
void EventTransactions::undoParts(std::size_t files)
{
    if (hasFailed())
        return;
    try {
        // What was written without its lock taken before.
        for (; writing_.size() > files; writing_.pop_back())
            writing_.back()->rollback();
        for (const auto& file : writing_)
            file->undoPart();
    } catch (const RuntimeError& error) {
        fail(error);
    }
}

void EventTransactions::undo()
{
    for (const auto& database : std::exchange(writing_, {}))
        database->rollback();
}
