#include "Buscafornecedor.h"

#include "Form1For.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "RecordFields.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Buscafornecedor.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

const std::vector<GridField>& columns()
{
    static const std::vector<GridField> list{{9, u"Codigo"_s, 700},
                                             {0, u"Empresa"_s, 2580},
                                             {1, u"Vendedor"_s, 1100},
                                             {8, u"Produto"_s, 2600}};
    return list;
}

} // namespace

Buscafornecedor::Buscafornecedor()
    : Form(QString::fromLatin1(Name), makeWindow<Ui::Buscafornecedor>())
{
    Text1.onChange([this](int Index) { Text1_Change(Index); });
    Text1.onKeyPress([](int, int& KeyAscii) { enterAsTab(KeyAscii); });
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); }, OnError::Silent);
    Command1.onClick([this] { Command1_Click(); });
    // Pair 1 stays open: the next form to open it replaces what it holds.
    Command2.onClick([this] { unload(); });
}

void Buscafornecedor::Form_Load()
{
    setHeadings(MSFlexGrid1, columns());
    AbreBanco();
}

void Buscafornecedor::Text1_Change(int Index)
{
    static const QString selects[]{u"SELECT * FROM FORNECEDOR WHERE NOMEEMPRESA"_s,
                                   u"SELECT * FROM FORNECEDOR WHERE NOMEFORNECEDOR"_s,
                                   u"SELECT * FROM FORNECEDOR WHERE PRODUTO"_s};
    // By their texts: a box that reads like one before it searches that one's field.
    const int box = firstWithText(Text1, Index, {0, 1, 2});
    search(Text1(box).text(), selects[box]);
}

void Buscafornecedor::search(const QString& text, const QString& selectWhere)
{
    // With text left in another box the emptied one lists every firm, out of reach.
    MSFlexGrid1.setEnabled(!text.isEmpty());
    if (Text1(0).text().isEmpty() && Text1(1).text().isEmpty() && Text1(2).text().isEmpty()) {
        emptyGrid(MSFlexGrid1);
        setCaption(u"Buscar Fornecedor"_s);
        return;
    }
    MSFlexGrid1.setRows(2);
    AbreBanco();
    // The text goes in as it was typed: an apostrophe breaks the statement, and is meant to.
    Tabela1->Open(likeQuery(selectWhere, text), Conexao1.shared(), CursorType::Static,
                  LockType::ReadOnly);
    const int found = refillGrid(MSFlexGrid1, Tabela1, columns());
    setCaption(u"Buscar Fornecedor - "_s + QString::number(found) + u" fornecedor encontrados"_s);
}

void Buscafornecedor::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1))
        return;
    Text2.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0));
    Command1.setEnabled(true);
}

void Buscafornecedor::Command1_Click()
{
    const QString code = Text2.text();
    if (Trim(code).isEmpty())
        return;
    endSearch(Tabela1, u"CODIGO"_s, code);
    form<Form1For>().Text3.setText(code); // loads the register, which unloads this dialog
    form<Form1For>().show(ShowStyle::Modal);
    Command1.setEnabled(false);
}
