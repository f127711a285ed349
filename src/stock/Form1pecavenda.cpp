#include "Form1pecavenda.h"

#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Numbers.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1pecavenda.h"

#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

constexpr int MaximumLines = 24; // the receipt has its totals at a fixed height

const QString SaleList = u"SELECT * FROM Pecas order by CODIGO"_s;
const QString Catalogue = u"SELECT * FROM Pecas order by CODIGO"_s;
const QString Orders = u"SELECT * FROM PEDIDO order by CODIGO"_s;

void openCatalogue()
{
    AbreBanco();
    openStatic(Tabela1, Conexao1, Catalogue);
}

// Opened anew and not only moved to its first row: a line just added stands in code order. Where
// that fails the list that is open goes on serving in the order that it has.
void reopenList()
try {
    Tabela2 = openedAnew(SaleList, Conexao2);
} catch (const RuntimeError&) {
    if (Tabela2->RecordCount() != 0)
        Tabela2->MoveFirst();
}

// A line whose amount is empty or cannot be read counts as nothing in the sums.
double amountIn(const QString& text)
{
    return isNumeric(text) ? toNumber(text) : 0;
}

// A look-up that fails stands at the end of file like one that finds nothing: what comes after it
// must not take the row that happened to be current.
void lookUp(ObjectVariable<Recordset>& table, const QString& criterion)
try {
    table->MoveFirst();
    table->Find(criterion);
} catch (const RuntimeError&) {
    if (!table->eof()) {
        table->MoveLast();
        table->MoveNext();
    }
}

QString asStock(const Value& value)
{
    return value.isNull() ? u"0"_s : value.text();
}

QString asFoundMoney(const Value& value)
{
    return Format(value, formats::Money);
}

std::vector<GridField> columnsWith(Shown stock, Shown price)
{
    return {{0, u"Código"_s, 800},
            {1, u"Local"_s, 800},
            {2, u"Quant"_s, 800, stock},
            {3, u"Descrição"_s, 5730},
            {4, u"Valor"_s, 800, price}};
}

const std::vector<GridField>& catalogueColumns()
{
    static const std::vector<GridField> columns = columnsWith(asStock, asMoney);
    return columns;
}

// A search shows nothing for a Null.
const std::vector<GridField>& foundColumns()
{
    static const std::vector<GridField> columns = columnsWith(asText, asFoundMoney);
    return columns;
}

} // namespace

Form1pecavenda::Form1pecavenda() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1pecavenda>())
{
    Command1.onClick([this](int Index) { Command1_Click(Index); });
    // The write-off of "&Oficina" has no trap: what fails there ends the program.
    Command2.onClick([this](int Index) { Command2_Click(Index); }, OnError::End);
    Command2.onKeyPress([](int, int& KeyAscii) { enterAsTab(KeyAscii); });
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); }, OnError::Silent);
    MSFlexGrid1.onKeyPress([this](int& KeyAscii) { MSFlexGrid1_KeyPress(KeyAscii); },
                           OnError::Silent);
    MSFlexGrid2.onClick([this] { MSFlexGrid2_Click(); }, OnError::Silent);
    MSFlexGrid2.onKeyPress([this](int& KeyAscii) { MSFlexGrid2_KeyPress(KeyAscii); });
    Text1.onChange([this](int Index) { Text1_Change(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text2.onChange([this] { Text2_Change(); }, OnError::Silent);
    Text4.onChange([this](int Index) { Text4_Change(Index); }, OnError::Silent);
    Text4.onKeyPress([](int, int& KeyAscii) { enterAsTab(KeyAscii); });
    Text6.onChange([this] { Text6_Change(); }, OnError::Silent);
    Text13.onChange([this] { Text13_Change(); }, OnError::Silent);
}

void Form1pecavenda::Form_Load()
{
    FlagRecarga = 0;
    AbreBancoVenda();
    openStatic(Tabela2, Conexao2, SaleList);
    CarregaListaVenda();
    openCatalogue();
    AbreBanco3();
    openStatic(Tabela3, Conexao3, Orders);
    AbreBanco4();
    openStatic(Tabela4, Conexao4, Orders);
    orders_.reset();
    DescricaoPeca.clear();
    DescricaoPedido.clear();
    LimpaCamposItem();
    setCaption(captionInUse(u"Venda de peças e acessórios      "_s));

    setHeadings(MSFlexGrid1, catalogueColumns());
    const std::array listWidths{800, 800, 600, 5190, 800, 800, 800};
    const std::array listHeadings{u"Código"_s, u"Local"_s, u"Quant"_s, u"Descrição"_s,
                                  u"Unit"_s,   u"Total"_s, QString()};
    for (int column = 0; column < 7; ++column) {
        MSFlexGrid2.setColWidth(column, listWidths[column]);
        MSFlexGrid2.setTextMatrix(0, column, listHeadings[column]);
    }

    Text7.setText(QString::number(Tabela2->RecordCount()));
    if (Tabela1->RecordCount() != 0) {
        MSFlexGrid1.setTabStop(true);
        CarregaCatalogo();
    } else {
        MSFlexGrid1.setTabStop(false);
    }
}

void Form1pecavenda::Form_Unload()
{
    closeIfOpen(Tabela1, Conexao1);
    closeIfOpen(Tabela2, Conexao2);
    closeIfOpen(Tabela4, Conexao4);
    closeIfOpen(Conexao3); // and its recordset with it
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1pecavenda::Form_Deactivate()
{
    FechaBanco();
    FechaBancoVenda();
    FechaBanco4();
    principal().StatusBar1.setPanel(2, supportEmailText());
    unload();
}

void Form1pecavenda::CarregaListaVenda()
{
    Text7.setText(Format(Tabela2->RecordCount(), formats::Code));
    if (Tabela2->RecordCount() != 0) {
        MSFlexGrid1.setTabStop(true);
        MSFlexGrid2.setTabStop(true);
        setEnabled(Command2, {1, 2}, true);
        Command1(1).setEnabled(true);
    } else {
        setEnabled(Command2, {0, 1, 2}, false);
        Command1(1).setEnabled(false);
        MSFlexGrid1.setTabStop(true);
        MSFlexGrid2.setTabStop(false);
        Text7.setText(u"0000000"_s);
        Text9.setText({});
        Text3.setText(u"0,00"_s);
        LimpaCamposItem();
        Text2.setText({});
    }
    if (FlagRecarga == 1)
        reopenList();
    Text3.setText(u"0,00"_s);
    MSFlexGrid2.setRows(2);
    Text5.setText(u"0"_s);
    for (; !Tabela2->eof(); Tabela2->MoveNext()) {
        Text10.setText(Text5.text());
        Text8.setText(Text3.text());
        showLine(MSFlexGrid2.Rows() - 1);
        Text3.setText(
            Format(amountIn(Text8.text()) + amountIn(Tabela2->Fields(u"TOTAL"_s).textOrEmpty()),
                   formats::Total));
        MSFlexGrid2.setRows(MSFlexGrid2.Rows() + 1);
        Text5.setText(Format(amountIn(Text10.text()) +
                                 amountIn(Tabela2->Fields(u"QUANTIDADE"_s).textOrEmpty()),
                             formats::Count));
    }
    MSFlexGrid2.setRows(MSFlexGrid2.Rows() - 1);
    FlagRecarga = 0;
    litRow_ = 0;
    Text1(6).setText(u"1"_s);
    // A soft limit, and meant to be: a click in the catalogue opens "&Incluir" again.
    if (Tabela2->RecordCount() >= MaximumLines) {
        Command2(0).setEnabled(false);
        MSFlexGrid1.setTabStop(false);
        MsgBox(
            u"Máximo 24 linhas no pedido,imprima está lista,limpe os itens da lista e continue a incluir."_s);
    }
}

// The current line of the list, into a row of its grid.
void Form1pecavenda::showLine(int row)
{
    for (int column = 0; column < 7; ++column) {
        const Value value = Tabela2->Fields(column).value();
        if (column == 4 || column == 5)
            MSFlexGrid2.setTextMatrix(row, column,
                                      value.isNull() ? u"0,00"_s : Format(value, formats::Money));
        else
            MSFlexGrid2.setTextMatrix(row, column, value.textOrEmpty());
    }
}

void Form1pecavenda::LimpaCamposItem()
{
    clear(Text1, 0, 5);
}

void Form1pecavenda::showRowsFromCurrent(const std::vector<GridField>& columns)
{
    const int first = Tabela1->eof() ? Tabela1->RecordCount() : Tabela1->AbsolutePosition() - 1;
    if (first <= 0)
        refillGrid(MSFlexGrid1, Tabela1, columns);
    else
        refillGrid(MSFlexGrid1, Tabela1, columns,
                   [first](const RowsView&, int row) { return row >= first; });
}

void Form1pecavenda::CarregaCatalogo()
try {
    Text4(0).setText({});
    Text4(1).setText({});
    if (FlagRecarga == 2)
        Tabela1->MoveFirst();
    showRowsFromCurrent(catalogueColumns());
    Tabela1->MoveLast();
    principal().StatusBar1.setPanel(2, u"Formulário de Venda de Peças"_s);
    if (FlagRecarga == 0)
        Tabela1->MoveFirst();
    FlagRecarga = 0;
} catch (const RuntimeError&) {
    // Ends silently: what was filled so far stays in view.
}

void Form1pecavenda::MostraPeca()
try {
    LimpaCamposItem();
    const auto money = [](const Value& value) {
        return value.isNull() ? u"0,00"_s : Format(value, formats::Money);
    };
    Text1(0).setText(Tabela1->Fields(0).textOrEmpty());
    Text1(1).setText(Tabela1->Fields(5).textOrEmpty());
    Text1(2).setText(money(Tabela1->Fields(4)));
    Text1(3).setText(Tabela1->Fields(3).textOrEmpty());
    Text1(4).setText(Tabela1->Fields(1).textOrEmpty());
    Text1(5).setText(money(Tabela1->Fields(4))); // the line total of quantity 1
} catch (const RuntimeError&) {
    // Ends silently: the boxes stay as they were filled so far.
}

// The new row is added here and not before it, so that a line that cannot be stored leaves none
// pending and can be tried again.
void Form1pecavenda::GravaItemVenda()
{
    const std::array<std::pair<QString, QString>, 7> fields{{
        {u"CODIGO"_s, Text1(0).text()},
        {u"LOCAL"_s, Text1(4).text()},
        {u"QUANTIDADE"_s, Text1(6).text()},
        {u"DESCRICAO"_s, Text1(3).text()},
        {u"UNITARIO"_s, Text1(2).text()},
        {u"TOTAL"_s, Text1(5).text()},
        {u"NUMERO"_s, Text7.text()},
    }};
    inOnePiece({Conexao2}, [&fields] {
        if (!Tabela2->eof())
            Tabela2->MoveLast();
        Tabela2->AddNew();
        for (const auto& [name, text] : fields)
            if (!text.isEmpty())
                Tabela2->Fields(name) = text;
        Tabela2->Update();
    });
    CarregaListaVenda();
}

void Form1pecavenda::LimpaListaVenda()
{
    deleteLines();
    CarregaListaVenda();
}

// All of them, or the list stays as it is shown.
void Form1pecavenda::deleteLines()
{
    inOnePiece({Conexao2}, [] {
        for (Tabela2->MoveFirst(); !Tabela2->eof(); Tabela2->MoveNext())
            Tabela2->Delete();
    });
}

void Form1pecavenda::Text4_Change(int Index)
{
    // The box is told by its text: the same text in both searches by code.
    if (sameText(Text4(Index), Text4(0)))
        search(Text4(0).text(), u"SELECT * FROM pecas WHERE codigo"_s);
    else if (sameText(Text4(Index), Text4(1)))
        search(Text4(1).text(), u"SELECT * FROM pecas WHERE descricao"_s);
}

void Form1pecavenda::search(const QString& text, const QString& selectWhere)
{
    MSFlexGrid1.setTabStop(!text.isEmpty());
    if (Text4(0).text().isEmpty() && Text4(1).text().isEmpty()) {
        emptyGrid(MSFlexGrid1);
        setCaption(u"Buscar Peça"_s);
        return;
    }
    const ObjectVariable<Connection> formerConnection = Conexao1;
    const ObjectVariable<Recordset> formerTable = Tabela1;
    try {
        AbreBanco();
        Tabela1->Open(likeQuery(selectWhere, text), Conexao1.shared(), CursorType::Static,
                      LockType::ReadOnly);
    } catch (const RuntimeError&) {
        // The catalogue that was open goes on serving.
        Conexao1 = formerConnection;
        Tabela1 = formerTable;
        throw;
    }
    showRowsFromCurrent(foundColumns());
    // The end is where a search leaves the catalogue: nothing is picked by it.
    if (!Tabela1->eof()) {
        Tabela1->MoveLast();
        Tabela1->MoveNext();
    }
    Text1(6).setLocked(true);
    setEnabled(Command2, {0, 1, 2}, false);
    const int found = Tabela1->RecordCount();
    setCaption(u"Buscar Peça - "_s + QString::number(found) + u" peça encontrados"_s);
    MSFlexGrid1.setTabStop(found != 0);
}

void Form1pecavenda::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1))
        return;
    openCatalogue(); // whole and writable again after a search
    const QString code = MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0);
    // Emptied first, so that a second click on the same row looks the part up again: the catalogue
    // just opened stands on its first row, and the write-off takes the row where it stands.
    Text2.setText({});
    Text2.setText(code);
    if (Tabela1->eof())
        return;
    Text1(6).setLocked(false);
    Command2(0).setEnabled(true);
}

// Enter shows the part; only a click makes it saleable. Meant.
void Form1pecavenda::MSFlexGrid1_KeyPress(int KeyAscii)
{
    if (KeyAscii == 13 && onDataRow(MSFlexGrid1))
        Text2.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0));
}

void Form1pecavenda::Text2_Change()
{
    const QString code = Trim(Text2.text());
    if (code.isEmpty())
        return;
    lookUp(Tabela1, likeCriterion(u"CODIGO"_s, code));
    MostraPeca();
    if (Tabela1->eof()) // gone since the grid was filled: empty boxes, and nothing to sell
        Command2(0).setEnabled(false);
}

void Form1pecavenda::Text1_Change(int Index)
{
    // No part picked, or shown for the write-off alone, which no box about its price may interrupt.
    if (Text1(2).text().isEmpty() || isBooking_)
        return;
    // The quantity box is told by its text: any box that holds the same text counts as it.
    if (!sameText(Text1(Index), Text1(6)))
        return;
    if (Text1(6).text().isEmpty()) {
        Command2(0).setEnabled(false);
        return;
    }
    Text1(5).setText(
        Format(toNumber(Text1(2).text()) * toNumber(Text1(6).text()), formats::LineTotal));
    Command2(0).setEnabled(true);
}

void Form1pecavenda::Text1_KeyPress(int Index, int& KeyAscii)
{
    if (enterAsTab(KeyAscii))
        return;
    if (sameText(Text1(Index), Text1(6)))
        filterKey(KeyAscii, SoNumero);
}

void Form1pecavenda::MSFlexGrid2_Click()
{
    const int row = MSFlexGrid2.Row();
    if (!onDataRow(MSFlexGrid2, 6))
        return;
    Text6.setText(MSFlexGrid2.TextMatrix(row, 6));
    Text9.setText(MSFlexGrid2.TextMatrix(row, 5));
    Text11.setText(MSFlexGrid2.TextMatrix(row, 3));
    litRow_ = 0; // from now on it is the clerk's own choice
}

void Form1pecavenda::Text6_Change()
{
    MSFlexGrid2.setTabStop(false);
    const QString number = Trim(Text6.text());
    if (!number.isEmpty())
        lookUp(Tabela2, likeCriterion(u"NUMERO"_s, number));
}

// Esc takes the line out of the list, without a question.
void Form1pecavenda::MSFlexGrid2_KeyPress(int KeyAscii)
{
    if (KeyAscii != 27 || !onDataRow(MSFlexGrid2, 6))
        return;
    Text6.setText({});
    Text6.setText(MSFlexGrid2.TextMatrix(MSFlexGrid2.Row(), 6));
    inOnePiece({Conexao2}, [] { Tabela2->Delete(); });
    // Nobody sees what these two become: the reload writes both boxes anew.
    Text3.setText(toText(Val(Text9.text()) - Val(Text3.text())));
    Text5.setText(toText(Val(Text11.text()) - Val(Text5.text())));
    FlagRecarga = 1;
    CarregaListaVenda();
}

void Form1pecavenda::Command1_Click(int Index)
{
    if (Index == 0) {
        Fechar();
    } else {
        LimpaListaVenda();
    }
}

void Form1pecavenda::Fechar()
{
    if (Tabela2->RecordCount() != 0) {
        MSFlexGrid2.setTabStop(true);
        if (MsgBox(u"A pedido(s) feito(s),caso saia todos serão excluidos!"_s, BoxButtons::YesNo,
                   BoxIcon::Question) != Answer::Yes)
            return;
        LimpaListaVenda();
    }
    unload();
}

void Form1pecavenda::Command2_Click(int Index)
{
    switch (Index) {
    case 0: gate::run(*this, OnError::Box, [this] { Incluir(); }); break;
    case 1: ImprimeVenda(); break;
    default: Oficina(); break;
    }
}

void Form1pecavenda::Incluir()
{
    const QString number = nextCode(Text7.text());
    Text7.setText(number);
    FlagRecarga = 1;
    try {
        GravaItemVenda();
    } catch (const RuntimeError&) {
        // A line that did not enter the list has used no number.
        Text7.setText(Format(Tabela2->RecordCount(), formats::Code));
        throw;
    }
    lightLine(number);
    Text4(1).SetFocus();
    Text4(1).selectAll(); // the next search takes the place of the one before
}

// The newest line of that number; Esc takes it out again, but paper still begins at the first line.
void Form1pecavenda::lightLine(const QString& number)
{
    int row = MSFlexGrid2.Rows() - 1;
    while (row > 0 && (MSFlexGrid2.TextMatrix(row, 6) != number ||
                       MSFlexGrid2.TextMatrix(row, 0) != Text1(0).text()))
        --row;
    if (row > 0)
        MSFlexGrid2.setRow(row);
    litRow_ = row;
}

void Form1pecavenda::Oficina()
{
    if (MsgBox(u"Uso interno da oficina ?"_s, BoxButtons::YesNo, BoxIcon::Question) !=
        Answer::Yes) {
        Command2(2).SetFocus(); // not left on "&Limpar", where Enter brought it
        return;
    }
    setCaption(
        captionInUse(u"Venda de peças e acessórios dando baixa no estoque,aguarde...     "_s));
    BaixaEstoque();
    finishWriteOff();
}
