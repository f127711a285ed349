#include "Form1principal.h"

#include "Application.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "PreviousInstance.h"
#include "Program.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Shell.h"
#include "SiteAddress.h"
#include "ui_Form1principal.h"

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

void openForm(const QString& formName, ShowStyle style)
{
    FormRegistry::instance().get(formName).show(style);
}

void openPage(const QString& path)
{
    Shell(u"explorer "_s + siteAddress(path), 2);
}

// The words beside a picture button are dimmed with it, whoever turns it off.
class DimmedWithButton : public QObject
{
public:
    DimmedWithButton(QWidget& label, QWidget& button)
        : QObject(&label), label_(label), button_(button)
    {
        button_.installEventFilter(this);
        label_.setEnabled(button_.isEnabled());
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::EnabledChange)
            label_.setEnabled(button_.isEnabled());
        return false;
    }

private:
    QWidget& label_;
    QWidget& button_;
};

// The labels 12 and 13 stand crosswise beside their buttons, and are meant to.
int labelBeside(int button)
{
    switch (button) {
    case 12: return 13;
    case 13: return 12;
    default: return button;
    }
}

} // namespace

Form1principal::Form1principal()
    : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1principal, QMainWindow>())
{
    // The icons lie in a static library, which the linker takes only for a name that is asked for.
    Q_INIT_RESOURCE(icons);
    setNeverLoadsAgain();
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Command2.onClick([this](int Index) { Command2_Click(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    bindMenus();
}

void Form1principal::bindMenus()
{
    const auto opens = [](Menu& entry, const QString& formName, ShowStyle style) {
        entry.onClick([formName, style] { openForm(formName, style); });
    };
    opens(mnucliente, u"Form1Cli"_s, ShowStyle::Modal);
    opens(mnufornecedor, u"Form1For"_s, ShowStyle::Modal);
    opens(mnupecacess, u"Form1Pec"_s, ShowStyle::Modal);
    opens(mnubuscacli, u"Buscacli"_s, ShowStyle::Modeless);
    opens(mnubuscafor, u"Buscafornecedor"_s, ShowStyle::Modeless);
    opens(mnupec, u"Form1pecabusca"_s, ShowStyle::Modeless);
    opens(mnupecas, u"Form1pedido"_s, ShowStyle::Modal);
    opens(mnumanutencao, u"Form1manutencao"_s, ShowStyle::Modal);
    opens(mnuconfigura, u"Form1Configurar"_s, ShowStyle::Modal);
    opens(mnurelatorio, u"Form1relatorio"_s, ShowStyle::Modal);
    opens(mnusobre, u"frmAbout"_s, ShowStyle::Modeless);
    mnubackup.onClick([this] { mnubackup_Click(); });
    mnurestaura.onClick([this] { mnurestaura_Click(); });
    mnuservidor.onClick([this] { mnuservidor_Click(); });
    mnueeprom.onClick([] { openPage(u"/eeprom.asp"_s); });
    mnuajuda.onClick([] { openPage(u"/downloads/Programacliente.htm"_s); });
    mnusair.onClick([this] { mnusair_Click(); });
}

QString Form1principal::LegendaPrincipal()
{
    constexpr int LengthCPF = 11;
    if (TamanhoDocumento == LengthCPF)
        return TituloEmpresa + u"    CPF "_s + Format(DocumentoEmpresa, formats::CaptionCpf);
    return TituloEmpresa + u"    CGC "_s + Format(DocumentoEmpresa, formats::CaptionCgc);
}

void Form1principal::Form_Load()
try {
    StatusBar1.setPanel(3, u"Versão "_s + program::version());
    if (previousInstance()) {
        for (Form* loaded : FormRegistry::instance().loadedForms())
            loaded->unload();
        endProgram(EndReason::SecondInstance);
        return;
    }
    for (int index = 0; index <= Command1.ubound(); ++index)
        new DimmedWithButton(*Label1(labelBeside(index)).widget(), *Command1(index).widget());
    Command1(13).SetFocus();
    readCompany();
    setCaption(LegendaPrincipal());
} catch (const RuntimeError&) {
    // The caption stays as it stands, and the window serves.
}

void Form1principal::focusFirstButton()
{
    // In the order of Tab, which is the order of reading.
    QWidget* const window = this->window();
    for (QWidget* next = window->nextInFocusChain(); next != window;
         next = next->nextInFocusChain())
        if (next->isEnabled() && next->objectName().startsWith(u"Command1_"_s)) {
            next->setFocus();
            return;
        }
}

void Form1principal::Form_Unload()
{
    for (const QString& formName : {u"Form1Cli"_s, u"Form1For"_s, u"Form1Configurar"_s,
                                    u"Form1pedido"_s, u"Form1Pec"_s, u"Form1manutencao"_s})
        FormRegistry::instance().unload(formName);
}

void Form1principal::Command1_Click(int Index)
{
    switch (Index) {
    case 0: openWithStatus(u"Form1Cli"_s); break;
    case 1: openWithStatus(u"Form1For"_s); break;
    case 2: openWithStatus(u"Form1Pec"_s); break;
    case 3: openWithStatus(u"Form1pedido"_s); break;
    case 4: openWithStatus(u"Form1manutencao"_s); break;
    case 5: mnubackup_Click(); break;
    case 6: openWithStatus(u"Form1Configurar"_s); break;
    case 7: mnusair_Click(); break;
    case 8: openForm(u"Buscacli"_s, ShowStyle::Modeless); break;
    case 9: openForm(u"Buscafornecedor"_s, ShowStyle::Modeless); break;
    case 10: openWithStatus(u"Form1pecavenda"_s); break;
    case 11: openForm(u"Form1pecabusca"_s, ShowStyle::Modeless); break;
    case 12: openWithStatus(u"Form1servico"_s); break;
    case 13: logInOrOut(); break;
    case 14: openWithStatus(u"Form1Defeitos"_s); break;
    case 15: openWithStatus(u"Form1relatorio"_s); break;
    default: break;
    }
}

// The form that opens puts its own text into the panel.
void Form1principal::openWithStatus(const QString& formName)
{
    StatusBar1.setPanel(2, u"Aguarde processando"_s);
    openForm(formName, ShowStyle::Modal);
}

void Form1principal::Command2_Click(int Index)
{
    // The third box searches by telephone, the fourth box of the dialog.
    const int target = Index == 2 ? 3 : Index;
    Form& search = FormRegistry::instance().get(u"Buscacli"_s);
    // The change of the box runs the search; an empty text goes over, too.
    if (Control* box = search.control(u"Text1"_s, target))
        static_cast<TextBox*>(box)->setText(Text1(Index).text());
    search.show();
    auto* grid = static_cast<FlexGrid*>(search.control(u"MSFlexGrid1"_s, -1));
    if (grid && grid->visible() && grid->Rows() > 1)
        grid->SetFocus();
}

void Form1principal::Text1_KeyPress(int, int& KeyAscii)
{
    enterAsTab(KeyAscii);
}

void Form1principal::mnuservidor_Click()
{
    CaminhoLocal = LeIni(u"Local"_s, u"Caminho2"_s, CaminhoIni());
    const Answer answer =
        MsgBox(u"Quer transformar este computador em um servidor de rede?"_s, BoxButtons::YesNo,
               BoxIcon::None, u"Restaura o caminho do Banco de Dados"_s);
    if (answer == Answer::Yes)
        GravaIni(u"Local"_s, u"Caminho"_s, CaminhoLocal, CaminhoIni());
}

void Form1principal::mnusair_Click()
{
    if (MsgBox(u"Quer fechar o programa ?"_s, BoxButtons::YesNo, BoxIcon::None,
               u"Sair do Sistema"_s) == Answer::Yes)
        endProgram(EndReason::ExitQuestion);
}

// The label tells the state; there is no other record of it.
void Form1principal::logInOrOut()
{
    if (Label1(12).caption() == u"Validar Usuario"_s)
        openForm(u"Form1log"_s, ShowStyle::Modal);
    else
        logOut();
}

void Form1principal::logOut()
{
    setEnabled(Command1, 0, 4, false);
    setEnabled(Command1, 8, 12, false);
    setEnabled(Command1, {14, 15, 6}, false);
    Label1(12).setCaption(u"Validar Usuario"_s);
    for (Menu* entry : {&mnucliente, &mnubuscacli, &mnufornecedor, &mnubuscafor, &mnupecacess,
                        &mnupec, &mnupecas, &mnumanutencao, &mnuconfigura, &mnurelatorio})
        entry->setEnabled(false);
    for (const int index : {0, 1, 2})
        Frame2(index).setEnabled(false);
    setCaption(LegendaPrincipal());
    StatusBar1.setPanel(1, u"Autor:Quelmo T.Varga"_s);
}
