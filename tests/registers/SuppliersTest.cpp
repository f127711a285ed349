#include "RegistersTest.h"

#include <QWidget>

namespace {

const QString Browsing = u"0 2 4 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5"_s;
const QString Open = u"5"_s; // the count

class SuppliersTest : public RegistersTest
{
protected:
    static void press(int button) { click(firm().Command1(button)); }
    // The document box left for the next one, after its text was typed.
    static void typeDocument(const QString& text)
    {
        firm().Text6(2).setText({});
        enter(firm().Text6(2));
        type(firm().Text6(2), text);
        enter(firm().Text6(3));
    }
};

TEST_F(SuppliersTest, EachActionLeavesItsButtonsAndBoxes)
{
    addFirm(u"0000009"_s, u"Alfa"_s);
    addFirm(u"0000002"_s, u"Beta"_s);
    principal().StatusBar1.setPanel(1, u"Usuario: Ana"_s);
    firm().show();
    EXPECT_EQ(firm().caption(), u"Cadastro de Fornecedores      Usuario: Ana  está usando"_s);
    const QString first = u"0 2 4 8 11 12 13"_s;
    const std::vector<RecordState> states{
        {{}, Browsing, AllLocked, u"0000009 Alfa"_s},
        {u"0"_s, u"1 9"_s, Open, u"0000003 "_s}, // one above the name that sorts last
        {u"9"_s, Browsing, AllLocked, u"0000002 Beta"_s},
        {u"10"_s, Browsing, AllLocked, u"0000009 Alfa"_s},
        {u"10"_s, first, AllLocked, u"0000009 Alfa"_s},
        {u"2"_s, u"1 3 9"_s, Open, u"0000009 Alfa"_s},
        {u"3n"_s, Browsing, AllLocked, u"0000009 Alfa"_s},
        {u"2 =Zeta 1"_s, Browsing, AllLocked, u"0000009 Zeta"_s}, // its place kept
        {u"12"_s, first, AllLocked, u"0000009 Zeta"_s},
        {u"13"_s, u"0 2 4 8 10 12 13"_s, AllLocked, u"0000002 Beta"_s},
        {u"2 =Typed 3y"_s, Browsing, AllLocked, u"0000009 Zeta"_s},
        {u"2 3y"_s, u"0 8"_s, AllLocked, u"0000000 "_s},
        {u"0"_s, u"1 9"_s, Open, u"0000001 "_s},
        {u"9"_s, u"0 8"_s, AllLocked, u"0000000 "_s},
        {u"0 1 0 1"_s, Browsing, AllLocked, u"0000002 "_s},
    };
    const auto shown = [] { return firm().Text4.text() + u' ' + firm().Text1(0).text(); };
    expectStates(firms(), states, shown, [](const RecordState& state) {
        EXPECT_EQ(lockedOf(firm().Text6), state.locked == Open ? QString() : u"0 1 2 3"_s);
        EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário Cadastro de Fornecedores"_s);
    });
    press(8);
    EXPECT_FALSE(firm().isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), u"suporte@vorbelo.example"_s); // no "email:" here
}

TEST_F(SuppliersTest, TaxNumberIsCheckedWhereItsBoxIsLeft)
{
    addFirm(u"0000001"_s, u"Alfa"_s, u"'52998224725'"_s);
    firm().show();
    press(2);
    // No blank at the end of its message.
    expectDocumentChecked(firm().Text6(2), firm().Text6(3), u"CGC com DV incorreto !!!"_s);
    for (const QString& typed : {u"11222333000181"_s, QString(), u"52998224725"_s}) {
        typeDocument(typed);
        enter(firm().Text6(2)); // back again: what was typed still stands
        EXPECT_EQ(firm().Text6(2).text(), typed);
        enter(firm().Text6(3));
    }
    // A person's number narrows the box; the next firm's must fit all the same.
    press(1);
    addFirm(u"0000002"_s, u"Beta"_s, u"'11222333000181'"_s);
    firm().unload();
    firm().show();
    enter(firm().Text6(2));
    press(13);
    EXPECT_EQ(firm().Text6(2).text(), u"11-222-333-0001/81"_s);
    // In the box of another number with the same text it is the document that is looked at.
    press(2);
    enter(firm().Text6(2));
    EXPECT_EQ(firm().Text6(2).text(), u"11222333000181"_s);
    // What is no document is not touched by a visit that leaves it as it is.
    firm().Text6(2).setText(u"123456789012345678"_s);
    enter(firm().Text6(3));
    enter(firm().Text6(2));
    EXPECT_EQ(firm().Text6(2).text(), u"123456789012345678"_s);
}

TEST_F(SuppliersTest, EnterMovesOnAndStaysAtTheProduct)
{
    firm().show();
    press(0);
    TextBox* const way[] = {&firm().Text1(0), &firm().Text1(1), &firm().Text1(2), &firm().Text1(3),
                            &firm().Text6(0), &firm().Text6(1), &firm().Text6(2), &firm().Text6(3),
                            &firm().Text1(4), &firm().Text1(4)}; // Enter does not leave the product
    enter(*way[0]);
    for (size_t box = 1; box < std::size(way); ++box) {
        ::press(*way[box - 1], Qt::Key_Return);
        EXPECT_EQ(firm().window()->focusWidget(), way[box]->widget()) << box;
    }
}

class SupplierSearchTest : public RegistersTest
{
protected:
    SupplierSearchTest()
    {
        addFirm(u"0000001"_s, u"Alfa"_s);
        addFirm(u"0000012"_s, u"Beta"_s);
        mainSql(u"INSERT INTO FORNECEDOR (NOMEEMPRESA, CODIGO) VALUES ('D''Ávila', '0000013')"_s);
        mainSql(u"UPDATE FORNECEDOR SET PRODUTO = 'Alfas' WHERE CODIGO = '0000012'"_s);
    }
    static QString found()
    {
        QStringList codes;
        for (const QString& row : gridRows(search().MSFlexGrid1))
            codes << row.left(7);
        return codes.join(u' ') + (search().MSFlexGrid1.enabled() ? u""_s : u" off"_s);
    }
};

TEST_F(SupplierSearchTest, EachBoxSearchesItsFieldAndEqualTextsTheFirst)
{
    search().show();
    expectEasyToWalk(search());
    const struct
    {
        int box;
        QString text, found;
        int count;
    } steps[] = {
        {2, u"ALFA"_s, u"0000012"_s, 1},
        {0, u"ALFA"_s, u"0000001"_s, 1}, // the text of the product
        {1, u"ana"_s, u"0000001 0000012"_s, 2},
        {1, u"x"_s, u""_s, 0},
        {0, u"_eta"_s, u"0000012"_s, 1},
        {0, u"D''Á"_s, u"0000013"_s, 1},
        {0, {}, u"0000001 0000012 0000013 off"_s, 3}, // all, out of reach
        {2, {}, u"0000001 0000012 0000013 off"_s, 3},
        {1, {}, u" off"_s, -1}, // all empty
    };
    for (const auto& [box, text, wanted, count] : steps) {
        SCOPED_TRACE(text.toStdString());
        search().Text1(box).setText(text);
        EXPECT_EQ(found(), wanted);
        EXPECT_EQ(search().caption(),
                  count < 0 ? u"Buscar Fornecedor"_s
                            : u"Buscar Fornecedor - %1 fornecedor encontrados"_s.arg(count));
        EXPECT_FALSE(search().Command1.enabled());
    }
    search().Text1(0).setText(u"D''Á"_s);
    EXPECT_EQ(gridRows(search().MSFlexGrid1), QStringList{u"0000013|D'Ávila||"_s});
    expectDownLeads(search().Text1, search().MSFlexGrid1);
    expectErrorBox(); // one apostrophe breaks the statement, and the dialog stays
    search().Text1(0).setText(u"D'"_s);
    click(search().Command2);
    EXPECT_FALSE(search().isLoaded());
}

TEST_F(SupplierSearchTest, ClickArmsOpenAndTheRegisterTakesOver)
{
    QString shown;
    onModal([&](Form&) {
        EXPECT_FALSE(search().isLoaded());
        shown = firm().Text1(0).text();
        click(firm().Command1(4)); // and back
        EXPECT_FALSE(firm().isLoaded());
    });
    search().show();
    type(search().Text1(0), u"Beta"_s);
    click(search().MSFlexGrid1, 1);
    EXPECT_TRUE(search().Command1.enabled());
    type(search().Text1(0), u"Alfa"_s); // the row is lost, the choice stays
    click(search().Command1);
    EXPECT_EQ(shown, u"Beta"_s);
    EXPECT_TRUE(search().isVisible());
    EXPECT_FALSE(search().Command1.enabled());
    EXPECT_EQ(search().Text1(0).text(), QString());
    click(search().MSFlexGrid1, 0); // nothing below the heading
    EXPECT_FALSE(search().Command1.enabled());
}

} // namespace
