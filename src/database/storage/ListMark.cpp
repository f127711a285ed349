#include "ListMark.h"

#include "Database.h"

namespace {

std::function<QString()>& resolver()
{
    static std::function<QString()> sharedFilePath;
    return sharedFilePath;
}

} // namespace

void setListMarkResolver(std::function<QString()> sharedFilePath)
{
    resolver() = std::move(sharedFilePath);
}

void finishMarkedList(Database& list)
{
    Storage& storage = list.storage();
    if (list.listIsChecked() || storage.isWriting())
        return;
    const std::optional<ListState> state = storage.listState();
    if (!state) {
        list.setListChecked(true);
        return;
    }
    if (!resolver())
        return;

    std::optional<qint64> finished;
    try {
        finished = Database::open(resolver()())->storage().finishedGeneration(state->id);
    } catch (const RuntimeError&) {
        // Without the shared file nothing can be sold; the next opening looks again.
        return;
    }
    if (finished == state->generation) {
        try {
            storage.beginWrite();
            storage.removeAll(0);
            storage.setListGeneration(state->generation + 1);
            storage.commit();
        } catch (const RuntimeError&) {
            storage.rollback();
            throw;
        }
        list.forgetImages();
    }
    list.setListChecked(true);
}
