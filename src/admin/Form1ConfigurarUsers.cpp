#include "Form1Configurar.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "Strings.h"

#include <array>

// The users of the system, their passwords and levels, on pair 4 from the beginning of a task to
// its "&Aplicar" or "&Cancelar". Passwords are kept as they are typed.

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LevelCount = 8;
constexpr int FirstLevelField = 2;
const QString Hidden = u"*"_s;

} // namespace

void Form1Configurar::beginNewUser()
{
    EscondeCampos();
    Frame3.setVisible(true);
    Combo1.setEnabled(false);
    ModoConfigura = 6;
    MontaUsuario();
    // The ticks of the user shown last are no new user's.
    for (int level = 0; level < LevelCount; ++level)
        Check2(level).setValue(0);
    Tabela4->AddNew();
    TravaBotoes();
    Command1(4).setCaption(u"&Aplicar"_s);
    Text2.SetFocus();
}

void Form1Configurar::beginPassword()
{
    EscondeCampos();
    Frame3.setVisible(true);
    Combo1.setEnabled(true);
    Frame2.setEnabled(true);
    ModoConfigura = 7;
    MontaUsuario();
    TravaBotoes();
    CarregaUsuarios();
    Command1(4).setCaption(u"&Aplicar"_s);
    // The tip of the levels stays here. Meant.
    Command1(4).setToolTipText(u"Define o nivel de acesso de cada formulario."_s);
    Command1(3).setEnabled(true);
    Command1(3).setCaption(u"&Exclui Usuario"_s);
    Command1(3).setToolTipText(u"Exclui o nome do usuario"_s);
    beginChoice();
}

void Form1Configurar::beginLevels()
{
    AbreBanco4();
    Frame3.setVisible(true);
    Command1(4).setCaption(u"&Aplicar"_s);
    ModoConfigura = 8;
    EscondeCampos();
    TravaBotoes();
    MontaTela();
    Command1(4).setToolTipText(u"Salva as alterações"_s);
    Combo1.setEnabled(true);
    beginChoice();
}

void Form1Configurar::MontaUsuario()
{
    const bool isNew = ModoConfigura == 6;
    AbreBanco4();
    Label4.setVisible(false);
    Check1.setVisible(false);
    Frame1.setEnabled(false);
    Frame2.setEnabled(true);
    Command1(5).setCaption(u"&Cancelar"_s);
    openStatic(Tabela4, Conexao4,
               isNew ? u"SELECT * FROM VALIDAR"_s : u"SELECT * FROM VALIDAR order by USUARIO"_s);
    if (!isNew) {
        CarregaUsuarios();
        MostraUsuario();
    }
    Text2.setPasswordChar(isNew ? QString() : Hidden);
    Text3.setPasswordChar(Hidden);
    Text4.setPasswordChar(Hidden);
    Label2(1).setCaption(isNew ? u"Usuario"_s : u"Senha"_s);
    Label2(2).setCaption(isNew ? u"Senha"_s : u"Nova senha"_s);
    Label2(3).setCaption(u"Confirma senha"_s);
    Label2(4).setCaption(u"Nivel de acesso"_s);
    LimpaSenhas();
    ConfereCampos();
}

// One is to be chosen. Without users there is nobody to change; the first one is added as a new
// user.
void Form1Configurar::beginChoice()
{
    if (Tabela4->RecordCount() != 0) {
        Combo1.SetFocus();
        return;
    }
    Frame2.setEnabled(false);
    setEnabled(Command1, {3, 4}, false);
}

void Form1Configurar::CarregaUsuarios()
{
    Combo1.Clear();
    if (Tabela4->RecordCount() == 0) {
        Command1(3).setEnabled(false);
        Frame2.setEnabled(false);
        return;
    }
    Tabela4->MoveFirst();
    // Not with Contador, whose last value bounds the lines of the next printed cash list.
    for (ContadorLista = 0; !Tabela4->eof(); Tabela4->MoveNext())
        if (const Field name = Tabela4->Fields(0); !name.isNull())
            Combo1.AddItem(name.text(), ContadorLista++);
    Tabela4->MoveFirst();
}

void Form1Configurar::MostraUsuario()
{
    if (Tabela4->RecordCount() == 0) {
        Command1(3).setEnabled(false);
        Frame2.setEnabled(false);
        return;
    }
    Text6.setText(Tabela4->Fields(0).textOrEmpty());
    Text7.setText(Tabela4->Fields(1).textOrEmpty());
    for (int level = 0; level < LevelCount; ++level) {
        const Value granted = Tabela4->Fields(FirstLevelField + level);
        // A Null shows as ticked here, and counts as false at the login. Meant.
        Check2(level).setValue(granted.isNull() || granted.isTrue() ? 1 : 0);
    }
}

void Form1Configurar::LimpaSenhas()
{
    for (TextBox* box : {&Text2, &Text3, &Text4})
        box->setText({});
}

void Form1Configurar::ConfereCampos()
{
    const bool filled =
        !Text2.text().isEmpty() && !Text3.text().isEmpty() && !Text4.text().isEmpty();
    if (ModoConfigura == 6)
        Command1(4).setEnabled(filled);
    else if (ModoConfigura == 7)
        Command1(4).setEnabled(filled && !Combo1.text().isEmpty());
}

// The first user whose name contains the chosen one is shown. Meant.
void Form1Configurar::Combo1_Click()
{
    if (Trim(Combo1.text()).isEmpty())
        return;
    try {
        Tabela4->MoveFirst();
        Tabela4->Find(likeCriterion(u"USUARIO"_s, Combo1.text()));
        MostraUsuario();
    } catch (const RuntimeError&) {
        // Nobody is chosen, and nobody can be changed.
        Combo1.setText({});
    }
    ConfereCampos();
}

void Form1Configurar::Password_KeyPress(int& KeyAscii)
{
    enterAsTab(KeyAscii);
}

// The user on show goes at once and without a question, if one was chosen: a name that was typed
// looks nobody up, and another one would go for it.
void Form1Configurar::deleteUser()
{
    if (Combo1.listIndex() < 0)
        return;
    RestauraBotoes();
    Combo1.setText({});
    inOnePiece({Conexao4}, [] { Tabela4->Delete(); });
    FechaBanco4();
    LiberaBotoes();
}

void Form1Configurar::storeLevels()
{
    for (int level = 0; level < LevelCount; ++level)
        Tabela4->Fields(u"NIVEL"_s + QString::number(level + 1)) = Check2(level).value();
}

void Form1Configurar::applyNewUser()
{
    if (Text3.text() != Text4.text()) {
        MsgBox(u"Senha não confere,digite novamente."_s);
        Text3.setText({});
        Text4.setText({});
        Command1(5).setCaption(u"&Cancelar"_s);
        TravaBotoes();
        Frame2.setEnabled(true);
        Text3.SetFocus();
        return;
    }
    // A second user of one name is added as it stands.
    inOnePiece({Conexao4}, [this] {
        Tabela4->Fields(u"USUARIO"_s) = Text2.text();
        Tabela4->Fields(u"SENHA"_s) = Text4.text();
        storeLevels();
        Tabela4->Update();
    });
    RestauraBotoes();
    FechaBanco4();
}

void Form1Configurar::applyPassword()
{
    if (Text2.text() != Text7.text() || Text3.text() != Text4.text()) {
        MsgBox(u"Senha não confere,digite novamente."_s);
        LimpaSenhas();
        TravaBotoes();
        Command1(5).setCaption(u"&Cancelar"_s);
        Command1(4).setEnabled(true);
        Frame2.setEnabled(true);
        Text2.SetFocus();
        return;
    }
    RestauraBotoes();
    inOnePiece({Conexao4}, [this] {
        Tabela4->Fields(u"SENHA"_s) = Text4.text();
        storeLevels();
        Tabela4->UpdateMerged();
    });
    CarregaUsuarios();
    MostraUsuario();
    FechaBanco4();
}

void Form1Configurar::applyLevels()
{
    RestauraBotoes();
    // Nobody is changed who was not chosen, though the first user's levels are on show.
    if (Combo1.listIndex() >= 0)
        inOnePiece({Conexao4}, [this] {
            storeLevels();
            Tabela4->UpdateMerged();
        });
    FechaBanco4();
    Frame3.setVisible(false);
}
