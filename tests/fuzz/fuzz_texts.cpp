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

void search(const QString& patternText, const QString& text)
{
    const LikePattern own(u'%' + escaped(text) + u'%');
    require(own.isSubstring() && own.matches(text), "a text contains itself");
    require(own.literal() == folded(text), "the literal is the folded text");
    require(LikePattern(escaped(text)).matches(text), "a text is like itself");
    require(LikePattern(escaped(text)).matches(folded(text)), "case does not count");

    try {
        const LikePattern pattern(patternText);
        const bool matches = pattern.matches(text);
        require(matches == pattern.matches(folded(text)), "case of the text does not count");
        if (matches)
            require(LikePattern(u'%' + patternText + u'%').matches(u'x' + text + u'x'),
                    "more on both sides is found");
        const bool isSmall = patternText.count(u'%') < 5 && text.size() < 40;
        if (isSmall && !patternText.contains(u'[') && isPlain(patternText + text))
            require(matches ==
                        asRegularExpression(folded(patternText)).match(folded(text)).hasMatch(),
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
    require(folded(text).size() == text.size(), "folding keeps the length");
    require(folded(folded(text)) == folded(text), "folding twice is folding once");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    search(input.head, input.rest);
    order(input.head);
    order(input.rest);
    return 0;
}
