#include "OnePiece.h"

#include "EventTransactions.h"
#include "Faults.h"

#include <algorithm>

namespace {

std::vector<std::shared_ptr<Database>> databasesOf(Files files)
{
    std::vector<std::shared_ptr<Database>> databases;
    for (const ObjectVariable<Connection>& connection : files) {
        if (!connection->isOpen())
            throw RuntimeError(RuntimeError::ObjectClosed);
        const std::shared_ptr<Database>& database = connection->database();
        if (std::find(databases.begin(), databases.end(), database) == databases.end())
            databases.push_back(database);
    }
    return databases;
}

} // namespace

void inOnePiece(Files files, const std::function<void()>& work)
{
    faults::point(faults::Call::Recordset); // the last moment at which another station comes first
    EventTransactions::instance().runPiece(databasesOf(files), work);
}

void takeWriteLocks(Files files)
{
    EventTransactions::instance().takeLocks(databasesOf(files));
}
