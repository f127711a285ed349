#include "RegistersTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QWidget>

namespace {

const QString Browsing = u"0 2 8 10 11 12 13"_s;
const QString AllLocked = u"0 1 2 3"_s;

class DefectsTest : public RegistersTest
{
protected:
    static void press(int button) { click(defect().Command1(button)); }
    QStringList solutions() const { return sql(mainFile(), u"SELECT SOLUCAO FROM DEFEITO"_s); }
};

TEST_F(DefectsTest, EachActionLeavesItsButtonsAndBoxes)
{
    addDefect(u"Boreal"_s);
    addDefect(u"Aurora"_s);
    defect().show();
    EXPECT_TRUE(defect().caption().startsWith(u"Registro de Defeitos Solucionados     "_s));
    const std::vector<RecordState> states{
        {{}, Browsing, AllLocked, u"Aurora Não liga 2"_s},
        {u"0"_s, u"1 9"_s, {}, u"  2"_s},
        {u"9"_s, Browsing, AllLocked, u"Aurora Não liga 2"_s},
        {u"10"_s, Browsing, AllLocked, u"Aurora Não liga 2"_s}, // all buttons stay on
        {u"2 3n"_s, Browsing, AllLocked, u"Aurora Não liga 2"_s},
        {u"2"_s, u"1 3 9"_s, {}, u"Aurora Não liga 2"_s},
        {u"=Zeta 1"_s, Browsing, AllLocked, u"Zeta Não liga 2"_s},
        // The last one is current then, and is shown before it is edited.
        {u"2"_s, u"1 3 9"_s, {}, u"Boreal Não liga 2"_s},
        {u"3y"_s, Browsing, AllLocked, u"Zeta Não liga 1"_s},
        {u"2 =Typed 3y"_s, u"0 8"_s, AllLocked, u"  0"_s},
        {u"0 =Typed 9"_s, u"0 8"_s, AllLocked, u"  0"_s},
        {u"0 1"_s, Browsing, AllLocked, u"  1"_s},
    };
    const auto shown = [] {
        return defect().Text2(0).text() + u' ' + defect().Text2(2).text() + u' ' +
               QString::number(gridRows(defect().MSFlexGrid1).size());
    };
    expectStates(defects(), states, shown, [](const RecordState& state) {
        EXPECT_EQ(defect().MSFlexGrid1.enabled(), state.buttons != u"1 3 9"_s);
        EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Cadastro de Defeitos"_s);
    });
    press(8);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"email:suporte@vorbelo.example"_s);
}

TEST_F(DefectsTest, ClickShowsTheFirstBrandThatHoldsTheText)
{
    for (const QString& brand : {u"Aurora Plus"_s, u"*******"_s, u"D''Oeste"_s, u"Aurora"_s})
        addDefect(brand, brand);
    mainSql(u"INSERT INTO DEFEITO DEFAULT VALUES; INSERT INTO DEFEITO (MARCA) VALUES ('Plus')"_s);
    defect().show(); // Null, stars, Aurora, Aurora Plus, D'Oeste, Plus
    const std::pair<int, QString> clicks[] = {
        {4, u"Aurora Plus"_s},
        {3, u"Aurora"_s},
        {5, u"Aurora"_s}, // an apostrophe is found nowhere: the row on show stays
        {6, u"Aurora Plus"_s},
        {2, u"*******"_s},
        {1, u"*******"_s},
        {0, u"*******"_s}, // the heading is a click on the first row, which has no brand
    };
    for (const auto& [row, brand] : clicks) {
        click(defect().MSFlexGrid1, row);
        EXPECT_EQ(defect().Text2(0).text(), brand) << row;
    }
}

TEST_F(DefectsTest, EnterBreaksTheLineInTheSolutionOnly)
{
    defect().show();
    press(0);
    const auto focus = [] { return defect().window()->focusWidget()->objectName(); };
    for (const char* next : {"Text2_1", "Text2_2", "Text2_3"}) {
        ::press(*defect().control(u"Text2"_s, QByteArray(next).back() - '1'), Qt::Key_Return);
        EXPECT_EQ(focus(), QString::fromLatin1(next));
    }
    ::press(defect().Text2(3), Qt::Key_Return); // empty like the others: moves on
    EXPECT_NE(focus(), u"Text2_3"_s);
    enter(defect().Text2(3));
    type(defect().Text2(3), u"Um"_s);
    ::press(defect().Text2(3), Qt::Key_Return);
    ::press(defect().Text2(3), Qt::Key_Return);
    EXPECT_EQ(focus(), u"Text2_3"_s);
    press(1);
    EXPECT_EQ(solutions(), QStringList{u"Um\n\n"_s});
    press(12);
    ::press(defect().Text2(3), Qt::Key_Return); // locked
    EXPECT_EQ(defect().Text2(3).text(), u"Um\n\n"_s);
}

TEST_F(DefectsTest, SolutionOfSixtyThousandCharactersWithEveryLineBreak)
{
    defect().show();
    press(0);
    QString pasted;
    QString wanted;
    const QString breaks[] = {u"\r\n"_s, u"\n"_s, u"\r"_s, u"\u2028"_s, u"\u2029"_s};
    for (int i = 0; wanted.size() <= 60000; ++i) {
        pasted += u"uma linha de trinta caracteres"_s + breaks[i % 5];
        wanted += u"uma linha de trinta caracteres\n"_s;
    }
    wanted.truncate(60000);
    QGuiApplication::clipboard()->setText(pasted);
    enter(defect().Text2(3));
    qobject_cast<QPlainTextEdit*>(defect().Text2(3).widget())->paste();
    press(1);
    defect().unload();
    defect().show();
    EXPECT_TRUE(defect().Text2(3).text() == wanted);
    press(2);
    press(1);
    EXPECT_TRUE(solutions() == QStringList{wanted});
}

TEST_F(DefectsTest, WhatFailsOrIsGoneIsStoredOnceOrNotAtAllInBothRegisters)
{
    for (const Record& record : {firms(), defects()}) {
        expectSafe(record);
        record.form.unload();
    }
}

TEST_F(DefectsTest, MissingDatabaseShowsItsBoxesAndBothRegistersCanBeLeft)
{
    for (const Record& record : {firms(), defects()})
        expectToBeLeftWithoutDatabase(record, 3);
}

} // namespace
