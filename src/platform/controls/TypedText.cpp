#include "TypedText.h"

#include <algorithm>

namespace {

bool breaksLine(QChar character)
{
    switch (character.unicode()) {
    case u'\n':
    case u'\r':
    case 0x0b: // vertical tab
    case 0x0c: // form feed
    case 0x85: // next line
    case 0x2028:
    case 0x2029: return true;
    default: return false;
    }
}

QString onOneLine(const QString& text)
{
    QString line;
    bool broken = false;
    for (const QChar character : text) {
        if (breaksLine(character)) {
            broken = !line.isEmpty();
            continue;
        }
        if (broken)
            line += u' ';
        broken = false;
        line += character;
    }
    return line;
}

// How many characters at the end both have, of so many at the most.
qsizetype commonEnd(QStringView a, QStringView b, qsizetype most)
{
    qsizetype count = 0;
    while (count < most && a[a.size() - 1 - count] == b[b.size() - 1 - count])
        ++count;
    return count;
}

} // namespace

TypedText allowedText(const QString& former, const TypedText& typed, int limit, Lines lines)
{
    const QString& text = typed.text;
    // What was put in ends at the caret; what stands behind it, and the beginning, stood before.
    const qsizetype behind =
        commonEnd(former, text, std::min(former.size(), text.size() - typed.caret));
    const qsizetype most = std::min(former.size(), text.size()) - behind;
    const qsizetype before =
        std::mismatch(former.begin(), former.begin() + most, text.begin()).first - former.begin();
    QString added = text.mid(before, text.size() - behind - before);
    if (lines == Lines::One)
        added = onOneLine(added);
    const qsizetype room = std::max<qsizetype>(0, limit - before - behind);
    if (limit > 0 && added.size() > room) {
        added.truncate(room);
        if (!added.isEmpty() && added.back().isHighSurrogate())
            added.chop(1);
    }
    return {text.left(before) + added + text.right(behind),
            static_cast<int>(before + added.size())};
}
