#include "ProfileFile.h"

#include "DurableFile.h"
#include "Faults.h"
#include "RuntimeError.h"
#include "Windows1252.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstring>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = 16 * 1024 * 1024;
const QByteArray utf16Mark = QByteArrayLiteral("\xFF\xFE");

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

QStringView withoutBlanks(QStringView text)
{
    while (!text.isEmpty() && text.front() <= u' ')
        text = text.mid(1);
    while (!text.isEmpty() && text.back() <= u' ')
        text.chop(1);
    return text;
}

bool sameName(QStringView one, QStringView other)
{
    return withoutBlanks(one).compare(withoutBlanks(other), Qt::CaseInsensitive) == 0;
}

std::optional<QStringView> heading(const Line& line)
{
    const QStringView text = withoutBlanks(line.text);
    const qsizetype close = text.indexOf(u']');
    if (!text.startsWith(u'[') || close < 0)
        return std::nullopt;
    return text.mid(1, close - 1);
}

bool isKey(const Line& line, const QString& key)
{
    const qsizetype equals = line.text.indexOf(u'=');
    return equals >= 0 && !withoutBlanks(line.text).startsWith(u';') &&
           sameName(QStringView(line.text).left(equals), key);
}

QString valueOf(const Line& line)
{
    QStringView value = withoutBlanks(QStringView(line.text).mid(line.text.indexOf(u'=') + 1));
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return (quoted ? value.mid(1, value.size() - 2) : value).toString();
}

class Profile
{
public:
    explicit Profile(const QByteArray& bytes) : utf16_(bytes.startsWith(utf16Mark))
    {
        if (utf16_) {
            // An odd byte at the end is half a character, and goes.
            QString text((bytes.size() - utf16Mark.size()) / 2, Qt::Uninitialized);
            std::memcpy(text.data(), bytes.constData() + utf16Mark.size(),
                        static_cast<std::size_t>(text.size()) * 2);
            split(text);
        } else {
            split(fromWindows1252(bytes));
        }
    }

    // The first key of that name in the first section of that name counts.
    Line* find(const QString& section, const QString& key)
    {
        const std::optional<Section> lines = find(section);
        for (std::size_t i = lines ? lines->first + 1 : 0; lines && i < lines->end; ++i) {
            if (isKey(lines_[i], key))
                return &lines_[i];
        }
        return nullptr;
    }

    void set(const QString& section, const QString& key, const QString& value)
    {
        if (Line* const line = find(section, key)) {
            line->text = line->text.left(line->text.indexOf(u'=') + 1) + value;
            return;
        }
        const std::optional<Section> lines = find(section);
        if (!lines)
            insert(lines_.size(), u'[' + section + u']');
        insert(lines ? endOfText(*lines) : lines_.size(), key + u'=' + value);
    }

    QByteArray bytes() const
    {
        QString text;
        for (const Line& line : lines_)
            text += line.text + line.ending;
        if (!utf16_)
            return toWindows1252(text);
        return utf16Mark +
               QByteArray(reinterpret_cast<const char*>(text.constData()), text.size() * 2);
    }

private:
    void split(const QString& text)
    {
        for (qsizetype start = 0; start < text.size();) {
            const qsizetype feed = text.indexOf(u'\n', start);
            const qsizetype next = feed < 0 ? text.size() : feed + 1;
            qsizetype end = feed < 0 ? text.size() : feed;
            if (feed > start && text[feed - 1] == u'\r')
                --end;
            lines_.push_back({text.mid(start, end - start), text.mid(end, next - end)});
            start = next;
        }
    }

    std::optional<Section> find(const QString& section) const
    {
        std::optional<Section> found;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            const std::optional<QStringView> name = heading(lines_[i]);
            if (found && name) {
                found->end = i;
                break;
            }
            if (!found && name && sameName(*name, section))
                found = Section{i, lines_.size()};
        }
        return found;
    }

    // Behind the last line of the section that is not blank: the gap before the next one stays.
    std::size_t endOfText(const Section& section) const
    {
        std::size_t end = section.end;
        while (end > section.first + 1 && withoutBlanks(lines_[end - 1].text).isEmpty())
            --end;
        return end;
    }

    void insert(std::size_t place, const QString& text)
    {
        if (place > 0 && lines_[place - 1].ending.isEmpty())
            lines_[place - 1].ending = u"\r\n"_s;
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), {text, u"\r\n"_s});
    }

    bool utf16_;
    std::vector<Line> lines_;
};

// Nothing where there is no such file; also for a folder, a pipe or a file beyond all reason.
std::optional<QByteArray> contents(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

// The renaming would get past a file or folder marked read-only, and the administrator past any
// mark.
bool markedReadOnly(const QString& path)
{
    const auto anyone = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    return !(QFileInfo(path).permissions() & anyone);
}

// One line of the file whatever it holds, up to the end mark that the classic call stops at.
QString onOneLine(QString value)
{
    value.truncate(value.indexOf(QChar(u'\0')) < 0 ? value.size() : value.indexOf(QChar(u'\0')));
    return value.replace(u'\r', u' ').replace(u'\n', u' ');
}

bool write(const QString& section, const QString& key, const QString& value, const QString& path)
{
    faults::point(faults::Call::File);
    const QFileInfo target(path);
    const QString real = target.exists() ? target.canonicalFilePath() : path;
    if (markedReadOnly(QFileInfo(real).absolutePath()) || (target.exists() && markedReadOnly(real)))
        return false;
    const std::optional<QByteArray> before = contents(real);
    if (target.exists() && !before)
        return false;

    Profile profile(before.value_or(QByteArray()));
    profile.set(section, key, onOneLine(value));
    const QByteArray after = profile.bytes();
    QSaveFile file(real);
    return file.open(QIODevice::WriteOnly) && file.write(after) == after.size() &&
           commitDurably(file);
}

QString read(const QString& section, const QString& key, const QString& defaultValue,
             const QString& path)
{
    faults::point(faults::Call::File);
    const std::optional<QByteArray> bytes = contents(path);
    if (!bytes)
        return defaultValue;
    Profile profile(*bytes);
    const Line* const line = profile.find(section, key);
    return line ? valueOf(*line) : defaultValue;
}

} // namespace

QString readProfileString(const QString& section, const QString& key, const QString& defaultValue,
                          int bufferSize, const QString& path)
try {
    return read(section, key, defaultValue, path).left(qMax(0, bufferSize - 1));
} catch (const RuntimeError&) {
    return defaultValue.left(qMax(0, bufferSize - 1));
}

bool writeProfileString(const QString& section, const QString& key, const QString& value,
                        const QString& path)
try {
    return write(section, key, value, path);
} catch (const RuntimeError&) {
    return false;
}
