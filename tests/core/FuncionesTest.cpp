#include "ErrorOf.h"
#include "FormTest.h"

#include "Form1principal.h"
#include "Funciones.h"
#include "RecordForms.h"
#include "RuntimeError.h"

#include <QDir>

using namespace Funciones;

namespace {

class Funcoes : public FormTest
{
protected:
    Funcoes()
    {
        addForm<Form1principal>();
        principal().load();
    }

    // The line that the box shows where this file cannot be opened.
    static QString openError(const QString& path)
    {
        try {
            Connection().Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + path);
        } catch (const RuntimeError& error) {
            return error.text();
        }
        return {};
    }

    static void open(ObjectVariable<Recordset>& table, ObjectVariable<Connection>& connection)
    {
        table->Open(u"SELECT * FROM Pecas"_s, connection.shared(), CursorType::Static,
                    LockType::ReadOnly);
    }

    void expectConnectionBox(const QString& text)
    {
        expectBox(text, Answer::Ok, BoxButtons::Ok, BoxIcon::Critical, u"conecxão"_s);
    }

    void expectAdvice()
    {
        expectBox(
            u"Restaure o Banco de Dados ou Localize utilizando o Botão Localizar na tela de configuração do Sistema,depois reinicie o programa."_s);
    }
};

TEST(Documents, CheckDigitsDecide)
{
    for (const auto& [document, isCpf, isCgc] : {std::tuple(u"11144477735"_s, true, false),
                                                 {u"11144477734"_s, false, false},
                                                 {u"11144477725"_s, false, false},
                                                 // A remainder of 10 or 11 gives the digit 0.
                                                 {u"10000000108"_s, true, false},
                                                 {u"1114447773x"_s, false, false},
                                                 {u"111a4477735"_s, false, false},
                                                 {u"11222333000181"_s, false, true},
                                                 {u"11222333000180"_s, false, false},
                                                 {u"11222333000171"_s, false, false},
                                                 {u"00000000000000"_s, true, true},
                                                 {u"1122233 000181"_s, false, false}}) {
        EXPECT_EQ(ValidaCPF(document), isCpf) << document.toStdString();
        EXPECT_EQ(ValidaCGC(document), isCgc) << document.toStdString();
    }
    EXPECT_EQ(DigitoCGC(u"112223330001"_s), u"8"_s);
    EXPECT_EQ(DigitoCGC(u"1122233 0001"_s), QString());
}

TEST(Codes, CountOnFromTheLastSevenCharacters)
{
    EXPECT_EQ(nextCode(u"90000041"_s) + nextCode(u"9999999"_s), u"000004210000000"_s);
}

TEST(KeyFilters, PassOnlyTheirCharactersAndBackspace)
{
    QString passed;
    for (const int key : {int('9'), int(','), 8, 13, int('-'), 0x0663})
        passed += SoNumero(key) + u'|' + SoValor(key) + u' ';
    EXPECT_EQ(passed, u"57|57 0|44 8|8 0|0 0|0 0|0 "_s);
}

TEST_F(Funcoes, FailedOpeningLeavesConfigurationAndExit)
{
    const QString away = folder() + u"/nada.mdb"_s;
    const QString ini = u"Erro nº -2147467259\nO arquivo de configuração "_s + iniFile();
    Menu* const entries[] = {&principal().mnucadastro, &principal().mnupedido,
                             &principal().mnubackup};
    for (const QString& text :
         {openError(away),
          ini + u" não diz onde está o Banco de Dados: falta \"Caminho\" na seção [Local]."_s,
          ini + u" não pode ser lido."_s, ini + u" não existe."_s}) {
        if (text.endsWith(u"existe."_s))
            ASSERT_TRUE(QDir().rmdir(iniFile()));
        else if (text.endsWith(u"lido."_s))
            ASSERT_TRUE(QFile::remove(iniFile()) && QDir().mkdir(iniFile()));
        else
            setIni(u"Local"_s, u"Caminho"_s, text.startsWith(ini) ? QString() : away);
        setEnabled(principal().Command1, 0, 15, true);
        for (Menu* entry : entries)
            entry->setEnabled(true);
        expectConnectionBox(text);
        expectAdvice();
        AbreBanco();
        EXPECT_EQ(enabledOf(principal().Command1), u"6 7 12 13 14 15"_s);
        for (Menu* entry : entries)
            EXPECT_FALSE(entry->enabled());
        // The caller goes on, and its own opening is what fails.
        EXPECT_EQ(errorOf([] { open(Tabela1, Conexao1); }), RuntimeError::NoConnection);
    }
}

TEST_F(Funcoes, TheListStaysOnThisComputer)
{
    const QString elsewhere = u"/outro/GALTERIA1.mdb"_s;
    setIni(u"Local"_s, u"Caminho"_s, elsewhere);
    expectConnectionBox(openError(elsewhere));
    expectAdvice();
    AbreBanco4();
    expectConnectionBox(openError(elsewhere));
    AbreBanco5();
    AbreBancoVenda();
    open(Tabela2, Conexao2);
    EXPECT_TRUE(Tabela2->eof());
}

} // namespace
