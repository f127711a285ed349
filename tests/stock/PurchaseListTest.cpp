#include "PurchaseTest.h"

#include <QWidget>

namespace {

const QString Browsing = u"0 2 6 8 10 11 12 13"_s;
const QString Open = u"2"_s; // the count is never typed in

using PurchaseListTest = PurchaseTest;

// The longer ways are walked at random beside a model.
TEST_F(PurchaseListTest, EachActionLeavesItsButtonsAndBoxes)
{
    addOrder(u"02/03/2026"_s, u"0000002"_s, u"Diodo"_s);
    addOrder(u"01/03/2026"_s, u"0000001"_s, u"Resistor"_s);
    list().show();
    enter(list().Text1(0));
    ::press(list().Text1(0), Qt::Key_Return);
    EXPECT_TRUE(list().Text1(1).widget()->hasFocus());
    EXPECT_EQ(list().caption(), u"Pedido de Peças e Acessórios      "_s +
                                    principal().StatusBar1.panel(1) + u"  está usando"_s);
    const std::vector<RecordState> states{
        {u"4 5 7"_s, Browsing, u"0 1 2"_s, u"0000001"_s},
        {u"0"_s, u"1 9"_s, Open, u"0000003"_s},
        {u"9"_s, Browsing, u"0 1 2"_s, u"0000002"_s},
        {u"2"_s, u"1 3 9"_s, Open, u"0000002"_s},
        {u"3n"_s, Browsing, u"0 1 2"_s, u"0000002"_s},
        {u"12"_s, u"0 2 6 8 11 12 13"_s, u"0 1 2"_s, u"0000001"_s},
        {u"13"_s, u"0 2 6 8 10 12 13"_s, u"0 1 2"_s, u"0000002"_s},
        {u"2 3y"_s, Browsing, u"0 1 2"_s, u"0000001"_s},
        {u"2 3y"_s, u"0 8"_s, u"0 1 2"_s, u"0000000"_s},
        {u"0"_s, u"1 9"_s, Open, u"0000001"_s},
        {u"1"_s, Browsing, u"0 1 2"_s, u"0000001"_s},
    };
    const auto shown = [] { return list().Text1(3).text(); };
    expectStates(purchases(), states, shown, [this](const RecordState& state) {
        EXPECT_TRUE(state.buttons != u"1 9" || list().Text1(0).widget()->hasFocus());
        EXPECT_EQ(list().MSFlexGrid1.tabStop(), !names(purchases()).isEmpty());
    });
}

TEST_F(PurchaseListTest, WhatFailsOrIsGoneIsStoredOnceOrNotAtAll)
{
    expectSafe(purchases());
}

class PurchasePaperTest : public PurchaseTest
{
protected:
    PurchasePaperTest()
    {
        addOrder(u"01/03/2026"_s, u"0000001"_s, u"Solda"_s, u"2"_s);
        addOrder(u"02/03/2026"_s, u"0000002"_s, u"Flyback"_s, u"p.EST"_s);
        addOrder(u"03/03/2026"_s, u"0000003"_s, u"Cabo \"fino\""_s, u"10"_s);
        addOrder(u"04/03/2026"_s, u"0000004"_s, u"Sem quantidade"_s, QString());
    }
};

TEST_F(PurchasePaperTest, ListStandsWithoutHeadDateAndCode)
{
    list().show();
    press(6);
    EXPECT_EQ(printed(), page(u"order-list"_s));
    // The grid keeps the rows that it grew by until it is loaded again.
    EXPECT_EQ(gridRows(list().MSFlexGrid1).size(), 9);
    press(6);
    EXPECT_EQ(printed(), page(u"order-list"_s));
    click(list().MSFlexGrid1, 9); // beyond the orders: nothing there
    escape();
    EXPECT_EQ(names(purchases()).size(), 4);
    press(2);
    press(1);
    EXPECT_EQ(gridRows(list().MSFlexGrid1).size(), 4);
}

// The row above the one clicked serves as the heading, and the list begins there.
TEST_F(PurchasePaperTest, ClickedRowBeginsTheList)
{
    list().show();
    click(list().MSFlexGrid1, 3);
    press(6);
    QStringList texts;
    for (const QString& run : printed())
        texts << run.section(u' ', 2);
    const QString rule(200, u'_');
    EXPECT_EQ(texts, (QStringList{rule, u"p.EST"_s, u"Flyback"_s, rule, u"10"_s, u"Cabo \"fino\""_s,
                                  u"Sem quantidade"_s}));
}

TEST_F(PurchasePaperTest, PrinterThatFailsAnywhereIsSilent)
{
    list().show();
    int before = 0;
    const auto check = [&](bool failed) {
        EXPECT_EQ(boxes(), QStringList());
        EXPECT_EQ(enabledOf(list().Command1), Browsing);
        EXPECT_EQ(documents(), before + (failed ? 0 : 1));
    };
    failEachCall([&] { before = documents(); }, [] { press(6); }, check, 3 + 5 + 1);
}

TEST_F(PurchasePaperTest, LongListRunsOnToFurtherPages)
{
    for (int order = 5; order <= 120; ++order)
        addOrder(u"05/03/2026"_s, QString::number(order), u"Part %1"_s.arg(order));
    list().show();
    press(6);
    constexpr int Breaks = 2;
    EXPECT_EQ(printed().size(), 4 + 2 * 120 - 1 + Breaks);
    EXPECT_TRUE(printed().back().endsWith(u" Part 120"_s));
}

TEST_F(PurchaseListTest, LoadThatFailsTellsAndLeavesNoForm)
{
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/nowhere.mdb"_s);
    principal().show();
    expectErrorBox(); // the connection's
    expectErrorBox(u"Restaure o Banco"_s);
    expectErrorBox();
    list().show();
    EXPECT_FALSE(list().isLoaded());
    EXPECT_TRUE(ends().empty());
}

} // namespace
