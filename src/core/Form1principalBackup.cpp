#include "Application.h"
#include "Form1principal.h"
#include "Funciones.h"
#include "HostPaths.h"
#include "MsgBox.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "SafetyCopy.h"
#include "Strings.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <functional>
#include <future>
#include <memory>

// The safety copy of the main file, and the way back from it. One copy under one name: each backup
// takes the place of the one before.

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

const QString CopyName = u"\\Copia.seguranca"_s;
const QString StandardName = u"GALTERIA1.mdb"_s;

// Nothing else is moved by it: the windows stay painted and no key acts.
void showProgress(const QString& sign, const QString& text)
{
    principal().setCaption(TituloEmpresa + sign + text);
    DoEvents();
}

void showBackup(const QString& text)
{
    showProgress(QString(9, u'>'), text);
}

// The work goes on beside the windows, which stay painted however long the disk takes, and the
// caption tells that it goes on. It touches no form and no recordset.
void doBeside(const std::function<void()>& work)
{
    using namespace std::chrono_literals;
    constexpr qint64 Second = 950; // milliseconds, so that each is seen
    const QString text = principal().caption();
    qint64 seconds = 0;
    QElapsedTimer clock;
    clock.start();
    std::future<void> done = std::async(std::launch::async, work);
    while (done.wait_for(5ms) != std::future_status::ready) {
        if (clock.elapsed() / Second > seconds) {
            seconds = clock.elapsed() / Second;
            principal().setCaption(text + u" (%1 s)"_s.arg(seconds));
        }
        DoEvents();
    }
    done.get();
}

QString backupFolder()
{
    return LeIni(u"Backup"_s, u"Pastabackup"_s, CaminhoIni());
}

// The file in this program's hand alone, from the compacting to the copy.
void backUp(const QString& work)
{
    const QString live = hostPath(EnderecoEmpresa);
    const QString folder = backupFolder();
    showBackup(u"Compactando o arquivo "_s + EnderecoEmpresa + u" ..."_s);
    std::unique_ptr<ExclusiveFile> file;
    doBeside([&] {
        file = std::make_unique<ExclusiveFile>(live);
        file->compactTo(work);
    });
    showBackup(u"Compactando o arquivo "_s + EnderecoEmpresa + u" ... "_s);
    doBeside([&] { file->takeOver(work); });
    showBackup(u"Arquivo compactado com sucesso!"_s);
    // The head of a name that is longer than the standard one goes before the copy's name; a
    // shorter one is an error. Meant.
    const QString name = QFileInfo(live).fileName();
    const QString head = Left(name, static_cast<int>(name.size() - StandardName.size()));
    const QString target = folder + head + CopyName;
    showBackup(target);
    showBackup(u"Transferindo Arquivos"_s);
    const QString copy = hostPath(target);
    doBeside([&] { file->copyTo(copy); });
    showBackup(u"Concluido"_s);
}

} // namespace

void Form1principal::mnubackup_Click()
{
    const Answer answer =
        MsgBox(u"Defina o local de Backup,se o local já foi definido Click Sim, caso contrario "
               u"Click Não: \nProssegue com o Backup?"_s,
               BoxButtons::YesNo, BoxIcon::None, u"Efetua Backup"_s);
    if (answer == Answer::Yes)
        EfetuaBackup();
}

void Form1principal::mnurestaura_Click()
{
    const Answer answer =
        MsgBox(u"Toda informação que foi colocado após o ultimo Backup serão "
               u"apagadas,continuar,Click Sim, caso contrario Click Não: \n"
               u"Prossegue com A Restauração?"_s,
               BoxButtons::YesNo, BoxIcon::None, u"Efetuar restauração do Banco de Dados"_s);
    if (answer == Answer::Yes)
        EfetuaRestauracao();
}

void Form1principal::EfetuaBackup()
{
    try {
        AbreBanco();
        Conexao1->Close();
        // The variable of the address holds the path until the next print reads the address again.
        EnderecoEmpresa = LeIni(u"Local"_s, u"Caminho"_s, CaminhoIni());
        const QString work = applicationFolder() + u"/temp.dat"_s;
        backUp(work);
        MsgBox(u"Operação concluída!"_s, BoxButtons::Ok, BoxIcon::Information, u"Backup"_s);
        QFile::remove(work);
    } catch (const RuntimeError& error) {
        tellError(error, u"Backup"_s);
    }
    setCaption(TituloEmpresa + u"    CPF\\CGC"_s + DocumentoEmpresa + u"   "_s +
               StatusBar1.panel(1) + u"  está usando"_s);
}

void Form1principal::EfetuaRestauracao()
{
    try {
        const QString live = hostPath(LeIni(u"Local"_s, u"Caminho"_s, CaminhoIni()));
        // No head of the file's name stands in it, other than at the backup. Meant.
        EnderecoEmpresa = backupFolder() + CopyName;
        const QString sign(11, u'>');
        showProgress(sign,
                     u"Restauração do banco de Dados o arquivo "_s + EnderecoEmpresa + u" ..."_s);
        const QString copy = hostPath(EnderecoEmpresa);
        const QString before = QFileInfo(live).path() + u"/Antes.restauracao"_s;
        doBeside([&] { restoreFromCopy(copy, live, before); });
        showProgress(sign,
                     u"Restauração do Banco de Dados concluida "_s + EnderecoEmpresa + u" ..."_s);
        MsgBox(u"Operação concluída,reinicie o programa."_s, BoxButtons::Ok, BoxIcon::Information,
               u"Backup"_s);
        AbreBanco();
        Conexao1->Close();
    } catch (const RuntimeError& error) {
        tellError(error, u"Backup"_s);
    }
    setCaption(TituloEmpresa);
}
