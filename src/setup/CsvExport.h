#pragma once

#include "ShopFiles.h"

#include <QByteArray>
#include <QStringList>

// Comma-separated values as a Brazilian spreadsheet opens them (RFC 4180 with ";" between, since
// the comma is the decimal one): UTF-8 with its mark, dates dd/mm/yyyy. A Null is nothing, the
// empty text a pair of quotes.
QByteArray csvLine(const std::vector<Value>& cells);
inline const QByteArray CsvMark = QByteArrayLiteral("\xEF\xBB\xBF");

// Writes bytes as a whole file or not at all, readable by its owner only. Errors 75, 61.
void writeWhole(const QString& path, const QByteArray& bytes);

// Every table of both files as NAME.csv in the folder, which is made where it is missing; a file of
// that name is replaced. Answers the names written.
QStringList exportTables(const ShopFiles& files, const QString& folder);
