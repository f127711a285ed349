#include "Form1Cli.h"

#include "Buscacli.h"
#include "Dates.h"
#include "Form1CliRows.h"
#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Numbers.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1Cli.h"

using namespace Funciones;
using namespace clientrows;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString CopyCaption = u"&Copiar"_s;
const QString PasteCaption = u"&Colar"_s;

constexpr int DocumentMaxLength = 18;
constexpr int CpfLength = 11;

void openTable(ObjectVariable<Recordset>& table, const ObjectVariable<Connection>& connection,
               const QString& sql)
{
    table->Open(sql, connection.shared(), CursorType::Static, LockType::Optimistic);
}

void reopenTabela3(const QString& sql)
{
    if (Tabela3->isOpen()) // an opening that failed before left it closed
        Tabela3->Close();
    Tabela3->Open(sql, Conexao3.shared(), CursorType::Dynamic, LockType::ReadOnly);
}

} // namespace

Form1Cli::Form1Cli() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1Cli>())
{
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    Check1.onGotFocus([this](int Index) { Check1_GotFocus(Index); });
    Text1.onChange([this](int Index) { Text1_Change(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text2.onChange([this] { Text2_Change(); }, OnError::Silent);
    Text3.onChange([this](int Index) { Text3_Change(Index); });
    Text3.onGotFocus([this](int Index) { Text3_GotFocus(Index); });
    Text3.onKeyPress([this](int Index, int& KeyAscii) { Text3_KeyPress(Index, KeyAscii); });
    Text3.onLostFocus([this](int Index) { Text3_LostFocus(Index); });
    // Where nothing is found the first tool tip stands.
    Text6.onChange([this] { Text6_Change(); }, OnError::Silent);
    Text7.onKeyPress([this](int& KeyAscii) { Text7_KeyPress(KeyAscii); });
}

void Form1Cli::Form_Load()
try {
    Modo = 0;
    rowsAreLost_ = false;
    twinIsLost_ = false;
    isOvertaken_ = false;
    setEnabled(Command1, {1, 3, 9}, false);
    setCaption(u"Fichario de Clientes      "_s + principal().StatusBar1.panel(1) +
               u"  está usando"_s);
    FormRegistry::instance().unload(QString::fromLatin1(Buscacli::Name));
    // What another form left in the pairs is not this form's to close.
    for (ObjectVariable<Recordset>* table : {&Tabela1, &Tabela3, &Tabela4})
        table->setNothing();
    for (ObjectVariable<Connection>* connection : {&Conexao1, &Conexao3, &Conexao4})
        connection->setNothing();
    AbreBanco();
    openTable(Tabela1, Conexao1, ClientsByNumber);
    AbreBanco3();
    Tabela3->Open(ClientsByNumber, Conexao3.shared(), CursorType::Dynamic, LockType::ReadOnly);
    AbreBanco4();
    openTable(Tabela4, Conexao4, TwinsByNumber);
    LimpaCampos();
    if (Tabela1->RecordCount() != 0)
        MostraFicha();
    AtualizaContagem();
    TravaCampos();
} catch (const RuntimeError& error) {
    MsgBox(u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
    MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical, u"Fichario de Cliente"_s);
}

void Form1Cli::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    closeIfOpen(Conexao3);
    closeIfOpen(Tabela4, Conexao4);
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1Cli::Form_Deactivate()
{
    FechaBanco();
    FechaBanco3();
    unload();
}

void Form1Cli::TravaCampos()
{
    setLocked(Text1, 0, 15, true);
    setLocked(Text3, 0, 3, true);
    principal().StatusBar1.setPanel(2, u"Formulário Fichario de Cliente"_s);
}

void Form1Cli::LiberaCampos()
{
    setLocked(Text1, 0, 15, false);
    setLocked(Text3, 0, 3, false);
    for (int flag = 0; flag < 4; ++flag)
        Check1(flag).setEnabled(true);
}

void Form1Cli::DesativaBotoes()
{
    setEnabled(Command1, 0, 13, false);
}

void Form1Cli::AtivaBotoes()
{
    setEnabled(Command1, 0, 13, true);
}

void Form1Cli::LimpaCampos()
{
    clear(Text1, 0, 15);
    MaskEdBox1.setText({});
    Text7.setText({});
    clear(Text3, 0, 3);
    // Lowered while a document was checked; the next one must fit again.
    Text3(3).setMaxLength(DocumentMaxLength);
    for (int flag = 0; flag < 4; ++flag)
        Check1(flag).setValue(0);
}

void Form1Cli::MostraFicha()
try {
    LimpaCampos();
    filled_ = shownValues(Tabela1);
    for (const int box : {13, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 15})
        Text1(box).setText(Tabela1->Fields(FieldOfBox[static_cast<size_t>(box)]).textOrEmpty());
    Text3(1).setText(Format(Tabela1->Fields(FirstPhone).value(), formats::Phone));
    Text3(2).setText(Format(Tabela1->Fields(SecondPhone).value(), formats::Phone));
    const QString document = Tabela1->Fields(Document).textOrEmpty();
    Text4.setText(document);
    MaskEdBox1.setText(document);
    // A document stored formatted is no number and shows as it was stored.
    Text3(3).setText(Format(document, document.size() == CpfLength ? formats::Cpf : formats::Cgc));
    const Value price = Tabela1->Fields(Price);
    Text3(0).setText(price.isNull() ? u"0,00"_s : Format(price, formats::Money));
    for (int flag = 0; flag < 4; ++flag)
        Check1(flag).setValue(Tabela1->Fields(FirstFlag + flag).value().isTrue() ? 1 : 0);
    Text7.setText(Tabela1->Fields(Shelf).textOrEmpty());
} catch (const RuntimeError&) {
    // Ends silently: what was filled so far stays in view.
}

void Form1Cli::AtualizaContagem()
{
    const int count = Tabela1->RecordCount();
    Text1(16).setText(Format(count, formats::Code));
    if (count != 0) {
        MostraFicha();
        return;
    }
    LimpaCampos();
    for (TextBox* box : {&Text1(16), &Text5, &Text1(13)})
        box->setText(u"0000000"_s);
    for (int flag = 0; flag < 4; ++flag)
        Check1(flag).setEnabled(false);
    setEnabled(Command1, 1, 7, false);
    setEnabled(Command1, 9, 13, false);
}

void Form1Cli::Command1_Click(int Index)
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
        Command1(5).caption() == CopyCaption ? Copiar() : Colar();
        break;
    case 6:
        ImprimeFichaEntrada();
        break;
    case 7:
        Saida();
        break;
    case 8:
        unload();
        break;
    case 9:
        Cancela();
        break;
    default:
        if (isOvertaken_)
            showOvertaken();
        navigate(Index, Tabela1, Command1);
        MostraFicha();
    }
}

void Form1Cli::Incluir()
{
    reopenTabela3(ClientsByNumber);
    if (!Tabela3->eof())
        Tabela3->MoveLast();
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFicha();
    }
    NumeroFicha = Val(Right(Text1(13).text(), 7));
    beginNewRows();
    LimpaCampos();
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {1, 9}, true);
    setNumberAfter(NumeroFicha);
    Modo = 1;
    Text1(0).SetFocus();
}

// Both rows become pending, or none.
void Form1Cli::beginNewRows()
{
    Tabela1->AddNew();
    try {
        Tabela4->AddNew();
    } catch (const RuntimeError&) {
        Tabela1->CancelUpdate();
        throw;
    }
    rowsAreLost_ = false;
    isOvertaken_ = false;
}

void Form1Cli::setNumberAfter(double number)
{
    // It still holds the number last shown, which would pass for a clash.
    Text5.setText({});
    Text1(13).setText(Format(number + 1, formats::Code));
    Text1(14).setText(dateText(Clock::today()));
}

void Form1Cli::Editar()
{
    reopenTabela3(ClientsByNumber);
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {1, 3, 9}, true);
    Text1(13).setLocked(true);
    Text1(0).SetFocus();
}

void Form1Cli::Excluir()
{
    const Answer answer =
        MsgBox(u"Deseja Realmente Excluir este Cliente ?"_s, BoxButtons::YesNo, BoxIcon::Question);
    backToBrowsing();
    if (answer == Answer::Yes)
        ExcluiFicha();
}

void Form1Cli::Procurar()
{
    unload();
    form<Buscacli>().show();
}

void Form1Cli::Copiar()
{
    reopenTabela3(ClientsByNumber);
    DesativaBotoes();
    TravaCampos();
    Command1(5).setCaption(PasteCaption);
    Command1(5).setEnabled(true);
    CopiaCliente();
    LimpaCampos();
    Command1(5).SetFocus();
}

void Form1Cli::Colar()
{
    // The rows first: where they cannot be had, what was copied is still at hand.
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFicha();
    }
    NumeroFicha = Val(Right(Text1(13).text(), 7));
    beginNewRows();
    DesativaBotoes();
    LiberaCampos();
    Command1(5).setCaption(CopyCaption);
    setEnabled(Command1, {1, 9}, true);
    LimpaCampos();
    setNumberAfter(NumeroFicha);
    ColaCliente();
    Text1(13).setLocked(true);
    Modo = 1;
    Text1(0).SetFocus();
}

void Form1Cli::CopiaCliente()
{
    for (int box = 0; box <= 7; ++box)
        FichaCopiada[static_cast<size_t>(box)] = Text1(box).text();
    FichaCopiada[8] = Text3(1).text();
    FichaCopiada[9] = Text3(2).text();
    FichaCopiada[10] = Text3(3).text();
    FichaCopiada[11] = Text4.text();
}

void Form1Cli::ColaCliente()
{
    for (int box = 0; box <= 7; ++box)
        Text1(box).setText(FichaCopiada[static_cast<size_t>(box)]);
    Text3(1).setText(FichaCopiada[8]);
    Text3(2).setText(FichaCopiada[9]);
    Text3(3).setText(FichaCopiada[10]);
    Text4.setText(FichaCopiada[11]);
}

void Form1Cli::Saida()
{
    if (isOvertaken_) { // to be looked at before it is delivered
        showOvertaken();
        return;
    }
    reopenTabela3(u"SELECT * FROM Cliente"_s);
    const QString before = Text1(15).text();
    if (before.isEmpty())
        Text1(15).setText(dateText(Clock::today()));
    ImprimeFichaSaida();
    // An exit that is not stored must not look as if it were.
    if (!GravaFicha())
        Text1(15).setText(before);
}

void Form1Cli::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    Tabela4->CancelUpdate();
    // Where a save that failed took the new row back, none is current.
    if (Tabela1->eof() && Tabela1->RecordCount() != 0)
        Tabela1->MoveLast();
    if (isOvertaken_)
        showOvertaken();
    else
        AtualizaContagem();
    Modo = 0;
}

void Form1Cli::Check1_GotFocus(int)
{
    // While a copy waits only "&Colar" is alive.
    if (Command1(5).caption() == PasteCaption)
        return;
    // A flag can be set and saved without "&Editar": its focus alone is enough.
    setEnabled(Command1, {1, 9}, true);
}

void Form1Cli::Text1_Change(int Index)
{
    Text6.setText(Text1(13).text());
    // By their texts: any box that reads like the number box looks the number up.
    if (!sameText(Text1(Index), Text1(13)) || Trim(Text1(Index).text()).isEmpty())
        return;
    try {
        lookNumberUp(Index);
    } catch (const RuntimeError&) {
        // Not found: the number found before stays.
    }
}

void Form1Cli::lookNumberUp(int Index)
{
    Tabela3->MoveFirst();
    Tabela3->Find(likeCriterion(u"numero"_s, Text1(Index).text()));
    Text5.setText(Tabela3->Fields(0).textOrEmpty());
}

void Form1Cli::Text2_Change()
{
    const QString number = Text2.text();
    if (Trim(number).isEmpty())
        return;
    if (isOvertaken_)
        showOvertaken();
    lookUpOrStay(Tabela1, u"numero"_s, number);
    MostraFicha();
}

void Form1Cli::Text6_Change()
{
    Text1(12).setToolTipText(u"NÃO Á PEÇA CADASTRADA"_s);
    if (Text6.text().isEmpty())
        return;
    findTwin();
    QStringList parts;
    for (int description = 3; description <= 43; description += 4)
        parts << Tabela4->Fields(description).textOrEmpty();
    Text1(12).setToolTipText(parts.join(u','));
}

// Leaves Tabela4 at its end where there is no twin. A look-up that breaks leaves it on the twin of
// another order, which must be neither written nor deleted.
void Form1Cli::findTwin()
{
    twinIsLost_ = true;
    if (Tabela4->RecordCount() != 0) {
        Tabela4->MoveFirst();
        Tabela4->Find(likeCriterion(u"numero"_s, Text6.text()));
    }
    twinIsLost_ = false;
}

void Form1Cli::Text3_Change(int)
{
    MaskEdBox1.setText(Text3(3).text());
    MaskEdBox2.setText(Text3(1).text());
    MaskEdBox3.setText(Text3(2).text());
}

void Form1Cli::Text3_GotFocus(int Index)
{
    if (sameText(Text3(Index), Text3(3)))
        Text3(3).setText(MaskEdBox1.text());
}

void Form1Cli::Text3_KeyPress(int Index, int& KeyAscii)
{
    enterAsTab(KeyAscii);
    // By their texts, so an empty telephone box takes comma and point while the price is empty,
    // too.
    if (sameText(Text3(Index), Text3(0)))
        filterKey(KeyAscii, SoValor);
    else
        filterKey(KeyAscii, SoNumero);
}

void Form1Cli::Text3_LostFocus(int Index)
{
    if (Text3(Index).locked() || Text3(Index).text().isEmpty())
        return;
    if (sameText(Text3(Index), Text3(3)))
        checkDocument(Text3(3));
}

void Form1Cli::Text1_KeyPress(int, int& KeyAscii)
{
    enterAsTab(KeyAscii);
}

void Form1Cli::Text7_KeyPress(int& KeyAscii)
{
    enterAsTab(KeyAscii);
}
