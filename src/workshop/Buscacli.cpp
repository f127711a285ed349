#include "Buscacli.h"

#include "Form1Cli.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Buscacli.h"

#include <array>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

const std::array<QString, 5> Queries{
    u"SELECT * FROM Cliente WHERE numero"_s,  u"SELECT * FROM Cliente WHERE Nome"_s,
    u"SELECT * FROM Cliente WHERE marca"_s,   u"SELECT * FROM Cliente WHERE telefone"_s,
    u"SELECT * FROM Cliente WHERE celular"_s,
};

struct Column
{
    QString heading;
    int twips;
    int position;
};

const std::array<Column, 5> Columns{{
    {u"Numero"_s, 700, 0},
    {u"Nome"_s, 2580, 3},
    {u"Marca"_s, 1600, 14},
    {u"Telefone"_s, 1000, 10},
    {u"Celular"_s, 1000, 11},
}};

} // namespace

Buscacli::Buscacli() : Form(QString::fromLatin1(Name), makeWindow<Ui::Buscacli>())
{
    Text1.onChange([this](int Index) { Text1_Change(Index); });
    Text1.onKeyPress([this](int Index, int& KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); }, OnError::Silent);
    MSFlexGrid1.onDblClick([this] { MSFlexGrid1_DblClick(); });
    MSFlexGrid1.onKeyPress([this](int& KeyAscii) { MSFlexGrid1_KeyPress(KeyAscii); });
    Command1.onClick([this] { Command1_Click(); });
    Command2.onClick([this] { Command2_Click(); });
}

void Buscacli::Form_Load()
{
    clear(Text1, 0, 4);
    for (int col = 0; col < static_cast<int>(Columns.size()); ++col) {
        MSFlexGrid1.setColWidth(col, Columns[static_cast<size_t>(col)].twips);
        MSFlexGrid1.setTextMatrix(0, col, Columns[static_cast<size_t>(col)].heading);
    }
    AbreBanco();
}

// By their texts, not by index: a box that reads like one before it searches that one's field.
int Buscacli::firstBoxLike(int Index) const
{
    int box = 0;
    while (!sameText(Text1(Index), Text1(box)))
        ++box;
    return box;
}

bool Buscacli::allEmpty() const
{
    for (int box = 0; box <= 4; ++box)
        if (!Text1(box).text().isEmpty())
            return false;
    return true;
}

void Buscacli::Text1_Change(int Index)
{
    const int box = firstBoxLike(Index);
    const QString text = Text1(box).text();
    MSFlexGrid1.setVisible(!text.isEmpty());
    if (text.isEmpty()) {
        Command1.setEnabled(false);
        Text2.setText({});
    }
    // With text left in another box the emptied one is searched for all the same, behind the
    // scenes.
    if (allEmpty())
        return;
    MSFlexGrid1.setRows(2);
    AbreBanco();
    setCaption(u"Buscar Cliente"_s);
    // The text goes in as it was typed: an apostrophe breaks the statement, and is meant to.
    Tabela1->Open(likeQuery(Queries[static_cast<size_t>(box)], text), Conexao1.shared(),
                  CursorType::Static, LockType::ReadOnly);
    fillFromTabela1();
    setCaption(u"Buscar Cliente - "_s + QString::number(Tabela1->RecordCount()) +
               u" clientes encontrados"_s);
}

void Buscacli::fillFromTabela1()
{
    if (!MSFlexGrid1.visible()) {
        const std::shared_ptr<Recordset> found = Tabela1.shared();
        MSFlexGrid1.setLazyRows(found->RecordCount(), [found](int row, int col) {
            try {
                found->setAbsolutePosition(row);
                return found->Fields(Columns[static_cast<size_t>(col)].position).textOrEmpty();
            } catch (const RuntimeError&) {
                return QString(); // closed since, or out of reach
            }
        });
        return;
    }
    std::vector<GridColumn> columns;
    for (const Column& column : Columns)
        columns.push_back({column.position, GridColumn::Text, {}});
    fillGrid(MSFlexGrid1, *Tabela1.shared(), columns);
    MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
}

void Buscacli::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1))
        return;
    Text2.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0));
    Command1.setEnabled(true);
}

void Buscacli::MSFlexGrid1_DblClick()
{
    if (onDataRow(MSFlexGrid1))
        openRecord(Text2.text());
}

// A clerk at the keyboard chooses with Space and opens with Enter.
void Buscacli::MSFlexGrid1_KeyPress(int& KeyAscii)
{
    if (KeyAscii != u' ' && KeyAscii != 13)
        return;
    MSFlexGrid1_Click();
    if (KeyAscii == 13)
        MSFlexGrid1_DblClick();
    KeyAscii = 0;
}

void Buscacli::Command1_Click()
{
    const QString number = Text2.text();
    if (!Trim(number).isEmpty()) {
        try {
            Tabela1->MoveFirst();
            Tabela1->Find(likeCriterion(u"numero"_s, number));
            Tabela1->Close();
        } catch (const RuntimeError&) {
            // Serves nobody here; the record opens by its number below.
        }
        openRecord(number);
    }
    Command1.setEnabled(false);
}

// The record's load closes this dialog; what follows then acts on the closed window.
void Buscacli::openRecord(const QString& number)
{
    form<Form1Cli>().Text2.setText(number);
    form<Form1Cli>().show(ShowStyle::Modal);
}

void Buscacli::Command2_Click()
{
    // Pair 1 stays open: the next form to open it replaces what it holds.
    unload();
}

void Buscacli::Text1_KeyPress(int, int& KeyAscii)
{
    enterAsTab(KeyAscii);
}
