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

    bool isFinished = false;
    try {
        isFinished = Database::open(resolver()())->storage().isFinished(state->sale);
    } catch (const RuntimeError&) {
        // Without the shared file nothing can be sold; the next opening looks again.
        return;
    }
    if (isFinished && !storage.isEmpty(0)) {
        try {
            storage.beginWrite();
            storage.removeAll(0);
            storage.finishList();
            storage.commit();
        } catch (const RuntimeError&) {
            storage.rollback();
            throw;
        }
        list.forgetImages();
    }
    list.setListChecked(true);
}
