#pragma once

#include <QString>

#include <array>

// The rows of the client record: how its tables are asked for, and which field is shown where.
namespace clientrows {

inline const QString ClientsByNumber = QStringLiteral("SELECT * FROM Cliente order by numero");
inline const QString TwinsByNumber = QStringLiteral("SELECT * FROM PECAAPLICADA order by numero");

// Field of Cliente of each box Text1(0) to Text1(15).
constexpr std::array<int, 16> FieldOfBox{3, 4, 5, 6, 7, 8, 9, 13, 14, 15, 16, 17, 18, 0, 1, 2};
constexpr int FirstPhone = 10;
constexpr int SecondPhone = 11;
constexpr int Document = 12;
constexpr int Price = 19;
constexpr int FirstFlag = 20;
constexpr int Shelf = 24;

} // namespace clientrows
