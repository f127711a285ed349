#include "Form1pecabusca.h"

#include "Form1Pec.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "PartColumns.h"
#include "RecordForms.h"
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
    setHeadings(MSFlexGrid1, partColumns());
    AbreBanco();
    clear(Text4, 0, 2);
}

void Form1pecabusca::Text4_Change(int Index)
{
    static const std::array selects{u"SELECT * FROM pecas WHERE codigo"_s,
                                    u"SELECT * FROM pecas WHERE descricao"_s,
                                    u"SELECT * FROM pecas WHERE EQUIVALENTE"_s};
    const int box = firstWithText(Text4, Index, {0, 1, 2});
    search(Text4(box).text(), selects[static_cast<size_t>(box)]);
}

void Form1pecabusca::search(const QString& text, const QString& selectWhere)
{
    MSFlexGrid1.setTabStop(!text.isEmpty());
    if (Text4(0).text().isEmpty() && Text4(1).text().isEmpty() && Text4(2).text().isEmpty()) {
        emptyGrid(MSFlexGrid1);
        setCaption(u"Buscar Peça"_s);
        return;
    }
    MSFlexGrid1.setRows(2);
    AbreBanco();
    Tabela1->Open(likeQuery(selectWhere, text), Conexao1.shared(), CursorType::Static,
                  LockType::ReadOnly);
    const int found = refillGrid(MSFlexGrid1, Tabela1, partColumns());
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
    endSearch(Tabela1, u"codigo"_s, Trim(code));
    form<Form1Pec>().Text2.setText(code); // loads the register, which unloads this dialog
    form<Form1Pec>().show(ShowStyle::Modal);
    Command1.setEnabled(false);
}
