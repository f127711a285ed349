#include "RegistersTest.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {

const QString Browsing = u"0 2 4 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5"_s;
const QString Open = u"5"_s; // the count

class SuppliersTest : public RegistersTest
{
protected:
    static void press(int button) { click(firm().Command1(button)); }
    static QString shown() { return firm().Text4.text() + u' ' + firm().Text1(0).text(); }
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
    EXPECT_EQ(firm().Text1(5).text(), u"0000002"_s);
    expectEasyToWalk(firm());
    const std::vector<Step> steps{
        {"load", [] {}, Browsing, AllLocked, u"0000009 Alfa"_s},
        {"new, one above the name that sorts last", [] { press(0); }, u"1 9"_s, Open,
         u"0000003 "_s},
        {"cancelled", [] { press(9); }, Browsing, AllLocked, u"0000002 Beta"_s},
        {"before", [] { press(10); }, Browsing, AllLocked, u"0000009 Alfa"_s},
        {"before the first", [] { press(10); }, u"0 2 4 8 11 12 13"_s, AllLocked,
         u"0000009 Alfa"_s},
        {"editing", [] { press(2); }, u"1 3 9"_s, Open, u"0000009 Alfa"_s},
        {"not deleted", [this] { removeFirm(Answer::No); }, Browsing, AllLocked, u"0000009 Alfa"_s},
        {"edited",
         [] {
             press(2);
             type(firm().Text1(0), u"Zeta"_s);
             press(1);
         },
         Browsing, AllLocked, u"0000009 Zeta"_s},
        {"its place kept until the form is opened anew", [] { press(11); }, Browsing, AllLocked,
         u"0000002 Beta"_s},
        {"first", [] { press(12); }, u"0 2 4 8 11 12 13"_s, AllLocked, u"0000009 Zeta"_s},
        {"last", [] { press(13); }, u"0 2 4 8 10 12 13"_s, AllLocked, u"0000002 Beta"_s},
        {"deleted",
         [this] {
             press(2);
             type(firm().Text1(0), u"Typed"_s);
             removeFirm();
         },
         Browsing, AllLocked, u"0000009 Zeta"_s},
        {"the last one deleted",
         [this] {
             press(2);
             removeFirm();
         },
         u"0 8"_s, AllLocked, u"0000000 "_s},
        {"new in an empty table", [] { press(0); }, u"1 9"_s, Open, u"0000001 "_s},
        {"cancelled there", [] { press(9); }, u"0 8"_s, AllLocked, u"0000000 "_s},
        {"stored there",
         [] {
             press(0);
             press(1);
         },
         Browsing, AllLocked, u"0000001 "_s},
        {"another one without a name",
         [] {
             press(0);
             press(1);
         },
         Browsing, AllLocked, u"0000002 "_s},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        step.action();
        EXPECT_EQ(enabledOf(firm().Command1), step.buttons);
        EXPECT_EQ(lockedOf(firm().Text1), step.locked);
        EXPECT_EQ(lockedOf(firm().Text6), step.locked == Open ? QString() : u"0 1 2 3"_s);
        EXPECT_EQ(shown(), step.shown);
        EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário Cadastro de Fornecedores"_s);
    }
    EXPECT_EQ(sql(mainFile(), u"SELECT * FROM FORNECEDOR WHERE NOMEEMPRESA <> '' OR TELEFONE <> '' "
                              "OR CGC <> '' OR PRODUTO IS NULL"_s),
              QStringList());
    EXPECT_EQ(firm().Text1(5).text(), u"0000002"_s);
    press(8);
    EXPECT_FALSE(firm().isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), u"suporte@vorbelo.example"_s); // no "email:" here
}

TEST_F(SuppliersTest, NumbersOfEveryLengthAreShownAndKept)
{
    const struct
    {
        const char* stored;
        const char* shown;
    } phones[] =
        {
            {"NULL", "(  )    -    "},
            {"''", ""},
            {"'1932324410'", "(19)3232-4410"},
            {"'32324410'", "(00)3232-4410"},
            {"'(19)3232-4410'", "(19)3232-4410"},
            {"'19987654321'", "19987654321"}, // formatted it would lose its end
            {"'5519987654321'", "5519987654321"},
            {"'ramal 3'", "ramal 3"},
        },
      documents[] = {
          {"NULL", ""},
          {"''", ""},
          {"'52998224725'", "529-982-247/25"},
          {"'11222333000181'", "11-222-333-0001/81"},
          {"'11-222-333-0001/81'", "11-222-333-0001/81"},
          {"'123'", "00-000-000-0001/23"},
          {"'123456789012345678'", "123456789012345678"},
          {"'ISENTO'", "ISENTO"},
      };
    for (int i = 0; i < 8; ++i) {
        SCOPED_TRACE(i);
        mainSql(u"DELETE FROM FORNECEDOR; INSERT INTO FORNECEDOR (TELEFONE, CELULAR, CGC) VALUES "
                "(%1, %1, %2)"_s.arg(QString::fromLatin1(phones[i].stored),
                                     QString::fromLatin1(documents[i].stored)));
        firm().show();
        EXPECT_EQ(firm().Text6(0).text(), QString::fromLatin1(phones[i].shown));
        EXPECT_EQ(firm().Text6(1).text(), firm().Text6(0).text());
        EXPECT_EQ(firm().Text6(2).text(), QString::fromLatin1(documents[i].shown));
        press(2);
        press(1);
        // As shown, punctuation and all, where the box was not entered.
        EXPECT_EQ(sql(mainFile(), u"SELECT TELEFONE || '|' || CGC FROM FORNECEDOR"_s),
                  QStringList{firm().Text6(0).text() + u'|' + firm().Text6(2).text()});
        EXPECT_EQ(firm().Text6(2).text(), QString::fromLatin1(documents[i].shown));
        firm().unload();
    }
}

TEST_F(SuppliersTest, TaxNumberIsCheckedWhereItsBoxIsLeft)
{
    addFirm(u"0000001"_s, u"Alfa"_s, u"'52998224725'"_s);
    firm().show();
    press(2);
    const QString digits = u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s;
    const std::pair<QString, QString> refused[] = {
        {u"1"_s, digits},
        {u"5299822472"_s, digits},
        {u"52998224726"_s, u"CPF com DV incorreto !!!"_s},
        {u"529982247250"_s, digits + u'"'}, // the stray quote is the message's own
        {u"1122233300018"_s, digits},
        {u"11222333000182"_s, u"CGC com DV incorreto !!!"_s}, // no blank at its end
    };
    for (const auto& [typed, message] : refused) {
        expectBox(message);
        typeDocument(typed);
        EXPECT_EQ(firm().Text6(2).text(), QString());
        EXPECT_TRUE(firm().Text6(2).widget()->hasFocus());
    }
    for (const QString& typed : {u"52998224725"_s, u"11222333000181"_s, QString()}) {
        typeDocument(typed);
        EXPECT_EQ(firm().Text6(2).text(), typed);
        enter(firm().Text6(2)); // back again: what was typed still stands
        EXPECT_EQ(firm().Text6(2).text(), typed);
        enter(firm().Text6(3));
    }
    // A person's number narrows the box; the next firm's must fit all the same.
    typeDocument(u"52998224725"_s);
    press(1);
    addFirm(u"0000002"_s, u"Beta"_s, u"'11222333000181'"_s);
    firm().unload();
    firm().show();
    enter(firm().Text6(2));
    EXPECT_EQ(firm().Text6(2).text(), u"52998224725"_s);
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

TEST_F(SuppliersTest, KeysMoveOnAndNumbersTakeDigitsOnly)
{
    firm().show();
    press(0);
    for (int box = 0; box < 4; ++box) {
        type(firm().Text6(box), u"1a,"_s);
        EXPECT_EQ(firm().Text6(box).text(), box < 3 ? u"1"_s : u"1a,"_s);
        firm().Text6(box).setText({});
    }
    enter(firm().Text1(0));
    const QWidget* const way[] = {firm().Text1(1).widget(), firm().Text1(2).widget(),
                                  firm().Text1(3).widget(), firm().Text6(0).widget(),
                                  firm().Text6(1).widget(), firm().Text6(2).widget(),
                                  firm().Text6(3).widget(), firm().Text1(4).widget(),
                                  firm().Text1(4).widget()}; // Enter does not leave the product
    for (const QWidget* next : way) {
        QWidget* now = firm().window()->focusWidget();
        QKeyEvent enterKey(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
        QCoreApplication::sendEvent(now, &enterKey);
        QCoreApplication::processEvents();
        EXPECT_EQ(firm().window()->focusWidget(), next) << now->objectName().toStdString();
    }
}

// Null in every field, codes that repeat, and codes that the look-up meets inside longer texts.
TEST_F(SuppliersTest, RowsOfOtherHandsAreShownAndFound)
{
    mainSql(u"INSERT INTO FORNECEDOR DEFAULT VALUES"_s);
    addFirm(u"0000002"_s, u"Beta"_s);
    addFirm(u"0000002"_s, u"Gama"_s);
    firm().show();
    EXPECT_EQ(shown(), u" "_s);
    press(2);
    press(1);
    EXPECT_EQ(sql(mainFile(), u"SELECT NOMEEMPRESA || TELEFONE || CODIGO FROM FORNECEDOR"_s)[0],
              u"(  )    -    "_s);
    const std::pair<QString, QString> asked[] = {{u"0000002"_s, u"0000002 Beta"_s},
                                                 {u"9"_s, u"0000002 Beta"_s},
                                                 {u"'"_s, u"0000002 Beta"_s},
                                                 {u" "_s, u"0000002 Beta"_s}};
    for (const auto& [code, found] : asked) {
        firm().Text3.setText(code);
        EXPECT_EQ(shown(), found);
    }
    press(0);
    EXPECT_EQ(shown(), u"0000003 "_s);
    press(1);
    press(0);
    EXPECT_EQ(shown(), u"0000004 "_s); // its own additions stand last until it is opened anew
    press(9);
    firm().unload();
    firm().show();
    press(0);
    EXPECT_EQ(shown(), u"0000003 "_s);
}

TEST_F(SuppliersTest, BothStationsOnOneFirm)
{
    addFirm(u"0000001"_s, u"Alfa"_s);
    firm().show();
    press(2);
    type(firm().Text1(0), u"Here"_s);
    mainSql(u"UPDATE FORNECEDOR SET NOMEFORNECEDOR = 'There'"_s);
    press(1);
    EXPECT_EQ(firms(), QStringList{u"0000001|Here"_s});
    EXPECT_EQ(firms(u"NOMEFORNECEDOR"_s), QStringList{u"0000001|There"_s});

    // Both into one box: refused until what the other one wrote has been seen.
    press(2);
    type(firm().Text1(0), u"Mine"_s);
    mainSql(u"UPDATE FORNECEDOR SET NOMEEMPRESA = 'Theirs'"_s);
    press(1);
    press(1);
    EXPECT_EQ(firms(), QStringList{u"0000001|Theirs"_s});
    EXPECT_EQ(enabledOf(firm().Command1), u"1 3 9"_s);
    EXPECT_EQ(firm().Text1(0).text(), u"Mine"_s);
    press(9);
    EXPECT_EQ(shown(), u"0000001 Theirs"_s);

    // Not deleted unseen; asked for again, it goes.
    press(2);
    mainSql(u"UPDATE FORNECEDOR SET EMAIL = 'new'"_s);
    removeFirm();
    EXPECT_EQ(firms(), QStringList{u"0000001|Theirs"_s});
    EXPECT_EQ(firm().Text1(3).text(), u"new"_s);
    press(2);
    removeFirm();
    EXPECT_EQ(firms(), QStringList());
    EXPECT_EQ(enabledOf(firm().Command1), u"0 8"_s);
}

// Nothing of it is stored; once it is given up or asked to go, the next one is there.
TEST_F(SuppliersTest, WhatAnotherStationDeletedIsGoneInBothRegisters)
{
    for (const int end : {9, 3}) {
        for (const QString& other : {u"Beta"_s, QString()}) {
            mainSql(u"DELETE FROM FORNECEDOR; DELETE FROM DEFEITO"_s);
            addFirm(u"0000001"_s, u"Alfa"_s);
            addDefect(u"Alfa"_s);
            if (!other.isNull()) {
                addFirm(u"0000002"_s, other);
                addDefect(other);
            }
            firm().show();
            press(2);
            mainSql(u"DELETE FROM FORNECEDOR WHERE NOMEEMPRESA = 'Alfa'"_s);
            type(firm().Text1(0), u"Typed"_s);
            press(1);
            end == 3 ? removeFirm() : press(end);
            EXPECT_EQ(firm().Text1(0).text(), other);
            EXPECT_EQ(enabledOf(firm().Command1), other.isNull() ? u"0 8"_s : Browsing);
            EXPECT_EQ(firms().size(), other.isNull() ? 0 : 1);
            firm().unload();

            defect().show();
            click(defect().Command1(2));
            mainSql(u"DELETE FROM DEFEITO WHERE MARCA = 'Alfa'"_s);
            type(defect().Text2(0), u"Typed"_s);
            click(defect().Command1(1));
            end == 3 ? removeDefect() : click(defect().Command1(end));
            EXPECT_EQ(defect().Text2(0).text(), other);
            EXPECT_EQ(enabledOf(defect().Command1),
                      other.isNull() ? u"0 8"_s : u"0 2 8 10 11 12 13"_s);
            EXPECT_EQ(defects().size(), other.isNull() ? 0 : 1);
            defect().unload();
        }
    }
}

TEST_F(SuppliersTest, MissingDatabaseShowsItsBoxesAndTheFormCanBeLeft)
{
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/none.mdb"_s);
    for (Form* record : {static_cast<Form*>(&firm()), static_cast<Form*>(&defect())}) {
        expectErrorBox();
        expectBox(u"Restaure o Banco de Dados ou Localize utilizando o Botão Localizar na tela de "
                  "configuração do Sistema,depois reinicie o programa."_s);
        expectBox(u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
        record->show();
        EXPECT_TRUE(record->isLoaded());
        click(*static_cast<CommandButton*>(record->control(u"Command1"_s, 8)));
        EXPECT_FALSE(record->isLoaded());
    }
    EXPECT_TRUE(ends().empty());
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
        const char* name;
        int box;
        QString text;
        QString found;
        QString caption;
    } steps[] = {
        {"product", 2, u"ALFA"_s, u"0000012"_s, u" - 1 fornecedor encontrados"_s},
        {"the text of the product", 0, u"ALFA"_s, u"0000001"_s, u" - 1 fornecedor encontrados"_s},
        {"salesperson", 1, u"ana"_s, u"0000001 0000012"_s, u" - 2 fornecedor encontrados"_s},
        {"found nowhere", 1, u"x"_s, u""_s, u" - 0 fornecedor encontrados"_s},
        {"a wildcard", 0, u"_eta"_s, u"0000012"_s, u" - 1 fornecedor encontrados"_s},
        {"two apostrophes", 0, u"D''Á"_s, u"0000013"_s, u" - 1 fornecedor encontrados"_s},
        {"emptied: all, out of reach",
         0,
         {},
         u"0000001 0000012 0000013 off"_s,
         u" - 3 fornecedor encontrados"_s},
        {"emptied, too: those with a salesperson",
         1,
         {},
         u"0000001 0000012 0000013 off"_s,
         u" - 3 fornecedor encontrados"_s},
        {"all empty", 2, {}, u" off"_s, u""_s},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        search().Text1(step.box).setText(step.text);
        EXPECT_EQ(found(), step.found);
        EXPECT_EQ(search().caption(), u"Buscar Fornecedor"_s + step.caption);
        EXPECT_FALSE(search().Command1.enabled());
    }
    search().Text1(0).setText(u"D''Á"_s);
    EXPECT_EQ(gridRows(search().MSFlexGrid1), QStringList{u"0000013|D'Ávila||"_s});
    expectErrorBox(); // one apostrophe breaks the statement, and the dialog stays
    search().Text1(0).setText(u"D'"_s);
    EXPECT_TRUE(search().isLoaded());
    click(search().Command2);
    EXPECT_FALSE(search().isLoaded());
}

TEST_F(SupplierSearchTest, ClickArmsOpenAndTheRegisterTakesOver)
{
    QString shown;
    onModal([&](Form& opened) {
        EXPECT_FALSE(search().isLoaded());
        shown = static_cast<Form1For&>(opened).Text1(0).text();
        click(static_cast<Form1For&>(opened).Command1(4)); // and back
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
