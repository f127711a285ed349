#include "Require.h"

#include "Profile.h"

#include <QByteArray>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// Up to the first null byte the value, behind it the file, which may be anything.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype end = std::max<qsizetype>(0, input.indexOf('\0'));
    const QString value = QString::fromLatin1(input.left(end));
    const QByteArray file = input.mid(end + 1);
    const bool utf16 = file.startsWith("\xFF\xFE");

    Profile profile(file);
    require(profile.bytes() == (utf16 ? file.left(file.size() / 2 * 2) : file),
            "what is not written stays");
    const std::optional<QString> other = profile.value(u"b"_s, u"a"_s);

    profile.set(u"A"_s, u"b"_s, value);
    const std::optional<QString> read = profile.value(u"a"_s, u"B"_s);
    require(read.has_value(), "a key written is there");
    require(value.contains(*read) || value.contains(u'\r') || value.contains(u'\n'),
            "no more is read than was written");
    require(profile.value(u"b"_s, u"a"_s) == other, "the other section stays");

    const Profile again(profile.bytes());
    const bool inCodePage = std::none_of(value.begin(), value.end(), [](QChar c) {
        return c.unicode() >= 0x80 && c.unicode() <= 0x9F;
    });
    if (inCodePage)
        require(again.value(u"A"_s, u"b"_s) == read, "the file reads as it was written");
    require(again.bytes() == profile.bytes(), "reading changes nothing");

    // Set to what it reads as, it must not change any more.
    Profile settled = again;
    settled.set(u"a"_s, u"b"_s, u"x"_s);
    const QByteArray once = settled.bytes();
    settled.set(u"A"_s, u"B"_s, u"x"_s);
    require(settled.bytes() == once, "a second write of the same changes nothing");
    require(settled.value(u"a"_s, u"b"_s) == u"x"_s, "a key is replaced, not doubled");
    return 0;
}
