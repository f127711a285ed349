#include "WorkshopTest.h"

namespace {

class SheetTest : public WorkshopTest
{
protected:
    SheetTest()
    {
        setCompany();
        setIni(u"Configurar"_s, u"CPFCGC"_s, u"11144477735"_s);
        for (int line = 1; line <= 8; ++line) {
            setIni(u"Configurar"_s, QString::number(line), u"entrada %1"_s.arg(line));
            setIni(u"Configurar"_s, QString::number(10 + line), u"saida %1"_s.arg(line));
        }
        addOrder(u"0000012"_s, u"Ana"_s,
                 u"dataentrada='05/03/2026', marca='Radio', modelo='X1', defeito='Mudo', "
                 "observacao='Sem cabo', servicoexecutado='Fonte', valor=1234500, "
                 "telefone='1133334444', celular='1199998888'"_s);
    }
};

TEST_F(SheetTest, EntrySheet)
{
    cli().show();
    click(cli().Command1(6));
    EXPECT_EQ(printed(), page(u"entry-sheet"_s));
    EXPECT_TRUE(sql(mainFile(), u"SELECT 1 FROM MOVIMENTO"_s).isEmpty());
}

TEST_F(SheetTest, ExitSheetStampsTheDateAndEntersTheValueAtEachPrinting)
{
    changeOrder(u"0000012"_s, u"pronto=0, naotempeca=1"_s);
    cli().show();
    click(cli().Command1(7));
    EXPECT_EQ(printed(), page(u"exit-sheet"_s));
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida"_s), u"09/03/2026"_s);
    click(cli().Command1(7));
    const QString row = u"0000012 Ana NULL 1234500 2026-03-09"_s;
    EXPECT_EQ(sql(mainFile(), u"SELECT codigo || ' ' || descricao || ' ' || "
                              "ifnull(quantidade, 'NULL') || ' ' || valor || ' ' || DATA "
                              "FROM MOVIMENTO"_s),
              (QStringList{row, row}));
}

TEST_F(SheetTest, ExitDateStaysAndAnEmptyValueCountsAsNothing)
{
    changeOrder(u"0000012"_s, u"datasaida='07/03/2026'"_s);
    cli().show();
    cli().Text3(0).setText({});
    click(cli().Command1(7));
    EXPECT_TRUE(printed().contains(u"100,6900 15 Valor: "_s));
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida || valor"_s), u"07/03/20260"_s);
    EXPECT_EQ(sql(mainFile(), u"SELECT valor FROM MOVIMENTO"_s), QStringList{u"0"_s});
}

// The bench writes to another field, to the same one, and while the print dialog is open.
TEST_F(SheetTest, DeliveryBesideTheBench)
{
    const auto cash = [this] { return sql(mainFile(), u"SELECT 1 FROM MOVIMENTO"_s).size(); };
    cli().show();
    cli().Text7.setText(u"A1"_s);
    changeOrder(u"0000012"_s, u"local='B2'"_s);
    click(cli().Command1(7));
    EXPECT_EQ(cli().Text7.text(), u"B2"_s) << "looked at before it is delivered";
    EXPECT_EQ(cli().Text1(15).text(), QString());
    changeOrder(u"0000012"_s, u"valor=990000"_s);
    click(cli().Command1(7));
    EXPECT_EQ(cli().Text3(0).text(), u"99,00"_s) << "neither paper nor cash tells another value";
    EXPECT_EQ(documents(), 0);
    EXPECT_EQ(cash(), 0);

    const auto whilePrinting = [this](const QString& changes) {
        CommonDialog::setShowPrinterForTests(
            [this, changes](const QString&) { changeOrder(u"0000012"_s, changes); });
    };
    whilePrinting(u"observacao='Com cabo', local='C3'"_s);
    cli().Text7.setText(u"A1"_s);
    expectBox(
        u"A entrega não foi gravada, nem a data de saída nem o valor no caixa. Repita a saída."_s,
        Answer::Ok, BoxButtons::Ok, BoxIcon::Critical, u"Fichario de Cliente"_s);
    click(cli().Command1(7));
    EXPECT_EQ(cli().Text1(15).text(), QString());
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida"_s), u"NULL"_s);
    EXPECT_EQ(cash(), 0);
    click(cli().Command1(7)); // brings "C3" into view
    EXPECT_EQ(cli().Text7.text(), u"C3"_s);

    whilePrinting(u"observacao='Sem nada'"_s);
    click(cli().Command1(7));
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida || observacao || local"_s),
              u"09/03/2026Sem nadaC3"_s);
    EXPECT_EQ(cash(), 1);
}

} // namespace
