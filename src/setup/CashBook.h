#pragma once

#include "ShopFiles.h"

#include <QDate>

#include <map>
#include <optional>
#include <vector>

// The whole cash movement, or that of a range of days, both ends included: what the report on the
// screen cannot print. An entry whose code is the number of an order, and that has no quantity, is
// a job's; all others are sales. A Null counts as 0; a text that is no number too, and is told.
struct CashBook
{
    struct Entry
    {
        std::optional<QDate> day; // none where the date cannot be read
        QString code, description, quantity, value;
        bool isJob = false;
        bool isReadable = true;
    };
    // In ten-thousandths, exact.
    struct Sums
    {
        qint64 jobs = 0;
        qint64 sales = 0;
    };

    std::vector<Entry> entries; // by day, then as they were written; those without a day first
    std::map<std::optional<QDate>, Sums> days;
    Sums all;
    int unreadable = 0;
};

struct DayRange
{
    QDate first;
    QDate last;
};

// Entries without a readable date are left out of a range.
CashBook readCashBook(const ShopFiles& files, const std::optional<DayRange>& range);

QByteArray cashRowsCsv(const CashBook& book);
QByteArray cashDaysCsv(const CashBook& book);
// All entries and the sums of each day on A4 pages, under the company's name. Error 482.
void printCashBook(const CashBook& book, const ShopFiles& files,
                   const std::optional<DayRange>& range, const QString& pdfPath);
