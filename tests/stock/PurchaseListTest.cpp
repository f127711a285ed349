#include "PurchaseTest.h"

#include "Faults.h"
#include "Funciones.h"
#include "Printer.h"
#include "RuntimeError.h"

#include <QWidget>

namespace {

const QString Browsing = u"0 2 6 8 10 11 12 13"_s;
const QString Open = u"2"_s; // the count is never typed in

class PurchaseListTest : public PurchaseTest
{
};

TEST_F(PurchaseListTest, EachActionLeavesItsButtonsAndBoxes)
{
    addOrder(u"02/03/2026"_s, u"0000002"_s, u"Diodo"_s);
    addOrder(u"01/03/2026"_s, u"0000001"_s, u"Resistor"_s);
    const Form1pedido& purchases = openList();
    expectEasyToWalk(purchases);
    EXPECT_EQ(purchases.caption(), u"Pedido de Peças e Acessórios      "_s +
                                       principal().StatusBar1.panel(1) + u"  está usando"_s);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Pedido de Peças"_s);
    struct Step
    {
        const char* name;
        std::function<void()> action;
        QString buttons;
        bool locked;
        QString code;
    };
    const std::vector<Step> steps{
        {"load", [] {}, Browsing, true, u"0000001"_s},
        {"dead buttons", [] { press(4), press(5), press(7); }, Browsing, true, u"0000001"_s},
        {"new", [] { press(0); }, u"1 9"_s, false, u"0000003"_s},
        {"cancelled", [] { press(9); }, Browsing, true, u"0000002"_s},
        {"editing", [] { press(2); }, u"1 3 9"_s, false, u"0000002"_s},
        {"not deleted", [this] { remove(Answer::No); }, Browsing, true, u"0000002"_s},
        {"first", [] { press(12); }, u"0 2 6 8 11 12 13"_s, true, u"0000001"_s},
        {"before the first", [] { press(10); }, u"0 2 6 8 11 12 13"_s, true, u"0000001"_s},
        {"next", [] { press(11); }, Browsing, true, u"0000002"_s},
        {"after the last", [] { press(11); }, u"0 2 6 8 10 12 13"_s, true, u"0000002"_s},
        {"printed", [] { press(6); }, u"0 2 6 8 10 12 13"_s, true, u"0000002"_s},
        {"edited", [] { press(2), press(1); }, Browsing, true, u"0000002"_s},
        {"deleted", [this] { press(2), remove(); }, Browsing, true, u"0000001"_s},
        {"the last one deleted", [this] { press(2), remove(); }, u"0 8"_s, true, u"0000000"_s},
        {"new in the empty list", [] { press(0); }, u"1 9"_s, false, u"0000001"_s},
        {"cancelled there", [] { press(9); }, u"0 8"_s, true, u"0000000"_s},
        {"new again", [] { press(0); }, u"1 9"_s, false, u"0000001"_s},
        {"saved", [] { press(1); }, Browsing, true, u"0000001"_s},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        step.action();
        EXPECT_EQ(enabledOf(purchases.Command1), step.buttons);
        EXPECT_EQ(lockedOf(purchases.Text1), step.locked ? u"0 1 2"_s : Open);
        EXPECT_EQ(purchases.Text1(3).text(), step.code);
        EXPECT_EQ(purchases.Text1(2).text(),
                  QString::number(orders().size()).rightJustified(7, u'0'));
        EXPECT_EQ(purchases.MSFlexGrid1.tabStop(), !orders().isEmpty());
    }
    EXPECT_EQ(orders(), QStringList{u"09/03/2026|***************|****|0000001"_s});
    EXPECT_EQ(gridRows(purchases.MSFlexGrid1),
              QStringList{u"09/03/2026|****|***************|0000001"_s});
    press(8);
    EXPECT_FALSE(purchases.isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), u"email:suporte@vorbelo.example"_s);
}

// The date sorts as text, by its day first.
TEST_F(PurchaseListTest, NextCodeComesFromTheLastDateText)
{
    addOrder(u"31/01/2026"_s, u"0000002"_s, u"January"_s);
    addOrder(u"05/03/2026"_s, u"0000009"_s, u"March"_s);
    addOrder(u"**/**/****"_s, u"0000007"_s, u"No date"_s);
    addOrder(u"amanhã"_s, u"x12"_s, u"Text"_s);
    openList();
    EXPECT_EQ(shown(), u"**/**/****|No date|1|0000007"_s);
    press(0);
    EXPECT_EQ(shown(), u"09/03/2026|||0000001"_s); // "x12" is no number
    EXPECT_TRUE(list().Text1(0).widget()->hasFocus());
    press(9);
    mainSql(u"DELETE FROM PEDIDO WHERE CODIGO='x12'"_s);
    press(8);
    openList();
    press(0);
    EXPECT_EQ(shown(), u"09/03/2026|||0000003"_s);
    type(list().Text1(0), u"Solda"_s);
    type(list().Text1(1), u"1 kg à vista"_s);
    press(1);
    EXPECT_EQ(orders().back(), u"09/03/2026|Solda|1 kg |0000003"_s);
    // What was added stands last until the form opens anew.
    press(0);
    EXPECT_EQ(list().Text1(3).text(), u"0000004"_s);
    press(9);
    EXPECT_EQ(gridRows(list().MSFlexGrid1).back(), u"09/03/2026|1 kg |Solda|0000003"_s);
}

TEST_F(PurchaseListTest, RowOfNullsShowsNothingAndStoresFillers)
{
    mainSql(u"INSERT INTO PEDIDO DEFAULT VALUES"_s);
    openList();
    EXPECT_EQ(shown(), u"|||"_s);
    EXPECT_EQ(gridRows(list().MSFlexGrid1), QStringList{u"|||"_s});
    click(list().MSFlexGrid1, 1);
    escape(); // without a code the grid does nothing
    EXPECT_EQ(orders(), QStringList{u"NULL|NULL|NULL|NULL"_s});
    press(2);
    press(1);
    EXPECT_EQ(orders(), QStringList{u"**/**/****|***************|****|*******"_s});
    EXPECT_EQ(gridRows(list().MSFlexGrid1),
              QStringList{u"**/**/****|****|***************|*******"_s});
}

// The boxes keep the order just stored while the last row is current: nothing is done to that one
// before it was seen.
TEST_F(PurchaseListTest, AfterASaveTheLastRowIsShownBeforeItIsTouched)
{
    const QStringList codes{u"0000001"_s, u"0000002"_s, u"0000003"_s};
    for (int i = 0; i < 3; ++i)
        addOrder(u"0%1/03/2026"_s.arg(i + 1), codes[i], u"Part"_s);
    openList();
    const auto editFirst = [](const QString& name) {
        press(12);
        press(2);
        type(list().Text1(0), name);
        press(1);
        EXPECT_EQ(shown(), u"01/03/2026|%1|1|0000001"_s.arg(name));
    };
    editFirst(u"Once"_s);
    press(2);
    EXPECT_EQ(shown(), u"03/03/2026|Part|1|0000003"_s);
    press(9);
    editFirst(u"Twice"_s);
    list().MSFlexGrid1.setRow(2);
    escape();
    EXPECT_EQ(shown(), u"03/03/2026|Part|1|0000003"_s);
    EXPECT_EQ(orders().size(), 3);
    escape(); // the one on show goes, not the one marked
    EXPECT_EQ(orders(),
              (QStringList{u"01/03/2026|Twice|1|0000001"_s, u"02/03/2026|Part|1|0000002"_s}));
    EXPECT_EQ(shown(), u"02/03/2026|Part|1|0000002"_s);
    EXPECT_EQ(gridRows(list().MSFlexGrid1).size(), 2);

    // A click stands on the row clicked, on the one clicked before, too.
    for (const QString& name : {u"Three"_s, u"Four"_s}) {
        click(list().MSFlexGrid1, 1);
        press(2);
        type(list().Text1(0), name);
        press(1);
    }
    EXPECT_EQ(orders().front(), u"01/03/2026|Four|1|0000001"_s);
    // A new order is the last row itself.
    press(0);
    type(list().Text1(0), u"New"_s);
    press(1);
    escape();
    EXPECT_EQ(orders().size(), 2);
}

TEST_F(PurchaseListTest, GridShowsItsOrderButNotOverANewOne)
{
    addOrder(u"01/03/2026"_s, u"0000001"_s, u"First"_s);
    addOrder(u"02/03/2026"_s, u"0000002"_s, u"Second"_s, u"p.EST"_s);
    addOrder(u"03/03/2026"_s, u"0000002"_s, u"Its twin"_s);
    openList();
    EXPECT_EQ(gridRows(list().MSFlexGrid1),
              (QStringList{u"01/03/2026|1|First|0000001"_s, u"02/03/2026|p.EST|Second|0000002"_s,
                           u"03/03/2026|1|Its twin|0000002"_s}));
    EXPECT_EQ(list().MSFlexGrid1.TextMatrix(0, 0) + list().MSFlexGrid1.TextMatrix(0, 1) +
                  list().MSFlexGrid1.TextMatrix(0, 2) + list().MSFlexGrid1.TextMatrix(0, 3),
              u"Data PedidoQuantDescriçãoCOD"_s);
    click(list().MSFlexGrid1, 3); // the first of that code
    EXPECT_EQ(shown(), u"02/03/2026|Second|p.EST|0000002"_s);
    for (const QString& nobody : {u"9999999"_s, u"'"_s, u" "_s}) {
        list().Text2.setText(nobody);
        EXPECT_EQ(shown(), u"02/03/2026|Second|p.EST|0000002"_s);
    }
    // In an edit another row clicked is edited; the same one once more leaves what was typed.
    press(2);
    click(list().MSFlexGrid1, 1);
    type(list().Text1(0), u"Typed"_s);
    click(list().MSFlexGrid1, 1);
    EXPECT_EQ(shown(), u"01/03/2026|Typed|1|0000001"_s);
    remove(Answer::No); // ends the edit and leaves the text in view
    EXPECT_EQ(shown(), u"01/03/2026|Typed|1|0000001"_s);
    EXPECT_EQ(enabledOf(list().Command1), Browsing);
    press(2);
    EXPECT_EQ(shown(), u"01/03/2026|Typed|1|0000001"_s);
    press(9);
    EXPECT_EQ(shown(), u"01/03/2026|First|1|0000001"_s);

    press(0);
    type(list().Text1(0), u"New"_s);
    click(list().MSFlexGrid1, 2);
    escape();
    EXPECT_EQ(shown(), u"09/03/2026|New||0000003"_s);
    EXPECT_EQ(orders().size(), 3);
}

TEST_F(PurchaseListTest, EscapeEmptiesTheListWithoutAQuestion)
{
    addOrder(u"01/03/2026"_s, u"0000001"_s, u"First"_s);
    addOrder(u"02/03/2026"_s, u"0000002"_s, u"Second"_s);
    openList();
    escape();
    EXPECT_EQ(shown(), u"02/03/2026|Second|1|0000002"_s);
    press(2); // in the middle of an edit, too
    escape();
    EXPECT_EQ(orders(), QStringList());
    EXPECT_EQ(gridRows(list().MSFlexGrid1), QStringList());
    EXPECT_EQ(shown(), u"|||0000000"_s);
    EXPECT_EQ(enabledOf(list().Command1), u"0 8"_s);
    EXPECT_EQ(lockedOf(list().Text1), u"0 1 2"_s);
    escape(); // no row to delete: the form stays empty
    click(list().MSFlexGrid1, 0);
    EXPECT_EQ(shown(), u"|||0000000"_s);
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
    openList();
    press(6);
    EXPECT_EQ(printed(), page(u"order-list"_s));
    // The grid keeps the rows that it grew by until it is loaded again.
    EXPECT_EQ(gridRows(list().MSFlexGrid1).size(), 9);
    press(6);
    EXPECT_EQ(printed(), page(u"order-list"_s));
    click(list().MSFlexGrid1, 9); // beyond the orders: nothing there
    escape();
    EXPECT_EQ(orders().size(), 4);
    press(2);
    press(1);
    EXPECT_EQ(gridRows(list().MSFlexGrid1).size(), 4);
}

// The row above the one clicked serves as the heading, and the list begins there.
TEST_F(PurchasePaperTest, ClickedRowBeginsTheList)
{
    openList();
    click(list().MSFlexGrid1, 3);
    press(6);
    QStringList texts;
    for (const QString& run : printed())
        texts << run.section(u' ', 2);
    const QString rule(200, u'_');
    EXPECT_EQ(texts, (QStringList{rule, u"p.EST"_s, u"Flyback"_s, rule, u"10"_s, u"Cabo \"fino\""_s,
                                  u"Sem quantidade"_s}));
}

TEST_F(PurchasePaperTest, PrinterThatFailsAnywhereIsSilentAndTheNextListIsWhole)
{
    openList();
    const auto recorder = Printer::instance().device();
    bool failed = true;
    int calls = 0;
    while (failed) {
        failed = false;
        int left = ++calls;
        faults::setObserver([&](faults::Call call) {
            if (call == faults::Call::Printer && --left == 0) {
                failed = true;
                throw RuntimeError(482);
            }
        });
        press(6);
        EXPECT_EQ(enabledOf(list().Command1), Browsing);
        EXPECT_EQ(documents(), failed ? 0 : 1);
        if (failed) { // what was drawn would stand on the next sheet
            Printer::instance().reset();
            Printer::instance().setDevice(recorder);
        }
    }
    EXPECT_EQ(calls, 3 + 5 + 2); // the rules and the heading, the passes, the end, and one without
    EXPECT_EQ(printed(), page(u"order-list"_s));
}

TEST_F(PurchasePaperTest, LongListRunsOnToFurtherPages)
{
    for (int order = 5; order <= 120; ++order)
        addOrder(u"05/03/2026"_s, QString::number(order), u"Part %1"_s.arg(order));
    openList();
    press(6);
    constexpr int Breaks = 2;
    EXPECT_EQ(printed().size(), 4 + 2 * 120 - 1 + Breaks);
    EXPECT_TRUE(printed().back().endsWith(u" Part 120"_s));
}

TEST_F(PurchaseListTest, OpensFromButtonAndMenu)
{
    addOrder(u"01/03/2026"_s, u"0000001"_s, u"First"_s);
    principal().show();
    principal().Command1(3).setEnabled(true);
    principal().mnupecas.setEnabled(true);
    QString seen;
    onModal([&](Form& shownForm) {
        enter(list().Text1(0));
        ::press(list().Text1(0), Qt::Key_Return);
        seen += shownForm.name() + shown() + (list().Text1(1).widget()->hasFocus() ? u'!' : u'?');
        press(8);
    });
    click(principal().Command1(3));
    click(principal().mnupecas);
    EXPECT_EQ(seen, u"Form1pedido01/03/2026|First|1|0000001!"_s.repeated(2));
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
