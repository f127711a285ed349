#pragma once

#include "BulkInsert.h"
#include "SampleWords.h"

// Parts to buy: some typed, and one for each part of the catalogue that ran out, as a sale's
// write-off orders it.
TableRows samplePurchases(SampleWords& words, const TableRows& parts);

// Orders for work at the client's place, with the fillers of what was left empty.
TableRows sampleOnSiteOrders(SampleWords& words);
