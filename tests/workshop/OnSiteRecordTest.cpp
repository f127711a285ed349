#include "OnSiteTest.h"

#include "Funciones.h"

#include <QWidget>

using namespace Funciones;

namespace {

const QString Browsing = u"0 2 5 6 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20"_s;

class OnSiteRecordTest : public OnSiteTest
{
};

TEST_F(OnSiteRecordTest, EachActionLeavesItsButtonsAndBoxes)
{
    addOrder(u"0000002"_s, u"Bia"_s);
    addOrder(u"0000001"_s, u"Ana"_s);
    record().show();
    EXPECT_EQ(record().caption(),
              u"Manutenção      "_s + principal().StatusBar1.panel(1) + u"  está usando"_s);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Pedido de Manutenção"_s);
    const QString first = u"0 2 5 6 8 11 12 13"_s, last = u"0 2 5 6 8 10 12 13"_s;
    const std::vector<RecordState> states{
        {u"4 7"_s, Browsing, AllLocked, u"0000001"_s}, // dead buttons
        {u"0"_s, u"1 9"_s, {}, u"0000003"_s},
        {u"9"_s, Browsing, AllLocked, u"0000002"_s},
        {u"2"_s, u"1 3 9"_s, {}, u"0000002"_s},
        {u"3n"_s, Browsing, AllLocked, u"0000002"_s},
        {u"12"_s, first, AllLocked, u"0000001"_s},
        {u"11"_s, Browsing, AllLocked, u"0000002"_s},
        {u"11"_s, last, AllLocked, u"0000002"_s},
        {u"6"_s, last, AllLocked, u"0000002"_s},
        {u"5"_s, u"5"_s, AllLocked, {}},
        {u"5"_s, u"1 9"_s, {}, u"0000003"_s},
        {u"1"_s, Browsing, AllLocked, u"0000003"_s},
        {u"2 1"_s, Browsing, AllLocked, u"0000003"_s},
        {u"2 3y"_s, Browsing, AllLocked, u"0000002"_s},
        {u"12 2 3y"_s, first, AllLocked, u"0000002"_s},
        {u"2 3y"_s, u"0 8"_s, AllLocked, {}},
        {u"0"_s, u"1 9"_s, {}, u"0000001"_s},
        {u"9"_s, u"0 8"_s, AllLocked, {}},
    };
    const auto shown = [] {
        EXPECT_TRUE(record().Command1(5).caption() != u"&Colar" ||
                    record().Command1(5).widget()->hasFocus());
        return record().Text1(18).text();
    };
    expectStates(onSite(), states, shown, [this](const RecordState& state) {
        EXPECT_EQ(lockedOf(record().Text3), state.locked.isEmpty() ? QString() : u"0 1 2"_s);
        EXPECT_EQ(record().Text5.text().toInt(), names(onSite()).size());
    });
    EXPECT_EQ(record().Text6.text(), u"0000000"_s);
    EXPECT_EQ(documents(), 1);
    press(8);
    EXPECT_FALSE(record().isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), u"email:suporte@vorbelo.example"_s);
}

TEST_F(OnSiteRecordTest, WhatFailsOrIsGoneIsStoredOnceOrNotAtAll)
{
    expectSafe(onSite());
}

TEST_F(OnSiteRecordTest, DocumentIsCheckedOnLeavingIt)
{
    addOrder(u"0000001"_s, u"Ana"_s, u"CPF='11144477735'"_s);
    record().show();
    TextBox& document = record().Text3(2);
    EXPECT_EQ(document.maxLength(), 0);
    press(2);
    // The document of a stored order is shown formatted: 14 characters that are no company's.
    enter(document);
    expectBox(u"CGC com DV incorreto !!! "_s);
    enter(record().Text1(7));
    EXPECT_EQ(document.text(), QString());
    EXPECT_TRUE(document.widget()->hasFocus());

    expectDocumentChecked(document, record().Text1(7), u"CGC com DV incorreto !!! "_s);
    // A telephone that reads like the document is taken for it; the document is emptied.
    document.setText(u"3333"_s);
    enter(record().Text3(1));
    record().Text3(1).setText(u"3333"_s);
    expectBox(u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s);
    enter(record().Text1(7));
    EXPECT_EQ(record().Text3(1).text() + document.text(), u"3333"_s);

    press(9); // the next company's number fits again
    EXPECT_EQ(document.maxLength(), 0);
    enter(document); // locked: nothing is checked
    enter(record().Text1(7));
    EXPECT_EQ(document.text(), u"111-444-777/35"_s);
}

TEST_F(OnSiteRecordTest, CopyBringsTheDocumentAsItIsStored)
{
    addOrder(u"0000007"_s, u"Ana"_s, u"CPF='11144477735'"_s);
    record().show();
    press(5);
    EXPECT_EQ(record().Command1(5).caption(), u"&Colar"_s);
    EXPECT_TRUE(record().Command1(5).widget()->hasFocus());
    press(5);
    EXPECT_EQ(record().Text4.text(), u"11144477735"_s);
    EXPECT_EQ(record().Command1(5).caption(), u"&Copiar"_s);
    EXPECT_TRUE(record().Text1(0).widget()->hasFocus());
}

TEST_F(OnSiteRecordTest, LoadThatFailsTellsTwiceAndStaysOpen)
{
    principal().show();
    expectToBeLeftWithoutDatabase(onSite(), 4);
}

} // namespace
