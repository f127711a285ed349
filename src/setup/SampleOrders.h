#pragma once

#include "BulkInsert.h"
#include "SampleWords.h"

#include <vector>

// Service orders with their twins, and sales of the counter; the parts in them are of the
// catalogue.
std::vector<TableRows> sampleOrders(SampleWords& words, const TableRows& parts);
