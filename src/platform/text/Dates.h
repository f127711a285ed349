#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

// Short date of Brazil, dd/mm/yyyy.
QString dateText(QDate date);
// Short date, a blank and the long time hh:mm:ss; midnight shows the date alone.
QString dateTimeText(const QDateTime& moment);
// Reads d/m/yy, dd/mm/yyyy, with "/", "-" or "." between; nothing where it is no date. Two-digit
// years stand for 1930 to 2029 (published language reference, page "DateSerial function").
std::optional<QDate> dateFromText(QStringView text);

// The one clock of the program. Tests set it.
class Clock
{
public:
    static QDate today();
    static QDateTime now();
    static void setForTests(std::optional<QDateTime> moment);
};
