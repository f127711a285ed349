#include "Form1Configurar.h"

#include "Form1principal.h"
#include "Funciones.h"
#include "Numbers.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "ui_Form1Configurar.h"

#include <array>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

// A task that is done in the eight lines; those without a key stay away.
struct LineTask
{
    QString section;
    QStringList keys;
    QStringList labels;
    int maxLength;
    QString legend;
};

constexpr int Lines = 8;
enum Mode
{
    Company = 1,
    EntryText,
    ExitText,
    Place,
    BackupPlace,
    NewUser,
    Password,
    Levels
};

// The legend's limit of the sheet lines is lower than what they take. Meant.
const LineTask& lineTask(int mode)
{
    static const QStringList digits{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s};
    static const std::array<LineTask, 5> tasks{{
        {u"Configurar"_s,
         {u"Titulo"_s, u"Endereco"_s, u"Email"_s, u"Telefone"_s, u"Site"_s},
         {u"Nome"_s, u"Endereço"_s, u"E-mail"_s, u"Telefone"_s, u"Site"_s},
         48,
         u"Configura  nome,endereço,e-mail,telefone e site da empresa."_s},
        {u"Configurar"_s, digits, digits, 116,
         u"Configura mensagem da ficha de entrada de cliente.Possui 8 linhas,máximo de caracteres "
         u"por linha = 110"_s},
        {u"Configurar"_s,
         {u"11"_s, u"12"_s, u"13"_s, u"14"_s, u"15"_s, u"16"_s, u"17"_s, u"18"_s},
         digits,
         116,
         u"Configura mensagem da ficha de saída de aparelho.Possui 8 linhas,máximo de caracteres "
         u"por linha = 110"_s},
        {{},
         {{}}, // the letter comes from the button
         {u"Letra"_s},
         1,
         u"Se for o unico computador deixe marcado a caixa Servidor.Caso este computador estiver "
         u"conectado a um servidor,desmarque a caixa servidor,digite a letra da unidade "
         u"mapeada(ex:F,G ou H,etc..),e clique em Aplicar."_s},
        {u"Backup"_s,
         {u"Pastabackup"_s},
         {u"Local"_s},
         112,
         u"Use está opção,para configurar o local onde será feito o backup(cópia de segurança)do "
         u"Banco de Dados.."_s},
    }};
    return tasks[static_cast<size_t>(mode - 1)];
}

const QString EntryCaption = u"&Texto ficha de entrada"_s;
const QString ExitCaption = u"&Texto ficha de saída"_s;
const QString BackupCaption = u"&Local backup"_s;
const QString BackupTip = u"Seleciona o local onde será armazenado a cópia de segurança"_s;
const QString LevelsCaption = u"&Nivel de Acesso"_s;
const QString LevelsTip = u"Define o nivel de acesso de cada formulario."_s;
const QString ApplyCaption = u"&Aplicar"_s;
const QString ApplyTip = u"Salva as alterações"_s;
const QString CloseCaption = u"&Fechar"_s;
const QString CancelCaption = u"&Cancelar"_s;
const QString DeleteUserCaption = u"&Exclui Usuario"_s;

} // namespace

// An error in a task ends the program; only the list of drives is silent.
Form1Configurar::Form1Configurar()
    : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1Configurar>())
{
    CommonDialog2.DialogTitle = u"Busca local do Banco de Dados....nome do B.D é GALTERIA19"_s;
    Command1.onClick([this](int Index) { Command1_Click(Index); }, OnError::End);
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Drive1.onChange([this] { Drive1_Change(); }, OnError::Silent);
    Check1.onClick([this] { Check1_Click(); }, OnError::End);
    Combo1.onClick([this] { Combo1_Click(); });
    for (TextBox* box : {&Text2, &Text3, &Text4}) {
        box->onChange([this] { ConfereCampos(); });
        box->onKeyPress([this](int& KeyAscii) { Password_KeyPress(KeyAscii); });
    }
}

void Form1Configurar::Form_Load()
{
    ModoConfigura = 0;
    setCaption(captionInUse(u"Configuração do Sistema      "_s));
    principal().StatusBar1.setPanel(2, u"Formulário de configuração"_s);
}

void Form1Configurar::Form_Unload()
{
    // A task left in the middle gives up its pair.
    closeIfOpen(Tabela4, Conexao4);
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1Configurar::Form_Deactivate()
{
    unload();
}

void Form1Configurar::Command1_Click(int Index)
{
    switch (Index) {
    case 0: beginLines(Company); break;
    case 1:
        // The button shows the task of the next press.
        if (Command1(1).caption() == EntryCaption) {
            Command1(1).setCaption(ExitCaption);
            beginLines(EntryText);
        } else {
            Command1(1).setCaption(EntryCaption);
            beginLines(ExitText);
        }
        break;
    case 2:
        beginLines(Place);
        Text1(0).setText(u"c"_s);
        break;
    case 3:
        if (Command1(3).caption() == DeleteUserCaption)
            deleteUser();
        else
            beginLines(BackupPlace);
        break;
    case 4: applyOrBeginLevels(); return;
    case 5: closeOrCancel(); return;
    case 6: beginNewUser(); break;
    default: beginPassword(); return;
    }
    Command1(4).setToolTipText(ApplyTip);
}

void Form1Configurar::beginLines(int mode)
{
    ModoConfigura = mode;
    MontaTela();
    Command1(4).setCaption(ApplyCaption);
    // A server has no letter to type.
    if (Text1(0).enabled())
        Text1(0).SetFocus();
    else
        Check1.SetFocus();
}

void Form1Configurar::applyOrBeginLevels()
{
    if (Command1(4).caption() == LevelsCaption) {
        beginLevels();
        return;
    }
    Command1(5).setCaption(CloseCaption);
    Frame1.setEnabled(false);
    AplicaConfiguracao();
}

void Form1Configurar::closeOrCancel()
{
    Frame1.setEnabled(false);
    LiberaBotoes();
    if (Command1(5).caption() == CloseCaption) {
        unload();
        return;
    }
    Check1.setVisible(false);
    Command1(5).setCaption(CloseCaption);
    Frame3.setVisible(false);
    restoreTask();
    if (ModoConfigura == NewUser)
        Tabela4->CancelUpdate();
    if (ModoConfigura >= NewUser)
        FechaBanco4();
}

// The doubling buttons as they are when no task is in progress.
void Form1Configurar::restoreTask()
{
    Command1(3).setCaption(BackupCaption);
    Command1(3).setToolTipText(BackupTip);
    Command1(4).setCaption(LevelsCaption);
    Command1(4).setToolTipText(LevelsTip);
}

void Form1Configurar::MontaTela()
{
    Label4.setVisible(false);
    for (int line = 0; line < Lines; ++line)
        Text1(line).setEnabled(true);
    Command1(5).setCaption(CancelCaption);
    Command1(4).setEnabled(true);
    Check1.setVisible(false);
    Frame1.setEnabled(false);
    TravaBotoes();
    if (ModoConfigura == Levels) {
        Frame2.setEnabled(true);
        openStatic(Tabela4, Conexao4, u"SELECT * FROM VALIDAR"_s);
        CarregaUsuarios();
        MostraUsuario();
        return;
    }
    const LineTask& task = lineTask(ModoConfigura);
    for (int line = 0; line < Lines; ++line) {
        const bool shown = line < task.keys.size();
        Text1(line).setVisible(shown);
        Text1(line).setMaxLength(task.maxLength);
        Label1(line).setVisible(true);
        Label1(line).setCaption(shown ? task.labels[line] : QString());
        if (shown && !task.section.isEmpty())
            Text1(line).setText(LeIni(task.section, task.keys[line], CaminhoIni()));
    }
    Label1(8).setVisible(true);
    Label1(8).setCaption(task.legend);
    if (ModoConfigura == Place) {
        Check1.setVisible(true);
        Check1.setValue(LeIni(u"Opcao"_s, u"Marque2"_s, CaminhoIni()) == u"1" ? 1 : 0);
    }
    Frame1.setEnabled(ModoConfigura == BackupPlace);
}

void Form1Configurar::AplicaConfiguracao()
{
    LiberaBotoes();
    switch (ModoConfigura) {
    case Company:
    case EntryText:
    case ExitText:
    case BackupPlace: {
        const LineTask& task = lineTask(ModoConfigura);
        for (int line = 0; line < task.keys.size(); ++line)
            GravaIni(task.section, task.keys[line], Text1(line).text(), CaminhoIni());
        if (ModoConfigura == Company) {
            TituloEmpresa = LeIni(u"Configurar"_s, u"Titulo"_s, CaminhoIni());
            principal().setCaption(TituloEmpresa + u"          "_s + DocumentoEmpresa);
        }
        RestauraBotoes();
        break;
    }
    case Place:
        // The server's folder is shared so that it shows under the root of the mapped letter.
        GravaIni(u"Local"_s, u"Caminho"_s,
                 Text1(0).text() + u":\\Arquivos de programas\\Vorbelo\\GALTERIA1.mdb"_s,
                 CaminhoIni());
        RestauraBotoes();
        Check1.setVisible(false);
        break;
    case NewUser: applyNewUser(); break;
    case Password: applyPassword(); break;
    case Levels: applyLevels(); break;
    default: break;
    }
}

void Form1Configurar::EscondeCampos()
{
    for (int line = 0; line < Lines; ++line) {
        Text1(line).setVisible(false);
        Label1(line).setVisible(false);
    }
    Label1(8).setVisible(false);
}

void Form1Configurar::LiberaBotoes()
{
    setEnabled(Command1, 0, 7, true);
    Frame2.setEnabled(false);
}

void Form1Configurar::TravaBotoes()
{
    setEnabled(Command1, {0, 1, 2, 3, 6, 7}, false);
}

void Form1Configurar::RestauraBotoes()
{
    Command1(4).setEnabled(true);
    Command1(5).setCaption(CloseCaption);
    restoreTask();
}

void Form1Configurar::Text1_KeyPress(int, int& KeyAscii)
{
    TravaBotoes();
    Command1(4).setEnabled(true);
    enterAsTab(KeyAscii);
}

void Form1Configurar::Drive1_Change()
{
    Text1(0).setText(Drive1.drive());
}

// Ticked takes effect at once; unticked only readies the letter, which "&Aplicar" writes.
void Form1Configurar::Check1_Click()
{
    GravaIni(u"Opcao"_s, u"Marque2"_s, QString::number(Check1.value()), CaminhoIni());
    const bool isServer = LeIni(u"Opcao"_s, u"Marque2"_s, CaminhoIni()) == u"1";
    Check1.setValue(isServer ? 1 : 0);
    if (isServer) {
        CaminhoLocal = LeIni(u"Local"_s, u"Caminho2"_s, CaminhoIni());
        GravaIni(u"Local"_s, u"Caminho"_s, CaminhoLocal, CaminhoIni());
    }
    Text1(0).setEnabled(!isServer);
    Command1(4).setEnabled(!isServer);
    principal().Command1(5).setEnabled(isServer);
    principal().mnubackup.setEnabled(isServer);
}
