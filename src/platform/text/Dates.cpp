#include "Dates.h"

#include <array>

namespace {

// Two-digit years up to this one belong to the present century.
constexpr int LastYearOfWindow = 29;

std::optional<QDateTime> momentForTests;

bool isSeparator(QChar character)
{
    return character == u'/' || character == u'-' || character == u'.';
}

// The number of one to four plain digits; -1 for anything else.
int digitsOnly(QStringView text)
{
    if (text.isEmpty() || text.size() > 4)
        return -1;
    int number = 0;
    for (const QChar character : text) {
        if (character < u'0' || character > u'9')
            return -1;
        number = number * 10 + (character.unicode() - u'0');
    }
    return number;
}

int fullYear(int year, qsizetype digits)
{
    if (digits > 2)
        return year;
    return year <= LastYearOfWindow ? 2000 + year : 1900 + year;
}

} // namespace

QString dateText(QDate date)
{
    return date.toString(u"dd/MM/yyyy");
}

QString dateTimeText(const QDateTime& moment)
{
    if (moment.time() == QTime(0, 0))
        return dateText(moment.date());
    return dateText(moment.date()) + moment.time().toString(u" HH:mm:ss");
}

std::optional<QDate> dateFromText(QStringView text)
{
    const QStringView whole = text.trimmed();
    std::array<QStringView, 3> parts;
    std::size_t part = 0;
    qsizetype start = 0;
    QChar separator;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        if (!isSeparator(whole[i]))
            continue;
        if (part == 2 || (part == 1 && whole[i] != separator))
            return std::nullopt;
        separator = whole[i];
        parts.at(part++) = whole.mid(start, i - start);
        start = i + 1;
    }
    if (part != 2)
        return std::nullopt;
    parts[2] = whole.mid(start);

    const int day = digitsOnly(parts[0]);
    const int month = digitsOnly(parts[1]);
    const int year = digitsOnly(parts[2]);
    if (parts[0].size() > 2 || parts[1].size() > 2 || parts[2].size() == 3 || year < 0)
        return std::nullopt;
    const QDate date(fullYear(year, parts[2].size()), month, day);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

QDate Clock::today()
{
    return now().date();
}

QDateTime Clock::now()
{
    return momentForTests ? *momentForTests : QDateTime::currentDateTime();
}

void Clock::setForTests(std::optional<QDateTime> moment)
{
    momentForTests = std::move(moment);
}
