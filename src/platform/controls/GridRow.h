#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

// The cells of one row while they are written into a grid, from the first column on. A grid keeps
// its texts in UTF-8, each behind its length.
class GridRow
{
public:
    using Length = std::uint32_t;

    explicit GridRow(std::string& packed) : packed_(packed) {}

    void add(std::string_view utf8)
    {
        const auto length = static_cast<Length>(utf8.size());
        packed_.append(reinterpret_cast<const char*>(&length), sizeof length);
        packed_.append(utf8);
        ++count_;
    }
    void add(const QString& text) { add(std::string_view(text.toUtf8())); }
    int count() const { return count_; }

private:
    std::string& packed_;
    int count_ = 0;
};
