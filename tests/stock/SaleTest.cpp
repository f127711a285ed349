#include "Funciones.h"
#include "StockTest.h"

#include <QFile>
#include <QTest>
#include <QWidget>

namespace {

const QString LimitText =
    u"Máximo 24 linhas no pedido,imprima está lista,limpe os itens da lista e "
    "continue a incluir."_s;

class SaleTest : public StockTest
{
protected:
    SaleTest()
    {
        addParts({u"Resistor"_s});
        addPart(u"0000002"_s, u"Diode"_s, u"'5'"_s, u"12345600"_s);
        addPart(u"0000003"_s, u"Null"_s, u"NULL"_s, u"NULL"_s);
    }
    static QString state()
    {
        return enabledOf(sale().Command2) + u" / "_s + enabledOf(sale().Command1) +
               (sale().Text1(6).locked() ? u" locked"_s : u""_s);
    }
    // By Esc, of the row that is lit.
    static void takeOut(int row = 0)
    {
        if (row > 0)
            sale().MSFlexGrid2.setRow(row);
        press(sale().MSFlexGrid2, Qt::Key_Escape);
    }
    static QStringList list() { return gridRows(sale().MSFlexGrid2); }
};

TEST_F(SaleTest, OnlyAClickMakesAPartSaleable)
{
    expectEasyToWalk(openSale());
    expectDownLeads(sale().Text4, sale().MSFlexGrid1);
    EXPECT_EQ(state(), u" / 0 locked"_s);
    EXPECT_EQ(gridRows(sale().MSFlexGrid1).last(), u"0000003|A1|0|Null|0,00"_s);
    sale().MSFlexGrid1.setRow(2);
    press(sale().MSFlexGrid1, Qt::Key_Return);
    EXPECT_EQ(sale().Text1(3).text(), u"Diode"_s);
    EXPECT_EQ(state(), u" / 0 locked"_s);
    press(sale().MSFlexGrid1, Qt::Key_Space); // which is a click
    EXPECT_EQ(state(), u"0 / 0"_s);
    type(sale().Text1(6), {});
    EXPECT_EQ(state(), u" / 0"_s);
    type(sale().Text1(6), u"2,"_s);
    EXPECT_EQ(sale().Text1(5).text(), u"2469,12"_s);
    click(sale().Command2(0));
    EXPECT_EQ(state(), u"0 1 2 / 0 1"_s);
    EXPECT_EQ(lines(), QStringList{u"0000001|0000002|2|2469,12"_s});
    EXPECT_EQ(list(), QStringList{u"0000002|A1|2|Diode|1.234,56|2.469,12|0000001"_s});
    EXPECT_EQ(sale().Text3.text(), u"2.469,12"_s);
    EXPECT_EQ(sale().Text5.text(), u"2"_s);
    EXPECT_EQ(sale().Text1(6).text(), u"1"_s);
}

TEST_F(SaleTest, LinesStandInCodeOrderTheNewOneIsLitAndTheSearchWaitsForTheNext)
{
    openSale();
    const int litAfter[] = {1, 2, 1};
    const int sold[] = {2, 3, 1};
    for (int i = 0; i < 3; ++i) {
        sell(sold[i], sold[i] == 2 ? u"3"_s : u"1"_s);
        EXPECT_EQ(sale().MSFlexGrid2.Row(), litAfter[i]);
        EXPECT_EQ(sale().window()->focusWidget(), sale().Text4(1).widget());
    }
    EXPECT_EQ(list(), (QStringList{u"0000001|A1|1|Resistor|2,50|2,50|0000003"_s,
                                   u"0000002|A1|3|Diode|1.234,56|3.703,68|0000001"_s,
                                   u"0000003|A1|1|Null|0,00|0,00|0000002"_s}));
    EXPECT_EQ(sale().Text3.text() + u' ' + sale().Text5.text(), u"3.706,18 5"_s);
    takeOut(); // the lit one
    sell(1);
    takeOut(2);
    sell(1); // of two lines with one number the new one
    EXPECT_EQ(list()[0].right(7), u"0000003"_s);
    EXPECT_EQ(sale().MSFlexGrid2.Row(), 2);
    // What is searched for next takes the place of the search before.
    type(sale().Text4(1), u"Dio"_s);
    sell(1);
    QTest::keyClicks(sale().Text4(1).widget(), u"Res"_s);
    EXPECT_EQ(sale().Text4(1).text(), u"Res"_s);
}

TEST_F(SaleTest, ListLeftBehindComesBackWithItsTotals)
{
    addLine(u"0000001"_s, u"0000001"_s, u"'2'"_s, u"'5,00'"_s);
    addLine(u"0000002"_s, u"0000002"_s, u"'abc'"_s, u"NULL"_s); // unreadable counts as nothing
    addLine(u"0000003"_s, u"0000003"_s, u"''"_s, u"'x'"_s);
    openSale();
    EXPECT_EQ(list(), (QStringList{u"0000001|A1|2|Line|2,50|5,00|0000001"_s,
                                   u"0000002|A1|abc|Line|2,50|0,00|0000002"_s,
                                   u"0000003|A1||Line|2,50|x|0000003"_s}));
    EXPECT_EQ(sale().Text3.text(), u"5,00"_s);
    EXPECT_EQ(sale().Text5.text(), u"2"_s);
    EXPECT_EQ(state(), u"1 2 / 0 1 locked"_s); // no part is picked yet that could be added
    sell(1);
    EXPECT_EQ(lines().last(), u"0000004|0000001|1|2,50"_s);
}

TEST_F(SaleTest, EscTakesTheLineOutAndNumbersCanStandTwice)
{
    openSale();
    for (const int part : {1, 2, 3})
        sell(part);
    takeOut(1);
    EXPECT_EQ(sale().Text5.text(), u"2"_s);
    sell(1);
    EXPECT_EQ(lines(), (QStringList{u"0000002|0000002|1|1234,56"_s, u"0000003|0000003|1|0,00"_s,
                                    u"0000003|0000001|1|2,50"_s}));
    // Of two lines with one number the first in code order goes, whichever was meant.
    takeOut(3);
    EXPECT_EQ(lines(), (QStringList{u"0000002|0000002|1|1234,56"_s, u"0000003|0000003|1|0,00"_s}));
    for (int more = 0; more < 3; ++more) // at last the heading alone
        takeOut();
    EXPECT_EQ(lines(), QStringList());
    EXPECT_EQ(state(), u" / 0"_s);
    EXPECT_EQ(sale().Text3.text(), u"0,00"_s);
}

TEST_F(SaleTest, LimitOf24LinesIsSoft)
{
    for (int line = 1; line <= 23; ++line)
        addLine(u"0000001"_s, code(line));
    openSale();
    expectBox(LimitText);
    sell(1);
    EXPECT_FALSE(sale().Command2(0).enabled());
    EXPECT_EQ(sale().Text3.text(), u"60,00"_s);
    expectBox(LimitText);
    sell(2); // a click opens "&Incluir" again
    EXPECT_EQ(lines().size(), 25);
    sale().unload();
    expectBox(LimitText);
    openSale();
    EXPECT_EQ(sale().Text5.text(), u"25"_s);
}

TEST_F(SaleTest, SearchNarrowsLocksAndTheClickReopens)
{
    openSale();
    sell(1);
    type(sale().Text4(1), u"DIO"_s);
    EXPECT_EQ(gridRows(sale().MSFlexGrid1), QStringList{u"0000002|A1|5|Diode|1.234,56"_s});
    EXPECT_EQ(sale().caption(), u"Buscar Peça - 1 peça encontrados"_s);
    EXPECT_EQ(state(), u" / 0 1 locked"_s);
    click(sale().MSFlexGrid1, 1);
    EXPECT_EQ(sale().MSFlexGrid1.Rows(), 2); // the grid keeps the search's rows
    click(sale().Command2(0));
    EXPECT_EQ(state(), u"0 1 2 / 0 1"_s);

    sale().Text4(1).setText(u"Null"_s);
    EXPECT_EQ(gridRows(sale().MSFlexGrid1), QStringList{u"0000003|A1||Null|"_s});
    sale().Text4(0).setText(u"'"_s); // breaks the statement: the catalogue that was open serves on
    EXPECT_EQ(Funciones::Tabela1->RecordCount(), 1);
    sale().Text4(1).setText({});
    sale().Text4(0).setText({});
    EXPECT_EQ(sale().MSFlexGrid1.Rows(), 1);
    EXPECT_EQ(sale().caption(), u"Buscar Peça"_s);
}

TEST_F(SaleTest, CodeEqualToTheQuantityFiresNothingBeforeThePriceIsThere)
{
    mainSql(u"DELETE FROM Pecas"_s);
    addPart(u"1"_s, u"1"_s);
    openSale();
    click(sale().MSFlexGrid1, 1);
    EXPECT_EQ(sale().Text1(3).text(), u"1"_s);
    EXPECT_EQ(sale().Text1(5).text(), u"2,50"_s);
}

TEST_F(SaleTest, PartGoneSinceTheGridWasFilledCannotBeSold)
{
    openSale();
    click(sale().MSFlexGrid1, 1);
    mainSql(u"DELETE FROM Pecas WHERE CODIGO = '0000002'"_s);
    click(sale().MSFlexGrid1, 2);
    EXPECT_EQ(sale().Text1(0).text(), u""_s);
    EXPECT_FALSE(sale().Command2(0).enabled());
}

TEST_F(SaleTest, ClosingAsksOnlyOverAList)
{
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        openSale();
        sell(1);
        expectQuestion(u"A pedido(s) feito(s),caso saia todos serão excluidos!"_s, answer);
        click(sale().Command1(0));
        EXPECT_EQ(sale().isLoaded(), answer == Answer::No);
        EXPECT_EQ(lines().size(), answer == Answer::No ? 1 : 0);
    }
    openSale();
    sell(2);
    click(sale().Command1(1)); // "&Limpar" asks nothing
    EXPECT_EQ(lines().size(), 0);
    click(sale().Command1(0));
    EXPECT_FALSE(sale().isLoaded());
    openSale();
    sell(2);
    sale().focusLeft(); // for another form of the program
    EXPECT_FALSE(sale().isLoaded());
    EXPECT_EQ(lines().size(), 1);
}

TEST_F(SaleTest, MissingListUnloadsTheFormAgain)
{
    ASSERT_TRUE(QFile::remove(listFile()));
    expectErrorBox();
    openSale();
    EXPECT_FALSE(sale().isLoaded());
    EXPECT_TRUE(ends().empty());
}

} // namespace
