#include "OrderKey.h"

#include "Collation.h"
#include "FieldValues.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>

namespace {

constexpr char NullRank = 1;
constexpr char NumberRank = 2;
constexpr char DateRank = 3;
constexpr char TextRank = 4;

// Doubles as bytes that compare as the numbers do.
void appendNumber(std::string& key, double number)
{
    auto bits = std::bit_cast<quint64>(number + 0.0); // minus zero is zero
    constexpr quint64 Sign = quint64(1) << 63;
    bits = bits & Sign ? ~bits : bits | Sign;
    const quint64 big = qToBigEndian(bits);
    key.append(reinterpret_cast<const char*>(&big), sizeof big);
}

bool isAscii(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return c & 0x80; });
}

// Folding of single ASCII characters, taken from the folding of whole texts.
const std::array<char, 128>& asciiFolding()
{
    static const std::array<char, 128> table = [] {
        std::array<char, 128> result;
        for (int c = 0; c < 128; ++c) {
            const QString text = folded(QString(QChar(c)));
            result[static_cast<std::size_t>(c)] = text.size() == 1
                                                      ? static_cast<char>(text.front().toLatin1())
                                                      : static_cast<char>(c);
        }
        return result;
    }();
    return table;
}

} // namespace

std::string orderKey(const Cell& cell, FieldKind kind)
{
    std::string key;
    switch (cell.type) {
    case Cell::Type::Null: key += NullRank; return key;
    case Cell::Type::Integer:
    case Cell::Type::Real:
        key += NumberRank;
        appendNumber(key,
                     cell.type == Cell::Type::Real ? cell.real : static_cast<double>(cell.integer));
        return key;
    case Cell::Type::Text: break;
    }
    if (kind == FieldKind::Date && std::holds_alternative<QDate>(toValue(cell, kind).data())) {
        key += DateRank;
        return key.append(cell.text);
    }
    key += TextRank;
    const QByteArray text = sortKey(toDisplayText(cell, kind));
    return key.append(text.constData(), static_cast<std::size_t>(text.size()));
}

void appendFolded(std::string& target, const Cell& cell, FieldKind kind)
{
    if (cell.isNull())
        return;
    if (kind == FieldKind::Text && cell.type == Cell::Type::Text && isAscii(cell.text)) {
        const std::array<char, 128>& folding = asciiFolding();
        const std::size_t begin = target.size();
        target.resize(begin + cell.text.size());
        std::transform(cell.text.begin(), cell.text.end(),
                       target.begin() + static_cast<long>(begin),
                       [&folding](char c) { return folding[static_cast<unsigned char>(c)]; });
        return;
    }
    const QByteArray text = folded(toDisplayText(cell, kind)).toUtf8();
    target.append(text.constData(), static_cast<std::size_t>(text.size()));
}

bool cellContains(const Cell& cell, FieldKind kind, const std::string& needle)
{
    if (cell.isNull())
        return false;
    std::string text;
    appendFolded(text, cell, kind);
    return text.find(needle) != std::string::npos;
}
