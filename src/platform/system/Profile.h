#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// The text of a profile file in memory: Windows-1252; UTF-8 or UTF-16 where its mark stands at the
// front; and UTF-8 without a mark where it has characters beyond ASCII that all read as such, which
// Windows-1252 gives by a freak only. What is not set anew comes out byte for byte as it went in.
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

    enum class Encoding
    {
        Windows1252,
        Utf8,
        MarkedUtf8,
        Utf16
    };

    static Encoding encodingOf(const QByteArray& bytes);
    static std::optional<QStringView> heading(const Line& line);
    static bool isKey(const Line& line, const QString& key);

    void split(const QString& text);
    std::optional<Section> find(const QString& section) const;
    std::optional<std::size_t> find(const QString& section, const QString& key) const;
    std::size_t endOfText(const Section& section) const;
    void insert(std::size_t place, const QString& text);

    Encoding encoding_;
    std::vector<Line> lines_;
};
