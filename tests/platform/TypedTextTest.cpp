#include "TypedText.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(TypedTextTest, WhatMayStand)
{
    // The caret is the "|".
    struct Row
    {
        const char* rule;
        QString former, typed;
        int limit;
        Lines lines;
        QString stands;
    };
    const std::vector<Row> rows{
        {"no limit", u"a"_s, u"abc|"_s, 0, Lines::One, u"abc|"_s},
        {"full", u"1234"_s, u"12x|34"_s, 4, Lines::One, u"12|34"_s},
        {"full, the same letter", u"aaaa"_s, u"aaa|aa"_s, 4, Lines::One, u"aa|aa"_s},
        {"pasted beyond", u"14"_s, u"12345|4"_s, 4, Lines::One, u"123|4"_s},
        {"longer already", u"12345"_s, u"1x|2345"_s, 4, Lines::One, u"1|2345"_s},
        {"shortened while longer", u"12345"_s, u"1|345"_s, 2, Lines::One, u"1|345"_s},
        {"overtyped while longer", u"12345"_s, u"abcde|"_s, 4, Lines::One, u"abcd|"_s},
        {"half overtyped", u"12345"_s, u"1abcd|"_s, 4, Lines::Several, u"1abc|"_s},
        {"breaks at the ends", u"()"_s, u"(\r\n\na\n|)"_s, 0, Lines::One, u"(a|)"_s},
        {"inner breaks", QString(), u"a\r\n\nb\u2028c d\re|"_s, 0, Lines::One, u"a b c d e|"_s},
        {"breaks out before the cut", QString(), u"\nab\n|"_s, 2, Lines::One, u"ab|"_s},
        {"several lines", QString(), u"\na\n|"_s, 0, Lines::Several, u"\na\n|"_s},
        {"no half characters", QString(), u"a\U0001F600|"_s, 2, Lines::One, u"a|"_s},
    };
    for (const Row& row : rows) {
        QString text = row.typed;
        const auto caret = static_cast<int>(text.indexOf(u'|'));
        text.remove(caret, 1);
        const TypedText allowed = allowedText(row.former, {text, caret}, row.limit, row.lines);
        QString shown = allowed.text;
        shown.insert(allowed.caret, u'|');
        EXPECT_EQ(shown, row.stands) << row.rule << ": " << shown.toStdString();
    }
}

} // namespace
