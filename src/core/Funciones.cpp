#include "Funciones.h"

#include "FaultLog.h"
#include "Form1principal.h"
#include "GateFrames.h"
#include "HostPaths.h"
#include "ListMark.h"
#include "MsgBox.h"
#include "ProfileFile.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Funciones {
namespace {

constexpr int Backspace = 8;

// An empty path comes from the settings file, and the box has to name it.
QString whyNoPath()
{
    const QFileInfo file(CaminhoIni());
    const QString name = QDir::toNativeSeparators(file.filePath());
    if (!file.exists())
        return u"O arquivo de configuração %1 não existe."_s.arg(name);
    if (!file.isFile() || !file.isReadable())
        return u"O arquivo de configuração %1 não pode ser lido."_s.arg(name);
    return u"O arquivo de configuração %1 não diz onde está o Banco de Dados: falta \"Caminho\" na "
           u"seção [Local]."_s.arg(name);
}

void openMainFile(ObjectVariable<Connection>& connection, ObjectVariable<Recordset>& table)
{
    // Read anew at each opening, so that a new path serves the next form without a restart.
    CaminhoBanco = LeIni(u"Local"_s, u"Caminho"_s, CaminhoIni());
    connection.create();
    table.create();
    if (CaminhoBanco.isEmpty())
        throw RuntimeError(RuntimeError::EngineFault, whyNoPath());
    connection->Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + CaminhoBanco);
}

void closePair(ObjectVariable<Connection>& connection, ObjectVariable<Recordset>& table)
{
    table->Close();
    connection->Close();
    table.setNothing();
    connection.setNothing();
}

void showConnectionError(const RuntimeError& error)
{
    faultlog::note(faultlog::Kind::RefusedOpen, runningForm(), error);
    MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical, u"conecxão"_s);
}

void showRestoreAdvice()
{
    MsgBox(u"Restaure o Banco de Dados ou Localize utilizando o Botão Localizar na tela de "
           u"configuração do Sistema,depois reinicie o programa."_s);
}

// Leaves what is needed to find the database: the configuration and the exit.
void limitMainWindow()
{
    Form1principal& window = principal();
    setEnabled(window.Command1, 0, 11, false);
    setEnabled(window.Command1, {6, 7}, true);
    window.mnucadastro.setEnabled(false);
    window.mnupedido.setEnabled(false);
    window.mnubackup.setEnabled(false);
}

QString passCharacters(int keyAscii, QStringView characters)
{
    if (keyAscii == Backspace || characters.contains(QChar(keyAscii)))
        return QString::number(keyAscii);
    return u"0"_s;
}

bool isDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// Modulus 11 with weights 2, 3, 4 ... from the right.
QString digitOfCPF(const QString& digits)
{
    int sum = 0;
    int weight = 2;
    for (auto digit = digits.crbegin(); digit != digits.crend(); ++digit)
        sum += weight++ * digit->digitValue();
    const int rest = sum % 11;
    return QString::number(rest < 2 ? 0 : 11 - rest);
}

} // namespace

void resetShared()
{
    for (auto* table : {&Tabela1, &Tabela2, &Tabela3, &Tabela4, &Tabela5})
        table->setNothing();
    for (auto* connection : {&Conexao1, &Conexao2, &Conexao3, &Conexao4, &Conexao5})
        connection->setNothing();
    for (auto* text : {&CaminhoBanco, &CaminhoLocal, &TituloEmpresa, &DocumentoEmpresa,
                       &EnderecoEmpresa, &EmailEmpresa, &TelefoneEmpresa, &SiteEmpresa})
        text->clear();
    LinhasFicha.fill({});
    FichaCopiada.fill({});
    for (auto* number : {&TamanhoDocumento, &Modo, &Contador, &ContadorLista,
                         &ContadorListaAnterior, &QuantidadeItens, &FlagRecarga, &ModoConfigura})
        *number = 0;
    NumeroFicha = 0;
}

QString CaminhoIni()
{
    return applicationFolder() + u"/Banco.ini"_s;
}

QString LeIni(const QString& section, const QString& key, const QString& path)
{
    constexpr int BufferSize = 255;
    return readProfileString(section, key, {}, BufferSize, path);
}

void GravaIni(const QString& section, const QString& key, const QString& value, const QString& path)
{
    // A write that fails goes unnoticed, and is meant to: the next read shows what stands there.
    writeProfileString(section, key, value, path);
}

void readCompany()
{
    TituloEmpresa = LeIni(u"Configurar"_s, u"Titulo"_s, CaminhoIni());
    DocumentoEmpresa = LeIni(u"Configurar"_s, u"CPFCGC"_s, CaminhoIni());
    TamanhoDocumento = static_cast<int>(DocumentoEmpresa.size());
}

void AbreBanco()
try {
    openMainFile(Conexao1, Tabela1);
} catch (const RuntimeError& error) {
    showConnectionError(error);
    limitMainWindow();
    showRestoreAdvice();
}

void AbreBancoVenda()
{
    // A list that the main file knows as booked already is emptied before it is seen.
    setListMarkResolver([] { return hostPath(LeIni(u"Local"_s, u"Caminho"_s, CaminhoIni())); });
    Conexao2.create();
    Tabela2.create();
    // The list of the sale in progress stays on this computer, wherever the main file lies.
    Conexao2->Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + applicationFolder() +
                   u"/MIRANDEL1.mdb"_s);
}

void AbreBanco3()
{
    openMainFile(Conexao3, Tabela3);
}

void AbreBanco4()
try {
    openMainFile(Conexao4, Tabela4);
} catch (const RuntimeError& error) {
    showConnectionError(error);
    showRestoreAdvice();
}

void AbreBanco5()
try {
    openMainFile(Conexao5, Tabela5);
} catch (const RuntimeError& error) {
    showConnectionError(error);
}

void FechaBanco()
{
    closePair(Conexao1, Tabela1);
}

void FechaBancoVenda()
{
    closePair(Conexao2, Tabela2);
}

void FechaBanco3()
{
    closePair(Conexao3, Tabela3);
}

void FechaBanco4()
{
    closePair(Conexao4, Tabela4);
}

void FechaBanco5()
{
    closePair(Conexao5, Tabela5);
}

QString SoNumero(int KeyAscii)
{
    return passCharacters(KeyAscii, u"0123456789");
}

QString SoValor(int KeyAscii)
{
    return passCharacters(KeyAscii, u",.0123456789");
}

QString DigitoCGC(const QString& digits)
{
    if (digits.isEmpty() || !isDigits(digits))
        return {};
    int sum = 0;
    int weight = 2;
    for (auto digit = digits.crbegin(); digit != digits.crend(); ++digit) {
        sum += weight * digit->digitValue();
        weight = weight == 9 ? 2 : weight + 1;
    }
    const int check = 11 - sum % 11;
    return QString::number(check >= 10 ? 0 : check);
}

bool ValidaCGC(const QString& document)
{
    return document.size() == 14 && DigitoCGC(Left(document, 12)) == Mid(document, 13, 1) &&
           DigitoCGC(Left(document, 13)) == Mid(document, 14, 1);
}

bool ValidaCPF(const QString& document)
{
    const QString head = Left(document, 9);
    if (head.size() < 9 || !isDigits(head))
        return false;
    const QString first = digitOfCPF(head);
    return first + digitOfCPF(head + first) == Right(document, 2);
}

} // namespace Funciones
