#include "RecordForms.h"

#include "Application.h"
#include "FaultLog.h"
#include "Form1principal.h"
#include "Format.h"
#include "Funciones.h"
#include "GateFrames.h"
#include "MsgBox.h"
#include "Numbers.h"
#include "RuntimeError.h"
#include "Strings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Enter = 13;

constexpr int LengthCPF = 11;
constexpr int LengthCGC = 14;
constexpr int LengthFormattedCGC = 18;

// The message for a document that cannot stay; empty where it can. A whole document also opens the
// box for its formatted form.
QString examineDocument(TextBox& box, const QString& wrongCGC)
{
    const QString document = box.text();
    switch (document.size()) {
    case LengthCPF:
        box.setMaxLength(LengthCGC);
        return Funciones::ValidaCPF(document) ? QString() : u"CPF com DV incorreto !!!"_s;
    case 12:
        // The stray quote is the message's own.
        return u"Tem que ser 11 numeros para CPF e 14 numeros para CGC\""_s;
    case LengthCGC:
        box.setMaxLength(LengthFormattedCGC);
        return Funciones::ValidaCGC(document) ? QString() : wrongCGC;
    default:
        return document.size() > LengthCGC
                   ? QString()
                   : u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s;
    }
}

} // namespace

QString captionInUse(const QString& titleWithBlanks)
{
    return titleWithBlanks + principal().StatusBar1.panel(1) + u"  está usando"_s;
}

void tellFailedLoad(const RuntimeError& error, const QString& title)
{
    MsgBox(u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
    tellError(error, title);
}

void tellError(const RuntimeError& error, const QString& title)
{
    if (error.wasTold())
        return;
    faultlog::note(faultlog::Kind::Fault, runningForm(), error);
    MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical, title);
}

void tellFault(const RuntimeError& error, const QString& text)
{
    faultlog::note(faultlog::Kind::Fault, runningForm(), error);
    MsgBox(text);
}

void openStatic(ObjectVariable<Recordset>& table, const ObjectVariable<Connection>& connection,
                const QString& sql)
{
    table->Open(sql, connection.shared(), CursorType::Static, LockType::Optimistic);
}

void setEnabled(ControlArray<CommandButton>& buttons, int first, int last, bool enabled)
{
    for (int index = first; index <= last; ++index)
        buttons(index).setEnabled(enabled);
}

void setEnabled(ControlArray<CommandButton>& buttons, std::initializer_list<int> indexes,
                bool enabled)
{
    for (const int index : indexes)
        buttons(index).setEnabled(enabled);
}

void leaveNewAndClose(ControlArray<CommandButton>& buttons)
{
    setEnabled(buttons, button::Salvar, 7, false);
    setEnabled(buttons, button::Cancela, button::Ultima, false);
}

bool isNewRow(ControlArray<CommandButton>& buttons)
{
    return buttons(button::Salvar).enabled() && !buttons(button::Excluir).enabled();
}

void setLocked(ControlArray<TextBox>& boxes, int first, int last, bool locked)
{
    for (int index = first; index <= last; ++index)
        boxes(index).setLocked(locked);
}

void clear(ControlArray<TextBox>& boxes, int first, int last)
{
    for (int index = first; index <= last; ++index)
        boxes(index).setText({});
}

// The variable is asked anew for each move: a button that loses the focus may fire an event that
// replaces the recordset.
void navigate(int index, ObjectVariable<Recordset>& table, ControlArray<CommandButton>& buttons)
{
    switch (index) {
    case button::Anterior:
        if (!table->bof()) // where a step back from the end failed before
            table->MovePrevious();
        if (table->bof()) {
            table->MoveNext();
            buttons(button::Anterior).setEnabled(false);
        }
        buttons(button::Posterior).setEnabled(true);
        break;
    case button::Posterior:
        if (!table->eof())
            table->MoveNext();
        if (table->eof()) {
            table->MovePrevious();
            buttons(button::Posterior).setEnabled(false);
        }
        buttons(button::Anterior).setEnabled(true);
        break;
    case button::Primeira:
        table->MoveFirst();
        buttons(button::Anterior).setEnabled(false);
        buttons(button::Posterior).setEnabled(true);
        break;
    case button::Ultima:
        table->MoveLast();
        buttons(button::Anterior).setEnabled(true);
        buttons(button::Posterior).setEnabled(false);
        break;
    default: break;
    }
}

void leaveDeletedRow(ObjectVariable<Recordset>& table, ControlArray<CommandButton>& buttons)
{
    table->MovePrevious();
    if (table->bof()) {
        table->MoveNext();
        buttons(button::Posterior).setEnabled(true);
        buttons(button::Anterior).setEnabled(false);
    }
    if (table->eof())
        setEnabled(buttons, {button::Anterior, button::Posterior}, false);
}

ObjectVariable<Recordset> openedAnew(const QString& sql,
                                     const ObjectVariable<Connection>& connection)
{
    ObjectVariable<Recordset> table;
    table.create();
    openStatic(table, connection, sql);
    return table;
}

void endSearch(ObjectVariable<Recordset>& table, const QString& field, const QString& text)
try {
    table->MoveFirst();
    table->Find(likeCriterion(field, text));
    table->Close();
} catch (const RuntimeError&) {
    // The row may be gone from a later search; the record form looks it up itself.
}

void lookUpOrStay(ObjectVariable<Recordset>& table, const QString& field, const QString& text)
{
    const int place = table->AbsolutePosition();
    bool found = false;
    try {
        table->MoveFirst();
        table->Find(likeCriterion(field, text));
        found = !table->eof();
    } catch (const RuntimeError&) {
        // Not found.
    }
    if (!found && place > 0)
        table->setAbsolutePosition(place);
}

void closeIfOpen(ObjectVariable<Recordset>& table, ObjectVariable<Connection>& connection)
{
    if (!table.isNothing() && table->isOpen())
        table->Close();
    closeIfOpen(connection);
    table.setNothing();
    connection.setNothing();
}

void closeIfOpen(ObjectVariable<Connection>& connection)
{
    if (!connection.isNothing() && connection->isOpen())
        connection->Close();
}

QString nextCode(const QString& code)
{
    return Format(Val(Right(code, 7)) + 1, formats::Code);
}

bool enterAsTab(int KeyAscii)
{
    if (KeyAscii != Enter)
        return false;
    SendKeys(u"{TAB}"_s);
    return true;
}

void filterKey(int& KeyAscii, QString (*filter)(int))
{
    KeyAscii = filter(KeyAscii).toInt();
}

bool sameText(const TextBox& left, const TextBox& right)
{
    return left.text() == right.text();
}

void checkDocument(TextBox& box, const QString& wrongCGC)
{
    if (box.locked() || box.text().isEmpty())
        return;
    const QString fault = examineDocument(box, wrongCGC);
    if (fault.isEmpty())
        return;
    MsgBox(fault);
    box.setText({});
    box.SetFocus();
}

QString supportEmail()
{
    return u"suporte@vorbelo.example"_s;
}

QString supportEmailText()
{
    return u"email:"_s + supportEmail();
}

QString likeCriterion(const QString& field, const QString& text)
{
    return field + u" LIKE '*"_s + text + u"*'"_s;
}

QString likeQuery(const QString& selectWhere, const QString& text)
{
    return selectWhere + u" Like '%"_s + text + u"%'"_s;
}

bool onDataRow(const FlexGrid& grid, int keyColumn)
{
    return grid.Row() >= 1 && !grid.TextMatrix(grid.Row(), keyColumn).isEmpty();
}
