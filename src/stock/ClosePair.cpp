#include "ClosePair.h"

void closeIfOpen(ObjectVariable<Recordset>& table, ObjectVariable<Connection>& connection)
{
    if (!table.isNothing() && table->isOpen())
        table->Close();
    if (!connection.isNothing() && connection->isOpen())
        connection->Close();
    table.setNothing();
    connection.setNothing();
}
