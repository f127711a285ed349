#include "Form1Defeitos.h"

#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1Defeitos.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int BoxCount = 16;

const std::vector<GridField>& columns()
{
    static const std::vector<GridField> list{{0, u"Marca"_s, 870},
                                             {1, u"Modelo"_s, 870},
                                             {2, u"Defeito"_s, 3000},
                                             {3, u"Solução"_s, 2800}};
    return list;
}

// Behind them stands one without heading and field.
constexpr int EmptyColumn = 4;
constexpr int EmptyColumnTwips = 100;

} // namespace

Form1Defeitos::Form1Defeitos() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1Defeitos>())
{
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Text2.onKeyPress([this](int Index, int& KeyAscii) { Text2_KeyPress(Index, KeyAscii); });
    Text3.onChange([this] { Text3_Change(); }, OnError::Silent);
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); }, OnError::Silent);
}

// Stars are stored for an empty box, and are real content of the row from then on.
std::vector<BoxField> Form1Defeitos::campos()
{
    return {
        {0, Text2(0), asText, repeated(7, u'*')},
        {1, Text2(1), asText, repeated(7, u'*')},
        {2, Text2(2), asText, repeated(23, u'*')},
        {3, Text2(3), asText, repeated(23, u'*')},
    };
}

void Form1Defeitos::Form_Load()
try {
    rowOnShow_ = 0;
    setCaption(captionInUse(u"Registro de Defeitos Solucionados     "_s));
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
    AbreBanco();
    openStatic(Tabela1, Conexao1, u"SELECT * FROM DEFEITO order by MARCA"_s);
    LimpaCampos();
    setHeadings(MSFlexGrid1, columns());
    MSFlexGrid1.setColWidth(EmptyColumn, EmptyColumnTwips);
    Modo = 0;
    if (Tabela1->RecordCount() != 0) {
        MostraDefeito();
        MontaGrid();
    }
    AtualizaContagem();
    TravaCampos();
} catch (const RuntimeError& error) {
    tellFault(error, u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
}

void Form1Defeitos::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1Defeitos::LimpaCampos()
{
    clear(Text2, 0, 3);
}

void Form1Defeitos::TravaCampos()
{
    setLocked(Text2, 0, 3, true);
    MSFlexGrid1.setEnabled(true);
    principal().StatusBar1.setPanel(2, u"Formulário de Cadastro de Defeitos"_s);
}

void Form1Defeitos::LiberaCampos()
{
    setLocked(Text2, 0, 3, false);
}

void Form1Defeitos::AtualizaContagem()
{
    const int count = Tabela1->RecordCount();
    Text1(BoxCount).setText(Format(count, formats::Code));
    MSFlexGrid1.setEnabled(count != 0);
    if (count != 0)
        return;
    LimpaCampos();
    emptyGrid(MSFlexGrid1);
    Text1(BoxCount).setText(u"0000000"_s);
    setEnabled(Command1, 2, 7, false);
    setEnabled(Command1, 9, 13, false);
}

void Form1Defeitos::MostraDefeito()
try {
    showFields(Tabela1, campos());
    rowOnShow_ = Tabela1->AbsolutePosition();
} catch (const RuntimeError& error) {
    // A row that is out of reach leaves its text in view.
    if (error.number() == RuntimeError::NoCurrentRecord)
        LimpaCampos();
}

void Form1Defeitos::MontaGrid()
try {
    if (Modo == 1)
        Tabela1->MoveFirst();
    if (Modo == 2)
        return;
    refillGrid(MSFlexGrid1, Tabela1, columns());
    Tabela1->MoveLast();
    principal().StatusBar1.setPanel(2, u"Formulário de Cadastro de Defeitos"_s);
    if (Modo == 0)
        Tabela1->MoveFirst();
    Modo = 0;
} catch (const RuntimeError&) {
    // Ends silently.
}

void Form1Defeitos::ExcluiDefeito()
try {
    try {
        inOnePiece({Conexao1}, [] { Tabela1->Delete(); });
        Tabela1->MovePrevious();
        if (Tabela1->bof())
            Tabela1->MoveNext();
        Modo = 1;
        MontaGrid();
    } catch (const RuntimeError&) {
        // What another station wrote comes into view; asked for again, the entry goes.
        refillGrid(MSFlexGrid1, Tabela1, columns());
    }
    MostraDefeito();
    AtualizaContagem(); // switches the navigation off where that was the last entry
} catch (const RuntimeError&) {
    // Ends silently.
}

void Form1Defeitos::SalvaDefeito()
try {
    inOnePiece({Conexao1}, [this] {
        storeFields(Tabela1, campos());
        Tabela1->UpdateMerged();
    });
    backToBrowsing();
    rowOnShow_ = Tabela1->AbsolutePosition();
    if (Modo == 1)
        Tabela1->MoveLast();
    AtualizaContagem();
    MontaGrid(); // leaves the last row current while the boxes keep the entry just stored
    Modo = 0;
} catch (const RuntimeError&) {
    // Ends silently. What was not stored leaves the boxes open, to be tried again.
}

void Form1Defeitos::Command1_Click(int Index)
{
    switch (Index) {
    case button::Incluir: Incluir(); break;
    case button::Salvar: SalvaDefeito(); break;
    case button::Editar: Editar(); break;
    case button::Excluir: Excluir(); break;
    case button::Fechar: unload(); break;
    case button::Cancela: Cancela(); break;
    case button::Anterior:
    case button::Posterior:
    case button::Primeira:
    case button::Ultima: move(Index); break;
    default: // the entries are neither searched for, copied nor printed
        break;
    }
}

// Other than in the sister forms the buttons of the bar stay on at the first and at the last entry.
void Form1Defeitos::move(int Index)
{
    switch (Index) {
    case button::Anterior:
        if (!Tabela1->bof()) // where a step back to the first failed before
            Tabela1->MovePrevious();
        if (Tabela1->bof())
            Tabela1->MoveNext();
        break;
    case button::Posterior:
        if (!Tabela1->eof())
            Tabela1->MoveNext();
        if (Tabela1->eof())
            Tabela1->MovePrevious();
        break;
    case button::Primeira: Tabela1->MoveFirst(); break;
    default: Tabela1->MoveLast();
    }
    MostraDefeito();
}

void Form1Defeitos::Incluir()
{
    Tabela1->AddNew();
    LimpaCampos();
    openBoxes();
    Modo = 1;
    Text2(0).SetFocus();
}

void Form1Defeitos::Editar()
{
    // After a save another row is current than the one on show; nobody's text lands in it unseen.
    if (Tabela1->AbsolutePosition() != rowOnShow_)
        MostraDefeito();
    openBoxes();
    MSFlexGrid1.setEnabled(false);
    Command1(button::Excluir).setEnabled(true);
    Modo = 1;
    Text2(0).SetFocus();
}

void Form1Defeitos::Excluir()
{
    const Answer answer =
        MsgBox(u"Deseja Realmente Excluir este Arquivo ?"_s, BoxButtons::YesNo, BoxIcon::Question);
    backToBrowsing();
    if (answer != Answer::Yes)
        return;
    ExcluiDefeito();
    TravaCampos();
}

void Form1Defeitos::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    MostraDefeito();
    AtualizaContagem();
    TravaCampos();
}

void Form1Defeitos::backToBrowsing()
{
    setEnabled(Command1, 10, 13, true);
    setEnabled(Command1, {button::Incluir, button::Editar, button::Fechar}, true);
    TravaCampos();
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
}

void Form1Defeitos::openBoxes()
{
    LiberaCampos();
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
    setEnabled(Command1, {button::Incluir, button::Editar, button::Excluir, button::Fechar}, false);
    setEnabled(Command1, 10, 13, false);
}

// The first entry whose brand holds that of the row comes, not necessarily the row that was
// clicked. Meant.
void Form1Defeitos::MSFlexGrid1_Click()
{
    const bool isOpen = Command1(button::Salvar).enabled();
    if (!onDataRow(MSFlexGrid1) || isOpen)
        return;
    // Emptied first, so that the brand clicked last is looked up again.
    Text3.setText({});
    Text3.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0));
}

void Form1Defeitos::Text3_Change()
{
    const QString brand = Text3.text();
    if (Trim(brand).isEmpty())
        return;
    lookUpOrStay(Tabela1, u"MARCA"_s, brand);
    MostraDefeito();
}

// By their texts: Enter moves on from a solution that reads like one of the other boxes, as while
// all are empty; in any other it makes a new line.
void Form1Defeitos::Text2_KeyPress(int Index, int& KeyAscii)
{
    const bool movesOn = firstWithText(Text2, Index, {0, 1, 2}) >= 0;
    if (movesOn && enterAsTab(KeyAscii))
        KeyAscii = 0;
}
