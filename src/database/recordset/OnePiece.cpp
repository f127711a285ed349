#include "OnePiece.h"

#include "EventTransactions.h"
#include "RuntimeError.h"

void inOnePiece(Files, const std::function<void()>& work)
{
    EventTransactions& events = EventTransactions::instance();
    if (!events.commitNow())
        throw RuntimeError(RuntimeError::EngineFault);
    try {
        work();
    } catch (...) {
        events.undo();
        throw;
    }
    if (!events.commitNow())
        throw RuntimeError(RuntimeError::EngineFault);
}

void takeWriteLocks(Files) {}
