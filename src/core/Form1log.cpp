#include "Form1log.h"

#include "Form1principal.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1log.h"

#include <array>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

// What one level opens on the main window.
struct Level
{
    std::vector<int> buttons;
    std::vector<Menu Form1principal::*> menus;
    std::vector<int> frames;
};

const std::array<Level, 8>& levels()
{
    using Main = Form1principal;
    static const std::array<Level, 8> table{{
        {{0, 8}, {&Main::mnucliente, &Main::mnubuscacli}, {0, 1, 2}},
        {{1, 9}, {&Main::mnufornecedor, &Main::mnubuscafor}, {}},
        {{2, 11}, {&Main::mnupecacess, &Main::mnupec}, {}},
        {{3}, {&Main::mnupecas}, {}},
        {{4}, {&Main::mnumanutencao}, {}},
        {{6, 15}, {&Main::mnuconfigura, &Main::mnurelatorio}, {}},
        {{10}, {}, {}},
        {{12, 14}, {}, {}},
    }};
    return table;
}

// The first level stands behind the name and the password.
constexpr int FirstLevelField = 2;

void applyLevels()
{
    Form1principal& window = principal();
    int field = FirstLevelField;
    for (const Level& level : levels()) {
        const bool granted = Tabela4->Fields(field++).value().isTrue();
        for (const int index : level.buttons)
            window.Command1(index).setEnabled(granted);
        for (const auto menu : level.menus)
            (window.*menu).setEnabled(granted);
        for (const int index : level.frames)
            window.Frame2(index).setEnabled(granted);
    }
}

} // namespace

Form1log::Form1log() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1log>())
{
    Combo1.onClick([this] { Combo1_Click(); });
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Text1.onKeyPress([this](int& KeyAscii) { Text1_KeyPress(KeyAscii); });
}

void Form1log::Form_Load()
try {
    AbreBanco4();
    Tabela4->Open(u"SELECT * FROM VALIDAR order by USUARIO"_s, Conexao4.shared(),
                  CursorType::Static, LockType::Optimistic);
    EnchePessoas();
    MostraSenha();
    Text1.setText({});
    readCompany();
} catch (const RuntimeError&) {
    // Without users nobody gets in; the frame is the way out.
    setEnabled(Command1, {0, 1}, false);
    Combo1.setEnabled(false);
}

// The table refuses a user without a name: such a row would add empty entries for ever.
void Form1log::EnchePessoas()
{
    for (Contador = 0; !Tabela4->eof(); ++Contador) {
        const Value name = Tabela4->Fields(0);
        Combo1.AddItem(name.textOrEmpty(), Contador);
        if (!name.isNull())
            Tabela4->MoveNext();
    }
    Tabela4->MoveFirst();
}

void Form1log::MostraSenha()
{
    Text2.setText(Tabela4->Fields(0).textOrEmpty());
    Text3.setText(Tabela4->Fields(1).textOrEmpty());
}

// The first name in order that contains the chosen one is taken, which may be a longer name; the
// check of the name then refuses it. Meant.
void Form1log::Combo1_Click()
{
    if (Trim(Combo1.text()).isEmpty())
        return;
    Tabela4->MoveFirst();
    Tabela4->Find(likeCriterion(u"USUARIO"_s, Combo1.text()));
    MostraSenha();
}

void Form1log::Command1_Click(int Index)
{
    switch (Index) {
    case 0: enter(); break;
    case 1: leave(); break;
    default: break;
    }
}

void Form1log::enter()
{
    // The levels are those of the current row; after a look-up that failed the boxes may hold
    // another one.
    MostraSenha();
    if (Combo1.text() != Text2.text() || Text1.text() != Text3.text()) {
        MsgBox(u"Senha não confere,tente outra vez."_s, BoxButtons::Ok, BoxIcon::Exclamation);
        Text1.SetFocus();
        return;
    }
    applyLevels();
    Form1principal& window = principal();
    window.Label1(12).setCaption(u"Desativar Usuario"_s);
    window.StatusBar1.setPanel(1, u"Usuario: "_s + Combo1.text());
    window.setCaption(Form1principal::LegendaPrincipal() + u"   "_s + window.StatusBar1.panel(1) +
                      u"  está usando"_s);
    FechaBanco4();
    unload();
    window.focusFirstButton();
}

void Form1log::leave()
{
    FechaBanco4();
    principal().Label1(12).setCaption(u"Validar Usuario"_s);
    unload();
}

void Form1log::Text1_KeyPress(int& KeyAscii)
{
    enterAsTab(KeyAscii);
}
