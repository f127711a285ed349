#include "Form1Pec.h"

#include "Form1pecabusca.h"
#include "Form1principal.h"
#include "FormRegistry.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "OnePiece.h"
#include "PartColumns.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1Pec.h"

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

constexpr int BoxCode = 3;
constexpr int BoxPrice = 5;

// The point is meant: a Null price shows so here, and only here.
QString asPrice(const Value& value)
{
    return value.isNull() ? u"0.00"_s : asMoney(value);
}

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
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
    setCaption(captionInUse(u"Cadastro de Peças e Acessórios      "_s));
    FormRegistry::instance().unload(QString::fromLatin1(Form1pecabusca::Name));
    AbreBanco();
    openStatic(Tabela1, Conexao1, u"SELECT * FROM Pecas order by codigo"_s);
    LimpaFichaPeca();
    setHeadings(MSFlexGrid1, partColumns());
    if (Tabela1->RecordCount() != 0) {
        MostraFichaPeca();
        CarregaGridPecas();
    }
    ContaPecas();
    TravaFichaPeca();
} catch (const RuntimeError& error) {
    tellFailedLoad(error);
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

std::vector<BoxField> Form1Pec::fields() const
{
    return {
        {0, Text1(BoxCode), asText, repeated(7, u'*')},
        {1, Text1(4), asText, repeated(7, u'*')},
        {2, Text1(2), asText, u"0"_s},
        {3, Text1(0), asText, repeated(15, u'*')},
        {4, Text1(BoxPrice), asPrice, u"0,00"_s},
        {5, Text1(1), asText, repeated(10, u'*')},
    };
}

void Form1Pec::MostraFichaPeca()
{
    LimpaFichaPeca();
    showFields(Tabela1, fields());
    MSFlexGrid1.setTabStop(true);
}

void Form1Pec::GravaFichaPeca()
try {
    inOnePiece({Conexao1}, [this] {
        storeFields(Tabela1, fields());
        Tabela1->UpdateMerged();
    });
    backToBrowsing();
    if (FlagRecarga == 1)
        Tabela1->MoveLast();
    ContaPecas();
    CarregaGridPecas(); // leaves the last row current while the boxes keep the part just stored
    FlagRecarga = 0;
} catch (const RuntimeError&) {
    // Ends silently.
}

void Form1Pec::ApagaPeca()
try {
    inOnePiece({Conexao1}, [] { Tabela1->Delete(); });
    leaveDeletedRow(Tabela1, Command1);
    FlagRecarga = 1;
    CarregaGridPecas();
    MostraFichaPeca();
    ContaPecas();
} catch (const RuntimeError&) {
    // The last part of the table is gone and no row is left to show; or the part stays, and is
    // shown as it is stored now.
    if (Tabela1->RecordCount() == 0)
        emptyGrid(MSFlexGrid1);
    showCurrentRow();
    ContaPecas();
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
    leaveNewAndClose(Command1);
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
    if (FlagRecarga == 2)
        return;
    refillGrid(MSFlexGrid1, Tabela1, partColumns());
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
    case button::Incluir: Incluir(); break;
    case button::Salvar: GravaFichaPeca(); break;
    case button::Editar: Editar(); break;
    case button::Excluir: Excluir(); break;
    case button::Procurar: Procurar(); break;
    case button::Copiar:
        Command1(button::Copiar).caption() == u"&Copiar"_s ? Copiar() : Colar();
        break;
    case button::Fechar: unload(); break;
    case button::Cancela: Cancela(); break;
    case button::Anterior:
    case button::Posterior:
    case button::Primeira:
    case button::Ultima:
        navigate(Index, Tabela1, Command1);
        MostraFichaPeca();
        break;
    default: // the register prints nothing
        break;
    }
}

void Form1Pec::Incluir()
{
    const QString code = beginNewRow();
    LimpaFichaPeca();
    DesligaBotoes();
    DestravaFichaPeca();
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
    Text1(BoxCode).setText(code);
    FlagRecarga = 1;
    Text1(0).SetFocus();
}

QString Form1Pec::beginNewRow()
{
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFichaPeca();
    }
    QString code = nextCode(Text1(BoxCode).text());
    Tabela1->AddNew();
    return code;
}

void Form1Pec::Editar()
{
    // After a save the last row is current, and not the one on show.
    MostraFichaPeca();
    DesligaBotoes();
    DestravaFichaPeca();
    setEnabled(Command1, {button::Salvar, button::Cancela, button::Excluir}, true);
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
}

void Form1Pec::Procurar()
{
    unload();
    form<Form1pecabusca>().show();
}

void Form1Pec::Copiar()
{
    DesligaBotoes();
    TravaFichaPeca();
    Command1(button::Copiar).setCaption(u"&Colar"_s);
    Command1(button::Copiar).setEnabled(true);
    GuardaCopiaPeca();
    LimpaFichaPeca();
    Command1(button::Copiar).SetFocus();
}

void Form1Pec::Colar()
{
    // The new row comes before the buttons: where it cannot be had, "&Colar" can be pressed again.
    const QString code = beginNewRow();
    DesligaBotoes();
    Command1(button::Copiar).setCaption(u"&Copiar"_s);
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
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
    showCurrentRow();
    ContaPecas();
    Command1(button::Procurar).setCaption(u"&Procurar"_s);
}

void Form1Pec::backToBrowsing()
{
    LigaBotoes();
    TravaFichaPeca();
}

void Form1Pec::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1) || isNewRow(Command1))
        return;
    // Emptied first while browsing, so that the part clicked last is looked up again: after a save
    // another row is current than the one on show. In an edit that would drop what was typed.
    if (Command1(button::Editar).enabled())
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
    lookUpOrStay(Tabela1, u"CODIGO"_s, code);
    MostraFichaPeca();
}

void Form1Pec::Text1_KeyPress(int Index, int& KeyAscii)
{
    if (enterAsTab(KeyAscii))
        return;
    switch (firstWithText(Text1, Index, {0, 1, 2, BoxCode, BoxPrice})) {
    case 2:
    case BoxCode: filterKey(KeyAscii, SoNumero); break;
    case BoxPrice: filterKey(KeyAscii, SoValor); break;
    default: break;
    }
}

void Form1Pec::Text1_LostFocus(int Index)
{
    if (sameText(Text1(Index), Text1(BoxPrice)) && Text1(BoxPrice).text().isEmpty())
        Text1(BoxPrice).setText(u"0,00"_s);
}
