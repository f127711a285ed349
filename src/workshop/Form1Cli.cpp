#include "Form1Cli.h"

#include "Buscacli.h"
#include "Dates.h"
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
using namespace Qt::Literals::StringLiterals;

namespace {

const QString OrdersByNumber = u"SELECT * FROM Cliente order by numero"_s;
const QString TwinsByNumber = u"SELECT * FROM PECAAPLICADA order by numero"_s;

const QString CopyCaption = u"&Copiar"_s;
const QString PasteCaption = u"&Colar"_s;

constexpr int ButtonEntrada = 6;
constexpr int ButtonSaida = 7;
constexpr int DocumentMaxLength = 18;

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
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
    setCaption(captionInUse(u"Fichario de Clientes      "_s));
    FormRegistry::instance().unload(QString::fromLatin1(Buscacli::Name));
    // What another form left in the pairs is not this form's to close.
    for (ObjectVariable<Recordset>* table : {&Tabela1, &Tabela3, &Tabela4})
        table->setNothing();
    for (ObjectVariable<Connection>* connection : {&Conexao1, &Conexao3, &Conexao4})
        connection->setNothing();
    AbreBanco();
    openStatic(Tabela1, Conexao1, OrdersByNumber);
    AbreBanco3();
    Tabela3->Open(OrdersByNumber, Conexao3.shared(), CursorType::Dynamic, LockType::ReadOnly);
    AbreBanco4();
    openStatic(Tabela4, Conexao4, TwinsByNumber);
    LimpaCampos();
    if (Tabela1->RecordCount() != 0)
        MostraFicha();
    AtualizaContagem();
    TravaCampos();
} catch (const RuntimeError& error) {
    tellFailedLoad(error, u"Fichario de Cliente"_s);
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
    leaveNewAndClose(Command1);
}

void Form1Cli::Command1_Click(int Index)
{
    switch (Index) {
    case button::Incluir: Incluir(); break;
    case button::Salvar: Salvar(); break;
    case button::Editar: Editar(); break;
    case button::Excluir: Excluir(); break;
    case button::Procurar: Procurar(); break;
    case button::Copiar:
        Command1(button::Copiar).caption() == CopyCaption ? Copiar() : Colar();
        break;
    case ButtonEntrada: ImprimeFichaEntrada(); break;
    case ButtonSaida: Saida(); break;
    case button::Fechar: unload(); break;
    case button::Cancela: Cancela(); break;
    default: navigate(Index, Tabela1, Command1); MostraFicha();
    }
}

void Form1Cli::Incluir()
{
    reopenTabela3(OrdersByNumber);
    if (!Tabela3->eof())
        Tabela3->MoveLast();
    beginNewOrder();
    Text1(0).SetFocus();
}

// Both rows become pending, or none; the form is as it was where they cannot be had.
void Form1Cli::beginNewOrder()
{
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        MostraFicha();
    }
    NumeroFicha = Val(Right(Text1(13).text(), 7));
    Tabela1->AddNew();
    try {
        Tabela4->AddNew();
    } catch (const RuntimeError&) {
        Tabela1->CancelUpdate();
        throw;
    }
    LimpaCampos();
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
    // It still holds the number last shown, which would pass for a clash.
    Text5.setText({});
    Text1(13).setText(Format(NumeroFicha + 1, formats::Code));
    Text1(14).setText(dateText(Clock::today()));
    Modo = 1;
}

// Only when the order is stored the form is back at browsing; else it stays as it was, so that the
// same can be tried again.
void Form1Cli::Salvar()
{
    NumeroFicha = Val(Right(Text1(13).text(), 7));
    Text1(13).setText(Format(NumeroFicha, formats::Code));
    try {
        if (!storeUnlessNumberExists()) {
            askAboutNumber();
            return;
        }
    } catch (const RuntimeError&) {
        return; // Ends silently.
    }
    Modo = 0;
    backToBrowsing();
    AtualizaContagem();
    Command1(ButtonEntrada).SetFocus();
}

void Form1Cli::askAboutNumber()
{
    if (MsgBox(u"Número de Cadastro já existe,quer editar o cadastro sim ou não?"_s,
               BoxButtons::YesNo, BoxIcon::Question) == Answer::Yes) {
        editExisting();
        return;
    }
    Text1(13).setText({});
    Text1(13).setLocked(false);
    Text1(13).SetFocus();
}

void Form1Cli::editExisting()
{
    // A row written elsewhere is in neither table as they were opened. Where it cannot be found in
    // new ones, the new order is still pending.
    const ObjectVariable<Recordset> orders = openedAnew(OrdersByNumber, Conexao1);
    if (!orders->eof())
        orders->Find(likeCriterion(u"numero"_s, Text1(13).text()));
    if (orders->eof()) { // deleted meanwhile: the number is free, and the next save takes it
        Text5.setText({});
        return;
    }
    const ObjectVariable<Recordset> twins = openedAnew(TwinsByNumber, Conexao4);
    Tabela1->CancelUpdate();
    Tabela4->CancelUpdate();
    Text5.setText({});
    Text2.setText({});
    Modo = 0;
    Text1(13).setLocked(true);
    Tabela1 = orders;
    Tabela4 = twins;
    Text2.setText(Text1(13).text());
}

void Form1Cli::Editar()
{
    reopenTabela3(OrdersByNumber);
    DesativaBotoes();
    LiberaCampos();
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, true);
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
    reopenTabela3(OrdersByNumber);
    DesativaBotoes();
    TravaCampos();
    Command1(button::Copiar).setCaption(PasteCaption);
    Command1(button::Copiar).setEnabled(true);
    CopiaCliente();
    LimpaCampos();
    Command1(button::Copiar).SetFocus();
}

void Form1Cli::Colar()
{
    beginNewOrder();
    Command1(button::Copiar).setCaption(CopyCaption);
    ColaCliente();
    Text1(13).setLocked(true);
    Text1(8).SetFocus(); // the client is known: the device comes next
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
    reopenTabela3(u"SELECT * FROM Cliente"_s);
    const QString before = Text1(15).text();
    if (before.isEmpty())
        Text1(15).setText(dateText(Clock::today()));
    try {
        if (deliveryWouldBeRefused()) { // to be looked at before it is delivered
            MostraFicha();
            return;
        }
        storeDelivery(ImprimeFichaSaida());
        AtualizaContagem();
    } catch (const RuntimeError&) {
        Text1(15).setText(before);
        MsgBox(u"A entrega não foi gravada, nem a data de saída nem o valor no caixa. Repita a "
               u"saída."_s,
               BoxButtons::Ok, BoxIcon::Critical, u"Fichario de Cliente"_s);
    }
    closeIfOpen(Tabela5, Conexao5);
}

void Form1Cli::Cancela()
{
    backToBrowsing();
    Tabela1->CancelUpdate();
    Tabela4->CancelUpdate();
    AtualizaContagem();
    Modo = 0;
}

void Form1Cli::backToBrowsing()
{
    AtivaBotoes();
    TravaCampos();
    setEnabled(Command1, {button::Salvar, button::Excluir, button::Cancela}, false);
}

void Form1Cli::Check1_GotFocus(int)
{
    // While a copy waits only "&Colar" is alive.
    if (Command1(button::Copiar).caption() == PasteCaption)
        return;
    // A flag can be set and saved without "&Editar": its focus alone is enough.
    setEnabled(Command1, {button::Salvar, button::Cancela}, true);
}

void Form1Cli::Text1_Change(int Index)
{
    Text6.setText(Text1(13).text());
    // By their texts: any box that reads like the number box looks the number up.
    if (!sameText(Text1(Index), Text1(13)) || Trim(Text1(Index).text()).isEmpty())
        return;
    try {
        findNumber(Text1(Index).text());
        Text5.setText(Tabela3->Fields(0).textOrEmpty());
    } catch (const RuntimeError&) {
        // Not found: the number found before stays.
    }
}

void Form1Cli::Text2_Change()
{
    const QString number = Text2.text();
    if (Trim(number).isEmpty())
        return;
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
