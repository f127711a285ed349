#pragma once

#include "Connection.h"
#include "ObjectVariable.h"
#include "Recordset.h"

// Closes what is open of a pair, the recordset first, and lets both go: a form whose load stopped
// half way must still be left without an error. Elsewhere closing stays strict.
void closeIfOpen(ObjectVariable<Recordset>& table, ObjectVariable<Connection>& connection);
