#include "Form1pedido.h"

#include "Dates.h"
#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1pedido.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int DateField = 0;
constexpr int BoxCount = 2;
constexpr int BoxCode = 3;
constexpr int CodeColumn = 3;
constexpr int KeyEscape = 27;

const std::vector<GridField>& columns()
{
    // The code is there for the look-up, in a column too narrow to be read.
    static const std::vector<GridField> list{{0, u"Data Pedido"_s, 1000},
                                             {2, u"Quant"_s, 550},
                                             {1, u"Descrição"_s, 5950},
                                             {3, u"COD"_s, 100}};
    return list;
}

} // namespace

Form1pedido::Form1pedido() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1pedido>())
{
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text2.onChange([this] { Text2_Change(); }, OnError::Silent);
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); });
    MSFlexGrid1.onKeyPress([this](int& KeyAscii) { MSFlexGrid1_KeyPress(KeyAscii); });
}

// The boxes of the row, with the fillers of the empty ones: real content of the row from then on.
std::vector<BoxField> Form1pedido::campos() const
{
    return {
        {1, Text1(0), asText, repeated(15, u'*')},
        {2, Text1(1), asText, repeated(4, u'*')},
        {3, Text1(BoxCode), asText, repeated(7, u'*')},
    };
}

void Form1pedido::Form_Load()
{
    FlagRecarga = 0;
    rowOnShow_ = 0;
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela, button::Copiar}, false);
    setCaption(captionInUse(u"Pedido de Peças e Acessórios      "_s));
    // What another form left in the pair is not this form's to close.
    Tabela1.setNothing();
    Conexao1.setNothing();
    AbreBanco();
    openStatic(Tabela1, Conexao1, u"SELECT * FROM PEDIDO order by DATAPEDIDO"_s);
    LimpaPedido();
    ContaPedidos();
    if (Tabela1->RecordCount() != 0) {
        MostraPedido();
        CarregaGridPedido();
    }
    TravaPedido();
    setHeadings(MSFlexGrid1, columns());
}

void Form1pedido::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1pedido::Form_Deactivate()
{
    FechaBanco();
    unload();
}

void Form1pedido::MostraPedido()
{
    LimpaPedido();
    Label2.setCaption(asText(Tabela1->Fields(DateField)));
    showFields(Tabela1, campos());
    rowOnShow_ = Tabela1->rowKey();
}

void Form1pedido::GravaPedido()
{
    inOnePiece({Conexao1}, [this] {
        fillRow();
        Tabela1->UpdateMerged();
    });
    backToBrowsing();
    rowOnShow_ = Tabela1->rowKey();
    CarregaGridPedido(); // leaves the last row current while the boxes keep the order just stored
    ContaPedidos();
}

void Form1pedido::fillRow()
{
    const QString date = Label2.caption();
    Tabela1->Fields(DateField) = date.isEmpty() ? u"**/**/****"_s : date;
    storeFields(Tabela1, campos());
}

void Form1pedido::LimpaPedido()
{
    clear(Text1, 0, 1);
    Label2.setCaption({});
}

// Raises on an empty table, which is how a deletion gets to know of it.
void Form1pedido::CarregaGridPedido()
{
    if (FlagRecarga == 1)
        Tabela1->MoveFirst();
    refillGrid(MSFlexGrid1, Tabela1, columns());
    Tabela1->MoveLast();
    if (FlagRecarga == 0)
        Tabela1->MoveFirst();
    FlagRecarga = 0;
}

void Form1pedido::ContaPedidos()
{
    const int count = Tabela1->RecordCount();
    Text1(BoxCount).setText(Format(count, formats::Code));
    if (count != 0) {
        MSFlexGrid1.setTabStop(true);
        return;
    }
    LimpaPedido();
    Text1(BoxCount).setText(u"0000000"_s);
    MSFlexGrid1.setTabStop(false);
    leaveNewAndClose(Command1);
    Text1(BoxCode).setText(u"0000000"_s);
}

void Form1pedido::DestravaPedido()
{
    setLocked(Text1, 0, 1, false);
}

void Form1pedido::TravaPedido()
{
    setLocked(Text1, 0, 1, true);
    principal().StatusBar1.setPanel(2, u"Formulário de Pedido de Peças"_s);
}

void Form1pedido::LigaBotoes()
{
    setEnabled(Command1, 0, 13, true);
    setEnabled(Command1, {1, 3, 9, 7, 5, 4}, false);
}

void Form1pedido::DesligaBotoes()
{
    setEnabled(Command1, 0, 13, false);
}

void Form1pedido::ApagaPedido()
try {
    inOnePiece({Conexao1}, [] { Tabela1->Delete(); });
    leaveDeletedRow(Tabela1, Command1);
    FlagRecarga = 1;
    CarregaGridPedido();
    MostraPedido();
    ContaPedidos();
} catch (const RuntimeError&) {
    // The last order is gone and no row is left to show; or the order stays, and is shown as it is
    // stored now.
    if (Tabela1->RecordCount() == 0) {
        emptyGrid(MSFlexGrid1);
        backToBrowsing(); // it may have gone by Esc in the middle of its edit
    }
    showCurrentRow();
    ContaPedidos();
}

// The row that is current after a cancelled or deleted one; empty boxes where there is none.
void Form1pedido::showCurrentRow()
try {
    // Another station may have deleted the one that was.
    if (Tabela1->AbsolutePosition() == 0 && Tabela1->RecordCount() != 0)
        Tabela1->MoveLast();
    MostraPedido();
} catch (const RuntimeError&) {
    LimpaPedido();
}

void Form1pedido::Command1_Click(int Index)
{
    switch (Index) {
    case button::Incluir: Incluir(); break;
    case button::Salvar: GravaPedido(); break;
    case button::Editar: Editar(); break;
    case button::Excluir: Excluir(); break;
    case 6: ImprimePedido(); break;
    case button::Fechar: unload(); break;
    case button::Cancela: Cancela(); break;
    case button::Anterior:
    case button::Posterior:
    case button::Primeira:
    case button::Ultima:
        navigate(Index, Tabela1, Command1);
        MostraPedido();
        break;
    default: // "&Procurar", "&Copiar" and "&Saida" are never on
        break;
    }
}

// The last row is that of the highest date text, not of the highest code: a code may repeat.
void Form1pedido::Incluir()
{
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraPedido();
    }
    const QString code = nextCode(Text1(BoxCode).text());
    Tabela1->AddNew();
    LimpaPedido();
    openBoxes();
    FlagRecarga = 1;
    Label2.setCaption(dateText(Clock::today()));
    Text1(BoxCode).setText(code);
    Text1(0).SetFocus();
}

void Form1pedido::Editar()
{
    // After a save another row is current than the one on show; nobody's text lands in it unseen.
    if (Tabela1->rowKey() != rowOnShow_)
        MostraPedido();
    openBoxes();
    Command1(button::Excluir).setEnabled(true);
    FlagRecarga = 1;
    Text1(0).SetFocus();
}

// No ends the edit, too, and leaves what was typed in view.
void Form1pedido::Excluir()
{
    const Answer answer =
        MsgBox(u"Deseja Realmente Excluir este Pedido ?"_s, BoxButtons::YesNo, BoxIcon::Question);
    backToBrowsing();
    if (answer == Answer::Yes)
        ApagaPedido();
}

void Form1pedido::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    showCurrentRow();
    ContaPedidos();
}

bool Form1pedido::isBrowsing() const
{
    return Command1(button::Editar).enabled();
}

void Form1pedido::backToBrowsing()
{
    LigaBotoes();
    TravaPedido();
}

void Form1pedido::openBoxes()
{
    DesligaBotoes();
    DestravaPedido();
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
}

void Form1pedido::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1, CodeColumn) || isNewRow(Command1))
        return;
    // Emptied first while browsing, so that the order clicked last is looked up again; in an edit a
    // second click on the same row leaves alone what was typed.
    if (isBrowsing())
        Text2.setText({});
    Text2.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), CodeColumn));
}

void Form1pedido::Text2_Change()
{
    const QString code = Trim(Text2.text());
    if (code.isEmpty())
        return;
    lookUpOrStay(Tabela1, u"CODIGO"_s, code);
    MostraPedido();
}

// Esc deletes without a question, and it deletes the row on show, whichever is marked in the grid.
void Form1pedido::MSFlexGrid1_KeyPress(int KeyAscii)
{
    if (KeyAscii != KeyEscape || !onDataRow(MSFlexGrid1, CodeColumn) || isNewRow(Command1))
        return;
    if (Tabela1->rowKey() != rowOnShow_) {
        // After a save another row is current than the one on show: it is shown before it may go.
        MostraPedido();
        return;
    }
    ApagaPedido();
}

void Form1pedido::Text1_KeyPress(int, int& KeyAscii)
{
    enterAsTab(KeyAscii);
}
