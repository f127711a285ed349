#pragma once

#include "EventGate.h"
#include "RuntimeError.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class Database;

// From now on the writes of one outermost event are one transaction a file: it begins with the
// first write and becomes durable when the event ends, and before any box, dialog or modal form is
// shown from within it. Outside of events each write is durable by itself.
void installEventTransactions();

// Makes durable what the running event wrote so far, which is otherwise done at its end. False
// where that failed, now or under an earlier write: the user was told, what was written is undone,
// and recordsets show the files again.
bool commitWrites();
// Whether a write failed so badly that what the running event wrote before it is undone already.
bool writesAreUndone();

// How the path of the shared file is found when a sale list is opened, to learn whether the list
// was booked already.
void setListMarkResolver(std::function<QString()> sharedFilePath);

// Empties a sale list that the shared file knows as booked: the power went off after the one and
// before the other was committed. Looks once; again only after a failed commit. Where the shared
// file cannot be read the look is put off to the next opening.
void finishMarkedList(Database& list);

// Who has a pending edit, which does not outlive its event.
class EditHolder
{
public:
    virtual void dropEdit() = 0;

protected:
    ~EditHolder() = default;
};

class EventTransactions
{
public:
    static EventTransactions& instance();

    // Whether a write now belongs to the transaction of an event.
    bool joins() const { return installed_ && !commitPerStatement_ && gate::inEvent(); }
    void take(std::shared_ptr<Database> database);
    bool has(const Database& database) const;

    // After a full disk or an I/O error all writes of the event are undone, and each further one
    // raises the same error.
    void fail(const RuntimeError& error);
    void raiseIfFailed() const;
    bool hasFailed() const;

    // Another number for each event, and after each box in it; 0 outside of events.
    quint64 currentEvent() const { return joins() ? serial_ : 0; }

    void editBegan(EditHolder* holder);
    void editEnded(EditHolder* holder);

    // False where writes were lost; the user was told.
    bool commitNow();
    // Takes back what is not durable yet.
    void undo();

    void install();
    // The power-cut tests show with it that they can fail.
    void setCommitPerStatementForTests(bool on) { commitPerStatement_ = on; }

private:
    struct Failure
    {
        int loopLevel = 0;
        RuntimeError error;
    };
    struct Edit
    {
        EditHolder* holder = nullptr;
        int loopLevel = 0;
    };

    bool settle(gate::Moment moment);
    void markFinishedLists(const std::vector<std::shared_ptr<Database>>& files);
    // Nothing where all files were committed, else what the user is told.
    std::optional<QString> commitAll();
    void endEvent();

    bool installed_ = false;
    bool commitPerStatement_ = false;
    quint64 serial_ = 1;
    std::vector<std::shared_ptr<Database>> writing_;
    std::optional<Failure> failure_;
    std::vector<Edit> edits_;
};
