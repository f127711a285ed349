#include "FormTest.h"

#include "Form1principal.h"
#include "Form1relatorio.h"
#include "Funciones.h"
#include "Printer.h"

namespace {

class CashReportTest : public FormTest
{
protected:
    CashReportTest()
    {
        addForm<Form1principal>();
        addForm<Form1relatorio>();
    }

    Form1relatorio& report() const { return form<Form1relatorio>(); }

    // The value in ten-thousandths, as the file keeps it.
    void row(const QString& code, const QString& quantity, const QString& value,
             const QString& day) const
    {
        mainSql(u"INSERT INTO MOVIMENTO(codigo, descricao, quantidade, valor, DATA) "
                u"VALUES('%1', 'Linha %1', %2, %3, '%4')"_s.arg(code, quantity, value, day));
    }

    int storedRows() const
    {
        return sql(mainFile(), u"SELECT count(*) FROM MOVIMENTO"_s).front().toInt();
    }

    QString totals() const { return report().Text5.text() + u'|' + report().Text3.text(); }

    void search(QDate after, QDate until)
    {
        report().DTPicker1.setValue(after);
        report().DTPicker2.setValue(until);
        click(report().Command1);
    }

    // Codes in view, blank rows as "-".
    QString codes() const
    {
        QStringList codes;
        for (int row = 1; row < report().MSFlexGrid1.Rows(); ++row) {
            const QString code = report().MSFlexGrid1.TextMatrix(row, 0);
            codes << (code.isEmpty() ? u"-"_s : code);
        }
        return codes.join(u' ');
    }
};

TEST_F(CashReportTest, ListsByDateAndSumsQuantityAndValue)
{
    row(u"0000002"_s, u"1"_s, u"12345000"_s, u"2004-12-05"_s);
    row(u"0000001"_s, u"2"_s, u"125000"_s, u"2004-11-30"_s);
    report().load();
    EXPECT_EQ(gridRows(report().MSFlexGrid1),
              (QStringList{u"0000001|Linha 0000001|2|12,50|30/11/2004|"_s,
                           u"0000002|Linha 0000002|1|1.234,50|05/12/2004|"_s}));
    EXPECT_EQ(totals(), u"3|1.247,00"_s);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Movimento de Caixa"_s);
    EXPECT_EQ(report().Text8.text() + u'|' + report().Text10.text(), u"12,50|2"_s)
        << "what was carried from the row before";
    report().show();
    expectEasyToWalk(report());
}

TEST_F(CashReportTest, SumsAreRoundedThroughTheirTextAndANegativeValueStandsInParentheses)
{
    for (const QString& code : {u"1"_s, u"2"_s, u"3"_s})
        row(code, u"1"_s, u"50"_s, u"2004-12-05"_s); // half a cent
    row(u"4"_s, u"1"_s, u"-50000"_s, u"2004-12-06"_s);
    report().load();
    EXPECT_EQ(report().MSFlexGrid1.TextMatrix(4, 3), u"($5,00)"_s);
    EXPECT_EQ(totals(), u"4|-4,97"_s);
}

TEST_F(CashReportTest, WhatCannotBeSummedStopsTheListWithItsBox)
{
    struct Case
    {
        const char* label;
        QString quantity, value; // of the second of three rows
        QString shown, codes, totals;
    };
    const Case cases[] = {
        // The row grew before the quantity was counted, so a blank one stays behind it.
        {"a delivered job", u"NULL"_s, u"800000"_s, u"||80,00||"_s, u"1 2 -"_s, u"4|90,00"_s},
        {"no value", u"3"_s, u"NULL"_s, u"|3|0,00|06/12/2004|"_s, u"1 2"_s, u"4|0,00"_s},
        // The sum of 0 is an empty text; it is the third row that cannot count on from it.
        {"a sum of 0", u"-4"_s, u"800000"_s, u"|-4|80,00|06/12/2004|"_s, u"1 2 3 -"_s,
         u"|100,00"_s},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.label);
        mainSql(u"DELETE FROM MOVIMENTO"_s);
        row(u"1"_s, u"4"_s, u"100000"_s, u"2004-12-05"_s);
        row(u"2"_s, each.quantity, each.value, u"2004-12-06"_s);
        row(u"3"_s, u"5"_s, u"100000"_s, u"2004-12-07"_s);
        principal().StatusBar1.setPanel(2, u"Aguarde processando"_s);
        expectBox(u"Erro ao carregar grid 1"_s);
        report().load();
        EXPECT_TRUE(report().isLoaded());
        EXPECT_EQ(gridRows(report().MSFlexGrid1)[1], u"2|Linha 2"_s + each.shown);
        EXPECT_EQ(codes(), each.codes);
        EXPECT_EQ(totals(), each.totals);
        EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de Movimento de Caixa"_s);
        report().unload();
    }
    mainSql(u"DELETE FROM MOVIMENTO WHERE codigo = '3'"_s);
    report().load();
    EXPECT_EQ(totals(), u"|90,00"_s) << "a sum of 0 in the last row hurts nobody";
}

TEST_F(CashReportTest, TheRangeSearchComparesDaysAsTexts)
{
    struct Case
    {
        const char* label;
        QString days;
        QDate after, until;
        QString codes, totals;
    };
    const QDate first(2004, 12, 1), fifth(2004, 12, 5);
    const Case cases[] = {
        {"the start day is out, one row beyond the end is in",
         u"2004-12-05 2004-12-06 2004-12-07 2005-01-01"_s, fifth, fifth, u"2"_s, u"2|20,00"_s},
        {"the end day is in", u"2004-12-01 2004-12-05 2004-12-06 2005-01-01"_s, first, fifth,
         u"2 3"_s, u"5|50,00"_s},
        {"days sort as texts, not as dates",
         u"2004-12-05 2005-01-10"_s,
         QDate(2003, 12, 31),
         QDate(2005, 12, 31),
         {},
         u"0|0,00"_s},
        {"the last day of the full list ends a search whose first row is passed over",
         u"2004-12-01 2004-12-06 2004-12-08"_s,
         fifth,
         fifth,
         {},
         u"0|0,00"_s},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.label);
        mainSql(u"DELETE FROM MOVIMENTO"_s);
        int code = 0;
        for (const QString& day : each.days.split(u' ')) {
            ++code;
            row(QString::number(code), QString::number(code), QString::number(code * 100000), day);
        }
        report().load();
        search(each.after, each.until);
        EXPECT_EQ(codes(), each.codes);
        EXPECT_EQ(totals(), each.totals);
        report().unload();
    }
}

TEST_F(CashReportTest, OnlyRowsTakenByTheRangeSearchMoveTheSharedCounter)
{
    for (const QString& day : {u"2004-12-05"_s, u"2004-12-06"_s, u"2004-12-07"_s, u"2005-01-01"_s})
        row(u"1"_s, u"1"_s, u"10000"_s, day);
    report().load();
    Funciones::Contador = 7;
    search(QDate(2004, 12, 4), QDate(2004, 12, 6));
    EXPECT_EQ(codes(), u"1 1 1"_s);
    EXPECT_EQ(Funciones::Contador, 10) << "counted on from where another form left it";
    search(QDate(2004, 12, 9), QDate(2004, 12, 9));
    EXPECT_EQ(codes(), QString());
    EXPECT_EQ(Funciones::Contador, 10) << "rows passed over leave it there";
}

TEST_F(CashReportTest, ExcluirEmptiesTheTableOnlyAfterYesAndLeavesTheListInView)
{
    row(u"1"_s, u"1"_s, u"10000"_s, u"2004-12-05"_s);
    row(u"2"_s, u"1"_s, u"10000"_s, u"2004-12-06"_s);
    report().load();
    const QString question = u"Você vai excluir todos arquivos,tem certeza?"_s;
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        expectBox(question, answer, BoxButtons::YesNo, BoxIcon::Question);
        click(report().Command3);
        EXPECT_EQ(storedRows(), answer == Answer::No ? 2 : 0);
        EXPECT_EQ(codes(), answer == Answer::No ? u"1 2"_s : u"1 2 - -"_s);
    }
    EXPECT_EQ(totals(), u"2|2,00"_s);

    // With no row left the deleting itself fails, and the list is loaded anew.
    expectBox(question, Answer::Yes, BoxButtons::YesNo, BoxIcon::Question);
    expectBox(u"erro ao deletar"_s);
    click(report().Command3);
    EXPECT_EQ(codes(), QString());

    report().unload();
    report().load();
    EXPECT_EQ(totals(), u"0|0,00"_s);
    EXPECT_EQ(report().MSFlexGrid1.Rows(), 1);
    expectBox(u"Erro ao imprimir"_s);
    click(report().Command2);
    EXPECT_EQ(documents(), 0);
    Printer::instance().print(u"the next sheet"_s);
    Printer::instance().EndDoc();
    EXPECT_EQ(printed(), QStringList(u"0,0 8 the next sheet"_s));
}

TEST_F(CashReportTest, TheSharedCounterBoundsThePrintedLinesFromTheCurrentRowOn)
{
    row(u"0000001"_s, u"2"_s, u"125000"_s, u"2004-12-05"_s);
    row(u"0000002"_s, u"10"_s, u"12345000"_s, u"2004-12-06"_s);
    row(u"0000003"_s, u"1"_s, u"10000"_s, u"2004-12-07"_s);
    setCompany();
    report().load();

    Funciones::Contador = 1;
    click(report().Command2);
    ASSERT_EQ(documents(), 1);
    EXPECT_EQ(printed(), page(u"cash-report"_s))
        << "two lines; the totals are those of all three rows";
    EXPECT_EQ(codes(), u"0000001 0000002 0000003 -"_s);
    click(report().Command2);
    EXPECT_EQ(printed(), page(u"cash-report"_s)) << "a reprint is equal";

    // A counter beyond the list prints empty lines, and the list begins at the current row, under
    // the one above it.
    report().MSFlexGrid1.setRow(3);
    Funciones::Contador = 2;
    click(report().Command2);
    const QStringList shifted = printed();
    EXPECT_EQ(shifted.mid(8, 2),
              (QStringList{u"282,1250 8 0000002"_s, u"1200,1250 8 Linha 0000002"_s}));
    EXPECT_TRUE(shifted.contains(u"282,1634 8 0000003"_s));
    EXPECT_TRUE(shifted.contains(u"0,2186 8 "_s + QString(180, u'_')));
}

TEST_F(CashReportTest, NoFailingCallEndsTheProgramOrLosesRows)
{
    int before = 0;
    const auto begin = [&] {
        report().unload();
        mainSql(u"DELETE FROM MOVIMENTO"_s);
        row(u"1"_s, u"1"_s, u"10000"_s, u"2004-12-05"_s);
        row(u"2"_s, u"1"_s, u"10000"_s, u"2004-12-06"_s);
        principal().Command1(15).setEnabled(true);
        before = documents();
    };
    const auto beginOpen = [&] {
        begin();
        report().load();
    };

    QString shown;
    onModal([&](Form&) {
        shown = totals();
        click(report().Command4);
    });
    const auto openAndClose = [] { click(principal().Command1(15)); };
    const auto storedAndShownAgain = [&](bool failed) {
        EXPECT_EQ(boxes().isEmpty(), !failed);
        EXPECT_EQ(storedRows(), 2);
        EXPECT_FALSE(report().isLoaded());
        EXPECT_TRUE(principal().StatusBar1.panel(2).startsWith(u"email:"_s));
        openAndClose();
        EXPECT_EQ(shown, u"2|2,00"_s);
    };
    failEachCall(begin, openAndClose, storedAndShownAgain, 5);

    const auto empty = [this] { click(report().Command3); };
    const auto emptiedAtLast = [&](bool failed) {
        EXPECT_EQ(boxes().contains(u"|erro ao deletar"_s), failed);
        empty();
        EXPECT_EQ(storedRows(), 0);
    };
    failEachCall(beginOpen, empty, emptiedAtLast, 5);

    // A setting that cannot be read prints as an empty text; all else is told.
    const auto print = [this] { click(report().Command2); };
    const auto printedAtLast = [&](bool) {
        EXPECT_EQ(boxes(),
                  documents() == before ? QStringList{u"|Erro ao imprimir"_s} : QStringList());
        before = documents();
        print();
        EXPECT_EQ(documents(), before + 1);
    };
    failEachCall(beginOpen, print, printedAtLast, 5);
}

} // namespace
