#include "Form1relatorio.h"

#include "Dates.h"
#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "RecordForms.h"
#include "Recordset.h"
#include "RuntimeError.h"
#include "Value.h"
#include "ui_Form1relatorio.h"

#include <utility>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

// The date counts as there when the quantity is: the two stand together in every row of a sale, and
// the list and the range search both rely on that pairing.
QString dateCell(Recordset& movimento)
{
    return movimento.Fields(2).isNull() ? QString() : movimento.Fields(4).textOrEmpty();
}

} // namespace

Form1relatorio::Form1relatorio() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1relatorio>())
{
    Command1.onClick([this] { Command1_Click(); });
    Command2.onClick([this] { Command2_Click(); });
    Command3.onClick([this] { Command3_Click(); });
    Command4.onClick([this] { Command4_Click(); });
}

void Form1relatorio::Form_Load()
{
    openMovement();
    setCaption(captionInUse(u"Relatório movimento de caixa      "_s));
    const std::pair<const char16_t*, int> columns[] = {
        {u"Código/O.S", 910}, {u"Descrição", 5190}, {u"Quant", 800},
        {u"Valor", 800},      {u"Data", 830},       {u"", 800},
    };
    int column = 0;
    for (const auto& [heading, twips] : columns) {
        MSFlexGrid1.setColWidth(column, twips);
        MSFlexGrid1.setTextMatrix(0, column++, QString::fromUtf16(heading));
    }
    CarregaGrid();
}

void Form1relatorio::Form_Unload()
{
    principal().StatusBar1.setPanel(2, supportEmailText());
}

void Form1relatorio::Command1_Click()
{
    Text5.setText(u"0"_s);
    Text3.setText(u"0,00"_s);
    openMovement();
    CarregaGridPeriodo();
    Command2.setEnabled(true);
}

void Form1relatorio::Command2_Click()
{
    ImprimeMovimento();
}

void Form1relatorio::Command3_Click()
{
    if (MsgBox(u"Você vai excluir todos arquivos,tem certeza?"_s, BoxButtons::YesNo,
               BoxIcon::Question) == Answer::Yes)
        ExcluiMovimento();
}

void Form1relatorio::Command4_Click()
{
    unload();
}

void Form1relatorio::openMovement()
{
    AbreBanco();
    openStatic(Tabela1, Conexao1, u"SELECT * FROM MOVIMENTO order by DATA"_s);
}

// Of a list that stopped, too: what stands there is all that comes.
void Form1relatorio::showTitle()
{
    principal().StatusBar1.setPanel(2, u"Formulário de Movimento de Caixa"_s);
}

void Form1relatorio::CarregaGrid()
{
    Sums sums = readSums();
    try {
        Text1.setText(u"0,00"_s);
        MSFlexGrid1.setRows(2);
        Text2.setText(u"0"_s);
        while (!Tabela1->eof()) {
            beginRow(sums);
            addRow(sums, MSFlexGrid1.Rows() - 1);
            Tabela1->MoveNext();
        }
        showSums(sums);
        showTitle();
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
        FechaBanco();
    } catch (const RuntimeError&) {
        // The row of a delivered job has no quantity, and the list is meant to stop there: the rows
        // and sums so far stay in view.
        showSums(sums);
        showTitle();
        MsgBox(u"Erro ao carregar grid 1"_s);
    }
}

void Form1relatorio::CarregaGridPeriodo()
{
    Sums sums = readSums();
    try {
        const QString start = dateText(DTPicker1.value());
        const QString end = dateText(DTPicker2.value());
        Text1.setText(u"0,00"_s);
        MSFlexGrid1.setRows(2);
        Text2.setText(u"0"_s);
        while (!Tabela1->eof()) {
            beginRow(sums);
            // Days are compared as texts, day first, and are meant to be: "05/12/2004" comes before
            // "10/01/2004". The counters are shared by all forms and start where another one left
            // them; only a row that is taken moves them on.
            if (sums.Text4 > start) {
                ContadorListaAnterior = Contador;
                addRow(sums, MSFlexGrid1.Rows() - 1);
            }
            Tabela1->MoveNext();
            Contador = ContadorListaAnterior + 1;
            // Looked at after the row was taken, so that one row beyond the end is listed too.
            if (end < sums.Text6)
                break;
        }
        showSums(sums);
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
        FechaBanco();
    } catch (const RuntimeError& error) {
        showSums(sums);
        tellFault(error, u"Erro ao carregar grid"_s);
    }
}

void Form1relatorio::ExcluiMovimento()
try {
    openMovement();
    QuantidadeItens = Tabela1->RecordCount();
    Tabela1->MoveFirst();
    while (!Tabela1->eof()) {
        Tabela1->Delete();
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() + 1);
        Tabela1->MoveNext();
    }
} catch (const RuntimeError& error) {
    tellFault(error, u"erro ao deletar"_s);
    CarregaGridPeriodo();
}

Form1relatorio::Sums Form1relatorio::readSums() const
{
    return {{Text3.text(), RunningSum::Total},
            {Text5.text(), RunningSum::Count},
            {Text8.text(), RunningSum::Total},
            {Text10.text(), RunningSum::Count},
            Text4.text(),
            Text6.text()};
}

void Form1relatorio::showSums(const Sums& sums)
{
    Text3.setText(sums.Text3.text());
    Text4.setText(sums.Text4);
    Text5.setText(sums.Text5.text());
    Text6.setText(sums.Text6);
    Text8.setText(sums.Text8.text());
    Text10.setText(sums.Text10.text());
}

void Form1relatorio::beginRow(Sums& sums) const
{
    sums.Text8 = sums.Text3;
    sums.Text4 = dateCell(*Tabela1.shared());
    sums.Text10 = sums.Text5;
}

void Form1relatorio::addRow(Sums& sums, int row)
{
    Recordset& movimento = *Tabela1.shared();
    const Value quantity = movimento.Fields(2);
    const Value value = movimento.Fields(3);
    const QString money = value.isNull() ? u"0,00"_s : Format(value, formats::Money);
    MSFlexGrid1.setTextMatrix(row, 0, movimento.Fields(0).textOrEmpty());
    MSFlexGrid1.setTextMatrix(row, 1, movimento.Fields(1).textOrEmpty());
    MSFlexGrid1.setTextMatrix(row, 2, quantity.textOrEmpty());
    MSFlexGrid1.setTextMatrix(row, 3, money);
    sums.Text3 = {money, RunningSum::Total};
    MSFlexGrid1.setTextMatrix(row, 4, sums.Text4);
    sums.Text6 = sums.Text4;

    // Each sum goes through its text: a quantity total of 0 becomes the empty text, which the next
    // row cannot count on from.
    sums.Text3 = sums.Text8.plus(value);
    MSFlexGrid1.setRows(row + 2);
    sums.Text5 = sums.Text10.plus(quantity);
}
