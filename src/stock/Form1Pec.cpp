#include "Form1Pec.h"

#include "EventTransactions.h"
#include "Form1pecabusca.h"
#include "Form1principal.h"
#include "FormRegistry.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1Pec.h"

#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

struct Campo
{
    QString name;
    int position;
    int box;
    QString filler; // stored for an empty box, and real content of the row from then on
};

const std::array<Campo, 6>& campos()
{
    static const std::array<Campo, 6> list{{
        {u"CODIGO"_s, 0, 3, repeated(7, u'*')},
        {u"LOCAL"_s, 1, 4, repeated(7, u'*')},
        {u"ESTOQUE"_s, 2, 2, u"0"_s},
        {u"DESCRICAO"_s, 3, 0, repeated(15, u'*')},
        {u"VALOR"_s, 4, 5, u"0,00"_s},
        {u"EQUIVALENTE"_s, 5, 1, repeated(10, u'*')},
    }};
    return list;
}

const QString PartsByCode = u"SELECT * FROM Pecas order by codigo"_s;

constexpr int PositionPrice = 4;
constexpr int BoxPrice = 5;
constexpr int BoxCode = 3;

} // namespace

Form1Pec::Form1Pec() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1Pec>())
{
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text1.onLostFocus([this](int Index) { Text1_LostFocus(Index); });
    Text2.onChange([this] { Text2_Change(); }, OnError::Silent);
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); });
    MSFlexGrid1.onKeyPress([this](int& KeyAscii) { MSFlexGrid1_KeyPress(KeyAscii); });
}

void Form1Pec::Form_Load()
try {
    FlagRecarga = 0;
    newRow_ = false;
    newRowUndone_ = false;
    isOvertaken_ = false;
    setEnabled(Command1, {1, 3, 9}, false);
    setCaption(u"Cadastro de Peças e Acessórios      "_s + principal().StatusBar1.panel(1) +
               u"  está usando"_s);
    FormRegistry::instance().unload(QString::fromLatin1(Form1pecabusca::Name));
    AbreBanco();
    Tabela1->Open(PartsByCode, Conexao1.shared(), CursorType::Static, LockType::Optimistic);
    LimpaFichaPeca();
    const std::array widths{800, 800, 700, 4300, 800};
    const std::array headings{u"Código"_s, u"Local"_s, u"Quant"_s, u"Descrição"_s, u"Valor"_s};
    for (int column = 0; column < 5; ++column) {
        MSFlexGrid1.setColWidth(column, widths[column]);
        MSFlexGrid1.setTextMatrix(0, column, headings[column]);
    }
    if (Tabela1->RecordCount() != 0) {
        MostraFichaPeca();
        CarregaGridPecas();
    }
    ContaPecas();
    TravaFichaPeca();
} catch (const RuntimeError& error) {
    MsgBox(u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
    MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical);
}

void Form1Pec::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1Pec::Form_Deactivate()
{
    FechaBanco();
    unload();
}

void Form1Pec::MostraFichaPeca()
{
    LimpaFichaPeca();
    filled_ = shownValues(Tabela1);
    for (const Campo& campo : campos()) {
        const Value value = Tabela1->Fields(campo.position).value();
        if (campo.position != PositionPrice)
            Text1(campo.box).setText(value.textOrEmpty());
        else // the point is meant: a Null price shows so here, and only here
            Text1(BoxPrice).setText(value.isNull() ? u"0.00"_s : Format(value, formats::Money));
    }
    MSFlexGrid1.setTabStop(true);
}

bool Form1Pec::GravaFichaPeca()
{
    if (isOvertaken_)
        return false;
    bool stored = false;
    try {
        if (newRowUndone_)
            beginNewRow();
        fillRow();
        Tabela1->Update();
        stored = commitWrites();
        if (!stored) {
            newRowUndone_ = newRow_;
            takeEditAnew();
            if (Tabela1->eof() && Tabela1->RecordCount() != 0)
                Tabela1->MoveLast();
            return false;
        }
        newRow_ = false;
        if (FlagRecarga == 1)
            Tabela1->MoveLast();
        Command1(4).setEnabled(true);
        ContaPecas();
        CarregaGridPecas(); // leaves the last row current while the boxes keep the part just stored
        FlagRecarga = 0;
    } catch (const RuntimeError&) {
        // Ends silently.
        if (!stored)
            takeEditAnew();
    }
    return stored;
}

void Form1Pec::fillRow()
{
    for (const Campo& campo : campos()) {
        const QString text = Text1(campo.box).text();
        Tabela1->Fields(campo.name) = text.isEmpty() ? campo.filler : text;
    }
}

// A row that another station wrote meanwhile is taken as it is stored now: the next try stores what
// was typed here, and leaves alone what was not.
void Form1Pec::takeEditAnew()
try {
    if (newRow_)
        return;
    Tabela1->retakeVersion();
    isOvertaken_ = isOvertaken(Tabela1, filled_, [this] { fillRow(); });
} catch (const RuntimeError&) {
    // The row cannot be read either; the next try fails as this one did.
}

// What the other station wrote comes into view with the next row shown.
void Form1Pec::showOvertaken()
{
    Tabela1 = openedAnew(PartsByCode, Conexao1);
    isOvertaken_ = false;
    lookUpOrStay(Tabela1, u"CODIGO"_s, Text1(BoxCode).text());
}

void Form1Pec::ApagaPeca()
try {
    if (isOvertaken_) { // to be looked at before it goes
        showOvertaken();
        showCurrentRow();
        return;
    }
    Tabela1->Delete();
    if (!commitWrites()) { // the part is back, and still stands in the grid
        showUndone();
        return;
    }
    Tabela1->MovePrevious();
    if (Tabela1->bof()) {
        Tabela1->MoveNext();
        Command1(11).setEnabled(true);
        Command1(10).setEnabled(false);
        if (Tabela1->eof())
            setEnabled(Command1, {10, 11}, false);
    }
    FlagRecarga = 1;
    CarregaGridPecas();
    MostraFichaPeca();
    ContaPecas();
} catch (const RuntimeError&) {
    // The usual way here: the last part of the table is gone and no row is left to show.
    MSFlexGrid1.setRows(2);
    for (int column = 0; column < 5; ++column)
        MSFlexGrid1.setTextMatrix(MSFlexGrid1.Rows() - 1, column, {});
    MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
    showCurrentRow();
    ContaPecas();
    setEnabled(Command1, 1, 7, false);
}

// The part as it is stored, without what was typed before it was to go. Where it cannot be read the
// boxes stay: empty ones would be stored over it.
void Form1Pec::showUndone()
try {
    shownValues(Tabela1);
    MostraFichaPeca();
} catch (const RuntimeError&) {
    // Out of reach, as the user was just told.
}

// The row that is current after a cancelled or deleted one; empty boxes where there is none.
void Form1Pec::showCurrentRow()
try {
    MostraFichaPeca();
} catch (const RuntimeError&) {
    LimpaFichaPeca();
}

void Form1Pec::ContaPecas()
{
    const int count = Tabela1->RecordCount();
    Text1(16).setText(Format(count, formats::Code));
    if (count != 0) {
        MSFlexGrid1.setTabStop(true);
        return;
    }
    LimpaFichaPeca();
    Text1(16).setText(u"0000000"_s);
    MSFlexGrid1.setTabStop(false);
    Text1(BoxCode).setText(u"0000000"_s);
    setEnabled(Command1, 1, 7, false);
    setEnabled(Command1, 9, 13, false);
}

void Form1Pec::LimpaFichaPeca()
{
    MSFlexGrid1.setTabStop(false);
    clear(Text1, 0, 5);
    Text1(BoxPrice).setText(u"0,00"_s);
}

void Form1Pec::DesligaBotoes()
{
    setEnabled(Command1, 0, 13, false);
}

void Form1Pec::LigaBotoes()
{
    setEnabled(Command1, 0, 13, true);
    setEnabled(Command1, {1, 3, 9, 7, 6}, false);
}

void Form1Pec::TravaFichaPeca()
{
    setLocked(Text1, 0, 5, true);
    principal().StatusBar1.setPanel(2, u"Formulário de Cadastro de Peças"_s);
}

void Form1Pec::DestravaFichaPeca()
{
    setLocked(Text1, 0, 5, false);
    Text1(BoxCode).setLocked(true); // codes are given by the form
}

void Form1Pec::CarregaGridPecas()
try {
    static const std::vector<GridColumn> columns{
        {0}, {1}, {2}, {3}, {4, GridColumn::Money, u"0,00"_s}};
    if (FlagRecarga == 1)
        Tabela1->MoveFirst();
    if (FlagRecarga == 2)
        return;
    MSFlexGrid1.setRows(2);
    try {
        fillGrid(MSFlexGrid1, *Tabela1.shared(), columns);
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
    } catch (const RuntimeError&) {
        // The list ends there, on the row where it would have stood after the whole of it: the
        // boxes may show that one, and the next save is written to it.
    }
    FlagRecarga == 0 ? Tabela1->MoveFirst() : Tabela1->MoveLast();
    FlagRecarga = 0;
} catch (const RuntimeError&) {
    // Ends silently.
}

void Form1Pec::GuardaCopiaPeca()
{
    copiedDescription_ = Text1(0).text();
    copiedShelf_ = Text1(4).text();
}

void Form1Pec::ColaCopiaPeca()
{
    Text1(0).setText(copiedDescription_);
    Text1(4).setText(copiedShelf_);
}

void Form1Pec::Command1_Click(int Index)
{
    switch (Index) {
    case 0:
        Incluir();
        break;
    case 1:
        Salvar();
        break;
    case 2:
        Editar();
        break;
    case 3:
        Excluir();
        break;
    case 4:
        Procurar();
        break;
    case 5:
        if (Command1(5).caption() == u"&Copiar"_s)
            Copiar();
        else
            Colar();
        break;
    case 8:
        unload();
        break;
    case 9:
        Cancela();
        break;
    case 10:
    case 11:
    case 12:
    case 13:
        if (isOvertaken_)
            showOvertaken();
        navigate(Index, Tabela1, Command1);
        MostraFichaPeca();
        break;
    default: // the register prints nothing
        break;
    }
}

void Form1Pec::Incluir()
{
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFichaPeca();
    }
    const QString code = nextCode(Text1(BoxCode).text());
    beginNewRow();
    LimpaFichaPeca();
    DesligaBotoes();
    DestravaFichaPeca();
    setEnabled(Command1, {1, 9}, true);
    Text1(BoxCode).setText(code);
    FlagRecarga = 1;
    Text1(0).SetFocus();
}

void Form1Pec::beginNewRow()
{
    Tabela1->AddNew();
    newRow_ = true;
    newRowUndone_ = false;
    isOvertaken_ = false;
}

void Form1Pec::Salvar()
{
    const bool editing = Command1(3).enabled();
    backToBrowsing();
    if (GravaFichaPeca())
        return;
    // Not stored: everything as it was when the button was pressed, to be tried again.
    DesligaBotoes();
    DestravaFichaPeca();
    setEnabled(Command1, {1, 9}, true);
    Command1(3).setEnabled(editing);
    Command1(1).SetFocus();
}

void Form1Pec::Editar()
{
    DesligaBotoes();
    DestravaFichaPeca();
    setEnabled(Command1, {1, 9, 3}, true);
    FlagRecarga = 1;
    MSFlexGrid1.setTabStop(false);
    Text1(0).SetFocus();
}

void Form1Pec::Excluir()
{
    if (MsgBox(u"Deseja Realmente Excluir está Peça ?"_s, BoxButtons::YesNo, BoxIcon::Question) !=
        Answer::Yes)
        return;
    backToBrowsing();
    ApagaPeca();
    TravaFichaPeca();
    setEnabled(Command1, {1, 3, 9}, false);
}

void Form1Pec::Procurar()
{
    setEnabled(Command1, {4, 2}, true);
    unload();
    form<Form1pecabusca>().show();
}

void Form1Pec::Copiar()
{
    DesligaBotoes();
    TravaFichaPeca();
    Command1(5).setCaption(u"&Colar"_s);
    Command1(5).setEnabled(true);
    GuardaCopiaPeca();
    LimpaFichaPeca();
    Command1(5).SetFocus();
}

void Form1Pec::Colar()
{
    // The new row comes before the buttons: where it cannot be had, "&Colar" can be pressed again.
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFichaPeca();
    }
    const QString code = nextCode(Text1(BoxCode).text());
    beginNewRow();
    DesligaBotoes();
    Command1(5).setCaption(u"&Copiar"_s);
    setEnabled(Command1, {1, 9}, true);
    LimpaFichaPeca();
    Text1(BoxCode).setText(code);
    ColaCopiaPeca();
    DestravaFichaPeca();
    FlagRecarga = 1;
    Text1(0).SetFocus();
}

void Form1Pec::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    newRow_ = false;
    newRowUndone_ = false;
    if (isOvertaken_)
        showOvertaken();
    showCurrentRow();
    ContaPecas();
    Command1(4).setCaption(u"&Procurar"_s);
}

void Form1Pec::backToBrowsing()
{
    LigaBotoes();
    TravaFichaPeca();
    setEnabled(Command1, {1, 3, 9}, false);
}

void Form1Pec::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1) || newRow_)
        return;
    // Emptied first, so that the part clicked last is looked up again: after a save another row is
    // current than the one on show.
    Text2.setText({});
    Text2.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0));
}

void Form1Pec::MSFlexGrid1_KeyPress(int KeyAscii)
{
    if (KeyAscii == 13)
        MSFlexGrid1_Click();
}

void Form1Pec::Text2_Change()
{
    const QString code = Trim(Text2.text());
    if (code.isEmpty())
        return;
    if (isOvertaken_)
        showOvertaken();
    lookUpOrStay(Tabela1, u"CODIGO"_s, code);
    MostraFichaPeca();
}

void Form1Pec::Text1_KeyPress(int Index, int& KeyAscii)
{
    if (enterAsTab(KeyAscii))
        return;
    // Boxes are told apart by their texts: the first that holds the same text decides.
    const TextBox& box = Text1(Index);
    if (sameText(box, Text1(0)) || sameText(box, Text1(1)))
        return;
    if (sameText(box, Text1(2)) || sameText(box, Text1(3)))
        filterKey(KeyAscii, SoNumero);
    else if (sameText(box, Text1(5)))
        filterKey(KeyAscii, SoValor);
}

void Form1Pec::Text1_LostFocus(int Index)
{
    if (sameText(Text1(Index), Text1(BoxPrice)) && Text1(BoxPrice).text().isEmpty())
        Text1(BoxPrice).setText(u"0,00"_s);
}
