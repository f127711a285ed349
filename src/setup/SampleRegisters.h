#pragma once

#include "BulkInsert.h"
#include "SampleWords.h"

// The firms that the shop buys from, and what it knows of defects, as the forms would have stored
// them: what was left empty holds the form's filler.
TableRows sampleSuppliers(SampleWords& words);
TableRows sampleDefects();
