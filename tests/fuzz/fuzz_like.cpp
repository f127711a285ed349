#include "Require.h"

#include "Collation.h"
#include "Like.h"
#include "RuntimeError.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString escaped(const QString& text)
{
    QString pattern;
    for (const QChar c : text)
        pattern += u"%_["_s.contains(c) ? u'[' + QString(c) + u']' : QString(c);
    return pattern;
}

// The same pattern for another engine. Only without sets, since those are written differently.
QRegularExpression asRegularExpression(const QString& pattern)
{
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(u"\\%"_s, u".*"_s).replace(u'_', u'.');
    return QRegularExpression(QRegularExpression::anchoredPattern(expression),
                              QRegularExpression::DotMatchesEverythingOption);
}

bool isPlain(const QString& text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate(); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    const QString& text = input.rest;

    const LikePattern own(u'%' + escaped(text) + u'%');
    require(own.isSubstring() && own.matches(text), "a text contains itself");
    require(own.literal() == folded(text), "the literal is the folded text");
    require(LikePattern(escaped(text)).matches(text), "a text is like itself");
    require(LikePattern(escaped(text)).matches(folded(text)), "case does not count");

    try {
        const LikePattern pattern(input.head);
        const bool matches = pattern.matches(text);
        require(matches == pattern.matches(folded(text)), "case of the text does not count");
        if (matches)
            require(LikePattern(u'%' + input.head + u'%').matches(u'x' + text + u'x'),
                    "more on both sides is found");
        const bool isSmall = input.head.count(u'%') < 5 && text.size() < 40;
        if (isSmall && !input.head.contains(u'[') && isPlain(input.whole))
            require(matches ==
                        asRegularExpression(folded(input.head)).match(folded(text)).hasMatch(),
                    "another engine finds the same");
    } catch (const RuntimeError& error) {
        require(error.number() == RuntimeError::EngineFault && input.head.contains(u'['),
                "only an unclosed bracket is a fault");
    }
    return 0;
}
