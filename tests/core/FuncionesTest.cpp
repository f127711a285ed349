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

    void expectConnectionBox(const QString& path)
    {
        expectBox(openError(path), Answer::Ok, BoxButtons::Ok, BoxIcon::Critical, u"conecxão"_s);
    }

    void expectAdvice()
    {
        expectBox(
            u"Restaure o Banco de Dados ou Localize utilizando o Botão Localizar na tela de configuração do Sistema,depois reinicie o programa."_s);
    }
};

TEST(KeyFilters, PassOnlyTheirCharactersAndBackspace)
{
    const struct
    {
        int key;
        QString number, value;
    } rows[] = {
        {'0', u"48"_s, u"48"_s},  {'9', u"57"_s, u"57"_s}, {',', u"0"_s, u"44"_s},
        {'.', u"0"_s, u"46"_s},   {8, u"8"_s, u"8"_s},     {13, u"0"_s, u"0"_s},
        {'a', u"0"_s, u"0"_s},    {'-', u"0"_s, u"0"_s},   {3, u"0"_s, u"0"_s},
        {0x0663, u"0"_s, u"0"_s}, // a digit of another script
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SoNumero(row.key), row.number) << row.key;
        EXPECT_EQ(SoValor(row.key), row.value) << row.key;
    }
}

TEST(Documents, CheckDigitsDecide)
{
    const struct
    {
        QString document;
        bool cpf, cgc;
    } rows[] = {
        {u"11144477735"_s, true, false},     {u"11144477734"_s, false, false},
        {u"11144477725"_s, false, false},    {u"00000000000"_s, true, false},
        {u"10000000108"_s, true, false}, // a remainder of 10 or 11 gives the digit 0
        {u"1114447773x"_s, false, false},    {u"111a4477735"_s, false, false},
        {u"11222333000181"_s, false, true},  {u"11222333000180"_s, false, false},
        {u"11222333000171"_s, false, false}, {u"00000000000000"_s, true, true},
        {u"1122233 000181"_s, false, false}, {u"111.444.777-35"_s, false, false},
        {QString(), false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ValidaCPF(row.document), row.cpf) << row.document.toStdString();
        EXPECT_EQ(ValidaCGC(row.document), row.cgc) << row.document.toStdString();
    }
    EXPECT_EQ(DigitoCGC(u"112223330001"_s), u"8"_s);
    EXPECT_EQ(DigitoCGC(u"1122233 0001"_s), QString());
}

TEST_F(Funcoes, FailedOpeningLeavesConfigurationAndExit)
{
    const QString ini = u"Erro nº -2147467259\nO arquivo de configuração "_s + iniFile();
    const std::pair<QString, QString> rows[] = {
        {folder() + u"/nada.mdb"_s, openError(folder() + u"/nada.mdb"_s)},
        {QString(),
         ini + u" não diz onde está o Banco de Dados: falta \"Caminho\" na seção [Local]."_s},
        {u"folder"_s, ini + u" não pode ser lido."_s},
        {u"none"_s, ini + u" não existe."_s},
    };
    for (const auto& [path, text] : rows) {
        if (path == u"none"_s)
            ASSERT_TRUE(QDir().rmdir(iniFile()));
        else if (path == u"folder"_s)
            ASSERT_TRUE(QFile::remove(iniFile()) && QDir().mkdir(iniFile()));
        else
            setIni(u"Local"_s, u"Caminho"_s, path);
        setEnabled(principal().Command1, 0, 15, true);
        for (Menu* entry :
             {&principal().mnucadastro, &principal().mnupedido, &principal().mnubackup})
            entry->setEnabled(true);
        expectBox(text, Answer::Ok, BoxButtons::Ok, BoxIcon::Critical, u"conecxão"_s);
        expectAdvice();

        AbreBanco();

        EXPECT_EQ(enabledOf(principal().Command1), u"6 7 12 13 14 15"_s);
        EXPECT_FALSE(principal().mnucadastro.enabled());
        EXPECT_FALSE(principal().mnupedido.enabled());
        EXPECT_FALSE(principal().mnubackup.enabled());
        EXPECT_TRUE(principal().mnusistema.enabled());
        // The caller goes on, and its own opening is what fails.
        EXPECT_EQ(errorOf([] {
                      Tabela1->Open(u"SELECT * FROM Pecas"_s, Conexao1.shared(), CursorType::Static,
                                    LockType::Optimistic);
                  }),
                  RuntimeError::NoConnection);
    }
}

TEST_F(Funcoes, FileThatWentBadSinceItWasOpenedFailsAtTheNextOpening)
{
    AbreBanco();
    QFile file(mainFile());
    const qint64 size = file.size();
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QByteArray good = file.readAll();
    for (const QByteArray& bad : {QByteArray(static_cast<int>(size), 'x'), good.left(5000)}) {
        ASSERT_TRUE(file.resize(0) && file.seek(0) && file.write(bad) == bad.size() &&
                    file.flush());
        expectConnectionBox(mainFile());
        expectAdvice();
        AbreBanco();
    }
    ASSERT_TRUE(file.resize(0) && file.seek(0) && file.write(good) == good.size() && file.flush());
    AbreBanco();
}

TEST_F(Funcoes, OtherPairsFailInTheirOwnWays)
{
    const QString path = folder() + u"/nada.mdb"_s;
    setIni(u"Local"_s, u"Caminho"_s, path);
    setEnabled(principal().Command1, 0, 15, true);
    const QString before = enabledOf(principal().Command1);

    expectConnectionBox(path);
    expectAdvice();
    AbreBanco4();
    expectConnectionBox(path);
    AbreBanco5();
    EXPECT_EQ(errorOf(AbreBanco3), RuntimeError::EngineFault);
    ASSERT_TRUE(QFile::remove(listFile()));
    EXPECT_EQ(errorOf(AbreBancoVenda), RuntimeError::EngineFault);

    EXPECT_EQ(enabledOf(principal().Command1), before);
}

TEST_F(Funcoes, EachOpeningReadsThePathAnewAndTheListStaysHere)
{
    const QString elsewhere = folder() + u"/outro.mdb"_s;
    ASSERT_TRUE(QFile::copy(mainFile(), elsewhere));
    sql(elsewhere, u"INSERT INTO Pecas (CODIGO, DESCRICAO) VALUES ('0000077', 'x')"_s);
    AbreBanco();
    setIni(u"Local"_s, u"Caminho"_s, elsewhere);
    AbreBanco();
    Tabela1->Open(u"SELECT * FROM Pecas"_s, Conexao1.shared(), CursorType::Static,
                  LockType::ReadOnly);
    EXPECT_EQ(Tabela1->Fields(0).text(), u"0000077"_s);
    EXPECT_EQ(CaminhoBanco, elsewhere);
    FechaBanco();

    AbreBancoVenda();
    Tabela2->Open(u"SELECT * FROM Pecas"_s, Conexao2.shared(), CursorType::Static,
                  LockType::ReadOnly);
    EXPECT_TRUE(Tabela2->eof());
    FechaBancoVenda();
}

TEST_F(Funcoes, ClosingAPairThatIsNotOpenIsAnError)
{
    AbreBanco();
    EXPECT_EQ(errorOf(FechaBanco), RuntimeError::ObjectClosed); // the recordset was never opened
    AbreBanco();
    Tabela1->Open(u"SELECT * FROM Pecas"_s, Conexao1.shared(), CursorType::Static,
                  LockType::ReadOnly);
    EXPECT_EQ(errorOf(FechaBanco), 0);
    EXPECT_EQ(errorOf(FechaBanco), RuntimeError::ObjectNotSet);
}

} // namespace
