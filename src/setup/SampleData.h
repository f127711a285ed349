#pragma once

#include "BulkInsert.h"

#include <QString>

#include <utility>
#include <vector>

// The data of a small repair shop, to try the program with. The same at each call; people,
// companies and addresses are made up, documents have right check digits.
std::vector<TableRows> sampleRows();

// Keys and values of section Configurar: the shop's name and address, the texts of the sheets.
std::vector<std::pair<QString, QString>> sampleSettings();
