#include "Form1manutencao.h"

#include "Dates.h"
#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Numbers.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1manutencao.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString CopyCaption = u"&Copiar"_s;
const QString PasteCaption = u"&Colar"_s;
const QString EmptyDate = u"**/**/****"_s;

constexpr int DocumentField = 12;
constexpr int CpfLength = 11;
constexpr int NoLimit = 0;

QString stars(int count)
{
    return repeated(count, u'*');
}

QString asPhoneOrMask(const Value& value)
{
    return value.isNull() ? u"(  )    -    "_s : asPhone(value);
}

// A document that was stored formatted is no number, and shows as it was stored.
QString asDocument(const Value& value)
{
    const QString document = value.textOrEmpty();
    return Format(document, document.size() == CpfLength ? formats::Cpf : formats::Cgc);
}

} // namespace

Form1manutencao::Form1manutencao()
    : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1manutencao>())
{
    // This form has no trap but those of its load, its deletion and its paper: what fails elsewhere
    // ends the program, before anything is written over.
    Command1.onClick([this](int Index) { Command1_Click(Index); }, OnError::End);
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text2.onChange([this] { Text2_Change(); }, OnError::Silent);
    Text3.onKeyPress([this](int Index, int& KeyAscii) { Text3_KeyPress(Index, KeyAscii); });
    Text3.onLostFocus([this](int Index) { Text3_LostFocus(Index); });
}

// In the order of the table. The fillers are of the lengths that the fields have on paper; they
// come back on the screen as if they had been typed.
std::vector<BoxField> Form1manutencao::campos() const
{
    return {
        {0, Text1(18), asText, stars(7)},
        {1, Text1(19), asText, EmptyDate},
        {2, Text1(20), asText, EmptyDate},
        {3, Text1(0), asText, stars(29)},
        {4, Text1(1), asText, stars(29)},
        {5, Text1(2), asText, stars(21)},
        {6, Text1(3), asText, stars(2)},
        {7, Text1(4), asText, stars(5)},
        {8, Text1(5), asText, stars(16)},
        {9, Text1(6), asText, stars(24)},
        {10, Text3(0), asPhoneOrMask, stars(10)},
        {11, Text3(1), asPhoneOrMask, stars(10)},
        {DocumentField, Text3(2), asDocument, stars(14)},
        {13, Text1(7), asText, stars(33)},
        {14, Text1(8), asText, stars(25)},
        {15, Text1(9), asText, stars(26)},
        {16, Text1(10), asText, stars(27)},
        {17, Text1(11), asText, stars(29)},
        {18, Text1(12), asText, stars(31)},
        {19, Text1(13), asText, stars(32)},
        {20, Text1(14), asText, stars(32)},
        {21, Text1(15), asText, stars(33)},
        {22, Text1(17), asText, stars(39)},
        {23, Text1(16), asMoney, u"0,00"_s},
    };
}

void Form1manutencao::Form_Load()
try {
    Modo = 0;
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
    setCaption(captionInUse(u"Manutenção      "_s));
    // What another form left in the pair is not this form's to close.
    Tabela1.setNothing();
    Conexao1.setNothing();
    AbreBanco();
    openStatic(Tabela1, Conexao1, u"SELECT * FROM MANUTENCAO order by numero"_s);
    LimpaCampos();
    if (Tabela1->RecordCount() != 0)
        MostraFicha();
    AtualizaContagem();
    TravaCampos();
} catch (const RuntimeError& error) {
    tellFailedLoad(error, u"Pedido de Manutenção"_s);
}

// The pair stays open until another form opens it: meant.
void Form1manutencao::Form_Unload()
{
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1manutencao::Form_Deactivate()
{
    FechaBanco();
    unload();
}

void Form1manutencao::TravaCampos()
{
    for (Contador = 0; Contador <= 20; ++Contador)
        Text1(Contador).setLocked(true);
    for (Contador = 0; Contador <= 2; ++Contador)
        Text3(Contador).setLocked(true);
    principal().StatusBar1.setPanel(2, u"Formulário de Pedido de Manutenção"_s);
}

void Form1manutencao::LiberaCampos()
{
    for (Contador = 0; Contador <= 20; ++Contador)
        Text1(Contador).setLocked(false);
    for (Contador = 0; Contador <= 2; ++Contador)
        Text3(Contador).setLocked(false);
}

void Form1manutencao::DesativaBotoes()
{
    for (ContadorLista = 0; ContadorLista <= 13; ++ContadorLista)
        Command1(ContadorLista).setEnabled(false);
}

void Form1manutencao::AtivaBotoes()
{
    for (ContadorLista = 0; ContadorLista <= 13; ++ContadorLista)
        Command1(ContadorLista).setEnabled(true);
    // They stand on the form and do nothing here: "&Procurar" and "&Saida".
    setEnabled(Command1, {4, 7}, false);
}

void Form1manutencao::LimpaCampos()
{
    clear(Text1, 0, 20);
    clear(Text3, 0, 2);
    // Lowered while a document was checked; the next one must fit again.
    Text3(2).setMaxLength(NoLimit);
}

void Form1manutencao::MostraFicha()
{
    LimpaCampos();
    showFields(Tabela1, campos());
    Text4.setText(Tabela1->Fields(DocumentField).textOrEmpty());
}

void Form1manutencao::AtualizaContagem()
{
    const int count = Tabela1->RecordCount();
    Text5.setText(Format(count, formats::Code));
    if (count != 0) {
        MostraFicha();
        return;
    }
    LimpaCampos();
    Text5.setText(u"0000000"_s);
    leaveNewAndClose(Command1);
    Text6.setText(u"0000000"_s);
}

// The number stays open to typing, and one that exists is stored all the same.
void Form1manutencao::GravaFicha()
{
    inOnePiece({Conexao1}, [this] {
        storeFields(Tabela1, campos());
        Tabela1->UpdateMerged();
    });
    if (Modo == 1) {
        Tabela1->MoveLast();
        Modo = 0;
    }
    AtualizaContagem();
}

void Form1manutencao::ExcluiFicha()
try {
    try {
        inOnePiece({Conexao1}, [] { Tabela1->Delete(); });
    } catch (const RuntimeError& error) {
        if (error.number() != RuntimeError::RowChanged)
            throw;
        // What another station wrote comes into view; asked for again, the order goes. Where it is
        // gone already, another one is shown.
        if (Tabela1->AbsolutePosition() == 0 && Tabela1->RecordCount() != 0)
            Tabela1->MoveLast();
        AtualizaContagem();
        return;
    }
    leaveDeletedRow(Tabela1, Command1);
    MostraFicha();
    AtualizaContagem();
} catch (const RuntimeError&) {
    // The usual way here: the last order is gone and no row is left to show.
    LimpaCampos();
    try {
        AtualizaContagem();
    } catch (const RuntimeError&) {
        // Nothing can be shown; with these buttons off nothing can be stored over it either.
        LimpaCampos();
    }
    setEnabled(Command1, 1, 7, false);
}

// Address and identity; not the work, the value and the dates.
std::vector<TextBox*> Form1manutencao::copiedBoxes()
{
    return {&Text1(0), &Text1(1), &Text1(2), &Text1(3), &Text1(4), &Text1(5),
            &Text1(6), &Text3(0), &Text3(1), &Text3(2), &Text1(7), &Text4};
}

void Form1manutencao::CopiaCliente()
{
    size_t place = 0;
    for (const TextBox* box : copiedBoxes())
        FichaCopiada[place++] = box->text();
}

void Form1manutencao::ColaCliente()
{
    size_t place = 0;
    for (TextBox* box : copiedBoxes())
        box->setText(FichaCopiada[place++]);
}

void Form1manutencao::Command1_Click(int Index)
{
    switch (Index) {
    case button::Incluir: Incluir(); break;
    case button::Salvar: Salvar(); break;
    case button::Editar: Editar(); break;
    case button::Excluir: Excluir(); break;
    case button::Copiar:
        Command1(button::Copiar).caption() == CopyCaption ? Copiar() : Colar();
        break;
    case 6: ImprimePedidoManutencao(); break;
    case button::Fechar: unload(); break;
    case button::Cancela: Cancela(); break;
    case button::Anterior:
    case button::Posterior:
    case button::Primeira:
    case button::Ultima:
        navigate(Index, Tabela1, Command1);
        MostraFicha();
        break;
    default: // "&Procurar" and "&Saida" are dead
        break;
    }
}

void Form1manutencao::Incluir()
{
    beginNewRow();
    LimpaCampos();
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
    setNumberAndDate();
    Modo = 1;
    Text1(0).SetFocus();
}

// The next number is one above that of the last order.
void Form1manutencao::beginNewRow()
{
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFicha();
    }
    NumeroFicha = Val(Right(Text1(18).text(), 7));
    Tabela1->AddNew();
}

void Form1manutencao::setNumberAndDate()
{
    Text1(18).setText(Format(NumeroFicha + 1, formats::Code));
    Text1(19).setText(dateText(Clock::today()));
}

void Form1manutencao::Salvar()
{
    backToBrowsing();
    GravaFicha();
}

void Form1manutencao::Editar()
{
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {button::Salvar, button::Cancela, button::Excluir}, true);
    Text1(0).SetFocus();
}

void Form1manutencao::Excluir()
{
    const Answer answer =
        MsgBox(u"Deseja Realmente Excluir este Cliente ?"_s, BoxButtons::YesNo, BoxIcon::Question);
    backToBrowsing();
    if (answer == Answer::Yes)
        ExcluiFicha();
}

void Form1manutencao::Copiar()
{
    DesativaBotoes();
    TravaCampos();
    Command1(button::Copiar).setCaption(PasteCaption);
    Command1(button::Copiar).setEnabled(true);
    CopiaCliente();
    LimpaCampos();
    Command1(button::Copiar).SetFocus();
}

// Modo stays as it is, so that the form is left on the new row when that is stored.
void Form1manutencao::Colar()
{
    DesativaBotoes();
    LiberaCampos();
    Command1(button::Copiar).setCaption(CopyCaption);
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
    beginNewRow();
    LimpaCampos();
    setNumberAndDate();
    ColaCliente();
    Text1(0).SetFocus();
}

// Modo stays 1 where a new order was cancelled, and the next edit that is stored ends on the last
// order: meant.
void Form1manutencao::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    AtualizaContagem();
}

void Form1manutencao::backToBrowsing()
{
    AtivaBotoes();
    TravaCampos();
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
}

// On Enter every box sends "{TAB}"; the boxes of this form take any character.
void Form1manutencao::Text1_KeyPress(int, int& KeyAscii)
{
    enterAsTab(KeyAscii);
}

void Form1manutencao::Text3_KeyPress(int, int& KeyAscii)
{
    enterAsTab(KeyAscii);
}

// Stands ready for a caller, as it does in the client record.
void Form1manutencao::Text2_Change()
{
    const QString number = Trim(Text2.text());
    if (number.isEmpty())
        return;
    lookUpOrStay(Tabela1, u"numero"_s, number);
    MostraFicha();
}

// By their texts: a telephone that reads like the document is taken for it.
void Form1manutencao::Text3_LostFocus(int Index)
{
    if (sameText(Text3(Index), Text3(2)))
        checkDocument(Text3(2));
}
