#include "Form1pecabusca.h"

#include "Form1Pec.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"
#include "ui_Form1pecabusca.h"

#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

// Enter in the grid is not bound: it picks nothing, only a click arms "&Abrir". Meant.
Form1pecabusca::Form1pecabusca() : Form(QString::fromLatin1(Name), makeWindow<Ui::Form1pecabusca>())
{
    Text4.onChange([this](int Index) { Text4_Change(Index); }, OnError::Silent);
    Text4.onKeyPress([](int, int& KeyAscii) { enterAsTab(KeyAscii); });
    MSFlexGrid1.onClick([this] { MSFlexGrid1_Click(); }, OnError::Silent);
    Command1.onClick([this] { Command1_Click(); });
    Command2.onClick([this] { unload(); });
}

void Form1pecabusca::Form_Load()
{
    const std::array widths{800, 800, 700, 4300, 800};
    const std::array headings{u"Código"_s, u"Local"_s, u"Quant"_s, u"Descrição"_s, u"Valor"_s};
    for (int column = 0; column < 5; ++column)
        MSFlexGrid1.setColWidth(column, widths[column]);
    AbreBanco();
    for (int column = 0; column < 5; ++column)
        MSFlexGrid1.setTextMatrix(0, column, headings[column]);
    for (int index = 0; index < 3; ++index)
        Text4(index).setText({});
}

void Form1pecabusca::Text4_Change(int Index)
{
    static const std::array selects{u"SELECT * FROM pecas WHERE codigo"_s,
                                    u"SELECT * FROM pecas WHERE descricao"_s,
                                    u"SELECT * FROM pecas WHERE EQUIVALENTE"_s};
    // The box is told by its text: the same text in two boxes searches the field of the first.
    for (int k = 0; k < 3; ++k)
        if (sameText(Text4(Index), Text4(k)))
            return search(Text4(k).text(), selects[k]);
}

void Form1pecabusca::search(const QString& text, const QString& selectWhere)
{
    static const std::vector<GridColumn> columns{
        {0}, {1}, {2}, {3}, {4, GridColumn::Money, u"0,00"_s}};
    MSFlexGrid1.setTabStop(!text.isEmpty());
    if (Text4(0).text().isEmpty() && Text4(1).text().isEmpty() && Text4(2).text().isEmpty()) {
        MSFlexGrid1.setRows(2);
        for (int column = 0; column < 5; ++column)
            MSFlexGrid1.setTextMatrix(MSFlexGrid1.Rows() - 1, column, {});
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
        setCaption(u"Buscar Peça"_s);
        return;
    }
    MSFlexGrid1.setRows(2);
    AbreBanco();
    Tabela1->Open(likeQuery(selectWhere, text), Conexao1.shared(), CursorType::Static,
                  LockType::ReadOnly);
    fillGrid(MSFlexGrid1, *Tabela1.shared(), columns);
    MSFlexGrid1.setRows(MSFlexGrid1.Rows() - 1);
    const int found = Tabela1->RecordCount();
    setCaption(u"Buscar Peça - "_s + QString::number(found) + u" peça encontrados"_s);
    MSFlexGrid1.setTabStop(found != 0);
    if (found == 0)
        Command1.setEnabled(false);
}

void Form1pecabusca::MSFlexGrid1_Click()
{
    if (!onDataRow(MSFlexGrid1))
        return;
    Text1.setText(MSFlexGrid1.TextMatrix(MSFlexGrid1.Row(), 0));
    Command1.setEnabled(true);
}

void Form1pecabusca::Command1_Click()
{
    const QString code = Text1.text();
    try {
        if (!Trim(code).isEmpty()) {
            Tabela1->MoveFirst();
            Tabela1->Find(likeCriterion(u"codigo"_s, Trim(code)));
        }
        Tabela1->Close();
    } catch (const RuntimeError&) {
        // The part may be gone from the list of a later search; the register looks it up itself.
    }
    form<Form1Pec>().Text2.setText(code); // loads the register, which unloads this dialog
    form<Form1Pec>().show(ShowStyle::Modal);
    Command1.setEnabled(false);
}
