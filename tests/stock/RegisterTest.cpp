#include "StockTest.h"

#include <QWidget>

namespace {

const QString Browsing = u"0 2 4 5 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5 16"_s;
const QString Open = u"3 16"_s; // the code stays locked

class RegisterTest : public StockTest
{
protected:
    static void press(int button) { click(form<Form1Pec>().Command1(button)); }
    QStringList parts() const
    {
        return sql(mainFile(),
                   u"SELECT CODIGO || '|' || LOCAL || '|' || ESTOQUE || '|' || DESCRICAO "
                   "|| '|' || VALOR || '|' || EQUIVALENTE FROM Pecas ORDER BY CODIGO"_s);
    }
    static QString shown()
    {
        const Form1Pec& parts = form<Form1Pec>();
        QStringList boxes;
        for (const int box : {3, 4, 2, 0, 5, 1})
            boxes << parts.Text1(box).text();
        return boxes.join(u'|');
    }
    void remove(Answer answer = Answer::Yes)
    {
        expectQuestion(u"Deseja Realmente Excluir está Peça ?"_s, answer);
        press(3);
    }
};

TEST_F(RegisterTest, EachActionLeavesItsButtonsAndBoxes)
{
    addParts({u"Resistor"_s, u"Diode"_s});
    const Form1Pec& parts = openRegister();
    expectEasyToWalk(parts);
    const struct
    {
        std::function<void()> action;
        QString buttons, locked, code;
    } steps[] = {
        {[] {}, Browsing, AllLocked, u"0000001"_s},
        {[] { press(0); }, u"1 9"_s, Open, u"0000003"_s},
        {[] { press(9); }, Browsing, AllLocked, u"0000002"_s},
        {[] { press(2); }, u"1 3 9"_s, Open, u"0000002"_s},
        {[this] { remove(Answer::No); }, u"1 3 9"_s, Open, u"0000002"_s},
        {[] { press(1); }, Browsing, AllLocked, u"0000002"_s},
        {[] { press(12); }, u"0 2 4 5 8 11 12 13"_s, AllLocked, u"0000001"_s},
        {[] { press(10); }, u"0 2 4 5 8 11 12 13"_s, AllLocked, u"0000001"_s},
        {[] { press(11); }, Browsing, AllLocked, u"0000002"_s},
        {[] { press(11); }, u"0 2 4 5 8 10 12 13"_s, AllLocked, u"0000002"_s},
        {[] { press(5); }, u"5"_s, AllLocked, QString()},
        {[] { press(5); }, u"1 9"_s, Open, u"0000003"_s},
        {[] { press(9); }, Browsing, AllLocked, u"0000002"_s},
        {[this] { press(2), remove(); }, Browsing, AllLocked, u"0000001"_s},
        {[this] { press(2), remove(); }, u"0 8"_s, AllLocked, u"0000000"_s},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        step.action();
        EXPECT_EQ(enabledOf(parts.Command1), step.buttons);
        EXPECT_EQ(lockedOf(parts.Text1), step.locked);
        EXPECT_EQ(parts.Text1(3).text(), step.code);
    }
    EXPECT_EQ(gridRows(parts.MSFlexGrid1), QStringList());
    EXPECT_EQ(shown() + parts.Text1(16).text(), u"0000000||||0,00|0000000"_s);
    EXPECT_EQ(this->parts(), QStringList());
}

TEST_F(RegisterTest, EmptyBoxesStoreTheirFillerAndACopyBringsDescriptionAndShelfOnly)
{
    const Form1Pec& parts = openRegister();
    press(0);
    press(1);
    EXPECT_EQ(parts.Text1(16).text(), u"0000001"_s);
    press(0);
    type(parts.Text1(0), u"Válvula"_s);
    type(parts.Text1(4), u"B7"_s);
    type(parts.Text1(2), u"1a2"_s); // letters are filtered
    type(parts.Text1(5), u"1.234,5x"_s);
    press(1);
    click(form<Form1Pec>().MSFlexGrid1, 2);
    press(5);
    EXPECT_EQ(shown(), u"||||0,00|"_s);
    press(5);
    EXPECT_EQ(shown(), u"0000003|B7||Válvula|0,00|"_s);
    press(1);
    EXPECT_EQ(this->parts(), (QStringList{u"0000001|*******|0|***************|0|**********"_s,
                                          u"0000002|B7|12|Válvula|12345000|**********"_s,
                                          u"0000003|B7|0|Válvula|0|**********"_s}));
    EXPECT_EQ(gridRows(parts.MSFlexGrid1).mid(0, 2),
              (QStringList{u"0000001|*******|0|***************|0,00"_s,
                           u"0000002|B7|12|Válvula|1.234,50"_s}));
}

// The boxes keep the part just stored while the last row is current: an edit right after it brings
// that one into view first. A click stands on the part clicked, on the one clicked before, too.
TEST_F(RegisterTest, AfterASaveTheLastRowIsCurrent)
{
    addParts({u"First"_s, u"Last"_s});
    Form1Pec& record = openRegister();
    const auto rename = [&](const QString& name) {
        press(2);
        type(record.Text1(0), name);
        press(1);
        EXPECT_EQ(shown(), u"0000001|A1|10|%1|2,50|BC"_s.arg(name));
    };
    rename(u"Changed"_s);
    press(2);
    EXPECT_EQ(shown(), u"0000002|A1|10|Last|2,50|BC"_s);
    press(9);
    for (const QString& name : {u"Once"_s, u"Twice"_s}) {
        click(record.MSFlexGrid1, 1);
        rename(name);
    }
    EXPECT_EQ(parts(),
              (QStringList{u"0000001|A1|10|Twice|25000|BC"_s, u"0000002|A1|10|Last|25000|BC"_s}));
}

TEST_F(RegisterTest, NullPriceShowsAPoint)
{
    addPart(u"0000001"_s, u"No price"_s, u"NULL"_s, u"NULL"_s);
    const Form1Pec& parts = openRegister();
    EXPECT_EQ(shown(), u"0000001|A1||No price|0.00|BC"_s);
    EXPECT_EQ(gridRows(parts.MSFlexGrid1), QStringList{u"0000001|A1||No price|0,00"_s});
    press(2);
    enter(parts.Text1(5));
    type(parts.Text1(5), {});
    enter(parts.Text1(1));
    EXPECT_EQ(parts.Text1(5).text(), u"0,00"_s);
}

TEST_F(RegisterTest, FilterFollowsEqualTextsNotBoxes)
{
    openRegister();
    press(0);
    const Form1Pec& parts = form<Form1Pec>();
    type(parts.Text1(2), u"x"_s); // empty like the description, which takes anything
    EXPECT_EQ(parts.Text1(2).text(), u"x"_s);
    type(parts.Text1(0), u"d"_s);
    type(parts.Text1(1), u"e"_s);
    type(parts.Text1(2), u"5"_s);
    parts.Text1(5).setText(u"5"_s);
    type(parts.Text1(5), u","_s); // equal to the stock, which takes no comma
    EXPECT_EQ(parts.Text1(5).text(), u"5"_s);
}

TEST_F(RegisterTest, GridShowsItsPartButNotOverWhatIsTyped)
{
    addParts({u"Resistor"_s, u"Diode"_s});
    Form1Pec& parts = openRegister();
    parts.MSFlexGrid1.setRow(2);
    ::press(parts.MSFlexGrid1, Qt::Key_Return);
    for (const QString& nobody : {u"'"_s, u"9"_s}) { // back to the row that was current
        parts.Text2.setText(nobody);
        EXPECT_EQ(parts.Text1(3).text(), u"0000002"_s);
    }
    press(0);
    click(parts.MSFlexGrid1, 2);
    EXPECT_EQ(parts.Text1(3).text(), u"0000003"_s);
    EXPECT_EQ(parts.Text2.text(), u"9"_s);
    press(9);

    // In an edit a click on another part shows that one, and a second on the same changes nothing.
    press(2);
    click(parts.MSFlexGrid1, 1);
    EXPECT_EQ(parts.Text1(0).text(), u"Resistor"_s);
    type(parts.Text1(0), u"typed"_s);
    click(parts.MSFlexGrid1, 1);
    EXPECT_EQ(parts.Text1(0).text(), u"typed"_s);
}

// Whichever call or write fails: the part is stored once, or the form stands as when the button was
// pressed and a second press stores it.
TEST_F(RegisterTest, SaveThatFailsCanBeTriedAgain)
{
    for (const int begin : {0, 2}) {
        const auto prepare = [&] {
            form<Form1Pec>().unload();
            mainSql(u"DELETE FROM Pecas"_s);
            addPart(u"0000001"_s, u"Resistor"_s);
            openRegister();
            press(begin);
            type(form<Form1Pec>().Text1(0), u"New"_s);
        };
        const auto check = [&](bool) {
            if (form<Form1Pec>().Command1(1).enabled())
                press(1);
            EXPECT_EQ(parts(), begin == 2 ? QStringList{u"0000001|A1|10|New|25000|BC"_s}
                                          : (QStringList{u"0000001|A1|10|Resistor|25000|BC"_s,
                                                         u"0000002|*******|0|New|0|**********"_s}));
        };
        failEachCall(
            prepare, [this] { press(1); }, check, 3);
        failEachWrite(
            prepare, [this] { press(1); }, check);
    }
}

// Where both wrote into one box the other's stays until it has been seen, and a deletion of what
// nobody saw is refused once.
TEST_F(RegisterTest, EditBesideAnotherStation)
{
    addParts({u"Resistor"_s});
    Form1Pec& record = openRegister();
    press(2);
    type(record.Text1(0), u"Resistor 1k"_s);
    mainSql(u"UPDATE Pecas SET ESTOQUE = '3'"_s);
    press(1);
    EXPECT_EQ(parts(), QStringList{u"0000001|A1|3|Resistor 1k|25000|BC"_s});
    EXPECT_EQ(enabledOf(record.Command1), Browsing);

    press(2);
    type(record.Text1(2), u"12"_s);
    mainSql(u"UPDATE Pecas SET ESTOQUE = '1'"_s);
    press(1);
    press(1);
    EXPECT_EQ(stocks(), QStringList{u"0000001 1"_s});
    EXPECT_EQ(enabledOf(record.Command1), u"1 3 9"_s);
    EXPECT_EQ(record.Text1(2).text(), u"12"_s);
    press(9);
    EXPECT_EQ(record.Text1(2).text(), u"1"_s);

    mainSql(u"UPDATE Pecas SET ESTOQUE = '4'"_s);
    for (const QString& left : {u"0000001|A1|4|Resistor 1k|2,50|BC"_s, u"0000000||||0,00|"_s}) {
        press(2);
        remove();
        EXPECT_EQ(shown(), left);
    }
    EXPECT_EQ(parts(), QStringList());
}

TEST_F(RegisterTest, MissingDatabaseShowsItsBoxesAndTheFormCanBeLeft)
{
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/none.mdb"_s);
    expectErrorBox();
    expectBox(u"Restaure o Banco de Dados ou Localize utilizando o Botão Localizar na tela de "
              "configuração do Sistema,depois reinicie o programa."_s);
    expectBox(u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
    expectErrorBox();
    openRegister();
    EXPECT_TRUE(form<Form1Pec>().isLoaded());
    press(8);
    EXPECT_FALSE(form<Form1Pec>().isLoaded());
    EXPECT_TRUE(principal().StatusBar1.panel(2).startsWith(u"email:"_s));
    EXPECT_TRUE(ends().empty());
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
