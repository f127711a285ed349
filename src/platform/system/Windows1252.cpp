#include "Windows1252.h"

#include <algorithm>
#include <array>

// Not the toolkit's converter of that name: it writes the control character 1A for what the code
// page does not have, and is only there where the toolkit was built with ICU.

namespace {

// The characters of the bytes 80 to 9F; all others have the number of their byte.
constexpr std::array<char16_t, 32> middleRow{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

QString fromWindows1252(const QByteArray& bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return code >= 0x80 && code <= 0x9F ? QChar(middleRow[code - 0x80])
                                            : QChar(static_cast<char16_t>(code));
    });
    return text;
}

QByteArray toWindows1252(const QString& text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), bytes.begin(), [](QChar character) {
        const char16_t code = character.unicode();
        if (code < 0x80 || (code > 0x9F && code <= 0xFF))
            return static_cast<char>(code);
        const auto* const place = std::find(middleRow.begin(), middleRow.end(), code);
        return place == middleRow.end() ? '?'
                                        : static_cast<char>(0x80 + (place - middleRow.begin()));
    });
    return bytes;
}
