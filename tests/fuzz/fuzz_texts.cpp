#include "Require.h"

#include "Collation.h"
#include "Like.h"
#include "RuntimeError.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// The same pattern for another engine. Only without sets, since those are written differently.
bool otherEngineMatches(const QString& pattern, const QString& text)
{
    QString expression = QRegularExpression::escape(folded(pattern));
    expression.replace(u"\\%"_s, u".*"_s).replace(u'_', u'.');
    const QRegularExpression other(QRegularExpression::anchoredPattern(expression),
                                   QRegularExpression::DotMatchesEverythingOption);
    return other.match(folded(text)).hasMatch();
}

void findItself(const QString& text)
{
    QString pattern;
    for (const QChar c : text)
        pattern += u"%_["_s.contains(c) ? u'[' + QString(c) + u']' : QString(c);
    const LikePattern own(u'%' + pattern + u'%');
    require(own.isSubstring() && own.matches(text), "a text contains itself");
    require(own.literal() == folded(text), "the literal is the folded text");
    require(LikePattern(pattern).matches(folded(text)), "a text is like itself in any case");
}

void search(const QString& patternText, const QString& text)
{
    try {
        const bool matches = LikePattern(patternText).matches(text);
        if (matches)
            require(LikePattern(u'%' + patternText + u'%').matches(u'x' + text + u'x'),
                    "more on both sides is found");
        const QString both = patternText + text;
        const bool isSmall = patternText.count(u'%') < 5 && text.size() < 40;
        if (isSmall && !patternText.contains(u'[') &&
            std::none_of(both.begin(), both.end(), [](QChar c) { return c.isSurrogate(); }))
            require(matches == otherEngineMatches(patternText, text),
                    "another engine finds the same");
    } catch (const RuntimeError& error) {
        require(error.number() == RuntimeError::EngineFault && patternText.contains(u'['),
                "only an unclosed bracket is a fault");
    }
}

void order(const QString& text)
{
    require(sortKey(folded(text)) == sortKey(text), "case does not count");
    require(sortKey(text.normalized(QString::NormalizationForm_D)) ==
                sortKey(text.normalized(QString::NormalizationForm_C)),
            "how an accent is composed does not count");
    require(folded(text).size() == text.size() && folded(folded(text)) == folded(text),
            "folding keeps the length and is done once");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    findItself(input.rest);
    search(input.head, input.rest);
    order(input.head + input.rest);
    return 0;
}
