#include "Buscacli.h"

#include "Form1Cli.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "RecordFields.h"
#include "RecordForms.h"
#include "Strings.h"
#include "ui_Buscacli.h"

#include <algorithm>
#include <array>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

const std::array<QString, 5> Queries{
    u"SELECT * FROM Cliente WHERE numero"_s,  u"SELECT * FROM Cliente WHERE Nome"_s,
    u"SELECT * FROM Cliente WHERE marca"_s,   u"SELECT * FROM Cliente WHERE telefone"_s,
    u"SELECT * FROM Cliente WHERE celular"_s,
};

const std::vector<GridField>& columns()
{
    static const std::vector<GridField> list{{0, u"Numero"_s, 700},
                                             {3, u"Nome"_s, 2580},
                                             {14, u"Marca"_s, 1600},
                                             {10, u"Telefone"_s, 1000},
                                             {11, u"Celular"_s, 1000}};
    return list;
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

// Digits that stand in this order; what stands between them is looked at afterwards.
QString apart(const QString& digits)
{
    QStringList characters;
    for (const QChar digit : digits)
        characters << digit;
    return characters.join(u'%');
}

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
    setHeadings(MSFlexGrid1, columns());
    AbreBanco();
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
    const int box = firstWithText(Text1, Index, {0, 1, 2, 3, 4});
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
    search(box, text);
}

void Buscacli::search(int box, const QString& text)
{
    // Digits alone find a telephone whatever signs it is stored with.
    const bool byDigits =
        box >= 3 && !text.isEmpty() && std::all_of(text.begin(), text.end(), isDigit);
    const auto holdsDigits = [field = box + 7, &text](const RowsView& rows, int row) {
        QString phone = rows.text(row, field);
        phone.removeIf([](QChar character) { return !isDigit(character); });
        return phone.contains(text);
    };
    // The text goes in as it was typed: an apostrophe breaks the statement, and is meant to.
    Tabela1->Open(likeQuery(Queries[static_cast<size_t>(box)], byDigits ? apart(text) : text),
                  Conexao1.shared(), CursorType::Static, LockType::ReadOnly);
    const int found =
        refillGrid(MSFlexGrid1, Tabela1, columns(), byDigits ? IsMeant(holdsDigits) : IsMeant());
    setCaption(u"Buscar Cliente - "_s + QString::number(found) + u" clientes encontrados"_s);
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
void Buscacli::MSFlexGrid1_KeyPress(int KeyAscii)
{
    if (KeyAscii != 13)
        return;
    MSFlexGrid1_Click();
    MSFlexGrid1_DblClick();
}

void Buscacli::Command1_Click()
{
    const QString number = Text2.text();
    if (!Trim(number).isEmpty()) {
        endSearch(Tabela1, u"numero"_s, number);
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
