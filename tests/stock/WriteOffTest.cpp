#include "StockTest.h"

#include <QFile>
#include <QRandomGenerator>
#include <QWidget>

#include <algorithm>

namespace {

using WriteOffTest = StockTest;

TEST_F(WriteOffTest, EachStockLosesItsQuantityByVal)
{
    const struct
    {
        QString stock, quantity, left;
    } cases[] = {
        {u"'10'"_s, u"'3'"_s, u"7"_s},       {u"'3'"_s, u"'3'"_s, u"0"_s},
        {u"'1'"_s, u"'3'"_s, u"-2"_s},       {u"NULL"_s, u"'3'"_s, u"-3"_s},
        {u"''"_s, u"'3'"_s, u"-3"_s},        {u"'12,5'"_s, u"'2'"_s, u"10"_s},
        {u"'2.5'"_s, u"'1'"_s, u"1,5"_s},    {u"'1.000'"_s, u"'1'"_s, u"0"_s},
        {u"'7 un'"_s, u"'2'"_s, u"5"_s},     {u"'4'"_s, u"NULL"_s, u"4"_s},
        {u"'*******'"_s, u"'1'"_s, u"-1"_s},
    };
    QStringList left;
    for (const auto& each : cases) {
        const QString number = code(static_cast<int>(left.size()) + 1);
        addPart(number, u"Part"_s, each.stock);
        addLine(number, number, each.quantity);
        left << number + u' ' + each.left;
    }
    addOrder(u"0000001"_s, u"Part"_s);
    openSale();
    takeForWorkshop();
    EXPECT_EQ(stocks(), left);
    EXPECT_EQ(cash().size(), 11);
    EXPECT_EQ(cash()[9], u"0000010|Line|NULL|25000|2026-03-09"_s);
    EXPECT_EQ(cash().first(), u"0000001|Line|3|25000|2026-03-09"_s);
    EXPECT_EQ(lines(), QStringList());
    EXPECT_EQ(sale().Text3.text(), u"0,00"_s);
    EXPECT_EQ(gridRows(sale().MSFlexGrid1).first(), u"0000001|A1|7|Part|2,50"_s);
    EXPECT_EQ(sale().caption(), u"Venda de peças e acessórios     "_s +
                                    principal().StatusBar1.panel(1) + u"  está usando"_s);
}

TEST_F(WriteOffTest, PriceThatIsNoNumberDoesNotInterruptIt)
{
    addPart(u"0000001"_s, u"Resistor"_s, u"'10'"_s, u"','"_s);
    mainSql(u"UPDATE Pecas SET LOCAL = '1'"_s); // reads like the quantity
    addLine(u"0000001"_s, u"0000001"_s);
    openSale();
    takeForWorkshop();
    EXPECT_EQ(stocks(), QStringList{u"0000001 9"_s});
}

TEST_F(WriteOffTest, ForeignStockIsWrittenOverOtherFieldsAreNot)
{
    addParts({u"Resistor"_s, u"Diode"_s});
    openSale();
    click(sale().MSFlexGrid1, 2);
    sell(2, u"2"_s); // clicked a second time
    mainSql(u"UPDATE Pecas SET ESTOQUE = '50', LOCAL = 'Z9' WHERE CODIGO = '0000002'"_s);
    takeForWorkshop();
    EXPECT_EQ(sql(mainFile(), u"SELECT ESTOQUE || LOCAL FROM Pecas"_s),
              (QStringList{u"10A1"_s, u"8Z9"_s}));
}

// The catalogue is read-only after a search, and the line taken out lights "&Imprimir" again:
// nothing is booked and the list stays.
TEST_F(WriteOffTest, SearchThenEscThenPrintBooksNothing)
{
    addParts({u"First"_s, u"Second"_s});
    openSale();
    sell(1);
    sell(2);
    type(sale().Text4(1), u"First"_s);
    sale().MSFlexGrid2.setRow(2);
    press(sale().MSFlexGrid2, Qt::Key_Escape);
    print(Answer::Yes);
    EXPECT_EQ(stocks(), (QStringList{u"0000001 10"_s, u"0000002 10"_s}));
    EXPECT_EQ(lines().size(), 1);
    EXPECT_EQ(cash(), QStringList());
}

TEST_F(WriteOffTest, LineOfNoPartStopsSilentlyAfterPrintingAndEndsTheProgramForTheWorkshop)
{
    addPart(u"0000001"_s, u"First"_s);
    addLine(u"0000001"_s, u"0000001"_s);
    addLine(u"0000077"_s, u"0000002"_s);
    openSale();
    print(Answer::Yes);
    // The line before it is done, the list whole: told to the shop in the manual.
    EXPECT_EQ(stocks(), QStringList{u"0000001 9"_s});
    EXPECT_EQ(cash().size(), 1);
    EXPECT_EQ(lines().size(), 2);
    EXPECT_TRUE(ends().empty());
    expectQuestion(u"Uso interno da oficina ?"_s, Answer::Yes);
    expectErrorBox();
    click(sale().Command2(2));
    EXPECT_EQ(ends(), std::vector{EndReason::Fault});
}

TEST_F(WriteOffTest, PartThatIsGoneBooksNothing)
{
    addParts({u"Part"_s, u"Part"_s});
    addLine(u"0000001"_s, u"0000001"_s);
    addLine(u"0000002"_s, u"0000002"_s, u"NULL"_s); // which leaves the stock as it is
    openSale();
    mainSql(u"DELETE FROM Pecas WHERE CODIGO = '0000002'"_s);
    print(Answer::Yes);
    EXPECT_EQ(stocks(), QStringList{u"0000001 9"_s});
    EXPECT_EQ(cash().size(), 1);
    EXPECT_EQ(lines().size(), 2);
}

TEST_F(WriteOffTest, ListThatIsAwayBooksNothingAndTheNextPressBooksOnce)
{
    addPart(u"0000001"_s, u"Resistor"_s);
    openSale();
    sell(1, u"2"_s);
    ASSERT_TRUE(QFile::rename(listFile(), listFile() + u".away"_s));
    print(Answer::Yes);
    EXPECT_EQ(stocks(), QStringList{u"0000001 10"_s});
    EXPECT_EQ(cash(), QStringList());
    ASSERT_TRUE(QFile::rename(listFile() + u".away"_s, listFile()));
    print(Answer::Yes);
    EXPECT_EQ(stocks(), QStringList{u"0000001 8"_s});
    EXPECT_EQ(cash().size(), 1);
    EXPECT_EQ(lines(), QStringList());
}

// Whichever call fails, no part but the line's own loses stock, stock and cash move together, and
// the list is emptied only once all of it is booked.
TEST_F(WriteOffTest, FailureAnywhereBooksNoWrongPart)
{
    int papers = 0;
    int count = 2;
    const auto prepare = [&] {
        sale().unload();
        mainSql(u"DELETE FROM Pecas; DELETE FROM MOVIMENTO"_s);
        sql(listFile(), u"DELETE FROM Pecas"_s);
        addParts({u"First"_s, u"Second"_s, u"Third"_s});
        addLine(u"0000002"_s, u"0000001"_s);
        if (count == 2)
            addLine(u"0000003"_s, u"0000002"_s);
        openSale();
        papers = documents();
    };
    const auto check = [&](bool) {
        EXPECT_EQ(boxes().filter(u"|A impressão"_s).size(), documents() - papers);
        const QStringList after = stocks();
        EXPECT_EQ(after[0], u"0000001 10"_s);
        const auto sold = after.filter(u" 9"_s).size();
        EXPECT_EQ(cash().size(), sold);
        EXPECT_LE(sold, count * (documents() - papers));
        EXPECT_TRUE(lines().size() == count || sold == count);
        click(sale().Command2(1)); // nor does the next try
        EXPECT_EQ(stocks()[0], u"0000001 10"_s);
    };
    for (; count > 0; --count)
        failEachCall(
            prepare, [] { click(sale().Command2(1)); }, check, 30);
}

// Whichever write fails on the way into either file: all of the sale is booked or nothing, and what
// is in view says which; pressed again, it is booked once.
TEST_F(WriteOffTest, BookingThatDoesNotBecomeDurableShowsTheListAgain)
{
    QString line;
    QStringList catalogue;
    const auto prepare = [&] {
        sale().unload();
        mainSql(u"DELETE FROM Pecas; DELETE FROM MOVIMENTO; DELETE FROM PEDIDO"_s);
        sql(listFile(), u"DELETE FROM Pecas"_s);
        addPart(u"0000001"_s, u"First"_s, u"'0'"_s);
        addPart(u"0000002"_s, u"Second"_s);
        openSale();
        sell(2, u"2"_s);
        line = gridRows(sale().MSFlexGrid2).front();
        catalogue = gridRows(sale().MSFlexGrid1);
    };
    const auto print = [] { click(sale().Command2(1)); };
    const auto state = [this] {
        return u"%1 %2 %3"_s.arg(stocks().back()).arg(cash().size()).arg(orders().size());
    };
    const QString booked = u"0000002 8 1 1"_s;
    const auto check = [&](bool) {
        if (state() != booked) {
            EXPECT_EQ(state(), u"0000002 10 0 0"_s);
            EXPECT_EQ(lines().size(), 1);
            EXPECT_EQ(gridRows(sale().MSFlexGrid2).value(0), line);
            EXPECT_EQ(gridRows(sale().MSFlexGrid1), catalogue);
            EXPECT_EQ(sale().Text3.text(), u"5,00"_s);
        }
        print();
        EXPECT_EQ(state(), booked);
        sale().unload();
        openSale();
        EXPECT_EQ(lines().size(), 0);
    };
    for (const char* file : {"GALTERIA1.mdb", "MIRANDEL1.mdb"}) {
        failEachWrite(prepare, print, check, file, 1);
        failEachLock(prepare, print, check, file, 1);
    }
}

TEST_F(WriteOffTest, PartsAtExactlyZeroAreOrderedOnceAnOpening)
{
    addPart(u"0000001"_s, u"Sold out now"_s, u"'1'"_s);
    addPart(u"0000002"_s, u"Below"_s, u"'-1'"_s);
    addPart(u"0000003"_s, u"Ordered"_s, u"'0'"_s);
    addPart(u"0000004"_s, u"Order"_s, u"'0,00'"_s); // stands inside another order's text
    addPart(u"00000025"_s, u"No number"_s, u"'x'"_s);
    addPart(u"00000026"_s, u"Null"_s, u"NULL"_s);
    addOrder(u"0000008"_s, u"Ordered"_s);
    openSale();
    sell(1);
    takeForWorkshop();
    const QStringList first{u"0000008|Ordered||"_s, u"0000009|Sold out now|09/03/2026|p.EST"_s,
                            u"0000010|Order|09/03/2026|p.EST"_s};
    EXPECT_EQ(orders(), first);
    EXPECT_EQ(sale().Text13.text(), u"Order"_s);
    EXPECT_EQ(sale().Text14.text(), u"Ordered"_s);
    // The look-up does not see them before the form is opened again.
    sell(2);
    takeForWorkshop();
    EXPECT_EQ(orders().mid(3), (QStringList{u"0000011|Sold out now|09/03/2026|p.EST"_s,
                                            u"0000012|Order|09/03/2026|p.EST"_s}));
    sale().unload();
    openSale();
    sell(2);
    takeForWorkshop();
    EXPECT_EQ(orders().mid(5), // "Ordered" stands before it
              QStringList{u"0000013|Order|09/03/2026|p.EST"_s});
}

TEST_F(WriteOffTest, OrderThatFailsIsMadeAtTheNextTry)
{
    const auto order = [] { gate::run(sale(), OnError::Box, [] { sale().PedidoAutomatico(); }); };
    const auto prepare = [this] {
        sale().unload();
        mainSql(u"DELETE FROM Pecas; DELETE FROM PEDIDO"_s);
        addPart(u"0000001"_s, u"First"_s, u"'0'"_s);
        openSale();
    };
    const auto check = [&](bool) {
        if (orders().isEmpty())
            order();
        EXPECT_EQ(orders().size(), 1);
    };
    failEachCall(prepare, order, check, 5);
}

// The routine as it is told, part by part and order by order.
struct PlainOrders
{
    QStringList stored;
    QString text13, text14 = u"Text14"_s, found;

    void run(const QStringList& parts, const QStringList& stocks, const QStringList& orders)
    {
        for (int part = 0; part < parts.size(); ++part) {
            if (parts[part] != text13) {
                text13 = parts[part];
                look(text13.trimmed(), orders);
            }
            if (parts[part] != found && stocks[part] == u"0")
                stored << parts[part];
        }
    }
    void look(const QString& asked, const QStringList& orders)
    {
        if (asked.isEmpty() || asked.contains(u'\''))
            return;
        const auto holds = [&](const QString& order) {
            return order.contains(asked, Qt::CaseInsensitive);
        };
        if (const auto order = std::find_if(orders.begin(), orders.end(), holds);
            order != orders.end())
            found = text14 = *order;
    }
};

TEST_F(WriteOffTest, OrdersAreThoseOfTheLookUpPartByPart)
{
    QRandomGenerator random(7);
    const QString letters[] = {u"a"_s, u"A"_s,   u"ab"_s, u"b"_s,   u"é"_s,
                               u"É"_s, u"d'a"_s, u" "_s,  u"aba"_s, u"c"_s};
    const auto description = [&] {
        QString text;
        for (int word = random.bounded(4); word > 0; --word)
            text += letters[random.bounded(10)];
        return text;
    };
    const auto row = [](int number, const QStringList& descriptions, const QString& amount) {
        return u"'%1', '%2', '%3'"_s.arg(
            code(number), QString(descriptions.back()).replace(u'\'', u"''"_s), amount);
    };
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        QString statement = u"DELETE FROM Pecas; DELETE FROM PEDIDO;"_s;
        QStringList parts, stocks, known;
        for (int i = 0; i < 60; ++i) {
            parts << description();
            stocks << QString::number(random.bounded(2));
            statement += u"INSERT INTO Pecas (CODIGO, DESCRICAO, ESTOQUE) VALUES (%1);"_s.arg(
                row(i, parts, stocks.back()));
        }
        for (int i = random.bounded(8); i > 0; --i) {
            known << description();
            statement += u"INSERT INTO PEDIDO (CODIGO, DESCRICAO, QUANTIDADE) VALUES (%1);"_s.arg(
                row(static_cast<int>(known.size()), known, u"1"_s));
        }
        mainSql(statement);
        PlainOrders plain;
        openSale();
        for (int repeat = 0; repeat < 2; ++repeat) {
            plain.run(parts, stocks, known);
            gate::run(sale(), OnError::Box, [] { sale().PedidoAutomatico(); });
            EXPECT_EQ(sql(mainFile(), u"SELECT ifnull(DESCRICAO, '') FROM PEDIDO "
                                      "WHERE QUANTIDADE = 'p.EST' ORDER BY rowid"_s),
                      plain.stored);
            EXPECT_EQ(sale().Text13.text(), plain.text13);
            EXPECT_EQ(sale().Text14.text(), plain.text14);
        }
        sale().unload();
    }
}

class ReceiptTest : public StockTest
{
protected:
    ReceiptTest()
    {
        setCompany();
        addPart(u"0000001"_s, u"Resistor"_s);
        addPart(u"0000002"_s, u"Diode"_s, u"'5'"_s, u"12345600"_s);
        openSale();
        sell(1, u"10"_s);
        sell(2);
    }
};

TEST_F(ReceiptTest, PageReadsAsTheListAndAgainAfterNo)
{
    print(Answer::No);
    EXPECT_EQ(printed(), page(u"receipt"_s));
    EXPECT_EQ(gridRows(sale().MSFlexGrid2).size(), 3); // one empty row more
    print(Answer::No);
    EXPECT_EQ(printed(), page(u"receipt"_s));
    EXPECT_EQ(gridRows(sale().MSFlexGrid2).size(), 4);
    EXPECT_EQ(documents(), 2);
}

TEST_F(ReceiptTest, PrintsFromTheClickedLineOnWithTheLineAboveAsHeading)
{
    click(sale().MSFlexGrid2, 2);
    print(Answer::No);
    const QString page = printed().join(u'\n');
    EXPECT_FALSE(page.contains(u"Código"_s));
    EXPECT_TRUE(page.contains(u"Resistor"_s)); // as the heading
    EXPECT_TRUE(page.contains(u"1.259,56"_s)); // the totals are those of the whole list
}

} // namespace
