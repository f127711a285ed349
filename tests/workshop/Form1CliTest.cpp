#include "Faults.h"
#include "WorkshopTest.h"

#include <QLineEdit>
#include <QtTest/QTest>

#include <sqlite3.h>

namespace {

const QString Browsing = u"0 2 4 5 6 7 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"_s;
const QString NumberQuestion = u"Número de Cadastro já existe,quer editar o cadastro sim ou não?"_s;

class Form1CliTest : public WorkshopTest
{
protected:
    static void press(int button) { click(cli().Command1(button)); }
    // Beto's new order has the number that another station gave to Caio's meanwhile.
    void beginClash()
    {
        addOrder(u"0000004"_s, u"Ana"_s);
        cli().show();
        press(0);
        type(cli().Text1(0), u"Beto"_s);
        addOrder(u"0000005"_s, u"Caio"_s);
    }
};

TEST_F(Form1CliTest, EachActionLeavesItsButtonsAndBoxes)
{
    addOrder(u"0000004"_s, u"Ana"_s);
    cli().show();
    const auto shown = [] { return cli().Text1(13).text(); };
    QString focus;
    const auto boxes = [&](const RecordState& state) {
        EXPECT_EQ(lockedOf(cli().Text3), state.locked == AllLocked ? u"0 1 2 3"_s : u""_s);
        focus += u' ' + cli().window()->focusWidget()->objectName();
    };
    const std::vector<RecordState> states{
        {u"0"_s, u"1 9"_s, u"16"_s, u"0000005"_s},
        {u"9"_s, Browsing, AllLocked, u"0000004"_s},
        {u"2"_s, u"1 3 9"_s, u"13 16"_s, u"0000004"_s},
        {u"1"_s, Browsing, AllLocked, u"0000004"_s},
        {u"5"_s, u"5"_s, AllLocked, {}},
    };
    expectStates(clients(), states, shown, boxes);
    EXPECT_EQ(focus, u" Text1_0 Text1_0 Text1_0 Command1_6 Command1_5"_s);
    enter(cli().Check1(0));
    expectStates(clients(),
                 {{{}, u"5"_s, AllLocked, {}},
                  {u"5"_s, u"1 9"_s, u"13 16"_s, u"0000005"_s},
                  {u"9"_s, Browsing, AllLocked, u"0000004"_s}},
                 shown, boxes);
    enter(cli().Check1(0));
    expectStates(clients(),
                 {{{}, u"0 1 2 4 5 6 7 8 9 10 11 12 13"_s, AllLocked, u"0000004"_s},
                  {u"9 2 3n"_s, Browsing, AllLocked, u"0000004"_s},
                  {u"2 3y"_s, u"0 8"_s, AllLocked, u"0000000"_s}},
                 shown, boxes);
    EXPECT_FALSE(cli().Check1(0).enabled());
    for (const int longText : {8, 9, 10, 11})
        expectUseOfRoom(cli(), *cli().Text1(longText).widget());
}

TEST_F(Form1CliTest, WhatFailsOrIsGoneIsStoredOnceOrNotAtAll)
{
    expectSafe(clients());
}

TEST_F(Form1CliTest, FirstOrderOfAnEmptyTableIsStoredWithItsTwin)
{
    cli().show();
    press(0);
    EXPECT_EQ(cli().Text1(13).text(), u"0000001"_s);
    EXPECT_EQ(cli().Text1(14).text(), u"09/03/2026"_s);
    type(cli().Text1(0), u"Ana"_s);
    type(cli().Text3(0), u"1.234,5"_s);
    type(cli().Text3(1), u"1133334444"_s);
    click(cli().Check1(2));
    press(1);
    EXPECT_EQ(orders(), QStringList{u"0000001 Ana"_s});
    EXPECT_EQ(twins(), orders());
    EXPECT_EQ(stored(u"0000001"_s, u"telefone || celular || valor || autoriza || pronto"_s),
              u"(11)3333-44441234500010"_s);
    EXPECT_EQ(cli().Text3(0).text(), u"1.234,50"_s);
    EXPECT_EQ(cli().Text1(16).text(), u"0000001"_s);
    // The next one counts on, and closing the window in the middle of it loses that one alone.
    press(0);
    EXPECT_EQ(cli().Text1(13).text(), u"0000002"_s);
    cli().window()->close();
    EXPECT_EQ(orders().size(), 1);
    EXPECT_EQ(twins().size(), 1);
}

// The other station's order comes at each moment of the save in which the file lets it in.
TEST_F(Form1CliTest, TwoStationsNeverGiveOneNumber)
{
    setMsgBoxForTests([](const Box&) { return Answer::No; });
    int moment = 0;
    bool cameIn = true;
    while (cameIn) {
        SCOPED_TRACE(++moment);
        cli().unload();
        mainSql(u"DELETE FROM Cliente; DELETE FROM PECAAPLICADA"_s);
        addOrder(u"0000004"_s, u"Ana"_s);
        addOrder(u"00000005"_s, u"Bia"_s); // from elsewhere: it holds the number, and is another
        cli().show();
        press(0);
        cameIn = false;
        int calls = 0;
        faults::setObserver([&](faults::Call) {
            if (++calls != moment)
                return;
            cameIn = true;
            sqlite3* handle = nullptr;
            sqlite3_open(mainFile().toUtf8().constData(), &handle);
            sqlite3_exec(handle,
                         "INSERT INTO Cliente (numero, Nome) SELECT '0000005', 'Caio' WHERE NOT "
                         "EXISTS (SELECT 1 FROM Cliente WHERE numero='0000005')",
                         nullptr, nullptr, nullptr);
            sqlite3_close(handle);
        });
        press(1);
        faults::setObserver({});
        EXPECT_EQ(sql(mainFile(), u"SELECT 1 FROM Cliente WHERE numero='0000005'"_s).size(), 1);
    }
    EXPECT_GT(moment, 4);
}

TEST_F(Form1CliTest, NumberGivenBackWhileTheQuestionStandsIsTakenByTheNextSave)
{
    beginClash();
    setMsgBoxForTests([this](const Box&) {
        mainSql(u"DELETE FROM Cliente WHERE Nome='Caio'; "
                "DELETE FROM PECAAPLICADA WHERE NOME='Caio'"_s);
        return Answer::Yes;
    });
    press(1);
    press(1);
    EXPECT_EQ(orders(), (QStringList{u"0000004 Ana"_s, u"0000005 Beto"_s}));
    EXPECT_EQ(twins(), orders());
}

// The client is taken, and the device is not. An empty number is stored as zeros.
TEST_F(Form1CliTest, NumberTakenElsewhereAfterPasteCanBeTypedAnew)
{
    addOrder(u"0000004"_s, u"Ana"_s,
             u"cidade='Santos', telefone='1133334444', cpf='11144477735', marca='Radio', "
             "pronto=1, local='P3'"_s);
    cli().show();
    press(5);
    press(5);
    addOrder(u"0000005"_s, u"Caio"_s);
    expectQuestion(NumberQuestion, Answer::No);
    press(1);
    EXPECT_EQ(cli().Text1(13).text(), QString());
    EXPECT_FALSE(cli().Text1(13).locked());
    EXPECT_EQ(cli().window()->focusWidget(), cli().Text1(13).widget());
    enter(cli().Text3(3));
    press(1);
    EXPECT_EQ(orders(), (QStringList{u"0000000 Ana"_s, u"0000004 Ana"_s, u"0000005 Caio"_s}));
    EXPECT_EQ(twins(), orders());
    EXPECT_EQ(stored(u"0000000"_s, u"cidade || telefone || cpf || marca || pronto || local"_s),
              u"Santos(11)3333-4444111444777350"_s);
}

// What each station changed alone is kept. Where both wrote into one box the other's stays until it
// has been seen; the twin bears the name, too, and nobody sees it there.
TEST_F(Form1CliTest, EditBesideAnotherStation)
{
    addOrder(u"0000004"_s, u"Ana"_s, u"endereco='', telefone='11922223333'"_s); // cut by its box
    cli().show();
    press(2);
    type(cli().Text1(1), u"Rua A"_s);
    type(cli().Text1(0), u"Bia"_s);
    changeOrder(u"0000004"_s, u"Nome='Caio'"_s);
    mainSql(u"UPDATE PECAAPLICADA SET NOME='Caio', CODIGO1='0000007'"_s);
    press(1);
    EXPECT_EQ(enabledOf(cli().Command1), u"1 3 9"_s);
    EXPECT_EQ(cli().Text1(0).text(), u"Bia"_s);
    EXPECT_EQ(stored(u"0000004"_s, u"Nome || endereco"_s), u"Caio"_s);
    press(9);
    EXPECT_EQ(cli().Text1(0).text(), u"Caio"_s);
    press(2);
    type(cli().Text1(1), u"Rua D"_s);
    type(cli().Text1(0), u"Davi"_s);
    changeOrder(u"0000004"_s, u"telefone='(11)3333-4444'"_s);
    press(1);
    EXPECT_EQ(enabledOf(cli().Command1), Browsing);
    EXPECT_EQ(stored(u"0000004"_s, u"Nome || endereco || telefone"_s), u"DaviRua D(11)3333-4444"_s);
    EXPECT_EQ(twins(), orders());
    EXPECT_EQ(sql(mainFile(), u"SELECT CODIGO1 FROM PECAAPLICADA"_s), QStringList{u"0000007"_s});
}

TEST_F(Form1CliTest, DeletionOfWorkThatNobodySawIsRefusedOnce)
{
    const std::vector<QString> works{u"UPDATE Cliente SET servicoexecutado='Fonte'"_s,
                                     u"UPDATE PECAAPLICADA SET CODIGO1='0000007'"_s};
    for (const QString& work : works) {
        addOrder(u"0000001"_s, u"Ana"_s);
        addOrder(u"0000002"_s, u"Ana"_s);
        cli().show();
        press(2);
        mainSql(work + u" WHERE numero='0000001'"_s);
        for (const qsizetype left : {2, 1}) {
            remove(clients());
            EXPECT_EQ(orders().size(), left);
            EXPECT_EQ(twins(), orders());
            EXPECT_EQ(cli().Text1(13).text(), left == 2 ? u"0000001"_s : u"0000002"_s);
            press(2);
        }
        cli().unload();
        mainSql(u"DELETE FROM Cliente; DELETE FROM PECAAPLICADA"_s);
    }
}

TEST_F(Form1CliTest, OrderWithoutATwinIsDeletedAlone)
{
    addOrder(u"0000001"_s, u"Ana"_s);
    mainSql(u"INSERT INTO Cliente (numero, Nome) VALUES ('0000003', 'Bia')"_s);
    openRecordAt(u"0000003"_s);
    press(2);
    remove(clients());
    EXPECT_EQ(orders(), QStringList{u"0000001 Ana"_s});
    EXPECT_EQ(twins(), orders());
}

TEST_F(Form1CliTest, ServiceBoxTellsThePartsApplied)
{
    addOrder(u"0000001"_s);
    mainSql(u"UPDATE PECAAPLICADA SET DESCRICAO1='Fusível', DESCRICAO3='Cabo'"_s);
    mainSql(u"INSERT INTO Cliente (numero) VALUES ('0000002')"_s);
    cli().show();
    EXPECT_EQ(cli().Text1(12).toolTipText(), u"Fusível,,Cabo,,,,,,,,"_s);
    press(13);
    EXPECT_EQ(cli().Text1(12).toolTipText(), u"NÃO Á PEÇA CADASTRADA"_s);
}

TEST_F(Form1CliTest, DocumentsAreCheckedOnLeavingTheirBox)
{
    addOrder(u"0000001"_s);
    cli().show();
    press(2);
    expectDocumentChecked(cli().Text3(3), cli().Text1(0), u"CGC com DV incorreto !!! "_s);
    // A telephone of the same text is taken for the document; a locked box is left alone.
    type(cli().Text3(3), u"1133334444"_s);
    enter(cli().Text3(1));
    type(cli().Text3(1), u"1133334444"_s);
    expectBox(u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s);
    enter(cli().Text1(0));
    EXPECT_EQ(cli().Text3(1).text(), u"1133334444"_s);
    EXPECT_EQ(cli().Text3(3).text(), QString());
    type(cli().Text3(3), u"123"_s);
    cli().TravaCampos();
    enter(cli().Text1(0));
    EXPECT_EQ(cli().Text3(3).text(), u"123"_s);
}

TEST_F(Form1CliTest, SaveByKeyOrMouseLeavesTheDocumentBoxFirst)
{
    cli().show();
    press(0);
    const std::vector<std::function<void()>> ways{
        [&] { QTest::keyClick(cli().Text3(3).widget(), Qt::Key_S, Qt::AltModifier); },
        [&] { QTest::mouseClick(cli().Command1(1).widget(), Qt::LeftButton); }};
    for (const auto& save : ways) {
        enter(cli().Text3(3));
        type(cli().Text3(3), u"11144477736"_s);
        expectBox(u"CPF com DV incorreto !!!"_s);
        save();
        EXPECT_TRUE(orders().isEmpty());
        EXPECT_EQ(cli().window()->focusWidget(), cli().Text3(3).widget());
    }
}

TEST_F(Form1CliTest, CompanyNumberStaysWholeAfterACpfWasChecked)
{
    addOrder(u"0000001"_s, u"Ana"_s, u"cpf='11144477735'"_s);
    addOrder(u"0000002"_s, u"Beto"_s, u"cpf='11222333000181'"_s);
    cli().show();
    EXPECT_EQ(cli().Text3(3).text(), u"111-444-777/35"_s);
    press(2);
    enter(cli().Text3(3));
    EXPECT_EQ(cli().Text3(3).text(), u"11144477735"_s);
    EXPECT_EQ(qobject_cast<QLineEdit*>(cli().Text3(3).widget())->selectedText(), u"11144477735"_s)
        << "what is typed now replaces it";
    enter(cli().Text1(0));
    press(9);
    press(11);
    EXPECT_EQ(cli().Text3(3).text(), u"11-222-333-0001/81"_s);
    // Saved without a visit to the box the formatted text is what is stored, and shown ever after.
    press(10);
    press(2);
    press(1);
    EXPECT_EQ(stored(u"0000001"_s, u"cpf"_s), u"111-444-777/35"_s);
}

TEST_F(Form1CliTest, EmptyTelephoneTakesACommaWhileThePriceIsEmpty)
{
    cli().show();
    press(0);
    type(cli().Text3(1), u","_s);
    EXPECT_EQ(cli().Text3(1).text(), u","_s);
    type(cli().Text3(0), u"5,a0"_s);
    EXPECT_EQ(cli().Text3(0).text(), u"5,0"_s);
    type(cli().Text3(2), u"1,2"_s);
    EXPECT_EQ(cli().Text3(2).text(), u"12"_s);
}

TEST_F(Form1CliTest, EditWithoutAnyTwinStaysOpenToBeTriedAgain)
{
    addOrder(u"0000001"_s, u"Ana"_s);
    mainSql(u"DELETE FROM PECAAPLICADA"_s);
    cli().show();
    press(2);
    cli().Text1(0).setText(u"Beto"_s);
    press(1);
    EXPECT_EQ(orders(), QStringList{u"0000001 Ana"_s});
    EXPECT_EQ(enabledOf(cli().Command1), u"1 3 9"_s);
    EXPECT_EQ(cli().Text1(0).text(), u"Beto"_s);
}

// A new row that cannot begin in both tables begins in none, and the next press begins it.
TEST_F(Form1CliTest, BeginningOfANewOrder)
{
    addOrder(u"0000001"_s, u"Ana"_s);
    int stored = 1;
    for (const int button : {0, 5}) {
        const auto prepare = [&] {
            cli().unload();
            cli().show();
            if (button == 5)
                press(5);
        };
        const auto check = [&](bool) {
            if (!cli().Command1(1).enabled())
                press(button);
            cli().Text1(0).setText(u"Ana"_s);
            press(1);
            EXPECT_EQ(enabledOf(cli().Command1), Browsing);
            EXPECT_EQ(orders().size(), ++stored);
            EXPECT_EQ(twins(), orders());
        };
        failEachCall(
            prepare, [&] { press(button); }, check, 2);
    }
}

} // namespace
