#include "Form1servico.h"

#include "Form1principal.h"
#include "Funciones.h"
#include "OnePiece.h"
#include "RecordFields.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1servico.h"

#include <array>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

enum Button
{
    ButtonEditar,
    ButtonSalvar,
    ButtonCancela,
    ButtonFechar
};

constexpr int BoxSearch = 0;
constexpr int FirstLineBox = 4;
constexpr int BoxService = 26;
constexpr int LastBox = 37;

constexpr int Service = 18; // in Cliente
constexpr int FirstFlag = 20;
constexpr std::array Flags{0, 1, 3};

const std::vector<GridField>& gridFields()
{
    static const std::vector<GridField> fields{{0, u"Numero"_s, 700},
                                               {3, u"Nome"_s, 2900},
                                               {14, u"Marca"_s, 2000},
                                               {10, u"Telefone"_s, 1000}};
    return fields;
}

void openParts(ObjectVariable<Recordset>& table, const ObjectVariable<Connection>& connection)
{
    table->Open(u"SELECT * FROM PECAS order by DESCRICAO"_s, connection.shared(),
                CursorType::Static, LockType::ReadOnly);
}

const QString TwinsByNumber = u"SELECT * FROM PECAAPLICADA order by NUMERO"_s;

// The first row of that number becomes current; the end where there is none.
void find(ObjectVariable<Recordset>& table, const QString& number)
{
    table->MoveFirst();
    table->Find(likeCriterion(u"numero"_s, number));
}

// An order taken in since the bench was opened has its twin in a table opened anew. Where there is
// none at all the look into an empty table fails.
void findTwin(const QString& number)
{
    if (Tabela4->RecordCount() != 0) {
        find(Tabela4, number);
        if (!Tabela4->eof())
            return;
    }
    Tabela4 = openedAnew(TwinsByNumber, Conexao4);
    find(Tabela4, number);
}

} // namespace

// An error in a search, in what shows an order, in a part picked and in a save ends the program:
// with half of an order on the screen the next save would go to another one.
Form1servico::Form1servico() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1servico>())
{
    Text1.onChange([this](int Index) { Text1_Change(Index); }, OnError::End);
    Text1.onKeyPress([](int, int& KeyAscii) { enterAsTab(KeyAscii); });
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); }, OnError::Silent);
    Text3.onChange([this] { Text3_Change(); }, OnError::End);
    Text4.onChange([this] { Text4_Change(); }, OnError::End);
    int number = 0;
    for (ComboBox* description : combos_) {
        description->onClick([this, line = ++number] { Combo_Click(line); }, OnError::End);
        description->onKeyPress([](int& KeyAscii) { enterAsTab(KeyAscii); });
    }
    Command1.onClick([this](int Index) { Command1_Click(Index); }, OnError::End);
}

void Form1servico::Form_Load()
{
    setCaption(captionInUse(u"Serviço executado e peças aplicadas pelo Técnico  "_s));
    // What another form left in the pairs is not this form's to close.
    for (ObjectVariable<Recordset>* table : {&Tabela1, &Tabela3, &Tabela4})
        table->setNothing();
    for (ObjectVariable<Connection>* connection : {&Conexao1, &Conexao3, &Conexao4})
        connection->setNothing();
    AbreBanco();
    openParts(Tabela1, Conexao1);
    AbreBanco3();
    openParts(Tabela3, Conexao3);
    AbreBanco4();
    openStatic(Tabela4, Conexao4, TwinsByNumber);
    setHeadings(MSFlexGrid1, gridFields());
    LimpaCampos();
    DesativaBotoes();
    TravaCampos();
    CarregaPecas();
}

void Form1servico::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    closeIfOpen(Tabela3, Conexao3);
    closeIfOpen(Tabela4, Conexao4);
    principal().StatusBar1.setPanel(2, supportEmailText());
}

// The flags stay: a form that was emptied goes on showing those of the order shown last.
void Form1servico::LimpaCampos()
{
    // While the search box is empty each box that is emptied comes back here; the shared counter
    // then ends the loops further out, too.
    for (Contador = 1; Contador <= LastBox; ++Contador)
        Text1(Contador).setText({});
    for (ComboBox* description : combos_)
        description->setText({});
}

void Form1servico::TravaCampos()
{
    setLinesLocked(true);
}

void Form1servico::LiberaCampos()
{
    setLinesLocked(false);
}

// The service, too. The flags are never locked, and the order's own boxes always are.
void Form1servico::setLinesLocked(bool locked)
{
    for (Contador = FirstLineBox; Contador <= LastBox; ++Contador)
        Text1(Contador).setLocked(locked);
    for (ComboBox* description : combos_)
        description->setLocked(locked);
}

void Form1servico::DesativaBotoes()
{
    for (Contador = ButtonEditar; Contador <= ButtonCancela; ++Contador)
        Command1(Contador).setEnabled(false);
}

void Form1servico::Text1_Change(int Index)
{
    // By their texts: any box that comes to read like the search box searches anew, the number of
    // the order shown for one, and leaves Tabela1 on the last order found. Meant.
    if (!sameText(Text1(Index), Text1(BoxSearch)))
        return;
    const QString number = Text1(BoxSearch).text();
    MSFlexGrid1.setVisible(!number.isEmpty());
    if (number.isEmpty()) {
        showNoOrders();
        return;
    }
    AbreBanco();
    openStatic(Tabela1, Conexao1, likeQuery(u"SELECT * FROM Cliente WHERE numero"_s, number));
    const int found = refillGrid(MSFlexGrid1, Tabela1, gridFields());
    setCaption(u"Peças aplicadas e serviço executado - "_s + QString::number(found) +
               u" clientes encontrados"_s);
    MSFlexGrid1.setVisible(found != 0);
    if (found != 0)
        Tabela1->MoveLast();
    Command1(ButtonEditar).setEnabled(found != 0);
}

void Form1servico::showNoOrders()
{
    NomeSelecionado.clear();
    TelefoneSelecionado.clear();
    Text3.setText({});
    LimpaCampos();
    Command1(ButtonEditar).setEnabled(false);
    emptyGrid(MSFlexGrid1);
    setCaption(u"Peças aplicadas e Serviço executado pelo Técnico"_s);
}

void Form1servico::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1))
        return;
    const int row = MSFlexGrid1.Row();
    const QString number = MSFlexGrid1.TextMatrix(row, 0);
    NomeSelecionado = MSFlexGrid1.TextMatrix(row, 1);
    TelefoneSelecionado = MSFlexGrid1.TextMatrix(row, 3);
    Text2.setText(number);
    Text3.setText(number); // the same order again changes nothing
}

void Form1servico::Text3_Change()
{
    LimpaCampos();
    const QString number = Text3.text();
    if (Trim(number).isEmpty())
        return;
    findTwin(number);
    find(Tabela1, number);
    MostraPecasAplicadas();
    MostraCliente();
}

// A box that comes to read like the search box replaces Tabela1 in the middle of this.
void Form1servico::MostraCliente()
try {
    showFields(
        Tabela1,
        {{0, Text1(1)}, {3, Text1(2)}, {Service, Text1(BoxService)}, {10, Text1(3), asPhone}});
    for (const int flag : Flags) {
        const Value value = Tabela1->Fields(FirstFlag + flag);
        // All but a plain no is a yes here, a Null as well; the client record shows that one empty.
        Check1(flag).setValue(value.isNull() || value.isTrue() ? 1 : 0);
    }
} catch (const RuntimeError&) {
    // Ends silently: what was filled so far stays in view.
}

void Form1servico::Command1_Click(int Index)
{
    switch (Index) {
    case ButtonEditar: Editar(); break;
    case ButtonSalvar:
        GravaServico();
        backToSearch();
        break;
    case ButtonCancela:
        backToSearch(); // what was typed stays in view, unsaved
        break;
    default: unload();
    }
}

void Form1servico::Editar()
{
    LiberaCampos();
    Text1(BoxSearch).setLocked(true);
    MSFlexGrid1.setVisible(false);
    setEnabled(Command1, {ButtonCancela, ButtonSalvar}, true);
    setEnabled(Command1, {ButtonEditar, ButtonFechar}, false);
    Text1(BoxService).SetFocus();
}

// "&Editar" stays off until the search box is typed in.
void Form1servico::backToSearch()
{
    setEnabled(Command1, {ButtonSalvar, ButtonCancela}, false);
    Command1(ButtonFechar).setEnabled(true);
    Text1(BoxSearch).setLocked(false);
    TravaCampos();
    Text1(BoxSearch).SetFocus();
}

// Writes to the rows that are current, whichever they are: before a row of the grid was clicked
// those are the last order found and whatever twin was looked at last. Meant.
void Form1servico::GravaServico()
{
    inOnePiece({Conexao1, Conexao4}, [this] {
        storeFields(Tabela1, {{Service, Text1(BoxService)}});
        fillTwin();
        for (const int flag : Flags)
            Tabela1->Fields(FirstFlag + flag) = Check1(flag).value() != 0;
        Tabela1->UpdateMerged();
        Tabela4->UpdateMerged();
    });
}
