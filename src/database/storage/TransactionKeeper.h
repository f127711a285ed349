#pragma once

#include <QtGlobal>

#include <memory>

class Database;
class RuntimeError;

// What a file asks of the floor above: which writes belong together, and in which event. Where none
// is set each write is durable by itself.
class TransactionKeeper
{
public:
    // Another number for each event, and after each box in it; 0 outside of events.
    virtual quint64 currentEvent() const = 0;
    // Whether a write now belongs to a transaction that somebody else ends.
    virtual bool joins() const = 0;
    virtual void take(std::shared_ptr<Database> database) = 0;
    virtual bool has(const Database& database) const = 0;
    // After a full disk or an I/O error all writes of the event are undone, and each further one
    // raises the same error.
    virtual void fail(const RuntimeError& error) = 0;
    virtual void raiseIfFailed() const = 0;

    // Nobody's where none is set.
    static TransactionKeeper& current();
    static void set(TransactionKeeper* keeper);

protected:
    ~TransactionKeeper() = default;
};
