#include "Form1For.h"

#include "Buscafornecedor.h"
#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Numbers.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1For.h"

#include <algorithm>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int BoxCount = 5;
constexpr int BoxDocument = 2; // of Text6
constexpr int DocumentField = 6;
constexpr int LengthCPF = 11;
constexpr int LengthCGC = 14;
constexpr qsizetype PhoneMaxLength = 13;
constexpr qsizetype DocumentMaxLength = 18;

// A number that is too long for its format stays as it is stored: cut to the box, the next save
// would lose its end.
QString formatted(const Value& value, const QString& format, qsizetype maxLength)
{
    const QString text = Format(value, format);
    return text.size() > maxLength ? asText(value) : text;
}

// Other than in the client record a Null shows the bare mask here.
QString asFirmsPhone(const Value& value)
{
    return value.isNull() ? u"(  )    -    "_s : formatted(value, formats::Phone, PhoneMaxLength);
}

QString asDocument(const Value& value)
{
    const bool isCPF = asText(value).size() == LengthCPF;
    return formatted(value, isCPF ? formats::Cpf : formats::Cgc, DocumentMaxLength);
}

// A document as it is shown or typed, whose digits are all in the masked box.
bool isWithinMask(const QString& document)
{
    QString digits = document;
    digits.remove(u'-').remove(u'/');
    return digits.size() <= LengthCGC &&
           std::all_of(digits.begin(), digits.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

Form1For::Form1For() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1For>())
{
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text3.onChange([this] { Text3_Change(); }, OnError::Silent);
    Text6.onChange([this](int Index) { Text6_Change(Index); });
    Text6.onGotFocus([this](int Index) { Text6_GotFocus(Index); });
    Text6.onKeyPress([this](int Index, int& KeyAscii) { Text6_KeyPress(Index, KeyAscii); });
    Text6.onLostFocus([this](int Index) { Text6_LostFocus(Index); });
}

std::vector<BoxField> Form1For::campos()
{
    return {
        {0, Text1(0)},
        {1, Text1(1)},
        {2, Text1(2)},
        {3, Text1(3)},
        {4, Text6(0), asFirmsPhone},
        {5, Text6(1), asFirmsPhone},
        {DocumentField, Text6(BoxDocument), asDocument},
        {7, Text6(3)},
        {8, Text1(4)},
        {9, Text4},
    };
}

void Form1For::Form_Load()
try {
    Modo = 0;
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
    setCaption(captionInUse(u"Cadastro de Fornecedores      "_s));
    FormRegistry::instance().unload(QString::fromLatin1(Buscafornecedor::Name));
    AbreBanco();
    openStatic(Tabela1, Conexao1, u"SELECT * FROM FORNECEDOR order by NOMEEMPRESA"_s);
    LimpaCampos();
    AtualizaContagem();
    TravaCampos();
} catch (const RuntimeError& error) {
    tellFault(error, u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
}

void Form1For::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    // Without the "email:" that other forms put before it.
    principal().StatusBar1.setPanel(2, supportEmail());
}

void Form1For::Form_Deactivate()
{
    unload();
}

void Form1For::TravaCampos()
{
    setLocked(Text1, 0, 4, true);
    setLocked(Text6, 0, 3, true);
    principal().StatusBar1.setPanel(2, u"Formulário Cadastro de Fornecedores"_s);
}

void Form1For::LiberaCampos()
{
    setLocked(Text1, 0, 4, false);
    setLocked(Text6, 0, 3, false);
}

void Form1For::DesativaBotoes()
{
    setEnabled(Command1, 0, 13, false);
}

// Firms are neither copied nor printed.
void Form1For::AtivaBotoes()
{
    setEnabled(Command1, 0, 13, true);
    setEnabled(Command1, 5, 7, false);
}

void Form1For::LimpaCampos()
{
    clear(Text1, 0, 4);
    clear(Text6, 0, 3);
    for (TextBox* box : {&Text2, &Text4})
        box->setText({});
    MaskEdBox1.setText({});
    // Lowered while a document was checked; the next one must fit again.
    Text6(BoxDocument).setMaxLength(DocumentMaxLength);
}

void Form1For::MostraFornecedor()
try {
    Text6(BoxDocument).setMaxLength(DocumentMaxLength);
    showFields(Tabela1, campos());
    const QString document = asText(Tabela1->Fields(DocumentField));
    Text2.setText(document);
    MaskEdBox1.setText(document);
} catch (const RuntimeError& error) {
    // A row that is out of reach leaves its text in view, an empty table its zeros.
    if (error.number() == RuntimeError::NoCurrentRecord && Tabela1->RecordCount() != 0)
        LimpaCampos();
}

void Form1For::SalvaFornecedor()
try {
    inOnePiece({Conexao1}, [this] {
        storeFields(Tabela1, campos());
        Tabela1->UpdateMerged();
    });
    backToBrowsing();
    // No move: other than in the sister forms the row just written stays current.
    AtualizaContagem();
} catch (const RuntimeError&) {
    // Ends silently. What was not stored leaves the boxes open, to be tried again.
}

void Form1For::ExcluiFornecedor()
try {
    try {
        inOnePiece({Conexao1}, [] { Tabela1->Delete(); });
        Tabela1->MovePrevious();
        if (Tabela1->bof())
            Tabela1->MoveNext();
    } catch (const RuntimeError&) {
        // What another station wrote comes into view; asked for again, the firm goes.
    }
    AtualizaContagem();
} catch (const RuntimeError&) {
    // Ends silently.
}

void Form1For::AtualizaContagem()
{
    const int count = Tabela1->RecordCount();
    Text1(BoxCount).setText(Format(count, formats::Code));
    if (count != 0) {
        MostraFornecedor();
        return;
    }
    LimpaCampos();
    Text1(BoxCount).setText(u"0000000"_s);
    Text4.setText(u"0000000"_s);
    leaveNewAndClose(Command1);
}

void Form1For::Command1_Click(int Index)
{
    switch (Index) {
    case button::Incluir: Incluir(); break;
    case button::Salvar: SalvaFornecedor(); break;
    case button::Editar: Editar(); break;
    case button::Excluir: Excluir(); break;
    case button::Procurar: Procurar(); break;
    case button::Fechar: unload(); break;
    case button::Cancela: Cancela(); break;
    case button::Anterior:
    case button::Posterior:
    case button::Primeira:
    case button::Ultima:
        navigate(Index, Tabela1, Command1);
        MostraFornecedor();
        break;
    default: // "&Copiar", "&Imprimir" and "&Saida" are never on
        break;
    }
}

// The last row is that of the name that sorts last, not of the highest code: two firms may get the
// same code, and nothing asks. Meant.
void Form1For::Incluir()
{
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFornecedor();
    }
    NumeroFicha = Val(Right(Text4.text(), 7));
    Tabela1->AddNew();
    LimpaCampos();
    openBoxes(false);
    Text4.setText(Format(NumeroFicha + 1, formats::Code));
    Text1(0).SetFocus();
}

void Form1For::Editar()
{
    openBoxes(true);
    Text1(0).SetFocus();
}

void Form1For::Excluir()
{
    const Answer answer = MsgBox(u"Deseja Realmente Excluir este Fornecedor ?"_s, BoxButtons::YesNo,
                                 BoxIcon::Question);
    backToBrowsing();
    if (answer == Answer::Yes)
        ExcluiFornecedor();
}

void Form1For::Procurar()
{
    unload();
    form<Buscafornecedor>().show();
}

void Form1For::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    AtualizaContagem();
}

void Form1For::backToBrowsing()
{
    AtivaBotoes();
    TravaCampos();
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
}

void Form1For::openBoxes(bool canDelete)
{
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
    Command1(button::Excluir).setEnabled(canDelete);
}

// Not in the last of them, the product.
void Form1For::Text1_KeyPress(int Index, int& KeyAscii)
{
    if (Index <= 3)
        enterAsTab(KeyAscii);
}

void Form1For::Text3_Change()
{
    const QString code = Text3.text();
    if (Trim(code).isEmpty())
        return;
    lookUpOrStay(Tabela1, u"CODIGO"_s, code);
    MostraFornecedor();
}

// So that the box gives back what was just typed, too, when it is entered again.
void Form1For::Text6_Change(int Index)
{
    if (Index == BoxDocument)
        MaskEdBox1.setText(Text6(BoxDocument).text());
}

void Form1For::Text6_GotFocus(int Index)
{
    // By their texts, as when the box is left. What is no document is not touched by a mere visit.
    if (sameText(Text6(Index), Text6(BoxDocument)) && isWithinMask(Text6(BoxDocument).text()))
        Text6(BoxDocument).setText(MaskEdBox1.text());
}

void Form1For::Text6_KeyPress(int Index, int& KeyAscii)
{
    if (!enterAsTab(KeyAscii) && Index <= BoxDocument)
        filterKey(KeyAscii, SoNumero);
}

void Form1For::Text6_LostFocus(int Index)
{
    // Without the blank that the client record has at the end of its message.
    if (sameText(Text6(Index), Text6(BoxDocument)))
        checkDocument(Text6(BoxDocument), u"CGC com DV incorreto !!!"_s);
}
