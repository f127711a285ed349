#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// The text of a profile file in memory: Windows-1252, or UTF-16 where its mark stands at the front.
// What is not set anew comes out byte for byte as it went in.
class Profile
{
public:
    explicit Profile(const QByteArray& bytes);

    // Nothing where section or key is missing. Of several of one name the first counts.
    std::optional<QString> value(const QString& section, const QString& key) const;

    // In place where the key is there; a new key goes to the end of its section, a new section to
    // the end of the file. The value ends at a null character and stays on its one line.
    void set(const QString& section, const QString& key, const QString& value);

    QByteArray bytes() const;

private:
    struct Line
    {
        QString text;
        QString ending;
    };
    // Lines from the heading of a section up to the next heading.
    struct Section
    {
        std::size_t first;
        std::size_t end;
    };

    static std::optional<QStringView> heading(const Line& line);
    static bool isKey(const Line& line, const QString& key);

    void split(const QString& text);
    std::optional<Section> find(const QString& section) const;
    std::optional<std::size_t> find(const QString& section, const QString& key) const;
    std::size_t endOfText(const Section& section) const;
    void insert(std::size_t place, const QString& text);

    bool utf16_;
    std::vector<Line> lines_;
};
