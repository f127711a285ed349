#include "Like.h"

#include "Collation.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <random>

using namespace Qt::Literals::StringLiterals;

TEST(Like, CaseAndSetsFollowTheirRules)
{
    struct Row
    {
        const char* rule;
        QString pattern, text;
        bool matches;
    };
    const std::vector<Row> rows{
        {"case is ignored", u"%jose%"_s, u"MARIA JOSE"_s, true},
        {"accents count", u"%jose%"_s, u"José"_s, false},
        {"case of accented letters", u"%JOSÉ%"_s, u"josé"_s, true},
        {"whole text", u"ab"_s, u"abc"_s, false},
        {"question mark is a character", u"a?c"_s, u"abc"_s, false},
        {"set", u"[a-c]x"_s, u"Bx"_s, true},
        {"set of single characters", u"[xz]"_s, u"y"_s, false},
        {"hyphen at the end of a set", u"[a-]"_s, u"-"_s, true},
        {"complement", u"%[!a-c]%"_s, u"abc"_s, false},
        {"complement takes a character", u"[!a]"_s, u""_s, false},
        {"wildcard in brackets", u"%[%]%"_s, u"10"_s, false},
        {"bracket in brackets", u"%[[]%"_s, u"a[b"_s, true},
        {"closing bracket alone", u"a]"_s, u"a]"_s, true},
        {"nothing in brackets is nothing", u"a[]b"_s, u"ab"_s, true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(LikePattern(row.pattern).matches(row.text), row.matches) << row.rule;
}

TEST(Like, AnotherEngineFindsTheSame)
{
    std::mt19937 random(7);
    const auto some = [&random](const QString& letters) {
        QString text;
        for (auto length = random() % 8; length > 0; --length)
            text += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
        return text;
    };
    for (int round = 0; round < 10'000; ++round) {
        const QString pattern = some(u"aBÉ.%_%_\n"_s);
        const QString text = some(u"abBé.\n"_s);
        QString expression = QRegularExpression::escape(folded(pattern));
        expression.replace(u"\\%"_s, u".*"_s).replace(u'_', u'.');
        const QRegularExpression other(QRegularExpression::anchoredPattern(expression),
                                       QRegularExpression::DotMatchesEverythingOption);
        EXPECT_EQ(LikePattern(pattern).matches(text), other.match(folded(text)).hasMatch())
            << pattern.toStdString() << " | " << text.toStdString();
    }
}
