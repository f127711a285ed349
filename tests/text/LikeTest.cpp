#include "Like.h"
#include "RuntimeError.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(Like, PatternsFollowTheWildcards)
{
    struct Row
    {
        const char* rule;
        QString pattern;
        QString text;
        bool matches;
    };
    const std::vector<Row> rows{
        {"case is ignored", u"%jose%"_s, u"MARIA JOSE"_s, true},
        {"accents count", u"%jose%"_s, u"José"_s, false},
        {"case of accented letters", u"%JOSÉ%"_s, u"josé"_s, true},
        {"anything, the empty text too", u"%%"_s, u""_s, true},
        {"the empty pattern", u""_s, u"a"_s, false},
        {"whole text", u"ab"_s, u"abc"_s, false},
        {"head", u"ab%"_s, u"abc"_s, true},
        {"tail", u"%ab"_s, u"abc"_s, false},
        {"the last run is tried again", u"%ab%ac"_s, u"xabacabac"_s, true},
        {"runs do not overlap", u"aba%aba"_s, u"ababa"_s, false},
        {"one character", u"%a_c%"_s, u"xABCx"_s, true},
        {"one character is not none", u"a_"_s, u"a"_s, false},
        {"star is a character", u"%*%"_s, u"abc"_s, false},
        {"star matches itself", u"%*%"_s, u"a*c"_s, true},
        {"question mark is a character", u"a?c"_s, u"abc"_s, false},
        {"set", u"[a-c]x"_s, u"Bx"_s, true},
        {"set of single characters", u"[xz]"_s, u"y"_s, false},
        {"hyphen at the end of a set", u"[a-]"_s, u"-"_s, true},
        {"complement", u"%[!a-c]%"_s, u"abc"_s, false},
        {"complement takes a character", u"[!a]"_s, u""_s, false},
        {"wildcard in brackets", u"%[%]%"_s, u"10"_s, false},
        {"wildcard in brackets matches itself", u"%[%]%"_s, u"10%"_s, true},
        {"bracket in brackets", u"%[[]%"_s, u"a[b"_s, true},
        {"closing bracket alone", u"a]"_s, u"a]"_s, true},
        {"nothing in brackets is nothing", u"a[]b"_s, u"ab"_s, true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(LikePattern(row.pattern).matches(row.text), row.matches) << row.rule;
}

TEST(Like, PlainSearchesAreToldApart)
{
    EXPECT_TRUE(LikePattern(u"%%"_s).isSubstring());
    EXPECT_EQ(LikePattern(u"%Ção[%]%"_s).literal(), u"ção%"_s);
    for (const QString& pattern : {u"ab"_s, u"%ab"_s, u"ab%"_s, u"%a_%"_s, u"%a%b%"_s, u"%[ab]%"_s})
        EXPECT_FALSE(LikePattern(pattern).isSubstring()) << pattern.toStdString();
}

TEST(Like, UnclosedBracketIsAFault)
{
    try {
        LikePattern(u"%a[b%"_s);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), RuntimeError::EngineFault);
    }
}
