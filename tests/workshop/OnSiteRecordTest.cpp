#include "OnSiteTest.h"

#include "Funciones.h"

#include <QWidget>

using namespace Funciones;

namespace {

const QString Browsing = u"0 2 5 6 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20"_s;

// The stars of each field, in the order of the table; 0 for the dates and the value.
const std::vector<int> Stars{7,  0,  0,  29, 29, 21, 2,  5,  16, 24, 10, 10,
                             14, 33, 25, 26, 27, 29, 31, 32, 32, 33, 39, 0};

QStringList fillers()
{
    QStringList texts;
    for (const int count : Stars)
        texts << (count ? QString(count, u'*') : u"**/**/****"_s);
    texts.back() = u"0,00"_s;
    return texts;
}

class OnSiteRecordTest : public OnSiteTest
{
};

TEST_F(OnSiteRecordTest, EachActionLeavesItsButtonsAndBoxes)
{
    addOrder(u"0000002"_s, u"Bia"_s);
    addOrder(u"0000001"_s, u"Ana"_s);
    const Form1manutencao& onSite = openRecord();
    expectEasyToWalk(onSite);
    EXPECT_EQ(onSite.caption(),
              u"Manutenção      "_s + principal().StatusBar1.panel(1) + u"  está usando"_s);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Pedido de Manutenção"_s);
    struct Step
    {
        const char* name;
        std::function<void()> action;
        QString buttons;
        bool locked;
        QString number;
    };
    const std::vector<Step> steps{
        {"load", [] {}, Browsing, true, u"0000001"_s},
        {"dead buttons", [] { press(4), press(7); }, Browsing, true, u"0000001"_s},
        {"new", [] { press(0); }, u"1 9"_s, false, u"0000003"_s},
        {"cancelled", [] { press(9); }, Browsing, true, u"0000002"_s},
        {"editing", [] { press(2); }, u"1 3 9"_s, false, u"0000002"_s},
        {"not deleted", [this] { remove(Answer::No); }, Browsing, true, u"0000002"_s},
        {"first", [] { press(12); }, u"0 2 5 6 8 11 12 13"_s, true, u"0000001"_s},
        {"next", [] { press(11); }, Browsing, true, u"0000002"_s},
        {"after the last", [] { press(11); }, u"0 2 5 6 8 10 12 13"_s, true, u"0000002"_s},
        {"previous", [] { press(10); }, Browsing, true, u"0000001"_s},
        {"before the first", [] { press(10); }, u"0 2 5 6 8 11 12 13"_s, true, u"0000001"_s},
        {"last", [] { press(13); }, u"0 2 5 6 8 10 12 13"_s, true, u"0000002"_s},
        {"printing", [] { press(6); }, u"0 2 5 6 8 10 12 13"_s, true, u"0000002"_s},
        {"copying", [] { press(5); }, u"5"_s, true, QString()},
        {"pasted", [] { press(5); }, u"1 9"_s, false, u"0000003"_s},
        {"saved", [] { press(1); }, Browsing, true, u"0000003"_s},
        {"edited", [] { press(2), press(1); }, Browsing, true, u"0000003"_s},
        {"deleted", [this] { press(2), remove(); }, Browsing, true, u"0000002"_s},
        {"the first one deleted", [this] { press(12), press(2), remove(); },
         u"0 2 5 6 8 11 12 13"_s, true, u"0000002"_s},
        {"the last one deleted", [this] { press(2), remove(); }, u"0 8"_s, true, QString()},
        {"new in the empty table", [] { press(0); }, u"1 9"_s, false, u"0000001"_s},
        {"cancelled there", [] { press(9); }, u"0 8"_s, true, QString()},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        step.action();
        EXPECT_EQ(enabledOf(onSite.Command1), step.buttons);
        EXPECT_EQ(lockedOf(onSite.Text1), step.locked ? AllLocked : QString());
        EXPECT_EQ(lockedOf(onSite.Text3), step.locked ? u"0 1 2"_s : QString());
        EXPECT_EQ(onSite.Text1(18).text(), step.number);
        EXPECT_EQ(onSite.Text5.text(), QString::number(orders().size()).rightJustified(7, u'0'));
    }
    EXPECT_EQ(shown(), QString(23, u'|'));
    EXPECT_EQ(onSite.Text6.text(), u"0000000"_s);
    EXPECT_EQ(documents(), 1);
    press(8);
    EXPECT_FALSE(onSite.isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), u"email:suporte@vorbelo.example"_s);
    EXPECT_TRUE(Tabela1->isOpen()); // until another form opens the pair
}

TEST_F(OnSiteRecordTest, EmptyBoxesStoreTheFillerOfTheirField)
{
    openRecord();
    press(0);
    EXPECT_TRUE(record().Text1(0).widget()->hasFocus());
    press(1);
    QStringList row = fillers();
    row[0] = u"0000001"_s;
    row[1] = u"09/03/2026"_s;
    EXPECT_EQ(orders(), QStringList{row.join(u'|')});
    constexpr int Complement = 9; // its box is shorter than its filler
    row[Complement] = QString(17, u'*');
    EXPECT_EQ(shown(), row.join(u'|'));

    press(2);
    record().Text1(18).setText({});
    record().Text1(19).setText({});
    press(1);
    press(2); // the stars are text from now on
    press(1);
    row = fillers();
    row[Complement] = QString(17, u'*');
    EXPECT_EQ(orders(), QStringList{row.join(u'|')});
    EXPECT_EQ(shown(), row.join(u'|'));

    // What is no number begins the numbers anew; one that exists is stored all the same.
    press(0);
    EXPECT_EQ(record().Text1(18).text(), u"0000001"_s);
    type(record().Text1(18), u"1"_s);
    press(1);
    press(0);
    EXPECT_EQ(record().Text1(18).text(), u"0000002"_s);
    type(record().Text1(18), u"1"_s);
    press(1);
    EXPECT_EQ(orders().size(), 3);
    EXPECT_TRUE(orders()[1].startsWith(u"1|"_s) && orders()[2].startsWith(u"1|"_s));
}

TEST_F(OnSiteRecordTest, RowOfNullsShowsMasksAndIsStoredSo)
{
    mainSql(u"INSERT INTO MANUTENCAO DEFAULT VALUES"_s);
    openRecord();
    QStringList texts(24);
    texts[10] = texts[11] = u"(  )    -    "_s;
    texts[23] = u"0,00"_s;
    EXPECT_EQ(shown(), texts.join(u'|'));
    press(2);
    press(1);
    QStringList row = fillers();
    row[10] = row[11] = u"(  )    -    "_s;
    EXPECT_EQ(orders(), QStringList{row.join(u'|')});
}

TEST_F(OnSiteRecordTest, TelephoneAndDocumentOfEachLengthReadAsStored)
{
    struct Stored
    {
        QString phone, document, shownPhone, shownDocument;
    };
    const std::vector<Stored> table{
        {u""_s, u""_s, u""_s, u""_s},
        {u"1"_s, u"1"_s, u"(00)0000-0001"_s, u"00-000-000-0000/01"_s},
        {u"33334444"_s, u"1114447773"_s, u"(00)3333-4444"_s, u"00-001-114-4477/73"_s},
        {u"1133334444"_s, u"11144477735"_s, u"(11)3333-4444"_s, u"111-444-777/35"_s},
        {u"11933334444"_s, u"111444777351"_s, u"(119)3333-444"_s, u"00-111-444-7773/51"_s},
        {u"(11)3333-4444"_s, u"11222333000181"_s, u"(11)3333-4444"_s, u"11-222-333-0001/81"_s},
        {u"**********"_s, u"111-444-777/35"_s, u"**********"_s, u"111-444-777/35"_s},
        {u"ramal 5, à noite"_s, u"isento"_s, u"ramal 5, à no"_s, u"isento"_s},
    };
    for (size_t i = 0; i < table.size(); ++i)
        addOrder(QString::number(i), u"Ana"_s,
                 u"TELEFONE='%1', CELULAR='%1', CPF='%2', VALOR='12,5'"_s.arg(table[i].phone,
                                                                              table[i].document));
    openRecord();
    for (const Stored& stored : table) {
        SCOPED_TRACE(stored.phone.toStdString());
        EXPECT_EQ(record().Text3(0).text(), stored.shownPhone);
        EXPECT_EQ(record().Text3(1).text(), stored.shownPhone);
        EXPECT_EQ(record().Text3(2).text(), stored.shownDocument);
        EXPECT_EQ(record().Text4.text(), stored.document);
        EXPECT_EQ(record().Text1(16).text(), u"12,50"_s);
        press(11);
    }
    // Saved again it holds what the boxes show.
    record().Text2.setText(u"3"_s);
    press(2);
    press(1);
    EXPECT_EQ(
        sql(mainFile(), u"SELECT TELEFONE || CPF || VALOR FROM MANUTENCAO WHERE NUMERO='3'"_s),
        QStringList{u"(11)3333-4444111-444-777/3512,50"_s});
}

TEST_F(OnSiteRecordTest, DocumentIsCheckedOnLeavingIt)
{
    addOrder(u"0000001"_s, u"Ana"_s, u"CPF='11144477735'"_s);
    Form1manutencao& onSite = openRecord();
    TextBox& document = onSite.Text3(2);
    EXPECT_EQ(document.maxLength(), 0);
    const QString length = u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s;
    press(2);
    // The document of a stored order is shown formatted: 14 characters that are no company's.
    enter(document);
    expectBox(u"CGC com DV incorreto !!! "_s);
    enter(onSite.Text1(7));
    EXPECT_EQ(document.text(), QString());
    EXPECT_TRUE(document.widget()->hasFocus());

    struct Typed
    {
        QString text, message;
        int limit;
    };
    const std::vector<Typed> table{
        {u"1114447773"_s, length, 0},
        {u"111444777350"_s, length + u'"', 0},
        {u"1114447773501"_s, length, 0},
        {u"11144477734"_s, u"CPF com DV incorreto !!!"_s, 14},
        {u"11222333000180"_s, u"CGC com DV incorreto !!! "_s, 18},
        {u"11144477735"_s, {}, 14},
        {u"11222333000181"_s, {}, 18},
        {u"11-222-333-0001/81"_s, {}, 0},
    };
    for (const Typed& typed : table) {
        SCOPED_TRACE(typed.text.toStdString());
        document.setMaxLength(0);
        enter(document);
        document.setText(typed.text);
        if (!typed.message.isEmpty())
            expectBox(typed.message);
        enter(onSite.Text1(7));
        EXPECT_EQ(document.text(), typed.message.isEmpty() ? typed.text : QString());
        EXPECT_EQ(document.maxLength(), typed.limit);
    }
    // A telephone that reads like the document is taken for it; the document is emptied.
    document.setText(u"3333"_s);
    enter(onSite.Text3(1));
    onSite.Text3(1).setText(u"3333"_s);
    expectBox(length);
    enter(onSite.Text1(7));
    EXPECT_EQ(onSite.Text3(1).text() + document.text(), u"3333"_s);
    EXPECT_TRUE(document.widget()->hasFocus());

    press(9); // the next company's number fits again
    EXPECT_EQ(document.maxLength(), 0);
    enter(document); // locked: nothing is checked
    enter(onSite.Text1(7));
    EXPECT_EQ(document.text(), u"111-444-777/35"_s);
}

TEST_F(OnSiteRecordTest, CopyBringsTheClientAndLeavesTheMode)
{
    QStringList values;
    for (int field = 0; field < 24; ++field)
        values << u"'v%1'"_s.arg(field);
    values[0] = u"'0000007'"_s;
    values[3] = u"'Ana'"_s;
    values[12] = u"'11144477735'"_s;
    mainSql(u"INSERT INTO MANUTENCAO (%1) VALUES (%2)"_s.arg(fieldNames().join(u','),
                                                             values.join(u',')));
    addOrder(u"0000009"_s, u"Bia"_s);
    openRecord();
    press(5);
    EXPECT_EQ(shown(), QString(23, u'|'));
    EXPECT_EQ(record().Command1(5).caption(), u"&Colar"_s);
    EXPECT_TRUE(record().Command1(5).widget()->hasFocus());
    press(5);
    EXPECT_EQ(shown(), u"0000010|09/03/2026||Ana|v4|v5|v6|v7|v8|v9|v10|v11|111-444-777/35|v13"
                       "||||||||||"_s);
    EXPECT_EQ(record().Text4.text(), u"11144477735"_s);
    EXPECT_EQ(record().Command1(5).caption(), u"&Copiar"_s);
    EXPECT_TRUE(record().Text1(0).widget()->hasFocus());
    EXPECT_EQ(Modo, 0);
    press(1);
    EXPECT_EQ(record().Text1(18).text(), u"0000010"_s);
    EXPECT_EQ(numbersAndNames().back(), u"0000010 Ana"_s);
    EXPECT_TRUE(
        orders().back().endsWith(u"|*************************|**************************|"
                                 "***************************|*****************************|"
                                 "*******************************|"
                                 "********************************|"
                                 "********************************|"
                                 "*********************************|"
                                 "***************************************|0,00"_s));
}

// Only a saved new order takes the mode back: after one that was cancelled, the next edit ends on
// the last order.
TEST_F(OnSiteRecordTest, EditAfterACancelledNewOrderEndsOnTheLast)
{
    for (const char* number : {"0000001", "0000002", "0000003"})
        addOrder(QString::fromLatin1(number), u"Ana"_s);
    openRecord();
    const auto editFirst = [](const QString& name) {
        press(12);
        press(2);
        type(record().Text1(0), name);
        press(1);
        return record().Text1(18).text();
    };
    EXPECT_EQ(editFirst(u"Bia"_s), u"0000001"_s);
    press(0);
    press(9);
    EXPECT_EQ(Modo, 1);
    EXPECT_EQ(editFirst(u"Caio"_s), u"0000003"_s);
    EXPECT_EQ(Modo, 0);
    EXPECT_EQ(editFirst(u"Davi"_s), u"0000001"_s);
    EXPECT_EQ(numbersAndNames().front(), u"0000001 Davi"_s);
    EXPECT_EQ(Contador, 3);
    EXPECT_EQ(ContadorLista, 14);
}

TEST_F(OnSiteRecordTest, OrderIsLookedUpByItsNumber)
{
    addOrder(u"0000001"_s, u"Ana"_s);
    addOrder(u"0000012"_s, u"Bia"_s);
    openRecord();
    record().Text2.setText(u" 12 "_s);
    EXPECT_EQ(record().Text1(0).text(), u"Bia"_s);
    for (const QString& nobody : {u"9"_s, u"'"_s, u" "_s}) {
        record().Text2.setText(nobody);
        EXPECT_EQ(record().Text1(0).text(), u"Bia"_s);
    }
}

TEST_F(OnSiteRecordTest, OpensFromButtonAndMenu)
{
    addOrder(u"0000001"_s, u"Ana"_s);
    principal().show();
    principal().Command1(4).setEnabled(true);
    principal().mnumanutencao.setEnabled(true);
    QString seen;
    onModal([&](Form& shownForm) {
        seen += shownForm.name() + record().Text1(0).text();
        enter(record().Text1(6));
        ::press(record().Text1(6), Qt::Key_Return);
        ::press(record().Text3(0), Qt::Key_Return); // on to the mobile number
        seen += record().Text3(1).widget()->hasFocus() ? u" moved "_s : u" stuck "_s;
        press(8);
    });
    click(principal().Command1(4));
    click(principal().mnumanutencao);
    EXPECT_EQ(seen, u"Form1manutencaoAna moved Form1manutencaoAna moved "_s);
}

TEST_F(OnSiteRecordTest, LoadThatFailsTellsTwiceAndStaysOpen)
{
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/nowhere.mdb"_s);
    principal().show();
    expectErrorBox(); // the connection's
    expectErrorBox(u"Restaure o Banco"_s);
    expectBox(u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
    expectErrorBox();
    record().show();
    EXPECT_TRUE(record().isVisible());
    press(8);
    EXPECT_FALSE(record().isLoaded());
    EXPECT_TRUE(ends().empty());
}

// Leaving for another form of the program closes the pair and the form.
TEST_F(OnSiteRecordTest, FocusThatLeavesClosesIt)
{
    addOrder(u"0000001"_s, u"Ana"_s);
    openRecord();
    const auto connection = Conexao1.shared();
    record().focusLeft();
    EXPECT_FALSE(record().isLoaded());
    EXPECT_FALSE(connection->isOpen());
}

} // namespace
