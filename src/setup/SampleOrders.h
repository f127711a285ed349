#pragma once

#include "BulkInsert.h"
#include "Dates.h"
#include "SampleWords.h"

#include <vector>

// Service orders with their twins, and sales of the counter.
std::vector<TableRows> sampleOrders(SampleWords& words);
