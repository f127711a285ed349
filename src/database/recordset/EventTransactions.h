#pragma once

#include "EventGate.h"
#include "RuntimeError.h"
#include "TransactionKeeper.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

// From now on the writes of one outermost event are one transaction a file: it begins with the
// first write and becomes durable when the event ends, and before any box, dialog or modal form is
// shown from within it. Outside of events each write is durable by itself.
void installEventTransactions();

// Makes durable what the running event wrote so far, which is otherwise done at its end. False
// where that failed, now or under an earlier write: the user was told, what was written is undone,
// and recordsets show the files again.
bool commitWrites();

// Who has a pending edit, which does not outlive its event.
class EditHolder
{
public:
    virtual void dropEdit() = 0;

protected:
    ~EditHolder() = default;
};

class EventTransactions final : public TransactionKeeper
{
public:
    static EventTransactions& instance();

    // Whether a write now belongs to the transaction of an event, or of a piece outside of one.
    bool joins() const override
    {
        return !commitPerStatement_ && (pieces_ > 0 || (installed_ && gate::inEvent()));
    }
    void take(std::shared_ptr<Database> database) override;
    bool has(const Database& database) const override;

    void fail(const RuntimeError& error) override;
    void raiseIfFailed() const override;
    bool hasFailed() const;

    quint64 currentEvent() const override { return joins() ? serial_ : 0; }

    void editBegan(EditHolder* holder);
    void editEnded(EditHolder* holder);

    // False where writes were lost; the user was told.
    bool commitNow();

    // What stands behind OnePiece.h.
    void runPiece(const std::vector<std::shared_ptr<Database>>& files,
                  const std::function<void()>& work);
    void takeLocks(const std::vector<std::shared_ptr<Database>>& files);

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
    // The text of what was lost.
    std::optional<QString> commitOutsideOfPieces();
    bool holdsLocks() const;
    // Those that are not held yet, or none.
    void lock(std::vector<std::shared_ptr<Database>> files);
    void runWhole(const std::vector<std::shared_ptr<Database>>& files,
                  const std::function<void()>& work);
    // Within locks that are held already.
    void runPart(const std::vector<std::shared_ptr<Database>>& files,
                 const std::function<void()>& work);
    void undo();
    void undoParts(std::size_t files);
    void markFinishedLists(const std::vector<std::shared_ptr<Database>>& files);
    // Nothing where all files were committed, else what the user is told.
    std::optional<QString> commitAll();
    void endEvent();
    static void tell(const QString& text);

    bool installed_ = false;
    bool commitPerStatement_ = false;
    quint64 serial_ = 1;
    std::vector<std::shared_ptr<Database>> writing_;
    std::optional<Failure> failure_;
    std::vector<Edit> edits_;
    int pieces_ = 0; // running, one in another
};
