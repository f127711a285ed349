#include "EventTransactions.h"

#include "Database.h"
#include "FaultLog.h"
#include "GateFrames.h"
#include "MsgBox.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isList(Database& database)
{
    return database.storage().isList();
}

const RuntimeError& noted(const RuntimeError& error)
{
    faultlog::note(faultlog::Kind::LostWrite, runningForm(), error);
    return error;
}

QString lostText(const RuntimeError& error)
{
    return error.text() + u"\n\nO que foi gravado por último não foi guardado."_s;
}

// The shared file is durable by then.
QString listLostText(const RuntimeError& error)
{
    return error.text() + u"\n\nO banco de dados já foi gravado; só a lista da venda não. "
                          "Não repita a venda: feche e abra a tela."_s;
}

} // namespace

void EventTransactions::tell(const QString& text)
{
    MsgBox(text, BoxButtons::Ok, BoxIcon::Critical);
}

EventTransactions& EventTransactions::instance()
{
    // Never destroyed: recordsets of the forms outlive it at the end of the program.
    static auto& transactions = *new EventTransactions;
    return transactions;
}

void installEventTransactions()
{
    EventTransactions::instance().install();
}

void EventTransactions::install()
{
    installed_ = true;
    TransactionKeeper::set(this);
    gate::setSettleHook([this](gate::Moment moment) { settle(moment); });
}

void EventTransactions::take(std::shared_ptr<Database> database)
{
    if (!has(*database))
        writing_.push_back(std::move(database));
}

bool EventTransactions::has(const Database& database) const
{
    return std::any_of(writing_.begin(), writing_.end(),
                       [&database](const auto& file) { return file.get() == &database; });
}

void EventTransactions::fail(const RuntimeError& error)
{
    if (!joins())
        return;
    failure_ = Failure{gate::nestedLoops(), error};
    for (const auto& database : std::exchange(writing_, {}))
        database->rollback();
}

bool EventTransactions::hasFailed() const
{
    return failure_ && joins() && failure_->loopLevel == gate::nestedLoops();
}

void EventTransactions::raiseIfFailed() const
{
    if (hasFailed())
        throw failure_->error;
}

void EventTransactions::editBegan(EditHolder* holder)
{
    if (joins())
        edits_.push_back({holder, gate::nestedLoops()});
}

void EventTransactions::editEnded(EditHolder* holder)
{
    std::erase_if(edits_, [holder](const Edit& edit) { return edit.holder == holder; });
}

bool commitWrites()
{
    return EventTransactions::instance().commitNow();
}

// The event goes on: what it waited for busy files counts on.
bool EventTransactions::commitNow()
{
    const std::optional<QString> lost =
        hasFailed() ? lostText(noted(failure_->error)) : commitOutsideOfPieces();
    if (lost)
        tell(*lost);
    return !lost;
}

std::optional<QString> EventTransactions::commitOutsideOfPieces()
{
    // A lock would be held for as long as the user thinks.
    if (pieces_ > 0)
        throw std::logic_error("a box was asked for, or a commit, within a piece");
    return commitAll();
}

bool EventTransactions::settle(gate::Moment moment)
{
    if (moment == gate::Moment::Undo) {
        undo();
        return true;
    }
    const std::optional<QString> lost = commitOutsideOfPieces();
    ++serial_;
    if (moment == gate::Moment::EventEnd)
        endEvent();
    if (lost)
        tell(*lost);
    return !lost;
}

std::optional<QString> EventTransactions::commitAll()
{
    std::vector<std::shared_ptr<Database>> files = std::exchange(writing_, {});
    std::optional<QString> lost;
    bool anyIsDurable = false;
    try {
        // The shared file first: with it, the mark of a finished list becomes durable.
        if (files.size() > 1) {
            std::stable_partition(files.begin(), files.end(),
                                  [](const auto& file) { return !isList(*file); });
            markFinishedLists(files);
        }
    } catch (const RuntimeError& failed) {
        lost = lostText(noted(failed));
    }
    for (const auto& file : files) {
        if (!lost) {
            try {
                file->commit();
                anyIsDurable = true;
                continue;
            } catch (const RuntimeError& failed) {
                lost = anyIsDurable ? listLostText(noted(failed)) : lostText(noted(failed));
            }
        }
        // Booked and still full: the list is read anew, which finds it marked.
        if (anyIsDurable)
            file->letKeptGo();
        file->rollback();
        file->setListChecked(false);
    }
    return lost;
}

void EventTransactions::markFinishedLists(const std::vector<std::shared_ptr<Database>>& files)
{
    Database& shared = *files.front();
    for (const auto& file : files) {
        Storage& list = file->storage();
        if (!list.isList() || &shared == file.get() || !file->hasChanges() || !list.isEmpty(0))
            continue;
        const ListState state = list.listState().value_or(ListState());
        if (shared.storage().isFinished(state.sale))
            throw RuntimeError(RuntimeError::EngineFault,
                               u"Esta venda já foi gravada por outra cópia do programa."_s);
        shared.storage().markFinished(state);
        list.finishList();
    }
}

void EventTransactions::endEvent()
{
    const int level = gate::nestedLoops();
    if (failure_ && failure_->loopLevel >= level)
        failure_.reset();
    std::vector<EditHolder*> ended;
    std::erase_if(edits_, [&](const Edit& edit) {
        if (edit.loopLevel >= level)
            ended.push_back(edit.holder);
        return edit.loopLevel >= level;
    });
    for (EditHolder* holder : ended)
        holder->dropEdit();
}
