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
    static QString shown()
    {
        return defect().Text2(0).text() + u' ' + defect().Text2(2).text() + u' ' +
               QString::number(gridRows(defect().MSFlexGrid1).size());
    }
    QStringList solutions() const { return sql(mainFile(), u"SELECT SOLUCAO FROM DEFEITO"_s); }
};

TEST_F(DefectsTest, EachActionLeavesItsButtonsAndBoxes)
{
    addDefect(u"Boreal"_s);
    addDefect(u"Aurora"_s);
    defect().show();
    EXPECT_TRUE(defect().caption().startsWith(u"Registro de Defeitos Solucionados     "_s));
    EXPECT_EQ(defect().Text1(16).text(), u"0000002"_s);
    EXPECT_EQ(gridRows(defect().MSFlexGrid1),
              (QStringList{u"Aurora|TX|Não liga|Fonte|"_s, u"Boreal|TX|Não liga|Fonte|"_s}));
    expectEasyToWalk(defect());
    const std::vector<Step> steps{
        {"load", [] {}, Browsing, AllLocked, u"Aurora Não liga 2"_s},
        {"new", [] { press(0); }, u"1 9"_s, {}, u"  2"_s},
        {"a click meanwhile", [] { click(defect().MSFlexGrid1, 2); }, u"1 9"_s, {}, u"  2"_s},
        {"cancelled", [] { press(9); }, Browsing, AllLocked, u"Aurora Não liga 2"_s},
        {"before the first, with all buttons on", [] { press(10); }, Browsing, AllLocked,
         u"Aurora Não liga 2"_s},
        {"next", [] { press(11); }, Browsing, AllLocked, u"Boreal Não liga 2"_s},
        {"after the last", [] { press(11); }, Browsing, AllLocked, u"Boreal Não liga 2"_s},
        {"first", [] { press(12); }, Browsing, AllLocked, u"Aurora Não liga 2"_s},
        {"editing", [] { press(2); }, u"1 3 9"_s, {}, u"Aurora Não liga 2"_s},
        {"not deleted", [this] { removeDefect(Answer::No); }, Browsing, AllLocked,
         u"Aurora Não liga 2"_s},
        {"edited",
         [] {
             press(2);
             EXPECT_FALSE(defect().MSFlexGrid1.enabled());
             type(defect().Text2(0), u"Zeta"_s);
             press(1);
             EXPECT_TRUE(defect().MSFlexGrid1.enabled());
         },
         Browsing, AllLocked, u"Zeta Não liga 2"_s},
        {"the last one is current then, and is shown before it is edited",
         [] { press(2); },
         u"1 3 9"_s,
         {},
         u"Boreal Não liga 2"_s},
        {"deleted", [this] { removeDefect(); }, Browsing, AllLocked, u"Zeta Não liga 1"_s},
        {"the last one deleted",
         [this] {
             press(2);
             type(defect().Text2(2), u"Typed"_s);
             removeDefect();
         },
         u"0 8"_s, AllLocked, u"  0"_s},
        {"cancelled in an empty table",
         [] {
             press(0);
             type(defect().Text2(0), u"Typed"_s);
             press(9);
         },
         u"0 8"_s, AllLocked, u"  0"_s},
        {"stored empty",
         [] {
             press(0);
             press(1);
         },
         Browsing, AllLocked, u"  1"_s},
        {"and shown as stored", [] { press(13); }, Browsing, AllLocked,
         u"******* *********************** 1"_s},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        step.action();
        EXPECT_EQ(enabledOf(defect().Command1), step.buttons);
        EXPECT_EQ(lockedOf(defect().Text2), step.locked);
        EXPECT_EQ(shown(), step.shown);
        EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Cadastro de Defeitos"_s);
    }
    EXPECT_EQ(defects(),
              QStringList{u"*******|*******|***********************|***********************"_s});
    press(8);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"email:suporte@vorbelo.example"_s);
}

TEST_F(DefectsTest, ClickShowsTheFirstBrandThatHoldsTheText)
{
    for (const QString& brand : {u"Aurora Plus"_s, u"*******"_s, u"D''Oeste"_s, u"Aurora"_s})
        addDefect(brand, brand);
    mainSql(u"INSERT INTO DEFEITO DEFAULT VALUES"_s);
    defect().show(); // Null, stars, Aurora, Aurora Plus, D'Oeste
    const std::pair<int, QString> clicks[] = {
        {4, u"Aurora Plus"_s}, {3, u"Aurora"_s},
        {5, u"Aurora"_s}, // an apostrophe is found nowhere: the row on show stays
        {2, u"*******"_s},     {1, u"*******"_s},
        {0, u"*******"_s}, // the heading is a click on the first row, which has no brand
    };
    for (const auto& [row, brand] : clicks) {
        click(defect().MSFlexGrid1, row);
        EXPECT_EQ(defect().Text2(0).text(), brand) << row;
    }
    mainSql(u"UPDATE DEFEITO SET MARCA = 'Plus Aurora' WHERE MARCA = '*******'"_s);
    defect().unload();
    defect().show();
    click(defect().MSFlexGrid1, 2);
    press(13);
    click(defect().MSFlexGrid1, 2); // once more, after another one was shown
    EXPECT_EQ(defect().Text2(0).text(), u"Aurora"_s);
    mainSql(u"DELETE FROM DEFEITO WHERE MARCA = 'Aurora'"_s);
    mainSql(u"INSERT INTO DEFEITO (MARCA) VALUES ('Plus')"_s);
    defect().unload();
    defect().show();
    click(defect().MSFlexGrid1, 4); // "Plus" stands inside a brand before it
    EXPECT_EQ(defect().Text2(0).text(), u"Aurora Plus"_s);
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
    EXPECT_EQ(defect().Text2(3).text(), QString());
    enter(defect().Text2(3));
    type(defect().Text2(3), u"Um"_s);
    ::press(defect().Text2(3), Qt::Key_Return);
    ::press(defect().Text2(3), Qt::Key_Return);
    EXPECT_EQ(focus(), u"Text2_3"_s);
    press(1);
    EXPECT_EQ(solutions(), QStringList{u"Um\n\n"_s});
    press(12);
    EXPECT_EQ(defect().Text2(3).text(), u"Um\n\n"_s);
    enter(defect().Text2(3));
    ::press(defect().Text2(3), Qt::Key_Return); // locked
    EXPECT_EQ(defect().Text2(3).text(), u"Um\n\n"_s);
}

TEST_F(DefectsTest, SolutionOfSixtyThousandCharactersWithEveryLineBreak)
{
    defect().show();
    press(0);
    const QString line = u"uma linha de trinta caracteres"_s;
    QString pasted;
    QString wanted;
    const QString breaks[] = {u"\r\n"_s, u"\n"_s, u"\r"_s, u"\u2028"_s, u"\u2029"_s};
    for (int i = 0; wanted.size() <= 60000; ++i) {
        pasted += line + breaks[i % 5];
        wanted += line + u'\n';
    }
    wanted.truncate(60000);
    QGuiApplication::clipboard()->setText(pasted);
    enter(defect().Text2(3));
    qobject_cast<QPlainTextEdit*>(defect().Text2(3).widget())->paste();
    EXPECT_EQ(defect().Text2(3).text().size(), 60000);
    QGuiApplication::clipboard()->setText(u"uma\r\nduas\n"_s);
    enter(defect().Text2(2));
    QMetaObject::invokeMethod(defect().Text2(2).widget(), "paste");
    EXPECT_FALSE(defect().Text2(2).text().contains(u'\n'));
    press(1);
    EXPECT_TRUE(solutions() == QStringList{wanted});
    defect().unload();
    defect().show();
    EXPECT_TRUE(defect().Text2(3).text() == wanted);
    press(2);
    press(1);
    EXPECT_TRUE(solutions() == QStringList{wanted});
}

// Whichever call or write fails: what was typed is stored once, or the boxes stay open and a second
// press stores it; what was to go is gone, or still there and in view.
TEST_F(DefectsTest, WhatFailsToBeStoredCanBeTriedAgainInBothRegisters)
{
    const auto refill = [this] {
        for (Form* shown : {static_cast<Form*>(&firm()), static_cast<Form*>(&defect())})
            shown->unload();
        mainSql(u"DELETE FROM DEFEITO; DELETE FROM FORNECEDOR"_s);
        addDefect(u"Aurora"_s);
        addFirm(u"0000001"_s, u"Aurora"_s);
    };
    struct Register
    {
        Form& form;
        ControlArray<CommandButton>& buttons;
        TextBox& box;
        QString table;
        QString field;
    };
    const Register registers[] = {
        {defect(), defect().Command1, defect().Text2(0), u"DEFEITO"_s, u"MARCA"_s},
        {firm(), firm().Command1, firm().Text1(0), u"FORNECEDOR"_s, u"NOMEEMPRESA"_s}};
    for (const Register& record : registers) {
        const auto stored = [&] {
            return sql(mainFile(),
                       u"SELECT %1 FROM %2 ORDER BY _id"_s.arg(record.field, record.table));
        };
        for (const int begin : {0, 2}) {
            for (const int store : {1, 3}) {
                if (begin == 0 && store == 3)
                    continue;
                const auto prepare = [&] {
                    refill();
                    record.form.show();
                    click(record.buttons(begin));
                    type(record.box, u"New"_s);
                };
                const auto act = [&] { click(record.buttons(store)); };
                const auto check = [&](bool) {
                    if (store == 3 && !stored().isEmpty()) {
                        EXPECT_EQ(record.box.text(), u"Aurora"_s);
                        click(record.buttons(2));
                    }
                    click(record.buttons(store));
                    EXPECT_EQ(stored(), store == 3   ? QStringList()
                                        : begin == 2 ? QStringList{u"New"_s}
                                                     : (QStringList{u"Aurora"_s, u"New"_s}));
                };
                failEachCall(prepare, act, check, 1);
                failEachWrite(prepare, act, check);
            }
        }
    }
}

} // namespace
