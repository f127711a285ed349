#include "EventTransactions.h"

#include "Database.h"
#include "MsgBox.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isList(Database& database)
{
    return database.storage().listState().has_value();
}

} // namespace

EventTransactions& EventTransactions::instance()
{
    static EventTransactions transactions;
    return transactions;
}

void installEventTransactions()
{
    EventTransactions::instance().install();
}

void EventTransactions::install()
{
    installed_ = true;
    gate::setSettleHook([this](gate::Moment moment) { settle(moment); });
}

void EventTransactions::take(std::shared_ptr<Database> database)
{
    if (std::find(writing_.begin(), writing_.end(), database) == writing_.end())
        writing_.push_back(std::move(database));
}

void EventTransactions::fail(const RuntimeError& error)
{
    if (!joins())
        return;
    failure_ = Failure{gate::nestedLoops(), error};
    for (const auto& database : std::exchange(writing_, {}))
        database->rollback();
}

void EventTransactions::raiseIfFailed() const
{
    if (failure_ && joins() && failure_->loopLevel == gate::nestedLoops())
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
    return EventTransactions::instance().settle(gate::Moment::BeforeDialog);
}

bool EventTransactions::settle(gate::Moment moment)
{
    // The box about a failed commit settles once more.
    if (settling_)
        return true;
    settling_ = true;
    const std::optional<RuntimeError> error = commitAll();
    ++serial_;
    if (moment == gate::Moment::EventEnd)
        endEvent();
    if (error)
        MsgBox(u"Erro nº %1\n%2\n\nO que foi gravado por último não foi guardado."_s
                   .arg(error->number())
                   .arg(error->description()),
               BoxButtons::Ok, BoxIcon::Critical);
    settling_ = false;
    return !error;
}

std::optional<RuntimeError> EventTransactions::commitAll()
{
    std::vector<std::shared_ptr<Database>> files = std::exchange(writing_, {});
    std::optional<RuntimeError> error;
    try {
        // The shared file first: with it, the mark of a finished list becomes durable.
        if (files.size() > 1) {
            std::stable_partition(files.begin(), files.end(),
                                  [](const auto& file) { return !isList(*file); });
            markFinishedLists(files);
        }
    } catch (const RuntimeError& failed) {
        error = failed;
    }
    for (const auto& file : files) {
        if (!error) {
            try {
                file->commit();
                continue;
            } catch (const RuntimeError& failed) {
                error = failed;
            }
        }
        file->rollback();
        file->setListChecked(false);
    }
    return error;
}

void EventTransactions::markFinishedLists(const std::vector<std::shared_ptr<Database>>& files)
{
    Database& shared = *files.front();
    for (const auto& file : files) {
        Storage& list = file->storage();
        const std::optional<ListState> state = list.listState();
        if (!state || &shared == file.get() || !list.isEmpty(0))
            continue;
        shared.storage().markFinished(*state);
        list.setListGeneration(state->generation + 1);
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
