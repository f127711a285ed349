#include "StockTest.h"

#include <QWidget>

namespace {

const QString Browsing = u"0 2 4 5 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5 16"_s;
const QString Open = u"3 16"_s; // the code stays locked

class RegisterTest : public StockTest
{
protected:
    static void press(int button) { click(parts().Command1(button)); }
};

// The longer ways are walked at random beside a model.
TEST_F(RegisterTest, EachActionLeavesItsButtonsAndBoxes)
{
    addParts({u"Resistor"_s, u"Diode"_s});
    parts().show();
    const QString first = u"0 2 4 5 8 11 12 13"_s;
    const std::vector<RecordState> states{
        {{}, Browsing, AllLocked, u"0000001"_s},
        {u"0"_s, u"1 9"_s, Open, u"0000003"_s},
        {u"9"_s, Browsing, AllLocked, u"0000002"_s},
        {u"2"_s, u"1 3 9"_s, Open, u"0000002"_s},
        {u"3n"_s, u"1 3 9"_s, Open, u"0000002"_s},
        {u"1"_s, Browsing, AllLocked, u"0000002"_s},
        {u"12"_s, first, AllLocked, u"0000001"_s},
        {u"10"_s, first, AllLocked, u"0000001"_s},
        {u"11"_s, Browsing, AllLocked, u"0000002"_s},
        {u"11"_s, u"0 2 4 5 8 10 12 13"_s, AllLocked, u"0000002"_s},
        {u"5"_s, u"5"_s, AllLocked, QString()},
        {u"5"_s, u"1 9"_s, Open, u"0000003"_s},
        {u"9"_s, Browsing, AllLocked, u"0000002"_s},
        {u"2 3y"_s, Browsing, AllLocked, u"0000001"_s},
        {u"2 3y"_s, u"0 8"_s, AllLocked, u"0000000"_s},
    };
    expectStates(catalogue(), states, [] { return parts().Text1(3).text(); });
}

TEST_F(RegisterTest, PriceIsMoneyAndANullOneShowsAPoint)
{
    addPart(u"0000001"_s, u"No price"_s, u"NULL"_s, u"NULL"_s);
    parts().show();
    EXPECT_EQ(parts().Text1(5).text(), u"0.00"_s);
    press(2);
    enter(parts().Text1(5));
    type(parts().Text1(5), {});
    enter(parts().Text1(1));
    EXPECT_EQ(parts().Text1(5).text(), u"0,00"_s);
    type(parts().Text1(5), u"1.234,5x"_s);
    type(parts().Text1(2), u"1a2"_s);
    press(1);
    EXPECT_EQ(gridRows(parts().MSFlexGrid1), QStringList{u"0000001|A1|12|No price|1.234,50"_s});
    press(5);
    EXPECT_EQ(parts().Text1(5).text(), u"0,00"_s);
    press(5);
    EXPECT_EQ(parts().Text1(5).text(), u"0,00"_s);
}

TEST_F(RegisterTest, FilterFollowsEqualTextsNotBoxes)
{
    parts().show();
    press(0);
    type(parts().Text1(2), u"x"_s); // empty like the description, which takes anything
    EXPECT_EQ(parts().Text1(2).text(), u"x"_s);
    type(parts().Text1(0), u"d"_s);
    type(parts().Text1(1), u"e"_s);
    type(parts().Text1(2), u"5"_s);
    parts().Text1(5).setText(u"5"_s);
    type(parts().Text1(5), u","_s); // equal to the stock, which takes no comma
    EXPECT_EQ(parts().Text1(5).text(), u"5"_s);
}

TEST_F(RegisterTest, EnterOnTheGridShowsItsPartAndALookUpInVainStaysOnIt)
{
    addParts({u"Resistor"_s, u"Diode"_s});
    parts().show();
    parts().MSFlexGrid1.setRow(2);
    ::press(parts().MSFlexGrid1, Qt::Key_Return);
    for (const QString& nobody : {u"'"_s, u"9"_s}) {
        parts().Text2.setText(nobody);
        EXPECT_EQ(parts().Text1(3).text(), u"0000002"_s);
    }
}

TEST_F(RegisterTest, WhatFailsOrIsGoneIsStoredOnceOrNotAtAll)
{
    expectSafe(catalogue());
}

TEST_F(RegisterTest, MissingDatabaseShowsItsBoxesAndTheFormCanBeLeft)
{
    expectToBeLeftWithoutDatabase(catalogue(), 4);
}

class PartSearchTest : public StockTest
{
protected:
    PartSearchTest()
    {
        addPart(u"0000001"_s, u"Capacitor 10"_s);
        addPart(u"0000010"_s, u"Diodo"_s, u"NULL"_s, u"NULL"_s);
        mainSql(u"UPDATE Pecas SET EQUIVALENTE = 'Capacitor' WHERE CODIGO = '0000010'"_s);
    }
    static Form1pecabusca& search() { return form<Form1pecabusca>(); }
};

TEST_F(PartSearchTest, EachBoxSearchesItsFieldAndEqualTextsTheFirst)
{
    search().show();
    expectEasyToWalk(search());
    expectDownLeads(search().Text4, search().MSFlexGrid1);
    EXPECT_FALSE(search().Command1.enabled());
    const QString first = u"0000001|A1|10|Capacitor 10|2,50"_s;
    const QString second = u"0000010|A1||Diodo|0,00"_s;
    const QString none = u"Buscar Peça"_s;
    const struct
    {
        int box;
        QString text;
        QStringList rows;
        QString caption;
    } steps[] = {
        {1, u"CAPACITOR"_s, {first}, none + u" - 1 peça encontrados"_s},
        // Of another case, so the box's own field.
        {2, u"capacitor"_s, {second}, none + u" - 1 peça encontrados"_s},
        {0, u"10"_s, {second}, none + u" - 1 peça encontrados"_s},
        {1, u"10"_s, {second}, none + u" - 1 peça encontrados"_s}, // as in the code box
        // Emptied with others filled: all parts.
        {2, {}, {first, second}, none + u" - 2 peça encontrados"_s},
        {0, {}, {first, second}, none + u" - 2 peça encontrados"_s},
        {1, {}, {}, none},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        search().Text4(step.box).setText(step.text);
        EXPECT_EQ(gridRows(search().MSFlexGrid1), step.rows);
        EXPECT_EQ(search().caption(), step.caption);
    }
    search().Text4(1).setText(u"d'"_s); // breaks the statement: silent
    EXPECT_EQ(search().caption(), none);
}

TEST_F(PartSearchTest, ClickArmsOpenAndTheRegisterTakesOver)
{
    QString shown;
    onModal([&shown](Form& opened) {
        EXPECT_FALSE(search().isLoaded());
        shown = static_cast<Form1Pec&>(opened).Text1(3).text();
        opened.unload();
    });
    search().show();
    type(search().Text4(1), u"Diodo"_s);
    click(search().MSFlexGrid1, 0);
    EXPECT_TRUE(search().Command1.enabled()); // a click on the heading is one on the first row
    type(search().Text4(1), u"nothing"_s);
    EXPECT_FALSE(search().Command1.enabled());
    type(search().Text4(1), u"Diodo"_s);
    click(search().MSFlexGrid1, 1);
    type(search().Text4(1), u"Capacitor"_s); // the row is lost, the choice stays
    click(search().Command1);
    EXPECT_EQ(shown, u"0000010"_s);
}

} // namespace
