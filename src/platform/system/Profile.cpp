#include "Profile.h"

#include "Windows1252.h"

#include <QStringConverter>

#include <algorithm>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

// Not the toolkit's settings files: they write the whole file anew, in their own order and escapes,
// and what the shop wrote into it by hand would be gone.

namespace {

const QByteArray utf16Mark = QByteArrayLiteral("\xFF\xFE");
const QByteArray utf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");

// Stateless: a mark is a character like any other, in the middle of the file too.
QString utf8Text(const QByteArray& bytes)
{
    constexpr auto Flags =
        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom;
    return QStringDecoder(QStringConverter::Utf8, Flags)(bytes);
}

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

QString behindEquals(const QString& line)
{
    const QStringView value = withoutBlanks(QStringView(line).mid(line.indexOf(u'=') + 1));
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return (quoted ? value.mid(1, value.size() - 2) : value).toString();
}

QString onOneLine(const QString& value)
{
    QString line = value.section(QChar(u'\0'), 0, 0);
    return line.replace(u'\r', u' ').replace(u'\n', u' ');
}

} // namespace

Profile::Encoding Profile::encodingOf(const QByteArray& bytes)
{
    if (bytes.startsWith(utf16Mark))
        return Encoding::Utf16;
    const bool marked = bytes.startsWith(utf8Mark);
    // A damaged file with the mark goes through the table of bytes, which keeps each of them.
    if (utf8Text(bytes).toUtf8() != bytes)
        return Encoding::Windows1252;
    if (marked)
        return Encoding::MarkedUtf8;
    const bool plain = std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= 0; });
    return plain ? Encoding::Windows1252 : Encoding::Utf8;
}

Profile::Profile(const QByteArray& bytes) : encoding_(encodingOf(bytes))
{
    switch (encoding_) {
    case Encoding::Windows1252: split(fromWindows1252(bytes)); break;
    case Encoding::Utf8: split(utf8Text(bytes)); break;
    case Encoding::MarkedUtf8: split(utf8Text(bytes.sliced(utf8Mark.size()))); break;
    case Encoding::Utf16: {
        // An odd byte at the end is half a character, and goes.
        QString text((bytes.size() - utf16Mark.size()) / 2, Qt::Uninitialized);
        std::memcpy(text.data(), bytes.constData() + utf16Mark.size(),
                    static_cast<std::size_t>(text.size()) * 2);
        split(text);
        break;
    }
    }
}

std::optional<QString> Profile::value(const QString& section, const QString& key) const
{
    const std::optional<std::size_t> line = find(section, key);
    return line ? std::optional(behindEquals(lines_[*line].text)) : std::nullopt;
}

void Profile::set(const QString& section, const QString& key, const QString& value)
{
    if (const std::optional<std::size_t> line = find(section, key)) {
        QString& text = lines_[*line].text;
        text = text.left(text.indexOf(u'=') + 1) + onOneLine(value);
        return;
    }
    const std::optional<Section> lines = find(section);
    if (!lines)
        insert(lines_.size(), u'[' + section + u']');
    insert(lines ? endOfText(*lines) : lines_.size(), key + u'=' + onOneLine(value));
}

QByteArray Profile::bytes() const
{
    QString text;
    for (const Line& line : lines_)
        text += line.text + line.ending;
    switch (encoding_) {
    case Encoding::Windows1252:
        // What would be taken for UTF-8 the next time becomes that, with the mark.
        if (QByteArray narrow = toWindows1252(text); encodingOf(narrow) == Encoding::Windows1252)
            return narrow;
        break;
    case Encoding::Utf8: return text.toUtf8();
    case Encoding::MarkedUtf8: break;
    case Encoding::Utf16:
        return utf16Mark +
               QByteArray(reinterpret_cast<const char*>(text.constData()), text.size() * 2);
    }
    return utf8Mark + text.toUtf8();
}

std::optional<QStringView> Profile::heading(const Line& line)
{
    const QStringView text = withoutBlanks(line.text);
    const qsizetype close = text.indexOf(u']');
    if (!text.startsWith(u'[') || close < 0)
        return std::nullopt;
    return text.mid(1, close - 1);
}

bool Profile::isKey(const Line& line, const QString& key)
{
    const qsizetype equals = line.text.indexOf(u'=');
    return equals >= 0 && !withoutBlanks(line.text).startsWith(u';') &&
           sameName(QStringView(line.text).left(equals), key);
}

void Profile::split(const QString& text)
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

std::optional<Profile::Section> Profile::find(const QString& section) const
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

std::optional<std::size_t> Profile::find(const QString& section, const QString& key) const
{
    const std::optional<Section> lines = find(section);
    for (std::size_t i = lines ? lines->first + 1 : 0; lines && i < lines->end; ++i) {
        if (isKey(lines_[i], key))
            return i;
    }
    return std::nullopt;
}

// Behind the last line of the section that is not blank: the gap before the next one stays.
std::size_t Profile::endOfText(const Section& section) const
{
    std::size_t end = section.end;
    while (end > section.first + 1 && withoutBlanks(lines_[end - 1].text).isEmpty())
        --end;
    return end;
}

void Profile::insert(std::size_t place, const QString& text)
{
    if (place > 0 && lines_[place - 1].ending.isEmpty())
        lines_[place - 1].ending = u"\r\n"_s;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), {text, u"\r\n"_s});
}
