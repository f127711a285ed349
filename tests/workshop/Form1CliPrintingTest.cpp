#include "WorkshopTest.h"

namespace {

class SheetTest : public WorkshopTest
{
protected:
    SheetTest()
    {
        const std::vector<std::pair<const char*, const char*>> company{
            {"Titulo", "Oficina"},     {"Endereco", "Rua A, 1"}, {"Email", "a@b.c"},
            {"Telefone", "3333-4444"}, {"Site", "b.c"},          {"CPFCGC", "11144477735"}};
        for (const auto& [key, value] : company)
            setIni(u"Configurar"_s, QString::fromLatin1(key), QString::fromLatin1(value));
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
    Form1Cli& cli = openRecord();
    click(cli.Command1(6));
    EXPECT_EQ(printed(), page(u"entry-sheet"_s));
    EXPECT_TRUE(sql(mainFile(), u"SELECT 1 FROM MOVIMENTO"_s).isEmpty());
}

TEST_F(SheetTest, ExitSheetStampsTheDateAndEntersTheValueAtEachPrinting)
{
    changeOrder(u"0000012"_s, u"pronto=0, naotempeca=1"_s);
    Form1Cli& cli = openRecord();
    click(cli.Command1(7));
    EXPECT_EQ(printed(), page(u"exit-sheet"_s));
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida"_s), u"09/03/2026"_s);
    click(cli.Command1(7));
    const QString row = u"0000012 Ana NULL 1234500 2026-03-09"_s;
    EXPECT_EQ(sql(mainFile(), u"SELECT codigo || ' ' || descricao || ' ' || "
                              "ifnull(quantidade, 'NULL') || ' ' || valor || ' ' || DATA "
                              "FROM MOVIMENTO"_s),
              (QStringList{row, row}));
}

TEST_F(SheetTest, ExitDateStaysAndAnEmptyValueCountsAsNothing)
{
    changeOrder(u"0000012"_s, u"datasaida='07/03/2026'"_s);
    Form1Cli& cli = openRecord();
    cli.Text3(0).setText({});
    click(cli.Command1(7));
    EXPECT_TRUE(printed().contains(u"100,6900 15 Valor: "_s));
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida || valor"_s), u"07/03/20260"_s);
    EXPECT_EQ(sql(mainFile(), u"SELECT valor FROM MOVIMENTO"_s), QStringList{u"0"_s});
}

TEST_F(SheetTest, PrinterFaultEntersNoCashAndStillSaves)
{
    breakPrinter();
    Form1Cli& cli = openRecord();
    click(cli.Command1(6));
    click(cli.Command1(7));
    EXPECT_TRUE(sql(mainFile(), u"SELECT 1 FROM MOVIMENTO"_s).isEmpty());
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida"_s), u"09/03/2026"_s);
}

} // namespace
