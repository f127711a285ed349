#pragma once

#include <QtGlobal>

#include <cstring>
#include <string>
#include <string_view>

// One stored cell, as it lies in the file: Null, whole number, number or text in UTF-8. The text
// belongs to the row or to the caller.
struct Cell
{
    enum class Type : quint8
    {
        Null,
        Integer,
        Real,
        Text
    };

    static Cell null() { return {}; }
    static Cell ofInteger(qint64 value) { return {Type::Integer, value, 0, {}}; }
    static Cell ofReal(double value) { return {Type::Real, 0, value, {}}; }
    static Cell ofText(std::string_view value) { return {Type::Text, 0, 0, value}; }

    bool isNull() const { return type == Type::Null; }
    bool operator==(const Cell&) const = default;

    Type type = Type::Null;
    qint64 integer = 0;
    double real = 0;
    std::string_view text;
};

// A row in few bytes: its id, one byte a field that tells the kind or the length of short text,
// then the contents one after another. A hundred thousand rows lie in memory in about the room that
// they take in the file, and two equal rows have equal bytes.
class RowView
{
public:
    RowView() = default;
    RowView(const char* bytes, int fields) : bytes_(bytes), fields_(fields) {}

    bool isNull() const { return !bytes_; }
    int fieldCount() const { return fields_; }
    const char* bytes() const { return bytes_; }
    qint64 id() const
    {
        qint64 value;
        std::memcpy(&value, bytes_, sizeof value);
        return value;
    }
    Cell cell(int field) const;
    std::size_t size() const;
    bool operator==(RowView other) const;

private:
    const char* bytes_ = nullptr;
    int fields_ = 0;
};

// A row that owns its bytes. Cells are added in the order of the fields.
class PackedRow
{
public:
    void begin(qint64 id, int fields);
    void add(const Cell& cell);
    void setId(qint64 id) { std::memcpy(bytes_.data(), &id, sizeof id); }
    void assign(RowView row);

    RowView view() const { return {bytes_.data(), fields_}; }
    // The bytes, whose number it knows without counting.
    std::string_view bytes() const { return {bytes_.data(), used_}; }

private:
    void append(const void* content, std::size_t size);

    std::string bytes_; // room; what counts are the first so many
    std::size_t used_ = 0;
    int fields_ = 0;
    int next_ = 0;
};
