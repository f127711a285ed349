#include "PackedRow.h"

namespace {

// Above the length of the longest short text, a byte of the header names a kind.
enum Code : quint8
{
    LongestShortText = 249,
    NullCell,
    LongText,
    Integer,
    Real,
    Zero,
    One
};

constexpr std::size_t IdSize = sizeof(qint64);

template <class T> T read(const char* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

std::size_t contentSize(quint8 code, const char* content)
{
    if (code <= LongestShortText)
        return code;
    switch (code) {
    case LongText: return sizeof(quint32) + read<quint32>(content);
    case Integer:
    case Real: return sizeof(qint64);
    default: return 0;
    }
}

} // namespace

Cell RowView::cell(int field) const
{
    const auto* header = reinterpret_cast<const quint8*>(bytes_ + IdSize);
    const char* content = bytes_ + IdSize + fields_;
    for (int i = 0; i < field; ++i)
        content += contentSize(header[i], content);

    const quint8 code = header[field];
    if (code <= LongestShortText)
        return Cell::ofText({content, code});
    switch (code) {
    case LongText: return Cell::ofText({content + sizeof(quint32), read<quint32>(content)});
    case Integer: return Cell::ofInteger(read<qint64>(content));
    case Real: return Cell::ofReal(read<double>(content));
    case Zero: return Cell::ofInteger(0);
    case One: return Cell::ofInteger(1);
    default: return Cell::null();
    }
}

std::size_t RowView::size() const
{
    const auto* header = reinterpret_cast<const quint8*>(bytes_ + IdSize);
    const char* content = bytes_ + IdSize + fields_;
    for (int i = 0; i < fields_; ++i)
        content += contentSize(header[i], content);
    return static_cast<std::size_t>(content - bytes_);
}

bool RowView::operator==(RowView other) const
{
    const std::size_t bytes = size();
    return bytes == other.size() && std::memcmp(bytes_, other.bytes_, bytes) == 0;
}

void PackedRow::begin(qint64 id, int fields)
{
    fields_ = fields;
    next_ = 0;
    used_ = IdSize + static_cast<std::size_t>(fields);
    if (bytes_.size() < used_)
        bytes_.resize(used_);
    std::memset(bytes_.data() + IdSize, NullCell, static_cast<std::size_t>(fields));
    setId(id);
}

void PackedRow::append(const void* content, std::size_t size)
{
    if (used_ + size > bytes_.size())
        bytes_.resize(2 * (used_ + size));
    std::memcpy(bytes_.data() + used_, content, size);
    used_ += size;
}

void PackedRow::add(const Cell& cell)
{
    quint8 code = NullCell;
    switch (cell.type) {
    case Cell::Type::Null: break;
    case Cell::Type::Integer:
        if (cell.integer == 0 || cell.integer == 1) {
            code = cell.integer == 0 ? Zero : One;
        } else {
            code = Integer;
            append(&cell.integer, sizeof cell.integer);
        }
        break;
    case Cell::Type::Real:
        code = Real;
        append(&cell.real, sizeof cell.real);
        break;
    case Cell::Type::Text:
        if (cell.text.size() <= LongestShortText) {
            code = static_cast<quint8>(cell.text.size());
        } else {
            code = LongText;
            const auto length = static_cast<quint32>(cell.text.size());
            append(&length, sizeof length);
        }
        if (!cell.text.empty())
            append(cell.text.data(), cell.text.size());
        break;
    }
    bytes_[IdSize + static_cast<std::size_t>(next_++)] = static_cast<char>(code);
}

void PackedRow::assign(RowView row)
{
    fields_ = row.fieldCount();
    next_ = fields_;
    used_ = row.size();
    bytes_.assign(row.bytes(), used_);
}
