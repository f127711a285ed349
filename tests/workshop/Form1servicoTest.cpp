#include "BenchTest.h"

#include "RecordForms.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QTest>

namespace {

class Form1servicoTest : public BenchTest
{
protected:
    static QString boxes(int first, int last)
    {
        QStringList indexes;
        for (int index = first; index <= last; ++index)
            indexes << QString::number(index);
        return indexes.join(u' ');
    }
    static void typeService(const QString& text) { type(bench().Text1(26), text); }
};

TEST_F(Form1servicoTest, EachActionLeavesItsButtonsAndBoxes)
{
    addOrder(u"0000005"_s, u"Ana"_s, u"pronto=1, naotempeca=1"_s);
    addOrder(u"0000015"_s, u"Beto"_s, u"retorno=1"_s);
    principal().StatusBar1.setPanel(1, u"Usuario: Caio"_s);
    bench().show();
    expectEasyToWalk(bench());
    EXPECT_EQ(bench().caption(),
              u"Serviço executado e peças aplicadas pelo Técnico  Usuario: Caio  está usando"_s);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Peças Aplicadas"_s);
    const QString idle = boxes(1, 37);
    const QString open = boxes(0, 3);
    const QString none = u"Peças aplicadas e Serviço executado pelo Técnico"_s;
    const auto found = [](int count) {
        return u"Peças aplicadas e serviço executado - %1 clientes encontrados"_s.arg(count);
    };
    struct State
    {
        QString pressed; // a button, a row as "r1", or a search as "=5"
        QString buttons, locked;
        bool grid;
        QString caption;
        QString shown; // number, and flags
        QString focus;
    };
    const std::vector<State> states{
        {{}, u"3"_s, idle, false, bench().caption(), u" 000"_s, u"Text1_0"_s},
        {u"=5"_s, u"0 3"_s, idle, true, found(2), u" 000"_s, {}},
        {u"=77"_s, u"3"_s, idle, false, found(0), u" 000"_s, {}},
        {u"=15"_s, u"0 3"_s, idle, true, found(1), u" 000"_s, {}},
        {u"r0"_s, u"0 3"_s, idle, true, found(1), u"0000015 010"_s, {}},
        {u"="_s, u"3"_s, idle, false, none, u" 010"_s, {}},
        {u"=5"_s, u"0 3"_s, idle, true, found(2), u" 010"_s, {}},
        {u"r1"_s, u"0 3"_s, idle, true, found(2), u"0000005 101"_s, {}},
        {u"0"_s, u"1 2"_s, open, false, found(2), u"0000005 101"_s, u"Text1_26"_s},
        {u"1"_s, u"3"_s, idle, false, found(2), u"0000005 101"_s, u"Text1_0"_s},
        {u"=05"_s, u"0 3"_s, idle, true, found(1), u"0000005 101"_s, {}},
        {u"0"_s, u"1 2"_s, open, false, found(1), u"0000005 101"_s, {}},
        {u"2"_s, u"3"_s, idle, false, found(1), u"0000005 101"_s, u"Text1_0"_s},
    };
    for (const State& state : states) {
        SCOPED_TRACE(state.pressed.toStdString());
        if (state.pressed.startsWith(u'='))
            search(state.pressed.mid(1));
        else if (state.pressed.startsWith(u'r'))
            click(bench().MSFlexGrid1, state.pressed.mid(1).toInt());
        else if (!state.pressed.isEmpty())
            press(state.pressed.toInt());
        EXPECT_EQ(enabledOf(bench().Command1), state.buttons);
        EXPECT_EQ(lockedOf(bench().Text1), state.locked);
        for (int line = 1; line <= Form1servico::Lines; ++line)
            EXPECT_EQ(bench().line(line).description.locked(), state.locked == idle);
        EXPECT_EQ(bench().MSFlexGrid1.visible(), state.grid);
        EXPECT_EQ(bench().caption(), state.caption);
        QString shown = bench().Text1(1).text() + u' ';
        for (const int flag : {0, 1, 3})
            shown += QString::number(bench().Check1(flag).value());
        EXPECT_EQ(shown, state.shown);
        if (!state.focus.isEmpty()) {
            EXPECT_EQ(bench().window()->focusWidget()->objectName(), state.focus);
        }
    }
    press(3);
    EXPECT_FALSE(bench().isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), supportEmailText());
    EXPECT_EQ(faults(), 0);
}

// By keyboard alone.
TEST_F(Form1servicoTest, OneJobIsNotedInBothRowsAndNowhereElse)
{
    addOrder(u"0000007"_s, u"Beto"_s);
    addOrder(u"0000017"_s, u"Ana"_s,
             u"telefone='1933334444', servicoexecutado='linha 1' || char(10) || 'linha 2'"_s);
    const auto elsewhere = [this] {
        return sql(mainFile(), u"SELECT ESTOQUE || VALOR FROM Pecas"_s) +
               sql(mainFile(), u"SELECT codigo FROM MOVIMENTO"_s) +
               sql(mainFile(), u"SELECT ifnull(CODIGO2, '') FROM PECAAPLICADA LIMIT 1"_s);
    };
    const QStringList before = elsewhere();
    bench().show();
    search(u"17"_s);
    enter(bench().Text1(0));
    QTest::keyClick(bench().window()->focusWidget(), Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(bench().window()->focusWidget(), bench().MSFlexGrid1.widget());
    ::press(bench().MSFlexGrid1, Qt::Key_Space);
    EXPECT_EQ(bench().Text1(3).text(), u"(19)3333-4444"_s);
    EXPECT_EQ(bench().Text1(1).toolTipText(), u"0000017"_s);
    press(0);
    QTest::keyClick(bench().window()->focusWidget(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(bench().window()->focusWidget(), u" e 3"_s);
    auto* second = qobject_cast<QComboBox*>(bench().Combo2.widget());
    enter(bench().Combo2);
    QTest::keyClicks(second, u"corr"_s);
    QTest::keyClick(second, Qt::Key_Down);
    EXPECT_EQ(shownLine(2), u"0000002|Correia||1.250,00"_s) << "a Null equivalent, not the stock";
    QTest::keyClick(second, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(bench().window()->focusWidget()->objectName(), u"Text1_16"_s);
    press(1);
    EXPECT_EQ(faults(), 0);
    EXPECT_EQ(stored(u"0000017"_s, u"servicoexecutado"_s), u"linha 1\nlinha 2 e 3"_s);
    EXPECT_EQ(storedTwin(u"0000017"_s, u"CODIGO2 || DESCRICAO2 || QUANT2 || VALOR2 || VALOR1"_s),
              u"0000002Correia1.250,000,00"_s);
    EXPECT_EQ(elsewhere(), before);
}

TEST_F(Form1servicoTest, PartsAreThoseOfTheMomentInWhichTheBenchWasOpened)
{
    addOrder(u"0000005"_s, u"Ana"_s);
    addPart(u"0000009"_s, u"Pino d'água"_s);
    edit(u"0000005"_s);
    mainSql(u"DELETE FROM Pecas WHERE CODIGO='0000001'; "
            "UPDATE Pecas SET DESCRICAO='Outra', VALOR=0 WHERE CODIGO='0000004'"_s);
    pick(1, 0);
    EXPECT_EQ(shownLine(1), u"0000001|Capacitor|M2|3,50"_s);
    pick(2, 3);
    EXPECT_EQ(shownLine(2), u"0000004|Flyback|M1|50,00"_s);
    press(1);
    EXPECT_EQ(storedTwin(u"0000005"_s, u"CODIGO1 || DESCRICAO2"_s), u"0000001Flyback"_s);
    edit(u"0000005"_s);
    expectFault([] { pick(3, 4); });
    EXPECT_EQ(storedTwin(u"0000005"_s, u"DESCRICAO3"_s), QString());
}

TEST_F(Form1servicoTest, WithoutADatabaseItShutsAndTheMainWindowGoesOn)
{
    principal().show();
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/gone.mdb"_s);
    expectBoxBeginning(u"Erro nº "_s, Answer::Ok);
    expectBoxBeginning(u"Restaure o Banco de Dados"_s, Answer::Ok);
    expectBoxBeginning(u"Erro nº 3709"_s, Answer::Ok);
    bench().show();
    EXPECT_FALSE(bench().isLoaded());
    EXPECT_TRUE(principal().isVisible());
    EXPECT_EQ(faults(), 0);
}

// --- the n-th call and the n-th write fail

class BenchFaults : public BenchTest
{
protected:
    void prepare()
    {
        startAnew();
        mainSql(u"BEGIN; DELETE FROM Cliente; DELETE FROM PECAAPLICADA; INSERT INTO Cliente "
                "(numero, Nome, servicoexecutado, pronto) VALUES ('0000005', 'Ana', 'a', 0); "
                "INSERT INTO PECAAPLICADA (NUMERO, CODIGO1) VALUES ('0000005', 'a'); COMMIT"_s);
        edit(u"0000005"_s);
        type(bench().Text1(26), u"b"_s);
        type(bench().line(1).code, u"b"_s);
        click(bench().Check1(0));
    }
    QString both() const
    {
        return stored(u"0000005"_s, u"servicoexecutado || pronto"_s) +
               storedTwin(u"0000005"_s, u"CODIGO1"_s);
    }
    void expectBothOrNone(bool failed)
    {
        const bool isStored = both() == u"b1b"_s;
        EXPECT_TRUE(isStored || both() == u"a0a"_s) << both().toStdString();
        EXPECT_TRUE(isStored || failed);
        EXPECT_EQ(isStored, faults() == 0);
        EXPECT_EQ(isStored, boxes().isEmpty());
    }
};

TEST_F(BenchFaults, SaveWritesBothRowsOrNoneAndTellsWhich)
{
    const auto save = [] { press(1); };
    const auto check = [this](bool failed) { expectBothOrNone(failed); };
    failEachCall([this] { prepare(); }, save, check, 2);
    startAnew();
    for (const int refusals : {1, 1'000'000})
        failEachWrite([this] { prepare(); }, save, check, "GALTERIA1.mdb", refusals);
}

} // namespace
