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
}

TEST_F(Form1CliTest, WhatFailsOrIsGoneIsStoredOnceOrNotAtAll)
{
    expectStoredOnceWhateverFails(clients());
    expectNoOtherRowTouchedWhateverFails(clients());
    expectGoneWhereAnotherDeletedIt(clients());
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

TEST_F(Form1CliTest, EmptyNumberIsStoredAsZerosAndAskedAboutNextTime)
{
    cli().show();
    for (const bool exists : {false, true}) {
        press(0);
        type(cli().Text1(0), u"Ana"_s);
        type(cli().Text1(13), {});
        if (exists)
            expectQuestion(NumberQuestion, Answer::No);
        press(1);
    }
    EXPECT_EQ(orders(), QStringList{u"0000000 Ana"_s});
    EXPECT_EQ(cli().Text1(13).text(), QString());
}

// Another station took the number in meanwhile, unseen by the row set of this one.
TEST_F(Form1CliTest, NumberTakenElsewhereAsksAndYesEditsThatOrder)
{
    beginClash();
    expectQuestion(NumberQuestion, Answer::Yes);
    press(1);
    EXPECT_EQ(cli().Text1(0).text(), u"Caio"_s);
    EXPECT_EQ(enabledOf(cli().Command1), u"1 9"_s);
    EXPECT_TRUE(cli().Text1(13).locked());
    type(cli().Text1(1), u"Rua A"_s);
    press(1);
    EXPECT_EQ(orders(), (QStringList{u"0000004 Ana"_s, u"0000005 Caio"_s}));
    EXPECT_EQ(twins(), orders());
    EXPECT_EQ(stored(u"0000005"_s, u"endereco"_s), u"Rua A"_s);
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

TEST_F(Form1CliTest, NumberTakenElsewhereAfterPasteCanBeTypedAnew)
{
    addOrder(u"0000004"_s, u"Ana"_s);
    cli().show();
    press(5);
    press(5);
    addOrder(u"0000005"_s, u"Caio"_s);
    expectQuestion(NumberQuestion, Answer::No);
    press(1);
    EXPECT_EQ(cli().Text1(13).text(), QString());
    EXPECT_FALSE(cli().Text1(13).locked());
    EXPECT_EQ(cli().window()->focusWidget(), cli().Text1(13).widget());
    type(cli().Text1(13), u"9"_s);
    press(1);
    EXPECT_EQ(orders(), (QStringList{u"0000004 Ana"_s, u"0000005 Caio"_s, u"0000009 Ana"_s}));
    EXPECT_EQ(twins(), orders());
}

TEST_F(Form1CliTest, PasteTakesTheClientAndLeavesTheDevice)
{
    addOrder(u"0000004"_s, u"Ana"_s,
             u"cidade='Santos', telefone='1133334444', cpf='11144477735', marca='Radio', "
             "pronto=1, local='P3'"_s);
    addOrder(u"0000007"_s, u"Beto"_s);
    openRecordAt(u"0000004"_s);
    press(5);
    press(5);
    enter(cli().Text3(3));
    press(1);
    EXPECT_EQ(
        stored(u"0000008"_s, u"Nome || cidade || telefone || cpf || marca || pronto || local"_s),
        u"AnaSantos(11)3333-4444111444777350"_s);
}

// What each station changed alone is kept; where both wrote into one box the other's stays until it
// has been seen.
TEST_F(Form1CliTest, EditBesideAnotherStation)
{
    addOrder(u"0000004"_s, u"Ana"_s, u"endereco='', servicoexecutado='', telefone='1122223333'"_s);
    cli().show();
    press(2);
    type(cli().Text1(1), u"Rua A"_s);
    changeOrder(u"0000004"_s, u"servicoexecutado='Fonte trocada', telefone='(11)3333-4444'"_s);
    mainSql(u"UPDATE PECAAPLICADA SET CODIGO1='0000007'"_s);
    press(1);
    EXPECT_EQ(enabledOf(cli().Command1), Browsing);
    EXPECT_EQ(stored(u"0000004"_s, u"endereco || servicoexecutado || telefone"_s),
              u"Rua AFonte trocada(11)3333-4444"_s);
    EXPECT_EQ(sql(mainFile(), u"SELECT CODIGO1 FROM PECAAPLICADA"_s), QStringList{u"0000007"_s});

    press(2);
    type(cli().Text1(1), u"Rua B"_s);
    changeOrder(u"0000004"_s, u"endereco='Rua C'"_s);
    for (int tries = 0; tries < 2; ++tries) {
        press(1);
        EXPECT_EQ(enabledOf(cli().Command1), u"1 3 9"_s);
        EXPECT_EQ(lockedOf(cli().Text1), u"13 16"_s);
        EXPECT_EQ(cli().Text1(1).text(), u"Rua B"_s);
        EXPECT_EQ(stored(u"0000004"_s, u"endereco"_s), u"Rua C"_s);
    }
    press(9);
    EXPECT_EQ(cli().Text1(1).text(), u"Rua C"_s);
    press(2);
    type(cli().Text1(1), u"Rua D"_s);
    press(1);
    EXPECT_EQ(stored(u"0000004"_s, u"endereco"_s), u"Rua D"_s);
}

// The twin bears the name, too, and nobody sees it there: once the other's name was seen in the
// order, the next save stores both.
TEST_F(Form1CliTest, NameThatBothChangedIsSeenOnce)
{
    addOrder(u"0000004"_s, u"Ana"_s);
    cli().show();
    press(2);
    type(cli().Text1(0), u"Bia"_s);
    changeOrder(u"0000004"_s, u"Nome='Caio'"_s);
    mainSql(u"UPDATE PECAAPLICADA SET NOME='Caio', CODIGO1='0000007'"_s);
    press(1);
    EXPECT_EQ(enabledOf(cli().Command1), u"1 3 9"_s);
    press(9);
    EXPECT_EQ(cli().Text1(0).text(), u"Caio"_s);
    press(2);
    type(cli().Text1(0), u"Davi"_s);
    press(1);
    EXPECT_EQ(enabledOf(cli().Command1), Browsing);
    EXPECT_EQ(orders(), QStringList{u"0000004 Davi"_s});
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

TEST_F(Form1CliTest, DeletingTakesTheTwinAndShowsTheRowThatIsCurrent)
{
    for (const char* number : {"0000001", "0000002", "0000003"})
        addOrder(QString::fromLatin1(number), u"Ana"_s);
    mainSql(u"DELETE FROM PECAAPLICADA WHERE NUMERO='0000003'"_s);
    cli().show();
    // The one without a twin goes alone; the first one leaves no way back.
    for (const auto& [deleted, left, buttons] :
         {std::tuple{u"0000003"_s, 2, Browsing}, {u"0000001"_s, 1, u"0 2 4 5 6 7 8 11 12 13"_s}}) {
        cli().Text2.setText(deleted);
        press(2);
        remove(clients());
        EXPECT_EQ(cli().Text1(13).text(), u"0000002"_s);
        EXPECT_EQ(orders().size(), left);
        EXPECT_EQ(twins(), orders());
        EXPECT_EQ(enabledOf(cli().Command1), buttons);
    }
}

TEST_F(Form1CliTest, LookUpThatFindsNothingStaysOnTheRow)
{
    for (const char* number : {"0000001", "0000002", "0000003"})
        addOrder(QString::fromLatin1(number), QString::fromLatin1(number));
    openRecordAt(u"0000002"_s);
    for (const QString& number : {u"0000009"_s, u"'"_s}) {
        cli().Text2.setText(number);
        press(11);
        EXPECT_EQ(cli().Text1(13).text(), u"0000003"_s);
        press(10);
        EXPECT_EQ(cli().Text1(13).text(), u"0000002"_s);
    }
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
    const QString lengths = u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s;
    const std::vector<std::tuple<QString, QString, int>> documents{
        {u"1114447773"_s, lengths, 18},
        {u"11144477735"_s, {}, 14},
        {u"11144477736"_s, u"CPF com DV incorreto !!!"_s, 14},
        {u"111444777351"_s, lengths + u'"', 14},
        {u"11222333000181"_s, {}, 18},
        {u"11222333000182"_s, u"CGC com DV incorreto !!! "_s, 18},
        {u"111.444.777-35"_s, u"CGC com DV incorreto !!! "_s, 18},
        {u"11-222-333-0001/81"_s, {}, 18},
    };
    for (const auto& [document, message, maxLength] : documents) {
        SCOPED_TRACE(document.toStdString());
        enter(cli().Text3(3));
        cli().Text3(3).setText(document); // the last two can only be pasted
        if (!message.isEmpty())
            expectBox(message);
        enter(cli().Text1(0));
        EXPECT_EQ(cli().Text3(3).text(), message.isEmpty() ? document : QString());
        EXPECT_EQ(cli().Text3(3).maxLength(), maxLength);
        EXPECT_EQ(cli().window()->focusWidget(),
                  (message.isEmpty() ? cli().Text1(0) : cli().Text3(3)).widget());
    }
    // A telephone of the same text is taken for the document; a locked box is left alone.
    type(cli().Text3(3), u"1133334444"_s);
    enter(cli().Text3(1));
    type(cli().Text3(1), u"1133334444"_s);
    expectBox(lengths);
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
