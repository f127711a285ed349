#include "Printer.h"
#include "RuntimeError.h"
#include "Strings.h"
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

    QStringList companyBlock() const
    {
        return {u"100,400 12 Oficina     CPF\\CGC: 11144477735"_s,
                u"100,1000 10 Endereço: Rua A, 1"_s, u"7500,1000 10 Tel/Fax: 3333-4444"_s,
                u"100,1500 10 Site: b.c"_s, u"7000,1500 10 E-mail: a@b.c"_s};
    }
    static QString at(int x, int y, const QString& rest)
    {
        return u"%1,%2 %3"_s.arg(x).arg(y).arg(rest);
    }
    static QString part(int y) { return at(8000, y, u"10 ["_s + repeated(50, u'-')); }
    static QString rule(int y) { return at(100, y, u"10 "_s + repeated(100, u'-')); }
};

TEST_F(SheetTest, EntrySheet)
{
    Form1Cli& cli = openRecord();
    click(cli.Command1(6));
    QStringList page{at(0, 0,
                        u"8 "_s + repeated(70, u'*') + u"ORÇAMENTO"_s + repeated(70, u'*') +
                            u"qtz softwere********"_s)};
    page += companyBlock();
    page += {u"100,2000 10 Data entrada: 05/03/2026"_s,
             u"8500,1900 24 bold O.S: 0000012"_s,
             at(0, 2390, u"8 "_s + repeated(280, u'_')),
             u"100,2600 10 Nome: Ana"_s,
             u"100,2900 10 Marca: Radio"_s,
             u"100,3200 10 Modelo: X1"_s,
             u"100,3500 10 Defeito: Mudo"_s,
             u"100,3800 10 Observação: Sem cabo"_s,
             at(0, 4100, u"10 "_s + repeated(200, u'_'))};
    for (int line = 1; line <= 8; ++line)
        page += at(0, 4100 + 230 * line, u"10 entrada %1"_s.arg(line));
    page += {at(0, 6400, u"10 "_s + repeated(200, u'_')),
             at(5000, 7000, u"10 "_s + repeated(50, u'-')),
             at(9000, 7000, u"10 "_s + repeated(40, u'-')),
             u"5200,7200 10 Assinatura"_s,
             u"200,7000 10 Valor :.........................................."_s,
             u"9000,7200 10 CPF"_s,
             at(100, 8000, u"10 "_s + repeated(64, u'*') + u"USO INTERNO"_s + repeated(64, u'*')),
             u"100,8500 32 O.S: 0000012"_s,
             u"8000,8500 24 O.S: 0000012"_s,
             u"100,9500 11 Data entrada: 05/03/2026"_s,
             u"9000,9500 11 Peça aplicada"_s,
             u"100,9800 10 Nome: Ana"_s,
             part(10000),
             u"100,10050 10 Telefone: (11)3333-4444"_s,
             u"100,10300 10 Celular: (11)9999-8888"_s,
             part(10300),
             u"100,10550 10 Defeito: Mudo"_s,
             part(10600),
             u"100,10800 10 Observação: Sem cabo"_s,
             at(100, 10850, u"10 "_s + repeated(65, u'_')),
             part(10900),
             u"2500,11100 10 SERVIÇO EXECUTADO"_s,
             part(11200),
             rule(11500),
             part(11500),
             rule(11800),
             part(11800),
             rule(12100),
             part(12100),
             rule(12400),
             part(12400),
             rule(12700),
             part(12700),
             u"100,13000 10 Valor: ____________________"_s,
             part(13000),
             part(13300),
             part(13600),
             at(100, 13900, u"10 Ass: "_s + repeated(40, u'-')),
             at(4100, 13900, u"10 CPF"_s + repeated(30, u'-')),
             part(13900),
             at(0, 14130, u"8 "_s + repeated(220, u'-')),
             u"346,14314 18 bold O.S: 0000012"_s,
             u"3283,14314 18 bold O.S: 0000012"_s,
             u"6048,14314 18 bold O.S: 0000012"_s,
             u"8813,14314 18 bold O.S: 0000012"_s,
             at(0, 14728, u"8 "_s + repeated(220, u'-'))};
    EXPECT_EQ(printed(), page);
    EXPECT_TRUE(sql(mainFile(), u"SELECT 1 FROM MOVIMENTO"_s).isEmpty());
}

TEST_F(SheetTest, ExitSheetStampsTheDateAndEntersTheValueAtEachPrinting)
{
    changeOrder(u"0000012"_s, u"pronto=0, naotempeca=1"_s);
    Form1Cli& cli = openRecord();
    click(cli.Command1(7));
    QStringList page{
        at(0, 0, u"8 "_s + repeated(75, u'*') + u"CERTIFICADO DE GARANTIA"_s + repeated(80, u'*'))};
    page += companyBlock();
    page += {u"100,2000 10 Data saída: 09/03/2026"_s,
             u"9000,1990 15 bold O.S: 0000012"_s,
             at(0, 2300, u"8 "_s + repeated(120, u'_')),
             u"100,2600 10 Nome: Ana"_s,
             u"100,2850 10 Marca: Radio"_s,
             u"100,3100 10 Modelo: X1"_s,
             u"100,3350 10 Defeito: Mudo"_s,
             u"100,3600 10 Observação: Sem cabo"_s,
             u"100,3850 10 Serviço Executado: Fonte"_s,
             at(0, 4200, u"10 "_s + repeated(120, u'_'))};
    for (int line = 1; line <= 8; ++line)
        page += at(0, 4200 + 230 * line, u"10 saida %1"_s.arg(line));
    page += {at(0, 6600, u"10 "_s + repeated(120, u'_')), u"100,6900 15 Valor: 123,45"_s,
             at(0, 7300, u"8 "_s + repeated(138, u'*') + u"qtz softwere"_s + repeated(15, u'*'))};
    EXPECT_EQ(printed(), page);
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
    class BrokenDevice : public PageDevice
    {
    public:
        void put(const std::vector<Page>&, const QString&) override
        {
            throw RuntimeError(RuntimeError::PrinterFault);
        }
    };
    Printer::instance().setDevice(std::make_shared<BrokenDevice>());
    Form1Cli& cli = openRecord();
    click(cli.Command1(6));
    click(cli.Command1(7));
    EXPECT_TRUE(sql(mainFile(), u"SELECT 1 FROM MOVIMENTO"_s).isEmpty());
    EXPECT_EQ(stored(u"0000012"_s, u"datasaida"_s), u"09/03/2026"_s);
}

} // namespace
