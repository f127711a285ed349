#include "PurchaseTest.h"

namespace {

// Another station, a disk and calls that fail, while orders are kept.
class PurchaseStationsTest : public PurchaseTest
{
protected:
    PurchaseStationsTest() { fill(); }

    void fill()
    {
        mainSql(u"DELETE FROM PEDIDO"_s);
        for (int order = 1; order <= 3; ++order)
            addOrder(u"0%1/03/2026"_s.arg(order), u"000000%1"_s.arg(order), u"Part"_s);
    }
    static void edit(int row)
    {
        click(list().MSFlexGrid1, row);
        press(2);
    }
};

TEST_F(PurchaseStationsTest, OrderThatTheOtherStationDeletedLeavesTheForm)
{
    openList();
    edit(2);
    mainSql(u"DELETE FROM PEDIDO WHERE CODIGO='0000002'"_s);
    type(list().Text1(0), u"Typed"_s);
    expectErrorBox(u"Erro nº -2147217864"_s);
    press(1);
    press(9);
    EXPECT_EQ(shown(), u"03/03/2026|Part|1|0000003"_s);
    mainSql(u"DELETE FROM PEDIDO WHERE CODIGO='0000003'"_s);
    escape();
    EXPECT_EQ(shown(), u"01/03/2026|Part|1|0000001"_s);
    EXPECT_EQ(list().Text1(2).text(), u"0000001"_s);
}

// Each call and each write fails in its turn: the order is stored whole or not at all, and where it
// is not, the boxes stay open and the next press stores it.
TEST_F(PurchaseStationsTest, SaveThatFailsStoresNothingAndCanBeTriedAgain)
{
    for (const bool newOrder : {true, false}) {
        const QString wanted =
            newOrder ? u"09/03/2026|Typed|7|0000004"_s : u"02/03/2026|Typed|7|0000002"_s;
        const auto prepare = [&] {
            list().unload();
            fill();
            openList();
            newOrder ? press(0) : edit(2);
            type(list().Text1(0), u"Typed"_s);
            type(list().Text1(1), u"7"_s);
        };
        const auto check = [&](bool failed) {
            const bool isStored = orders().contains(wanted);
            EXPECT_EQ(orders().filter(u"Typed"_s).size(), isStored ? 1 : 0);
            EXPECT_EQ(boxes().isEmpty(), !failed);
            if (!isStored) {
                EXPECT_EQ(enabledOf(list().Command1), newOrder ? u"1 9"_s : u"1 3 9"_s);
                press(1);
            }
            EXPECT_TRUE(orders().contains(wanted));
            EXPECT_EQ(orders().size(), newOrder ? 4 : 3);
            EXPECT_EQ(enabledOf(list().Command1), u"0 2 6 8 10 11 12 13"_s);
        };
        failEachCall(
            prepare, [] { press(1); }, check, 2);
        failEachWrite(
            prepare, [] { press(1); }, check);
    }
}

} // namespace
