#include "WorkshopTest.h"

#include <QWidget>

namespace {

class BuscacliTest : public WorkshopTest
{
protected:
    BuscacliTest()
    {
        addOrder(u"0000001"_s, u"José"_s, u"marca='Radio', telefone='(11)3333-4444'"_s);
        addOrder(u"0000002"_s, u"JOSE 100%"_s, u"celular='(11)9999-1111'"_s);
        addOrder(u"0000011"_s, u"Ana_11"_s, u"marca='11'"_s);
    }

    Buscacli& openSearch()
    {
        form<Buscacli>().show();
        return form<Buscacli>();
    }
    static QStringList numbers()
    {
        QStringList found;
        for (const QString& row : gridRows(form<Buscacli>().MSFlexGrid1))
            found << row.section(u'|', 0, 0);
        return found;
    }
    // What the record form showed when it came up.
    QString shownRecord;
    int timesShown = 0;
    void watchRecord()
    {
        onModal([this](Form& opened) {
            ++timesShown;
            shownRecord = static_cast<Form1Cli&>(opened).Text1(13).text();
            EXPECT_FALSE(form<Buscacli>().isLoaded());
        });
    }
};

TEST_F(BuscacliTest, EachBoxSearchesItsFieldAsTyped)
{
    const std::tuple<int, QString, QString> cases[] = {
        {0, u"1"_s, u"0000001 0000011"_s},
        {1, u"jose"_s, u"0000002"_s}, // accents count, case does not
        {2, u"radio"_s, u"0000001"_s},
        {4, u"9999"_s, u"0000002"_s},
        {3, u"1133334"_s, u"0000001"_s}, // digits, whatever stands between them
        {3, u"11334"_s, {}},
        {3, u"3333-4"_s, u"0000001"_s},
        {4, u"119999"_s, u"0000002"_s},
        {1, u"a_1"_s, u"0000011"_s}, // wildcards act
        {1, u"n%1"_s, u"0000011"_s},
        {1, u"*"_s, {}},
    };
    Buscacli& search = openSearch();
    expectEasyToWalk(search);
    for (const auto& [box, text, found] : cases) {
        SCOPED_TRACE(text.toStdString());
        EXPECT_FALSE(search.MSFlexGrid1.visible());
        type(search.Text1(box), text);
        EXPECT_EQ(numbers().join(u' '), found);
        EXPECT_EQ(search.caption(),
                  u"Buscar Cliente - %1 clientes encontrados"_s.arg(numbers().size()));
        EXPECT_TRUE(search.MSFlexGrid1.visible());
        search.Text1(box).setText({});
    }
    expectErrorBox();
    search.Text1(1).setText(u"d'Avila"_s);
    EXPECT_EQ(search.caption(), u"Buscar Cliente"_s);
    search.Text1(1).setText({});
    type(search.Text1(3), u"3333"_s);
    EXPECT_EQ(gridRows(search.MSFlexGrid1), QStringList{u"0000001|José|Radio|(11)3333-4444|"_s});
}

TEST_F(BuscacliTest, BoxOfEqualTextSearchesTheFieldOfTheLowerOne)
{
    Buscacli& search = openSearch();
    search.Text1(0).setText(u"11"_s);
    search.Text1(2).setText(u"1"_s);
    EXPECT_EQ(numbers(), QStringList{u"0000011"_s}); // the brand
    search.Text1(2).setText(u"2"_s);
    EXPECT_EQ(numbers(), QStringList());
    search.Text1(0).setText(u"2"_s);
    search.Text1(2).setText(u"11"_s);
    search.Text1(2).setText(u"2"_s);
    EXPECT_EQ(numbers(), QStringList{u"0000002"_s}); // the number
}

TEST_F(BuscacliTest, EmptiedBoxIsSearchedBehindTheScenesWhileAnotherHoldsText)
{
    Buscacli& search = openSearch();
    search.Text1(1).setText(u"Ana"_s);
    click(search.MSFlexGrid1, 1);
    search.Text1(2).setText(u"Radio"_s);
    search.Text1(1).setText({});
    EXPECT_FALSE(search.MSFlexGrid1.visible());
    EXPECT_FALSE(search.Command1.enabled());
    EXPECT_EQ(search.Text2.text(), QString());
    EXPECT_EQ(search.caption(), u"Buscar Cliente - 3 clientes encontrados"_s);
    EXPECT_EQ(numbers(), (QStringList{u"0000001"_s, u"0000002"_s, u"0000011"_s}));
    search.Text1(2).setText(u"Radi"_s);
    EXPECT_TRUE(search.MSFlexGrid1.visible());
    EXPECT_EQ(numbers(), QStringList{u"0000001"_s});
}

TEST_F(BuscacliTest, RowsOpenByButtonByDoubleClickAndByKey)
{
    watchRecord();
    const std::vector<std::function<void(Buscacli&)>> ways{
        [](Buscacli& search) {
            click(search.MSFlexGrid1, 2);
            click(search.Command1);
        },
        [](Buscacli& search) {
            expectDownLeads(search.Text1, search.MSFlexGrid1);
            press(search.MSFlexGrid1, Qt::Key_Down);
            press(search.MSFlexGrid1, Qt::Key_Space);
            EXPECT_EQ(search.Text2.text(), u"0000011"_s);
            click(search.Command1);
        },
        [](Buscacli& search) {
            search.MSFlexGrid1.setRow(2);
            press(search.MSFlexGrid1, Qt::Key_Return);
        },
    };
    for (const auto& way : ways) {
        shownRecord.clear();
        Buscacli& search = openSearch();
        search.Text1(0).setText(u"1"_s);
        EXPECT_FALSE(search.Command1.enabled());
        way(search);
        EXPECT_EQ(shownRecord, u"0000011"_s);
        EXPECT_FALSE(search.isLoaded());
        EXPECT_FALSE(form<Form1Cli>().isLoaded());
    }
    EXPECT_EQ(timesShown, 3);
}

TEST_F(BuscacliTest, QuickSearchThatFoundSomethingOpensOnTheFirstRow)
{
    principal().show();
    principal().Frame2(2).setEnabled(true);
    for (const auto& [digits, onGrid] : {std::pair{u"1133"_s, true}, {u"777"_s, false}}) {
        principal().Text1(2).setText(digits);
        click(principal().Command2(2));
        Buscacli& search = form<Buscacli>();
        EXPECT_EQ(search.window()->focusWidget() == search.MSFlexGrid1.widget(), onGrid);
        if (onGrid) {
            press(search.MSFlexGrid1, Qt::Key_Space);
            EXPECT_EQ(search.Text2.text(), u"0000001"_s);
        }
        search.unload();
    }
}

TEST_F(BuscacliTest, HeadingMeansTheFirstRowAndNothingWithoutRows)
{
    watchRecord();
    Buscacli& search = openSearch();
    search.Text1(1).setText(u"nobody"_s);
    click(search.MSFlexGrid1, 0);
    press(search.MSFlexGrid1, Qt::Key_Return);
    EXPECT_FALSE(search.Command1.enabled());
    EXPECT_EQ(search.Text2.text(), QString());
    EXPECT_EQ(timesShown, 0);
    search.Text1(1).setText(u"Ana"_s);
    click(search.MSFlexGrid1, 0);
    EXPECT_EQ(search.Text2.text(), u"0000011"_s);
}

} // namespace
